#include "graphs/graph_pages.h"

#include <QFile>

#include <algorithm>

namespace vesk {
namespace {

constexpr double kHeadroom = 1.1;

}  // namespace

GraphPage WholePeriodPage(const GraphSheet& sheet) {
  return PageOfDates(sheet.start, sheet.end, kHeadroom * sheet.levels.highestCm);
}

GraphPage PageOfCorners(const GraphCorner& a, const GraphCorner& b) {
  GraphPage page;
  page.start = std::min(a.time, b.time);
  page.end = std::max(a.time, b.time);
  page.maximumCm = std::max(a.levelCm, b.levelCm);
  return page;
}

std::optional<Day> ReadDayOfWaterYear(const QString& text, int waterYear) {
  const QString trimmed = text.trimmed();
  const auto isSeparator = [](QChar c) { return QStringLiteral("\\/.:").contains(c); };
  const auto split = std::find_if(trimmed.begin(), trimmed.end(), isSeparator);
  if (split == trimmed.end()) return std::nullopt;
  const auto position = static_cast<qsizetype>(split - trimmed.begin());
  bool dayFine = false;
  bool monthFine = false;
  const unsigned day = trimmed.left(position).trimmed().toUInt(&dayFine);
  const unsigned month = trimmed.mid(position + 1).trimmed().toUInt(&monthFine);
  if (!dayFine || !monthFine) return std::nullopt;
  const int year = month > unsigned{kLastWaterYearMonth} ? waterYear - 1 : waterYear;
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                         std::chrono::day(day)};
  if (month > 12 || day > 31 || !date.ok()) return std::nullopt;
  return Day(date);
}

GraphPage PageOfDates(Day start, Day end, double maximumCm) {
  return {DateTime(start), DateTime(end) + std::chrono::minutes(kLastMinuteOfDay), maximumCm};
}

bool PageTable::Add(const GraphPage& page) {
  const bool room = number_ < kLastPageNumber;
  number_ = std::min(number_ + 1, kLastPageNumber);
  pages_.resize(static_cast<std::size_t>(number_));
  pages_.push_back(page);
  return room;
}

QString PageImages::PathOf(int pageNumber) const {
  return folder_.filePath(QStringLiteral("picture%1").arg(pageNumber));
}

void PageImages::Save(int pageNumber, const QImage& image) {
  // Only a shortcut to showing the page again: without it the page is drawn from its readings.
  if (!folder_.isValid() || !image.save(PathOf(pageNumber), "BMP")) QFile::remove(PathOf(pageNumber));
}

QImage PageImages::Load(int pageNumber, QSize pixels, double pixelRatio) const {
  if (!QFile::exists(PathOf(pageNumber))) return {};
  QImage image(PathOf(pageNumber), "BMP");
  if (image.size() != pixels) return {};
  image.setDevicePixelRatio(pixelRatio);
  return image;
}

}  // namespace vesk

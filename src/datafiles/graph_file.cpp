#include "datafiles/graph_file.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "datafiles/record_label.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

constexpr int kStationField = 6;
constexpr int kLevelField = 6;
constexpr qint64 kLeastRecordBytes = 6;

QRegularExpressionMatch MatchName(const QString& fileName) {
  static const QRegularExpression pattern(QStringLiteral("^Graf(\\d{4})-(.{6})\\.txt$"),
                                          QRegularExpression::CaseInsensitiveOption);
  return pattern.match(fileName);
}

// The sign position stays: a blank stands for "not negative".
QByteArray LevelText(double levelCm) {
  QByteArray text = NumberText(levelCm).toLatin1();
  if (!text.startsWith('-')) text.prepend(' ');
  return text;
}

void AppendRecord(QByteArray& content, const Reading& reading, const QByteArray& level) {
  content += DateText(reading.day).toLatin1();
  content += ',';
  content += ClockText(reading.minuteOfDay).toLatin1();
  content += ',';
  content += level.right(kLevelField).rightJustified(kLevelField, ' ');
  content += ',';
  content += RecordLabel(reading).toLatin1();
  content += "\r\n";
}

// "dd/mm/yyyy,hh:mm,llllll,nn-ort" without its line end; the number may have more digits.
bool HasRecordShape(QByteArrayView line) {
  constexpr std::string_view kShape = "00/00/0000,00:00,??????,00";
  constexpr qsizetype kLevelAt = 17;
  const auto shapeLength = static_cast<qsizetype>(kShape.size());
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  if (line.size() < shapeLength) return false;
  for (qsizetype i = 0; i < shapeLength; ++i) {
    const char expected = kShape[static_cast<std::size_t>(i)];
    const char c = line[i];
    const bool fits = expected == '0'   ? isDigit(c)
                      : expected == '?' ? isDigit(c) || c == ' ' || c == '-' || c == '.'
                                        : c == expected;
    if (!fits) return false;
  }
  const QByteArrayView level = line.sliced(kLevelAt, kLevelField);
  if (std::none_of(level.begin(), level.end(), isDigit)) return false;
  QByteArrayView rest = line.sliced(shapeLength);
  while (!rest.isEmpty() && isDigit(rest.front())) rest = rest.sliced(1);
  return rest.startsWith('-') && ReadKind(QString::fromLatin1(rest.sliced(1))).has_value();
}

}  // namespace

bool IsOwnGraphFile(const QString& fileName, QByteArrayView content) {
  if (!MatchName(fileName).hasMatch()) return false;
  while (!content.isEmpty()) {
    const auto* end =
        static_cast<const char*>(std::memchr(content.data(), '\n', static_cast<std::size_t>(content.size())));
    if (end == nullptr || end == content.data() || end[-1] != '\r') return false;
    const qsizetype length = end - content.data();
    if (!HasRecordShape(content.first(length - 1))) return false;
    content = content.sliced(length + 1);
  }
  return true;
}

QString GraphFileName(int waterYear, const QString& station) {
  const QString year = QStringLiteral("%1").arg(waterYear, 4, 10, QLatin1Char('0'));
  return QStringLiteral("Graf") + year + QLatin1Char('-') +
         station.right(kStationField).rightJustified(kStationField, QLatin1Char(' ')) +
         QStringLiteral(".txt");
}

QString StationOfGraphFile(const QString& fileName) {
  const auto match = MatchName(fileName);
  if (!match.hasMatch()) return {};
  const QString station = match.captured(2).trimmed();
  return station.startsWith(QLatin1Char('-')) ? station.mid(1) : station;
}

int WaterYearOfGraphFile(const QString& fileName) {
  const auto match = MatchName(fileName);
  return match.hasMatch() ? match.capturedView(1).toInt() : 0;
}

Result<GraphFileWritten> WriteGraphFile(const QString& dataDirectory, int waterYear, const QString& station,
                                        std::span<const Reading> readings) {
  GraphFileWritten written;
  written.name = GraphFileName(waterYear, station);
  QByteArray content;
  content.reserve(static_cast<qsizetype>(readings.size()) * kGraphRecordBytes);
  for (const Reading& reading : readings) {
    if (std::isnan(reading.levelCm)) break;
    const QByteArray level = LevelText(reading.levelCm);
    AppendRecord(content, reading, level);
    ++written.records;
    const bool onlySignBlankLost = level.size() == kLevelField + 1 && level.startsWith(' ');
    if (level.size() > kLevelField && !onlySignBlankLost) written.cutRecords.push_back(written.records);
  }
  const Status stored =
      WriteWholeFile(dataDirectory + written.name, content,
                     Wording{u"Grafik veri dosyası yazılamadı", u"The graph data file could not be written"});
  if (!stored) return stored.Failure();
  return written;
}

qint64 GraphRecordCount(QByteArrayView content) {
  // Record n starts at (n - 1) x 32; it is one while five bytes follow the one at that place.
  if (content.size() < kLeastRecordBytes) return 0;
  return (content.size() - kLeastRecordBytes) / kGraphRecordBytes + 1;
}

std::optional<GraphRecord> GraphRecordAt(QByteArrayView content, qint64 n) {
  if (n < 1 || n > GraphRecordCount(content)) return std::nullopt;
  const QByteArrayView bytes = content.sliced((n - 1) * kGraphRecordBytes);
  const auto field = [bytes](qsizetype start, qsizetype length) {
    if (start >= bytes.size()) return QByteArrayView{};
    return bytes.sliced(start, std::min(length, bytes.size() - start));
  };
  return GraphRecord{field(0, 10), field(11, 5), field(17, 6), field(24, 6)};
}

Result<QByteArray> ReadGraphFile(const QString& path) {
  const Message what = Wording{u"Grafik veri dosyası okunamadı", u"The graph data file could not be read"};
  if (!QFileInfo::exists(path))
    return Error{what, path, Wording{u"böyle bir dosya yok", u"there is no such file"}};
  return ReadWholeFile(path, what);
}

}  // namespace vesk

#include "graphs/graph_notes.h"

#include <QFontMetricsF>

#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "graphs/graph_labels.h"
#include "graphs/graph_scales.h"
#include "review/not_whole_note.h"

namespace vesk {
namespace {

struct MinuteRange {
  int start = 0, end = 0;
};

QString TimeText(const GraphSheet& sheet, int minutes) {
  return DateTimeText(TimeOfCoordinate(sheet.firstDay, minutes * kMinuteUnits));
}

QString NegativeNote(const GraphSheet& sheet, const QString& station, const GraphPoint& point) {
  return sheet.language.Say(Wording{u"%1: çizgi eksi seviyede bitiyor: %2  %3 cm",
                                    u"%1: the line ends at a negative level: %2  %3 cm"},
                            station, TimeText(sheet, point.minutes), NumberText(point.levelCm));
}

// The drawable reading nearest to a page that draws none.
std::optional<GraphPoint> NearestOutside(const GraphSeries& series, MinuteRange page) {
  const int after = series.ReadableFrom(page.end);
  const int before = series.ReadableFrom(page.start) - 1;
  const bool hasAfter = after < series.ReadableCount();
  if (before < 0) return hasAfter ? std::optional(series.Readable(after)) : std::nullopt;
  const GraphPoint& early = series.Readable(before);
  if (!hasAfter) return early;
  const GraphPoint& late = series.Readable(after);
  return page.start - early.minutes <= late.minutes - page.end ? early : late;
}

// Why a series shows nothing on the page; empty when it shows something.
QString BlankReason(const GraphSheet& sheet, const GraphSeries& series, MinuteRange page, double topCm) {
  if (series.Empty())
    return sheet.language.Say(Wording{u"Çizilecek okuma yok", u"There are no readings to draw"});
  const GraphPoint* lowest = nullptr;
  for (const GraphPoint& point : series.OnPage(page.start, page.end)) {
    if (point.minutes < page.start) continue;
    if (point.levelCm <= topCm) return {};
    if (lowest == nullptr || point.levelCm < lowest->levelCm) lowest = &point;
  }
  if (lowest != nullptr)
    return sheet.language.Say(Wording{u"Bu sayfadaki okumaların hepsi üst seviyenin üstünde; en düşüğü %1 cm",
                                      u"All readings of this page lie above its top; the least is %1 cm"},
                              NumberText(lowest->levelCm));
  const QString none = sheet.language.Say(
      Wording{u"Bu sayfada çizilecek okuma yok", u"There are no readings to draw on this page"});
  const auto nearest = NearestOutside(series, page);
  if (!nearest || series.EndedByNegative(page.start, page.end)) return none;
  return none + sheet.language.Say(Wording{u"; en yakın okuma %1", u"; the nearest reading is of %1"},
                                   TimeText(sheet, nearest->minutes));
}

QString ShortenedTo(QString line, const QFontMetricsF& letters, double width) {
  const QString dots = QStringLiteral(" …");
  while (!line.isEmpty() && letters.horizontalAdvance(line + dots) > width) line.chop(1);
  return line + dots;
}

// How many characters of the text fit, up to a blank where there is one.
qsizetype LengthOfLine(const QString& text, const QFontMetricsF& letters, double width) {
  qsizetype length = text.size();
  while (length > 1 && letters.horizontalAdvance(text.left(length)) > width) {
    const qsizetype blank = text.lastIndexOf(QLatin1Char(' '), length - 1);
    length = blank > 0 && blank < length ? blank : length - 1;
  }
  return std::max<qsizetype>(length, 1);
}

}  // namespace

PageNotes NotesOfPage(const GraphPage& page, const GraphSheet& sheet) {
  const MinuteRange range{GraphMinutes(sheet.firstDay, page.start), GraphMinutes(sheet.firstDay, page.end)};
  const double topCm = TopOfPage(page.maximumCm);
  PageNotes notes{sheet.notes, {}};
  QStringList reasons;
  QStringList named;
  for (std::size_t i = 0; i < sheet.series.size(); ++i) {
    const QString station = sheet.stationNames.value(static_cast<qsizetype>(i));
    const auto negative = sheet.series[i].EndedByNegative(range.start, range.end);
    if (negative) notes.lines.append(NegativeNote(sheet, station, *negative));
    const QString reason = BlankReason(sheet, sheet.series[i], range, topCm);
    if (reason.isEmpty()) continue;
    reasons.append(reason);
    named.append(station + QStringLiteral(": ") + reason);
  }
  const bool blank = reasons.size() == static_cast<qsizetype>(sheet.series.size());
  const bool alike = reasons.removeDuplicates() >= 0 && reasons.size() == 1;
  if (!blank) {
    notes.lines += named;
  } else if (reasons.isEmpty()) {
    notes.blank = BlankReason(sheet, {}, range, topCm);
  } else {
    notes.blank = alike ? reasons.front() : named.join(QLatin1Char('\n'));
  }
  return notes;
}

QStringList AllNotes(const PageNotes& notes) {
  return notes.lines + notes.blank.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList WrappedNotes(const QStringList& lines, double width, int mostLines) {
  const QFontMetricsF letters(PageFont(kLabelSize));
  QStringList wrapped;
  for (const QString& line : lines) {
    QString rest = line.simplified();
    while (!rest.isEmpty()) {
      if (wrapped.size() >= mostLines) {
        if (!wrapped.isEmpty()) wrapped.back() = ShortenedTo(wrapped.back(), letters, width);
        return wrapped;
      }
      const qsizetype length = LengthOfLine(rest, letters, width);
      wrapped.append(rest.left(length));
      rest = rest.mid(length).trimmed();
    }
  }
  return wrapped;
}

QStringList NotesOfLoad(const LoadedReadings& loaded, const QString& what, const Language& language) {
  const QString note = language.Say(NotWholeNote(loaded));
  if (note.isEmpty()) return {};
  return {what.isEmpty() ? note : what + QStringLiteral(": ") + note};
}

QString ProposedFileName(const GraphPage& page, const GraphSheet& sheet) {
  QStringList stations = sheet.stationNames;
  stations.removeDuplicates();
  QString name = sheet.language.Say(Wording{u"Seviye-", u"Level-"}) + stations.join(QLatin1Char('-')) +
                 QLatin1Char('(') + sheet.years + QLatin1Char(')');
  const GraphPage whole = WholePeriodPage(sheet);
  if (page.start != whole.start || page.end != whole.end) {
    const auto apart = [](DateTime time) {
      return DateTimeText(time).replace(QLatin1Char('/'), QLatin1Char('.')).remove(QLatin1Char(':'));
    };
    name += QLatin1Char(' ') + apart(page.start) + QStringLiteral(" - ") + apart(page.end);
  }
  for (QChar& letter : name) {
    const bool refused = letter.unicode() < 0x20 || letter.isSurrogate() ||
                         QStringLiteral("<>:\"/\\|?*").contains(letter) || letter.unicode() == 0x7F;
    if (refused) letter = QLatin1Char('_');
  }
  constexpr qsizetype kLongestName = 100;  // characters of at most three bytes; names hold 255
  return name.left(kLongestName).simplified();
}

}  // namespace vesk

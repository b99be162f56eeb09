#include "ratings/curve_tables.h"

#include <QRegularExpression>

#include <array>
#include <utility>

#include "platform/separated_text.h"
#include "ratings/curve_check.h"
#include "ratings/curve_numbers.h"

namespace vesk {
namespace {

constexpr Wording kTwoNumbers{u"iki sayı beklenir: seviye (cm), debi (m3/s)",
                              u"two numbers are expected: level (cm), discharge (m3/s)"};
constexpr Wording kColumns{u"INDEP ve DEP sütunlarında birer sayı beklenir",
                           u"a number each is expected in the columns INDEP and DEP"};

bool IsRemark(const QString& line) {
  return line.trimmed().isEmpty() || line.startsWith(QLatin1Char('#'));
}

/// Cells of a line of two columns: parted by a tab or a semicolon (a decimal comma may stand then), or by a
/// comma.
QStringList TwoCells(const QString& line) {
  for (const QChar sign : {QLatin1Char('\t'), QLatin1Char(';'), QLatin1Char(',')}) {
    if (!line.contains(sign)) continue;
    const std::vector<CellLine> lines = TakeCellsApart(line, sign);
    return lines.size() == 1 && lines.front().quotesOk ? lines.front().cells : QStringList();
  }
  return {};
}

std::optional<CurvePoint> PointOf(const QStringList& cells, bool decimalComma) {
  if (cells.size() != 2) return std::nullopt;
  std::array<double, 2> numbers{};
  for (std::size_t i = 0; i < 2; ++i) {
    QString cell = cells[static_cast<qsizetype>(i)].trimmed();
    if (decimalComma && cell.count(QLatin1Char(',')) == 1 && !cell.contains(QLatin1Char('.')))
      cell.replace(QLatin1Char(','), QLatin1Char('.'));
    const auto number = ReadCurveNumber(cell);
    if (!number) return std::nullopt;
    numbers[i] = *number;
  }
  return CurvePoint{numbers[0], numbers[1]};
}

/// Points of a table with the line of each.
class TableOfPoints {
 public:
  void Add(const CurvePoint& point, int line) {
    points_.push_back(point);
    lines_.push_back(line);
  }
  void Fault(int line, const Message& what) { faults_.push_back({line, what}); }
  void Remark(const QString& text) { remarks_.push_back(text); }

  /// The curve they make, checked.
  CurveText Finish() {
    static constexpr Wording kTwo{u"en az iki nokta beklenir", u"two points or more are expected"};
    CurveText read;
    read.curve.remarks = remarks_;
    CurvePeriod& period = read.curve.periods.emplace_back();
    read.faults = faults_;
    if (points_.size() < 2 && faults_.empty()) read.faults.push_back({0, kTwo});
    if (!read.faults.empty()) return read;
    period.lowestCm = points_.front().levelCm;
    period.highestCm = points_.back().levelCm;
    period.points = std::move(points_);
    for (const CurveFault& fault : CheckCurve(read.curve)) {
      const bool point = fault.part == CurvePart::Point;
      read.faults.push_back({point ? lines_[static_cast<std::size_t>(fault.place)] : 0, fault.what});
    }
    return read;
  }

 private:
  std::vector<CurvePoint> points_;
  std::vector<int> lines_;
  std::vector<CurveLineFault> faults_;
  QStringList remarks_;
};

/// Headings are one line without a number, in front of the points.
CurveText ReadTwoColumns(const QStringList& lines) {
  TableOfPoints table;
  bool begun = false;
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (IsRemark(lines[i])) continue;
    const QStringList cells = TwoCells(lines[i]);
    const bool commas = !lines[i].contains(QLatin1Char(';')) && !lines[i].contains(QLatin1Char('\t'));
    const auto point = PointOf(cells, !commas);
    const bool heading =
        !begun && !lines[i].contains(QRegularExpression(QStringLiteral("^[\\s\"]*[-+]?[0-9]")));
    begun = true;
    if (point) {
      table.Add(*point, static_cast<int>(i) + 1);
    } else if (!heading) {
      table.Fault(static_cast<int>(i) + 1, kTwoNumbers);
    }
  }
  return table.Finish();
}

/// Places of the columns of an expanded rating table.
struct RatingColumns {
  qsizetype level = -1, discharge = -1, count = 0;
};

std::optional<RatingColumns> ColumnsOf(const QString& line) {
  const QStringList names = line.split(QLatin1Char('\t'));
  const RatingColumns columns{names.indexOf(QStringLiteral("INDEP")), names.indexOf(QStringLiteral("DEP")),
                              names.size()};
  if (columns.level < 0 || columns.discharge < 0) return std::nullopt;
  return columns;
}

/// Of the remarks, what tells the station and the rating.
bool IsTelling(const QString& line) {
  return line.contains(u"STATION") || line.contains(u"RATING") || line.contains(u"WARNING");
}

/// "16N" and alike: widths and kinds of the columns.
bool IsFormatLine(const QString& line) {
  static const QRegularExpression kFormat(QStringLiteral("^[0-9]+[A-Za-z](\t[0-9]+[A-Za-z])*$"));
  return kFormat.match(line).hasMatch();
}

CurveText ReadRatingTable(const QStringList& lines, qsizetype heading, const RatingColumns& columns) {
  TableOfPoints table;
  for (qsizetype i = 0; i < heading; ++i) {
    if (IsTelling(lines[i])) table.Remark(lines[i].mid(1).trimmed());
  }
  for (qsizetype i = heading + 1; i < lines.size(); ++i) {
    if (IsRemark(lines[i]) || (i == heading + 1 && IsFormatLine(lines[i].trimmed()))) continue;
    const QStringList cells = lines[i].split(QLatin1Char('\t'));
    const auto number = [&cells](qsizetype place) {
      return place < cells.size() ? ReadCurveNumber(cells[place]) : std::nullopt;
    };
    const auto level = number(columns.level);
    const auto discharge = number(columns.discharge);
    const int line = static_cast<int>(i) + 1;
    if (level && discharge) {
      table.Add({*level * kCmOfAFoot, *discharge * kM3OfACubicFoot}, line);
    } else {
      table.Fault(line, kColumns);
    }
  }
  return table.Finish();
}

}  // namespace

std::optional<CurveText> ReadCurveTable(const QStringList& lines) {
  qsizetype first = 0;
  while (first < lines.size() && IsRemark(lines[first])) ++first;
  if (first == lines.size()) return std::nullopt;
  if (const auto columns = ColumnsOf(lines[first])) return ReadRatingTable(lines, first, *columns);
  if (TwoCells(lines[first]).size() == 2) return ReadTwoColumns(lines);
  return std::nullopt;
}

}  // namespace vesk

#include "ratings/curve_parser.h"

#include <algorithm>
#include <utility>

#include "datafiles/dates.h"
#include "ratings/curve_numbers.h"

namespace vesk {
namespace {

constexpr Wording kNumber{u"\"%1\" yerine ondalık noktalı bir sayı beklenir",
                          u"a number with a decimal point is expected instead of \"%1\""};
constexpr Wording kTime{u"\"%1\" yerine gg/aa/yyyy ss:dd biçiminde bir tarih beklenir",
                        u"a time like dd/mm/yyyy hh:mm is expected instead of \"%1\""};

constexpr Wording kBehindEnd{u"[end] arkasında başka satır beklenmez",
                             u"no further line is expected behind [end]"};
QStringList WordsOf(const QString& line) {
  return line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The cells of a line parted by "|"; "\|", "\\" and "\n" stand for a bar, a backslash and a line's end.
QStringList CellsOf(const QString& line) {
  QStringList cells{QString()};
  for (qsizetype i = 0; i < line.size(); ++i) {
    if (line[i] == QLatin1Char('\\') && i + 1 < line.size()) {
      ++i;
      cells.back() += line[i] == QLatin1Char('n') ? QLatin1Char('\n') : line[i];
    } else if (line[i] == QLatin1Char('|')) {
      cells.push_back({});
    } else {
      cells.back() += line[i];
    }
  }
  for (QString& cell : cells) cell = cell.trimmed();
  return cells;
}

/// "dd/mm/yyyy hh:mm", nothing behind it.
std::optional<DateTime> ReadExactTime(const QString& text) {
  constexpr int kLength = 16;
  return text.size() == kLength ? ReadDateTime(text) : std::nullopt;
}

}  // namespace

CurveText CurveParser::Read(const QStringList& lines) {
  for (const QString& line : lines) {
    ++line_;
    const QString trimmed = line.trimmed();
    if (line_ == 1 || trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('#'))) continue;
    ReadLine(trimmed);
  }
  if (!read_.curve.periods.empty()) CheckMissing();
  CheckWhole();
  return std::move(read_);
}

void CurveParser::ReadLine(const QString& line) {
  static constexpr Wording kField{u"\"ad = değer\" beklenir", u"\"name = value\" is expected"};
  if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']')))
    return BeginSection(line.mid(1, line.size() - 2).trimmed());
  switch (section_) {
    case Section::Segments:
      return ReadSegment(WordsOf(line));
    case Section::Points:
      return ReadPoint(WordsOf(line));
    case Section::Shifts:
      return ReadShift(WordsOf(line));
    case Section::Gaugings:
      return ReadGauging(line);
    case Section::End:
      return Fault(kBehindEnd);
    case Section::Curve:
    case Section::Period:
      break;
  }
  const qsizetype sign = line.indexOf(QLatin1Char('='));
  if (sign <= 0) return Fault(kField);
  ReadField(line.left(sign).trimmed(), line.mid(sign + 1).trimmed());
}

void CurveParser::BeginSection(const QString& name) {
  static constexpr Wording kSections{
      u"\"%1\" yerine [period], [segments], [points], [shifts], [gaugings] ya da [end] beklenir",
      u"[period], [segments], [points], [shifts], [gaugings] or [end] is expected instead of \"%1\""};
  static constexpr Wording kNoPeriod{u"önce [period] beklenir", u"[period] is expected first"};
  static constexpr Wording kTwice{u"[%1] bu dönemde ikinci kez var",
                                  u"[%1] stands in this period a second time, one is expected"};
  static const std::map<QString, Section> kNames{{QStringLiteral("segments"), Section::Segments},
                                                 {QStringLiteral("points"), Section::Points},
                                                 {QStringLiteral("shifts"), Section::Shifts},
                                                 {QStringLiteral("gaugings"), Section::Gaugings}};
  if (section_ == Section::End) return Fault(kBehindEnd);
  if (name == u"end") {
    section_ = Section::End;
    return;
  }
  if (name == u"period") {
    if (!read_.curve.periods.empty()) CheckMissing();
    read_.curve.periods.emplace_back();
    seen_.clear();
    section_ = Section::Period;
    return Note(CurvePart::Period, 0);
  }
  const auto found = kNames.find(name);
  if (found == kNames.end()) return Fault({kSections, name});
  if (read_.curve.periods.empty()) return Fault(kNoPeriod);
  if (seen_.contains(QLatin1Char('[') + name)) Fault({kTwice, name});
  seen_.insert(QLatin1Char('[') + name);
  section_ = found->second;
}

void CurveParser::ReadField(const QString& name, const QString& value) {
  static constexpr Wording kTwice{u"\"%1\" ikinci kez var",
                                  u"\"%1\" stands here a second time, one is expected"};
  if (name != u"remark") {
    if (seen_.contains(name)) return Fault({kTwice, name});
    seen_.insert(name);
  }
  if (section_ == Section::Curve) return ReadCurveField(name, value);
  ReadPeriodField(name, value);
}

void CurveParser::ReadCurveField(const QString& name, const QString& value) {
  static constexpr Wording kFields{u"\"%1\" yerine station, name ya da remark beklenir",
                                   u"station, name or remark is expected instead of \"%1\""};
  if (name == u"station") {
    read_.curve.station = value;
  } else if (name == u"name") {
    read_.curve.name = value;
  } else if (name == u"remark") {
    read_.curve.remarks.push_back(value);
  } else {
    Fault({kFields, name});
  }
}

void CurveParser::ReadPeriodField(const QString& name, const QString& value) {
  static constexpr Wording kBetween{u"\"%1\" yerine linear ya da logarithmic beklenir",
                                    u"linear or logarithmic is expected instead of \"%1\""};
  static constexpr Wording kFields{
      u"\"%1\" yerine from, to, lowest_cm, highest_cm, extrapolate_below_cm, extrapolate_above_cm, "
      u"uncertainty_percent, between ya da offset_cm beklenir",
      u"from, to, lowest_cm, highest_cm, extrapolate_below_cm, extrapolate_above_cm, uncertainty_percent, "
      u"between or offset_cm is expected instead of \"%1\""};
  if (name == u"from") return TakeTime(value, Period().from);
  if (name == u"to") return TakeTime(value, Period().to);
  if (name == u"between") {
    if (value != u"linear" && value != u"logarithmic") return Fault({kBetween, value});
    Period().between = value == u"linear" ? Between::Linear : Between::Logarithmic;
    return;
  }
  if (!ReadPeriodNumber(name, value)) Fault({kFields, name});
}

bool CurveParser::ReadPeriodNumber(const QString& name, const QString& value) {
  if (name == u"uncertainty_percent") {
    double percent = 0;
    TakeNumber(value, percent);
    Period().uncertaintyPercent = percent;
    Note(CurvePart::Gauged, 0);
    return true;
  }
  const std::map<QString, double*> fields{{QStringLiteral("lowest_cm"), &Period().lowestCm},
                                          {QStringLiteral("highest_cm"), &Period().highestCm},
                                          {QStringLiteral("extrapolate_below_cm"), &Period().belowCm},
                                          {QStringLiteral("extrapolate_above_cm"), &Period().aboveCm},
                                          {QStringLiteral("offset_cm"), &Period().offsetCm}};
  const auto found = fields.find(name);
  if (found == fields.end()) return false;
  TakeNumber(value, *found->second);
  Note(CurvePart::Gauged, 0);
  return true;
}

void CurveParser::ReadSegment(const QStringList& words) {
  static constexpr Wording kWords{
      u"dört sayı beklenir: alt sınır (cm; en alttaki parçada \"-\"), a, c (cm), b",
      u"four numbers are expected: lower end (cm; \"-\" for the lowest segment), a, c (cm), b"};
  std::vector<PowerSegment>& segments = Period().segments;
  const bool lowest = segments.empty();
  if (words.size() != 4 || lowest != (words[0] == u"-")) return Fault(kWords);
  PowerSegment segment;
  if (!lowest) TakeNumber(words[0], segment.fromCm);
  TakeNumber(words[1], segment.a);
  TakeNumber(words[2], segment.cCm);
  TakeNumber(words[3], segment.b);
  Note(CurvePart::Segment, segments.size());
  segments.push_back(segment);
}

void CurveParser::ReadPoint(const QStringList& words) {
  static constexpr Wording kWords{u"iki sayı beklenir: seviye (cm), debi (m3/s)",
                                  u"two numbers are expected: level (cm), discharge (m3/s)"};
  if (words.size() != 2) return Fault(kWords);
  CurvePoint point;
  TakeNumber(words[0], point.levelCm);
  TakeNumber(words[1], point.dischargeM3s);
  Note(CurvePart::Point, Period().points.size());
  Period().points.push_back(point);
}

void CurveParser::ReadShift(const QStringList& words) {
  static constexpr Wording kWords{u"gg/aa/yyyy ss:dd ve kayma (cm) beklenir",
                                  u"dd/mm/yyyy hh:mm and a shift (cm) are expected"};
  if (words.size() != 3) return Fault(kWords);
  std::optional<DateTime> time;
  TakeTime(words[0] + QLatin1Char(' ') + words[1], time);
  CurveShift shift;
  TakeNumber(words[2], shift.shiftCm);
  if (!time) return;
  shift.time = *time;
  Note(CurvePart::Shift, Period().shifts.size());
  Period().shifts.push_back(shift);
}

void CurveParser::ReadGauging(const QString& line) {
  static constexpr Wording kCells{
      u"\"|\" ile ayrılmış sekiz alan beklenir: zaman, seviye (cm), debi (m3/s), belirsizlik (%), yes/no, "
      u"yöntem, "
      u"ekip, açıklama",
      u"eight fields parted by \"|\" are expected: time, level (cm), discharge (m3/s), uncertainty (%), "
      u"yes/no, "
      u"method, party, remark"};
  const QStringList cells = CellsOf(line);
  if (cells.size() != 8 || (cells[4] != u"yes" && cells[4] != u"no")) return Fault(kCells);
  Gauging gauging;
  if (!cells[0].isEmpty()) TakeTime(cells[0], gauging.time);
  if (!cells[1].isEmpty()) TakeNumber(cells[1], gauging.levelCm.emplace());
  TakeNumber(cells[2], gauging.dischargeM3s);
  if (!cells[3].isEmpty()) TakeNumber(cells[3], gauging.uncertaintyPercent.emplace());
  gauging.used = cells[4] == u"yes";
  gauging.method = cells[5];
  gauging.party = cells[6];
  gauging.remark = cells[7];
  Note(CurvePart::Gauging, Period().gaugings.size());
  Period().gaugings.push_back(gauging);
}

void CurveParser::TakeNumber(const QString& text, double& number) {
  if (const auto read = ReadCurveNumber(text)) {
    number = *read;
  } else {
    Fault({kNumber, text});
  }
}

void CurveParser::TakeTime(const QString& text, std::optional<DateTime>& time) {
  time = ReadExactTime(text);
  if (!time) Fault({kTime, text});
}

void CurveParser::Note(CurvePart part, std::size_t place) {
  const int period = static_cast<int>(read_.curve.periods.size()) - 1;
  lines_.emplace(std::tuple(period, part, static_cast<int>(place)), line_);
}

/// A field that is not there would stand for 0.
void CurveParser::CheckMissing() {
  static constexpr Wording kMissing{u"bu dönemde \"%1\" beklenir", u"\"%1\" is expected in this period"};
  const int period = static_cast<int>(read_.curve.periods.size()) - 1;
  const int line = lines_[{period, CurvePart::Period, 0}];
  QStringList needed{QStringLiteral("lowest_cm"), QStringLiteral("highest_cm")};
  if (!Period().points.empty()) needed << QStringLiteral("between");
  if (Period().between == Between::Logarithmic) needed << QStringLiteral("offset_cm");
  for (const QString& name : needed) {
    if (!seen_.contains(name)) read_.faults.push_back({line, {kMissing, name}});
  }
}

void CurveParser::CheckWhole() {
  static constexpr Wording kEnd{u"dosyanın sonunda [end] beklenir; dosya kesilmiş olabilir",
                                u"[end] is expected at the end of the file; it may have been cut"};
  static constexpr Wording kStation{u"\"station = istasyon numarası\" beklenir",
                                    u"\"station = its number\" is expected"};
  // A file that was cut between two lines would give another curve.
  if (section_ != Section::End) read_.faults.push_back({line_, kEnd});
  if (read_.curve.station.isEmpty()) read_.faults.push_back({1, kStation});
  // Where a line was not understood, what is missing of it says nothing more.
  if (read_.faults.empty()) {
    for (const CurveFault& fault : CheckCurve(read_.curve)) {
      auto line = lines_.find({fault.period, fault.part, fault.place});
      if (line == lines_.end()) line = lines_.find({fault.period, CurvePart::Period, 0});
      read_.faults.push_back({line == lines_.end() ? 0 : line->second, fault.what});
    }
  }
  std::stable_sort(read_.faults.begin(), read_.faults.end(),
                   [](const auto& one, const auto& other) { return one.line < other.line; });
}

}  // namespace vesk

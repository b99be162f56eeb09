#include "ratings/curve_file.h"

#include <QCryptographicHash>

#include <algorithm>
#include <optional>
#include <utility>

#include "datafiles/dates.h"
#include "platform/whole_file.h"
#include "ratings/curve_check.h"
#include "ratings/curve_numbers.h"
#include "ratings/curve_parser.h"
#include "ratings/curve_tables.h"

namespace vesk {
namespace {

constexpr int kFaultsNamed = 5;

/// The text of bytes in UTF-8, line by line; a mark at the start and CRs at line ends are left out.
std::optional<QStringList> LinesOf(QByteArrayView bytes) {
  static constexpr QByteArrayView kMark("\xEF\xBB\xBF");
  if (bytes.startsWith(kMark)) bytes = bytes.sliced(kMark.size());
  const QString text = QString::fromUtf8(bytes);
  if (text.contains(QChar::ReplacementCharacter) || text.contains(QChar::Null)) return std::nullopt;
  QStringList lines = text.split(QLatin1Char('\n'));
  for (QString& line : lines) {
    if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
  }
  return lines;
}

/// One line's worth of a text.
QString OneLine(QString text) {
  text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
  return text.trimmed();
}

/// A cell between bars.
QString Cell(QString text) {
  text.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('|'), QStringLiteral("\\|"));
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return text.replace(QLatin1Char('\n'), QStringLiteral("\\n")).trimmed();
}

void AppendField(QByteArray& text, const char* name, const QByteArray& value) {
  text += name;
  text += " = ";
  text += value;
  text += '\n';
}

void AppendPeriodFields(QByteArray& text, const CurvePeriod& period) {
  text += "\n[period]\n";
  if (period.from) AppendField(text, "from", DateTimeText(*period.from).toLatin1());
  if (period.to) AppendField(text, "to", DateTimeText(*period.to).toLatin1());
  AppendField(text, "lowest_cm", CurveNumberText(period.lowestCm));
  AppendField(text, "highest_cm", CurveNumberText(period.highestCm));
  AppendField(text, "extrapolate_below_cm", CurveNumberText(period.belowCm));
  AppendField(text, "extrapolate_above_cm", CurveNumberText(period.aboveCm));
  if (period.uncertaintyPercent)
    AppendField(text, "uncertainty_percent", CurveNumberText(*period.uncertaintyPercent));
  if (!period.points.empty())
    AppendField(text, "between", period.between == Between::Linear ? "linear" : "logarithmic");
  if (!period.points.empty()) AppendField(text, "offset_cm", CurveNumberText(period.offsetCm));
}

void AppendShape(QByteArray& text, const CurvePeriod& period) {
  if (!period.segments.empty()) text += "\n[segments]\n# lower end (cm), a (m3/s at 1 cm), c (cm), b\n";
  for (const PowerSegment& segment : period.segments) {
    text += &segment == &period.segments.front() ? QByteArrayLiteral("-") : CurveNumberText(segment.fromCm);
    for (const double number : {segment.a, segment.cCm, segment.b}) text += ' ' + CurveNumberText(number);
    text += '\n';
  }
  if (!period.points.empty()) text += "\n[points]\n# level (cm), discharge (m3/s)\n";
  for (const CurvePoint& point : period.points)
    text += CurveNumberText(point.levelCm) + ' ' + CurveNumberText(point.dischargeM3s) + '\n';
}

void AppendGauging(QByteArray& text, const Gauging& gauging) {
  const auto number = [](const std::optional<double>& value) {
    return value ? CurveNumberText(*value) : QByteArray();
  };
  text += gauging.time ? DateTimeText(*gauging.time).toLatin1() : QByteArray();
  text += " | " + number(gauging.levelCm) + " | " + CurveNumberText(gauging.dischargeM3s) + " | " +
          number(gauging.uncertaintyPercent) + (gauging.used ? " | yes" : " | no");
  for (const QString* words : {&gauging.method, &gauging.party, &gauging.remark})
    text += " | " + Cell(*words).toUtf8();
  text += '\n';
}

Message FaultsSaid(const std::vector<CurveLineFault>& faults) {
  static constexpr Wording kLine{u"satır %1: %2", u"line %1: %2"};
  static constexpr Wording kMore{u"ve %1 hata daha", u"and %1 more"};
  std::vector<Message> said;
  for (const CurveLineFault& fault : faults) {
    if (std::ssize(said) == kFaultsNamed) break;
    said.push_back(fault.line > 0 ? Message(kLine, fault.line, fault.what) : fault.what);
  }
  if (std::ssize(faults) > kFaultsNamed) said.emplace_back(kMore, std::ssize(faults) - kFaultsNamed);
  return Message::Joined(said, QStringLiteral("; "));
}

}  // namespace

CurveText ReadCurveText(QByteArrayView bytes) {
  static constexpr Wording kNoText{u"UTF-8 metin beklenir", u"text in UTF-8 is expected"};
  static constexpr Wording kHeading{
      u"\"%1\", iki sütunlu bir tablo ya da INDEP ve DEP sütunlu bir tablo beklenir",
      u"\"%1\", a table of two columns or one with the columns INDEP and DEP is expected"};
  static constexpr Wording kFormat{u"\"%1\" beklenir; dosya daha yeni bir sürümün olabilir",
                                   u"\"%1\" is expected; the file may be a newer version's"};
  const auto lines = LinesOf(bytes);
  if (!lines) return {{}, {{0, kNoText}}};
  if (lines->front().trimmed() == QLatin1String(kCurveHeading)) return CurveParser().Read(*lines);
  static const QString kOwn = QString::fromLatin1(kCurveHeading).section(QLatin1Char(','), 0, 0);
  if (lines->front().trimmed().startsWith(kOwn))
    return {{}, {{1, {kFormat, QString::fromLatin1(kCurveHeading)}}}};
  if (auto table = ReadCurveTable(*lines)) return *std::move(table);
  return {{}, {{1, {kHeading, QString::fromLatin1(kCurveHeading)}}}};
}

Result<DigestedCurve> ReadCurveFileWithDigest(const QString& path) {
  static constexpr Wording kFailed{u"Anahtar eğrisi okunamadı", u"The rating curve could not be read"};
  static constexpr Wording kMissing{u"böyle bir dosya yok ya da dosya boş",
                                    u"there is no such file, or it is empty"};
  const auto bytes = ReadWholeFile(path, kFailed);
  if (!bytes) return bytes.Failure();
  if (bytes->isEmpty()) return Error{kFailed, path, kMissing};
  CurveText read = ReadCurveText(*bytes);
  if (!read.faults.empty()) return Error{kFailed, path, FaultsSaid(read.faults)};
  return DigestedCurve{std::move(read.curve),
                       QCryptographicHash::hash(*bytes, QCryptographicHash::Sha256).toHex()};
}

Result<RatingCurve> ReadCurveFile(const QString& path) {
  auto read = ReadCurveFileWithDigest(path);
  if (!read) return read.Failure();
  return std::move(read->curve);
}

QByteArray CurveFileText(const RatingCurve& curve) {
  QByteArray text = kCurveHeading;
  text += '\n';
  AppendField(text, "station", OneLine(curve.station).toUtf8());
  if (!curve.name.isEmpty()) AppendField(text, "name", OneLine(curve.name).toUtf8());
  for (const QString& remark : curve.remarks) AppendField(text, "remark", OneLine(remark).toUtf8());
  for (const CurvePeriod& period : curve.periods) {
    AppendPeriodFields(text, period);
    AppendShape(text, period);
    if (!period.shifts.empty()) text += "\n[shifts]\n# from then on, cm added to the level\n";
    for (const CurveShift& shift : period.shifts)
      text += DateTimeText(shift.time).toLatin1() + ' ' + CurveNumberText(shift.shiftCm) + '\n';
    if (!period.gaugings.empty())
      text +=
          "\n[gaugings]\n# time | level (cm) | discharge (m3/s) | uncertainty (%) | used | method | party | "
          "remark\n";
    for (const Gauging& gauging : period.gaugings) AppendGauging(text, gauging);
  }
  return text + "\n[end]\n";
}

Status WriteCurveFile(const QString& path, const RatingCurve& curve) {
  static constexpr Wording kFailed{u"Anahtar eğrisi yazılamadı", u"The rating curve could not be written"};
  const QByteArray text = CurveFileText(curve);
  if (const CurveText read = ReadCurveText(text); !read.faults.empty())
    return Error{kFailed, path, FaultsSaid(read.faults)};
  return WriteWholeFile(path, text, kFailed);
}

}  // namespace vesk

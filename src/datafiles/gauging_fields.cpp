#include "datafiles/gauging_fields.h"

#include <QRegularExpression>

#include <algorithm>
#include <charconv>
#include <optional>

#include "datafiles/dates.h"

namespace vesk {
namespace {

constexpr Wording kExpectedLevel{u"beklenen -1000000 ile 1000000 arasında bir sayı (cm)",
                                 u"expected a number from -1000000 to 1000000 (cm)"};
constexpr Wording kExpectedDischarge{u"beklenen 0.000001 ile 1000000 arasında bir sayı (m3/s)",
                                     u"expected a number from 0.000001 to 1000000 (m3/s)"};
constexpr Wording kExpectedUncertainty{u"beklenen 0.001 ile 1000 arasında bir sayı (%)",
                                       u"expected a number from 0.001 to 1000 (%)"};
constexpr Wording kExpectedTime{u"beklenen gg/aa/yyyy ss:dd biçiminde tarih ve saat",
                                u"expected a date and time dd/mm/yyyy hh:mm"};
constexpr Wording kExpectedUsed{u"beklenen 1 (kullanılır) veya 0 (kullanılmaz)",
                                u"expected 1 (used) or 0 (not used)"};

bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

/// A number that fills the text, with one decimal mark at most and perhaps an exponent.
std::optional<double> ReadFigure(QStringView text) {
  static const QRegularExpression shape(
      QStringLiteral("\\A[+\\-\u2212]?([0-9]+[.,]?[0-9]*|[.,][0-9]+)([eE][+\\-]?[0-9]{1,3})?\\z"));
  QString figure = text.trimmed().toString();
  if (!shape.match(figure).hasMatch()) return std::nullopt;
  figure.replace(u',', u'.').replace(u'\u2212', u'-').remove(u'+');
  const QByteArray digits = figure.toLatin1();
  const char* end = digits.constData() + digits.size();
  double value = 0;
  const auto [stopped, problem] = std::from_chars(digits.constData(), end, value);
  if (problem != std::errc{} || stopped != end) return std::nullopt;
  return value == 0 ? 0 : value;  // also -0
}

bool Within(double value, double least, double most) {
  return value >= least && value <= most;  // false for what is no number
}

bool LevelMakesSense(double cm) {
  return Within(cm, -kMostGaugingLevelCm, kMostGaugingLevelCm);
}
bool DischargeMakesSense(double m3s) {
  return Within(m3s, kLeastDischargeM3s, kMostDischargeM3s);
}
bool UncertaintyMakesSense(double percent) {
  return Within(percent, kLeastUncertaintyPercent, kMostUncertaintyPercent);
}
bool TimeMakesSense(DateTime time) {
  constexpr int kLastYear = 9999;
  const int year = YearOf(std::chrono::floor<std::chrono::days>(time));
  return year >= kFirstGaugingYear && year <= kLastYear;
}

/// "yyyy-mm-dd" at the front, turned round for ReadDateTime.
QString DayFirst(QStringView text) {
  constexpr qsizetype kDateLength = 10;
  const QStringView date = text.left(kDateLength);
  const bool yearFirst = date.size() == kDateLength && date[4] == u'-' && date[7] == u'-' &&
                         std::all_of(date.begin(), date.begin() + 4, IsDigit);
  if (!yearFirst) return text.toString();
  QString rest = text.mid(kDateLength).toString();
  if (rest.startsWith(u'T')) rest[0] = u' ';
  return QStringLiteral("%1/%2/%3%4").arg(date.mid(8), date.mid(5, 2), date.left(4), rest);
}

/// Without the seconds behind "hh:mm".
QString WithoutSeconds(const QString& text) {
  if (text.count(u':') != 2) return text;
  const QString seconds = text.section(u':', 2);
  const bool right = seconds.size() == 2 && IsDigit(seconds[0]) && seconds[0] < u'6' && IsDigit(seconds[1]);
  return right ? text.section(u':', 0, 1) : text;
}

std::optional<DateTime> ReadGaugingTime(QStringView text) {
  const auto time = ReadDateTime(WithoutSeconds(DayFirst(text)));
  return time && TimeMakesSense(*time) ? time : std::nullopt;
}

std::optional<bool> ReadUsed(QStringView text) {
  static constexpr QStringView kYes[] = {u"1",     u"true", u"yes", u"y",      u"evet",
                                         u"doğru", u"e",    u"x",   u"\u2713", u"DOĞRU"};
  static constexpr QStringView kNo[] = {u"0",     u"false", u"no",    u"n",      u"hayır",
                                        u"hayir", u"h",     u"HAYIR", u"yanlış", u"YANLIŞ"};
  const auto is = [text](QStringView word) { return text.compare(word, Qt::CaseInsensitive) == 0; };
  if (std::any_of(std::begin(kYes), std::end(kYes), is)) return true;
  if (std::any_of(std::begin(kNo), std::end(kNo), is)) return false;
  return std::nullopt;
}

/// Takes a figure that may be unknown.
Message TakeOptional(std::optional<double>& into, QStringView text, bool (*makesSense)(double),
                     const Wording& expected) {
  if (text.isEmpty()) {
    into.reset();
    return {};
  }
  const auto value = ReadFigure(text);
  if (!value || !makesSense(*value)) return expected;
  into = value;
  return {};
}

Message TakeDischarge(Gauging& gauging, QStringView text) {
  const auto value = ReadFigure(text);
  if (!value || !DischargeMakesSense(*value)) return kExpectedDischarge;
  gauging.dischargeM3s = *value;
  return {};
}

Message TakeTime(Gauging& gauging, QStringView text) {
  const auto time = ReadGaugingTime(text);
  if (!time && !text.isEmpty()) return kExpectedTime;
  gauging.time = time;
  return {};
}

Message TakeUsed(Gauging& gauging, QStringView text) {
  const auto used = text.isEmpty() ? true : ReadUsed(text);
  if (!used) return kExpectedUsed;
  gauging.used = *used;
  return {};
}

/// No file of text can hold a NUL.
QString WithoutNul(QStringView text) {
  return text.toString().remove(QChar(u'\0'));
}

QString OptionalText(const std::optional<double>& value) {
  return value ? ExactNumberText(*value) : QString();
}

}  // namespace

Wording TitleOf(GaugingField field) {
  switch (field) {
    case GaugingField::Time:
      return {u"Tarih ve saat", u"Time"};
    case GaugingField::Level:
      return {u"Seviye (cm)", u"Level (cm)"};
    case GaugingField::Discharge:
      return {u"Debi (m³/s)", u"Discharge (m³/s)"};
    case GaugingField::Uncertainty:
      return {u"Belirsizlik (%)", u"Uncertainty (%)"};
    case GaugingField::Used:
      return {u"Kullan", u"Used"};
    case GaugingField::Method:
      return {u"Yöntem", u"Method"};
    case GaugingField::Party:
      return {u"Ekip", u"Party"};
    case GaugingField::Remark:
      break;
  }
  return {u"Açıklama", u"Remark"};
}

QString NameOf(GaugingField field) {
  static const std::array<QString, kGaugingFields.size()> kNames = {
      QStringLiteral("time"),          QStringLiteral("level_cm"),
      QStringLiteral("discharge_m3s"), QStringLiteral("uncertainty_percent"),
      QStringLiteral("method"),        QStringLiteral("party"),
      QStringLiteral("remark"),        QStringLiteral("used")};
  return kNames[static_cast<std::size_t>(field)];
}

Message TakeField(Gauging& gauging, GaugingField field, QStringView text) {
  const QStringView trimmed = text.trimmed();
  switch (field) {
    case GaugingField::Time:
      return TakeTime(gauging, trimmed);
    case GaugingField::Level:
      return TakeOptional(gauging.levelCm, trimmed, LevelMakesSense, kExpectedLevel);
    case GaugingField::Discharge:
      return TakeDischarge(gauging, trimmed);
    case GaugingField::Uncertainty:
      return TakeOptional(gauging.uncertaintyPercent, trimmed, UncertaintyMakesSense, kExpectedUncertainty);
    case GaugingField::Used:
      return TakeUsed(gauging, trimmed);
    case GaugingField::Method:
      gauging.method = WithoutNul(text);
      break;
    case GaugingField::Party:
      gauging.party = WithoutNul(text);
      break;
    case GaugingField::Remark:
      gauging.remark = WithoutNul(text);
      break;
  }
  return {};
}

QString TextOf(const Gauging& gauging, GaugingField field) {
  switch (field) {
    case GaugingField::Time:
      return gauging.time ? DateTimeText(*gauging.time) : QString();
    case GaugingField::Level:
      return OptionalText(gauging.levelCm);
    case GaugingField::Discharge:
      return ExactNumberText(gauging.dischargeM3s);
    case GaugingField::Uncertainty:
      return OptionalText(gauging.uncertaintyPercent);
    case GaugingField::Used:
      return gauging.used ? QStringLiteral("1") : QStringLiteral("0");
    case GaugingField::Method:
      return gauging.method;
    case GaugingField::Party:
      return gauging.party;
    case GaugingField::Remark:
      break;
  }
  return gauging.remark;
}

QString ExactNumberText(double value) {
  if (value == 0) return QStringLiteral("0");  // also -0
  std::array<char, 1100> buffer{};             // the smallest number has some 1075 digits
  const auto [end, problem] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return QString::fromLatin1(buffer.data(), end - buffer.data());
}

Message GaugingFault(const Gauging& gauging) {
  const auto fault = [](GaugingField field, const Wording& expected) {
    return Message::Joined({TitleOf(field), expected}, QStringLiteral(": "));
  };
  if (!DischargeMakesSense(gauging.dischargeM3s)) return fault(GaugingField::Discharge, kExpectedDischarge);
  if (gauging.levelCm && !LevelMakesSense(*gauging.levelCm))
    return fault(GaugingField::Level, kExpectedLevel);
  if (gauging.uncertaintyPercent && !UncertaintyMakesSense(*gauging.uncertaintyPercent))
    return fault(GaugingField::Uncertainty, kExpectedUncertainty);
  if (gauging.time && !TimeMakesSense(*gauging.time)) return fault(GaugingField::Time, kExpectedTime);
  return {};
}

bool HasClock(QStringView timeText) {
  return timeText.trimmed().contains(u' ') || timeText.contains(u'T') || timeText.contains(u':');
}

}  // namespace vesk

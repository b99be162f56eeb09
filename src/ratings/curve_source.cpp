#include "ratings/curve_source.h"

#include <QFileInfo>
#include <QStringList>

#include <QCryptographicHash>

#include <utility>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "ratings/curve_file.h"

namespace vesk {

CurveSource::CurveSource(RatingCurve curve, QString path, QByteArray sha256)
    : curve_(std::move(curve)), path_(std::move(path)), sha256_(std::move(sha256)) {}

DischargeValue CurveSource::At(DateTime time, double levelCm) const {
  return DischargeAt(curve_, time, levelCm);
}

Message CurveSource::Explain(DateTime time, DischargeFlag flag) const {
  static constexpr Wording kDry{
      u"Akım yok: seviye, anahtar eğrisinin sıfır akım seviyesinin (%1 cm) üstünde değil",
      u"No flow: the level is not above the rating curve's level of no flow (%1 cm)"};
  static constexpr Wording kBelow{u"Uzatılmış: ölçülen en düşük seviyenin (%1 cm) altında",
                                  u"Extrapolated: below the lowest gauged level (%1 cm)"};
  static constexpr Wording kAbove{u"Uzatılmış: ölçülen en yüksek seviyenin (%1 cm) üstünde",
                                  u"Extrapolated: above the highest gauged level (%1 cm)"};
  static constexpr Wording kTooLow{u"Debi yok: eğri %1 cm altına uzatılamaz",
                                   u"No discharge: the curve may not be extrapolated below %1 cm"};
  static constexpr Wording kTooHigh{u"Debi yok: eğri %1 cm üstüne uzatılamaz",
                                    u"No discharge: the curve may not be extrapolated above %1 cm"};
  static constexpr Wording kNoPeriod{u"Debi yok: anahtar eğrisi %1 tarihinde geçerli değil",
                                     u"No discharge: the rating curve does not hold at %1"};
  const CurvePeriod* period = PeriodAt(curve_, time);
  if (period == nullptr) return {kNoPeriod, DateTimeText(time)};
  switch (flag) {
    case DischargeFlag::Dry:
      return {kDry, NumberText(DryLevel(*period).value_or(0))};
    case DischargeFlag::ExtrapolatedBelow:
      return {kBelow, NumberText(period->lowestCm)};
    case DischargeFlag::ExtrapolatedAbove:
      return {kAbove, NumberText(period->highestCm)};
    case DischargeFlag::TooLow:
      return {kTooLow, NumberText(period->lowestCm - period->belowCm)};
    case DischargeFlag::TooHigh:
      return {kTooHigh, NumberText(period->highestCm + period->aboveCm)};
    case DischargeFlag::None:
    case DischargeFlag::NoPeriod:
      break;
  }
  return {};
}

Message CurveSource::Describe(Day first, Day last) const {
  constexpr int kShortDigest = 12;
  QStringList ranges;
  for (const CurvePeriod& period : curve_.periods) {
    const bool before = period.to && *period.to < DateTime(first);
    const bool behind = period.from && *period.from >= DateTime(last) + std::chrono::days(1);
    if (!before && !behind)
      ranges += QStringLiteral("%1-%2 cm").arg(NumberText(period.lowestCm), NumberText(period.highestCm));
  }
  return {Wording{u"Anahtar eğrisi: %1 (SHA-256 %2...); ölçülen seviyeler: %3",
                  u"Rating curve: %1 (SHA-256 %2...); gauged levels: %3"},
          QFileInfo(path_).fileName(), QString::fromLatin1(sha256_.left(kShortDigest)),
          ranges.join(QStringLiteral("; "))};
}

Result<std::shared_ptr<const CurveSource>> OpenCurve(const QString& path, const QString& stationNumber) {
  static constexpr Wording kWrong{u"Anahtar eğrisi bu istasyonun değil",
                                  u"The rating curve is another station's"};
  static constexpr Wording kStations{u"eğri %1 istasyonunun, seçilen istasyon %2",
                                     u"the curve is of station %1, the chosen station is %2"};
  auto file = ReadCurveFileWithDigest(path);
  if (!file) return file.Failure();
  const QString& named = file->curve.station;
  if (!named.isEmpty() && named.compare(stationNumber, Qt::CaseInsensitive) != 0)
    return Error{kWrong, path, {kStations, named, stationNumber}};
  return std::make_shared<const CurveSource>(std::move(file->curve), path, std::move(file->sha256));
}

}  // namespace vesk

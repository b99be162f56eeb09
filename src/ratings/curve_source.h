// A rating curve as the source of a series' discharges.
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

#include "platform/result.h"
#include "ratings/rating_curve.h"
#include "review/discharge_source.h"

namespace vesk {

class CurveSource : public DischargeSource {
 public:
  /// path, sha256 (lower hexadecimal): of the file that the curve was read from.
  CurveSource(RatingCurve curve, QString path, QByteArray sha256);

  [[nodiscard]] DischargeValue At(DateTime time, double levelCm) const override;
  [[nodiscard]] Message Explain(DateTime time, DischargeFlag flag) const override;

  [[nodiscard]] const RatingCurve& Curve() const { return curve_; }
  [[nodiscard]] QString Path() const override { return path_; }
  [[nodiscard]] QByteArray Sha256() const override { return sha256_; }
  [[nodiscard]] Message Describe(Day first, Day last) const override;

 private:
  RatingCurve curve_;
  QString path_;
  QByteArray sha256_;
};

/// Reads a curve file for a station. Fails as ReadCurveFile does, and for a curve that names another station
/// (its number, five characters) than this one.
Result<std::shared_ptr<const CurveSource>> OpenCurve(const QString& path, const QString& stationNumber);

}  // namespace vesk

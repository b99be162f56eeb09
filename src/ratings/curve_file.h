// Rating-curve files: the system's own text format, plain tables of two columns, expanded rating tables.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <vector>

#include "platform/result.h"
#include "ratings/rating_curve.h"

namespace vesk {

/// What is wrong in a file, with the line it stands in.
struct CurveLineFault {
  int line = 0;  ///< from 1; 0: of the whole file
  Message what;
};

struct CurveText {
  RatingCurve curve;
  std::vector<CurveLineFault> faults;  ///< in order of line; the curve is usable when there are none
};

/// Reads the own format (it begins with kCurveHeading), an expanded rating table (tab-separated, with the
/// columns INDEP and DEP, feet and cubic feet a second) or a table of two columns (level in cm, discharge in
/// m3/s), whichever the bytes are.
CurveText ReadCurveText(QByteArrayView bytes);

/// The same for a file. Fails for one that cannot be read or has faults; the reason names line and
/// expectation of the first ones.
Result<RatingCurve> ReadCurveFile(const QString& path);

/// A curve with the SHA-256 of the bytes it was read from, lower hexadecimal.
struct DigestedCurve {
  RatingCurve curve;
  QByteArray sha256;
};
Result<DigestedCurve> ReadCurveFileWithDigest(const QString& path);

/// In the own format; what is written reads back equal.
QByteArray CurveFileText(const RatingCurve& curve);

/// Writes it whole or not at all. Fails, writing nothing, for a curve with faults.
Status WriteCurveFile(const QString& path, const RatingCurve& curve);

inline constexpr const char* kCurveHeading = "Vesk4 rating curve, format 1";

}  // namespace vesk

// Gaugings and a rating curve for the sample data: the same figures every time.
#pragma once

#include <QStringList>

#include <vector>

#include "datafiles/gauging.h"
#include "platform/result.h"
#include "ratings/rating_curve.h"

namespace vesk::sample {

/// 24 gaugings of station 12002 between 1.5 and 4.6 m: a control that drowns at 2.6 m, with a spread of some
/// percent.
std::vector<Gauging> SampleGaugings();

/// The curve that they were made with, gaugings included. The highest floods lie above what it may be
/// extrapolated to.
RatingCurve SampleCurve();

/// Writes E12002.dat and gaugings-12002.csv into an existing folder; their names.
Result<QStringList> WriteSampleRatings(const QString& folder);

}  // namespace vesk::sample

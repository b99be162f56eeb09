// Rating-curve files: which ones a folder holds and how a chosen one is named. Their content is read
// elsewhere.
#pragma once

#include <QString>

#include <vector>

namespace vesk {

/// Names of the files "E*.dat" of a folder, matched without regard to case, in order of name.
/// A folder that is missing or cannot be read holds none.
std::vector<QString> ListRatingCurves(const QString& folder);

/// Full path of a file of a folder, with exactly one "/" between, whether or not the folder ends with one.
/// Empty when no file is named.
QString RatingCurvePath(const QString& folder, const QString& fileName);

}  // namespace vesk

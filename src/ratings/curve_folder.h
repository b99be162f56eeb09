// Rating-curve files: which ones a folder holds. Their content is read elsewhere.
#pragma once

#include <QString>

#include <vector>

namespace vesk {

/// Names of the files "E*.dat" of a folder, matched without regard to case, in order of name.
/// A folder that is missing or cannot be read holds none.
std::vector<QString> ListRatingCurves(const QString& folder);

/// True for such a name.
bool IsCurveFileName(const QString& fileName);

}  // namespace vesk

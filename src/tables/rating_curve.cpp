#include "tables/rating_curve.h"

#include <QDir>

namespace vesk {

std::vector<QString> ListRatingCurves(const QString& folder) {
  if (folder.isEmpty()) return {};
  const QStringList names =
      QDir(folder).entryList({QStringLiteral("E*.dat")}, QDir::Files, QDir::Name | QDir::IgnoreCase);
  return {names.begin(), names.end()};
}

QString RatingCurvePath(const QString& folder, const QString& fileName) {
  if (fileName.isEmpty()) return {};
  return folder.endsWith(QLatin1Char('/')) ? folder + fileName : folder + QLatin1Char('/') + fileName;
}

}  // namespace vesk

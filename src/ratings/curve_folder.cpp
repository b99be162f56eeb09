#include "ratings/curve_folder.h"

#include <QDir>

namespace vesk {

std::vector<QString> ListRatingCurves(const QString& folder) {
  if (folder.isEmpty()) return {};
  const QStringList names =
      QDir(folder).entryList({QStringLiteral("E*.dat")}, QDir::Files, QDir::Name | QDir::IgnoreCase);
  return {names.begin(), names.end()};
}

}  // namespace vesk

#include "ratings/curve_folder.h"

#include <QDir>

namespace vesk {
namespace {

QString CurveNames() {
  return QStringLiteral("E*.dat");
}

}  // namespace

std::vector<QString> ListRatingCurves(const QString& folder) {
  if (folder.isEmpty()) return {};
  const QStringList names =
      QDir(folder).entryList({CurveNames()}, QDir::Files, QDir::Name | QDir::IgnoreCase);
  return {names.begin(), names.end()};
}

bool IsCurveFileName(const QString& fileName) {
  return QDir::match(CurveNames(), fileName);
}

}  // namespace vesk

// Where the rating curve lies that the register keeps for a station.
#pragma once

#include <QDir>
#include <QFileInfo>
#include <QString>

namespace vesk {

/// curve: as the register has it (StationFacts::curve); one that is not absolute counts from the register's
/// folder, so that a folder can move as a whole. Empty when there is none.
inline QString StationCurvePath(const QString& registerPath, const QString& curve) {
  return curve.isEmpty() ? QString() : QDir(QFileInfo(registerPath).absolutePath()).absoluteFilePath(curve);
}

}  // namespace vesk

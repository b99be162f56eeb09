// The windows of gaugings and rating curves, each with the way to the other.
#pragma once

#include <QString>

class QWidget;

namespace vesk {

class MainFrame;

/// number, name: of the station.
QWidget* MakeGaugingsWindow(MainFrame& frame, const QString& number, const QString& name);

}  // namespace vesk

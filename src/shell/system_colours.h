// Colour numbers of the settings as colours of this desktop.
#pragma once

#include <QColor>
#include <QPalette>

namespace vesk {

/// @param number 0x00BBGGRR, or 0x80000000 + n for system colour n, which the desktop's palette answers
QColor DesktopColour(qint32 number, const QPalette& palette);

}  // namespace vesk

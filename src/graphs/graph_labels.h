// Texts on a graph page, alike on every device.
#pragma once

#include <QFont>
#include <QPointF>
#include <QString>

class QPainter;

namespace vesk {

inline constexpr double kLabelSize = 11;  ///< page units

enum class LabelPlace { EndsAt, StartsAt, Centred };

/// size: page units, whole ones, so glyphs come out alike on every device.
QFont PageFont(double size, bool bold = false);

/// PageFont of the size, or of a smaller one (6 at least) that makes the text as narrow as `room` page units.
QFont FittingFont(const QString& text, double size, double room, bool bold = false);

/// point: where the text ends, starts or is centred; the text's middle line runs through it. Black.
void DrawLabel(QPainter& painter, QPointF point, const QString& text, const QFont& font, LabelPlace place);

/// Upwards; point as for DrawLabel along the turned text.
void DrawVerticalLabel(QPainter& painter, QPointF point, const QString& text, const QFont& font,
                       LabelPlace place);

}  // namespace vesk

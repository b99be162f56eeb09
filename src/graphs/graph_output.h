// A graph page as a picture or a file.
#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

#include "graphs/graph_page.h"
#include "platform/result.h"

namespace vesk {

inline constexpr int kUnitsPerInch = 96;  ///< page units

/// size: page units of 1/96 inch; pixelRatio: device pixels a unit.
QImage GraphPageImage(const GraphPage& page, const GraphSheet& sheet, QSize size, double pixelRatio = 1);

/// Saves the page as the file's ending says: .png, .pdf or .svg, text and paths wherever the format has them;
/// .csv the readings that are drawn, one a line. The file is written whole or not at all. dotsPerInch: of a
/// .png, which has that many pixels an inch; the others have none.
Status SaveGraphPage(const QString& path, const GraphPage& page, const GraphSheet& sheet, QSize size,
                     int dotsPerInch = kUnitsPerInch);

/// Endings that SaveGraphPage knows, lower case, without the point.
bool IsGraphFormat(const QString& ending);

}  // namespace vesk

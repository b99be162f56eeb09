// Cells of CSV files: the one place that quotes them and keeps a spreadsheet from taking a text for a
// formula.
#pragma once

#include <QByteArray>
#include <QString>

namespace vesk {

/// A text as it may stand in a cell. One that begins with = + - @, a tab or a carriage return gets an
/// apostrophe in front, or a spreadsheet would run it; numbers stay as they are.
QString HarmlessCell(const QString& text);

/// Appends a cell in UTF-8: harmless, and quoted when it holds a comma, a quote or a line break.
void AppendCsv(QByteArray& line, const QString& text);

}  // namespace vesk

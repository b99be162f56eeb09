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

/// Lines of cells, one behind the other.
class CsvLines {
 public:
  explicit CsvLines(QByteArray& text) : text_(text) {}

  void Cell(const QString& text) { AppendCsv(Plain(), text); }
  /// The next cell, for what needs no quotes to be appended: figures, dates, a cell from AppendCsv.
  QByteArray& Plain();
  void EndLine();

 private:
  QByteArray& text_;
  bool first_ = true;  ///< of the line
};

}  // namespace vesk

// Colours to look at and to choose: the swatches and the palette of the options dialog.
#pragma once

#include <QAbstractButton>
#include <QGroupBox>

#include <vector>

namespace vesk {

class Language;

/// Name of a palette colour in the current language, for those who do not see it; its RGB value for any
/// other.
QString ColourName(qint32 number, const Language& language);

/// A button that is nothing but its colour. Checked, it wears a mark.
class ColourCell : public QAbstractButton {
  Q_OBJECT

 public:
  explicit ColourCell(QWidget* parent = nullptr);
  /// Colour number: 0x00BBGGRR or a system colour, as the settings hold it.
  [[nodiscard]] qint32 Number() const { return number_; }
  void SetNumber(qint32 number);
  [[nodiscard]] QSize sizeHint() const override;

 Q_SIGNALS:
  void ArrowPressed(int columns, int rows);  ///< an arrow key: steps to the right and downwards

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  qint32 number_ = 0;
};

/// Six rows of thirteen cells. Each row is one stop of the Tab key; arrow keys walk over the cells.
class ColourPalette : public QGroupBox {
  Q_OBJECT

 public:
  explicit ColourPalette(const Language& language, QWidget* parent = nullptr);
  /// Marks the cell of that colour in a row, if there is one.
  void MarkColour(int row, qint32 number);
  /// Puts the keyboard's focus on the row's tab stop.
  void FocusRow(int row);

 Q_SIGNALS:
  void Chosen(int row, qint32 number);

 private:
  void AddCell(int cell, const Language& language);
  void MoveFocus(int cell, int columns, int rows);
  void LetTabStopAt(int cell);

  std::vector<ColourCell*> cells_;
};

}  // namespace vesk

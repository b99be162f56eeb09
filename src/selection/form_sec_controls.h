// The controls of the selection window and where they stand. What they do is the window's affair.
#pragma once

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSplitter;
class QTableWidget;
class QToolButton;
class QWidget;

namespace vesk {

class ChangedRowsList;
class ChooserPanel;
class FindingsPanel;
class GraphListPanel;
class HydrographPane;
class Language;
class MessageList;
class RangeBar;
class ReviewGridView;
class RowSelection;
class SetupTable;

/// Operators and tests know a control by its objectName; here it is named by what it is for.
struct FormSecControls {
  // Left: what to choose.
  ChooserPanel* chooser = nullptr;
  // Middle: the review panel.
  QWidget* reviewPanel = nullptr;
  QLabel* loadedLabel = nullptr;
  QLabel* rowLabel = nullptr;
  ReviewGridView* grid = nullptr;
  FindingsPanel* findings = nullptr;
  HydrographPane* hydrograph = nullptr;
  RangeBar* rangeBar = nullptr;
  QToolButton* foldChooser = nullptr;     ///< shows and hides the chooser
  QToolButton* foldHydrograph = nullptr;  ///< the same for the hydrograph
  QToolButton* zeroBased = nullptr;
  QToolButton* curve = nullptr;  ///< the rating curve, with a menu of what can be done about it
  QWidget* editBar = nullptr;
  QLineEdit* changeCount = nullptr;
  QPushButton* nextChange = nullptr;
  QPushButton* previousChange = nullptr;
  QPushButton* undoAll = nullptr;
  QPushButton* save = nullptr;
  QWidget* dateBar = nullptr;
  QLineEdit* date = nullptr;
  QPushButton* goToDate = nullptr;
  QWidget* clockBar = nullptr;
  QLineEdit* lastReading = nullptr;
  QPushButton* correctDates = nullptr;
  QPushButton* clockPairs = nullptr;        ///< corrects in pieces
  QPushButton* removeCorrection = nullptr;  ///< takes a date correction back
  QPushButton* makeTable = nullptr;
  QPushButton* drawGraph = nullptr;
  QPushButton* closePanel = nullptr;
  // Right: what is known of the choice.
  QWidget* parameters = nullptr;
  SetupTable* setup = nullptr;
  QTableWidget* loadedFiles = nullptr;
  ChangedRowsList* changedRows = nullptr;
  QWidget* loadedPart = nullptr;   ///< holds loadedFiles and changedPart
  QWidget* changedPart = nullptr;  ///< holds changedRows
  MessageList* messages = nullptr;
  GraphListPanel* graphList = nullptr;  ///< in the place of the others while graphs are collected
  // Bottom.
  QLabel* status = nullptr;
  QProgressBar* progress = nullptr;
  QProgressBar* progress2 = nullptr;
  QPushButton* confirm = nullptr;
  QPushButton* cancel = nullptr;

  QWidget* content = nullptr;    ///< all of the above, scrolled where the window is too small for it
  QSplitter* columns = nullptr;  ///< left, middle, right
  QSplitter* rightParts = nullptr;
  QSplitter* benchColumns = nullptr;  ///< grid and findings
  QSplitter* benchRows = nullptr;     ///< these and the hydrograph
};

/// Makes all controls as children of form, in the language's captions, and lays them out.
FormSecControls BuildFormSecControls(QWidget& form, const Language& language, RowSelection& selection);

}  // namespace vesk

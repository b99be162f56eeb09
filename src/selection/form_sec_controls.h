// The controls of the selection window and where they stand. What they do is the window's affair.
#pragma once

class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QSplitter;
class QTableWidget;
class QWidget;

namespace vesk {

class DirList;
class DriveList;
class Language;
class ReviewGridView;

/// Each control's objectName is its name here.
struct FormSecControls {
  // Left: what to choose.
  DriveList* Drive1 = nullptr;
  DirList* Dir1 = nullptr;
  QListWidget* ListIst = nullptr;
  QLabel* Label2 = nullptr;
  QLineEdit* Text1 = nullptr;
  QListWidget* ListSuYili = nullptr;
  QLabel* Label8 = nullptr;
  QListWidget* ListOrjDos = nullptr;
  QGroupBox* RatingFrame = nullptr;
  QLineEdit* Text7 = nullptr;
  QPushButton* Command2 = nullptr;
  // Middle: the review panel.
  QWidget* Frame3 = nullptr;
  QLabel* LoadedLabel = nullptr;
  QLabel* RowLabel = nullptr;
  ReviewGridView* VS1 = nullptr;
  QWidget* Frame4 = nullptr;
  QLineEdit* Text5 = nullptr;
  QPushButton* Command6 = nullptr;
  QPushButton* Command7 = nullptr;
  QPushButton* CmdUndo = nullptr;
  QPushButton* Command4 = nullptr;
  QWidget* Frame9 = nullptr;
  QLineEdit* Text6 = nullptr;
  QPushButton* Command8 = nullptr;
  QWidget* Frame10 = nullptr;
  QLineEdit* Text8 = nullptr;
  QPushButton* Command10 = nullptr;
  QPushButton* CmdSaatSil = nullptr;  ///< takes a date correction back
  QPushButton* Command3 = nullptr;
  QPushButton* CmdGrf = nullptr;
  QPushButton* Command1 = nullptr;
  // Right: what is known of the choice.
  QWidget* Parameters = nullptr;
  QLabel* Label4 = nullptr;
  QTableWidget* VS0 = nullptr;
  QTableWidget* VS_Dosyalar = nullptr;
  QListWidget* VSsatir = nullptr;
  QWidget* LoadedFiles = nullptr;  ///< holds VS_Dosyalar and ChangedRows
  QWidget* ChangedRows = nullptr;  ///< holds VSsatir
  QLabel* Label10 = nullptr;
  QListWidget* ListMsj = nullptr;
  QWidget* GraphPanel = nullptr;
  QListWidget* ListGraf = nullptr;
  QPushButton* CmdCiz = nullptr;
  QPushButton* CmdListSil = nullptr;
  QPushButton* CmdListe = nullptr;
  // Bottom.
  QLabel* StatusLine = nullptr;
  QProgressBar* ProgressBar1 = nullptr;
  QProgressBar* ProgressBar2 = nullptr;
  QPushButton* CmdTamam = nullptr;
  QPushButton* CmdVazgec = nullptr;

  QWidget* Content = nullptr;    ///< all of the above, scrolled where the window is too small for it
  QSplitter* Columns = nullptr;  ///< left, middle, right
  QSplitter* LeftParts = nullptr;
  QSplitter* RightParts = nullptr;
};

/// Makes all controls as children of form, in the language's captions, and lays them out.
FormSecControls BuildFormSecControls(QWidget& form, const Language& language);

}  // namespace vesk

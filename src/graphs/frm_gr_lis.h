// FrmGrLis: draws again from the graph data files of the last draw, without loading the stations anew.
#pragma once

#include <QDialog>
#include <QStringList>

#include <vector>

#include "graphs/graph_files.h"
#include "shell/language.h"

class QLabel;
class QLayout;
class QListWidget;
class QPushButton;

namespace vesk {

class FrmGrLis : public QDialog {
  Q_OBJECT

 public:
  /// entries: of the graph list; their files stand in List1 at first. Without entries all graph data files of
  /// dataDirectory (trailing separator) do, at most four.
  FrmGrLis(const std::vector<GraphListEntry>& entries, QString dataDirectory, const Language& language,
           QWidget* parent = nullptr);

  /// The files to draw, in list order; empty unless the dialog was accepted.
  [[nodiscard]] std::vector<GraphFileEntry> Chosen() const { return chosen_; }

 private:
  void CreateLists();
  void ConnectLists();
  QLayout* MakeButtons();
  void LayOut();
  void FillLists(const std::vector<GraphListEntry>& entries);
  void AddFile(const QString& fileName);
  void RemoveRow(int row);
  void Clear();
  void Finish();
  void ShowState();
  [[nodiscard]] QString StateOf(const QString& fileName) const;

  QString dataDirectory_;
  Language language_;
  std::vector<GraphFileEntry> chosen_;
  QListWidget* files_ = nullptr;  ///< List1: what is to be drawn; a double click or Delete takes an entry out
  QListWidget* states_ = nullptr;  ///< List2: readings of the file beside it, or that it is missing
  QListWidget* stored_ = nullptr;  ///< List3: graph data files that lie in the folder; a double click or
                                   ///< Return adds one
  QLabel* message_ = nullptr;
  QPushButton* clear_ = nullptr;
  QPushButton* draw_ = nullptr;
};

}  // namespace vesk

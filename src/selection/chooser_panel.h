// The left column of the selection window: folder, stations, water years, raw files and the rating curve. It
// shows what it is given and tells what the operator chooses; what a choice leads to is the window's affair.
#pragma once

#include <QWidget>

#include <optional>
#include <vector>

#include "datafiles/station_id.h"
#include "review/choice.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSplitter;

namespace vesk {

class DirList;
class DriveList;
class Language;

/// A water year as its list shows it.
QString EntryText(const StationWaterYear& year);

class ChooserPanel : public QWidget {
  Q_OBJECT

 public:
  ChooserPanel(const Language& language, QWidget* parent);

  // What the lists hold. Nothing of this gives a signal. Rows count from 0.
  void ShowFolder(const QString& folder);
  void ShowStations(const std::vector<StationId>& stations);
  void ShowWaterYears(const std::vector<StationWaterYear>& years);
  /// entries: as the list shows them.
  void ShowFiles(const std::vector<QString>& entries);
  /// The same files with other marks; the entries stay in place, for the list may be in the middle of a
  /// press.
  void ShowFileMarks(const std::vector<QString>& entries, bool marksAreShown);
  void SelectStation(std::optional<int> row);
  void SelectWaterYears(const std::vector<int>& rows);
  void SelectFile(std::optional<int> row);
  /// File name of a rating curve, or its folder; empty: none.
  void ShowRatingCurve(const QString& path);

  // What is shown and enabled.
  void SetFilesEnabled(bool enabled);
  void SetRatingShown(bool shown);
  void SetRatingState(bool canChoose, bool pathShown);

  void FocusStations();
  [[nodiscard]] QSplitter& Parts() const { return *parts_; }
  /// In the operator's order.
  [[nodiscard]] std::vector<QWidget*> TabStops() const;
  /// What the longest usual name of a raw file needs, pixels.
  [[nodiscard]] int FileListWidth() const;

 Q_SIGNALS:
  void FolderChosen(const QString& folder);
  /// -1: the list was used and nothing is chosen in it.
  void StationChosen(int row);
  void WaterYearsChosen(const std::vector<int>& rows);
  void FileChosen(int row);
  /// A double click on a file, behind FileChosen.
  void FileOpened();
  /// Enter, or a double click on a water year: as the confirm button.
  void Confirmed();
  void YearPickerAsked();
  void RatingCurveAsked();
  void RatingCurveCleared();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* PlacePart(const Language& language);
  QWidget* StationsAndYears(const Language& language);
  QWidget* FilesPart(const Language& language);
  QWidget* RatingCurveBox(const Language& language);
  void ConnectLists();
  bool HandleKey(QObject* watched, int key);
  bool HandleYearKey(int key, bool enter);
  void GoToYears();
  [[nodiscard]] bool IsFirstArrow(int key) const;

  QString filesCaption_;
  QSplitter* parts_ = nullptr;
  DriveList* volumes_ = nullptr;
  DirList* folders_ = nullptr;
  QListWidget* stations_ = nullptr;
  QLineEdit* stationCount_ = nullptr;
  QListWidget* waterYears_ = nullptr;
  QLabel* filesTitle_ = nullptr;
  QListWidget* rawFiles_ = nullptr;
  QGroupBox* ratingFrame_ = nullptr;
  QLineEdit* ratingPath_ = nullptr;
  QPushButton* chooseRating_ = nullptr;
};

}  // namespace vesk

#include "selection/chooser_panel.h"

#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QSplitter>

#include "selection/control_maker.h"
#include "shell/folder_lists.h"

namespace vesk {
namespace {

void Fill(QListWidget& list, const std::vector<QString>& entries) {
  const QSignalBlocker blocker(&list);
  list.clear();
  for (const QString& entry : entries) list.addItem(entry);
}

std::vector<int> SelectedRows(const QListWidget& list) {
  std::vector<int> rows;
  for (int row = 0; row < list.count(); ++row) {
    if (list.item(row)->isSelected()) rows.push_back(row);
  }
  return rows;
}

void Select(QListWidget& list, const std::vector<int>& rows) {
  const QSignalBlocker blocker(&list);
  list.clearSelection();
  list.setCurrentRow(rows.empty() ? -1 : rows.front(), QItemSelectionModel::NoUpdate);
  for (const int row : rows) {
    if (QListWidgetItem* item = list.item(row)) item->setSelected(true);
  }
}

void Select(QListWidget& list, std::optional<int> row) {
  Select(list, row ? std::vector{*row} : std::vector<int>{});
}

int FirstSelected(const QListWidget& list) {
  const std::vector<int> rows = SelectedRows(list);
  return rows.empty() ? -1 : rows.front();
}

}  // namespace

QString EntryText(const StationWaterYear& year) {
  return year.year.Text() + QLatin1Char(' ') + year.mark;
}

ChooserPanel::ChooserPanel(const Language& language, QWidget* parent)
    : QWidget(parent), filesCaption_(language.Text(Caption::Files)) {
  parts_ = new QSplitter(Qt::Vertical, this);
  parts_->setObjectName(QStringLiteral("LeftParts"));
  parts_->addWidget(PlacePart(language));
  parts_->addWidget(StationsAndYears(language));
  parts_->addWidget(FilesPart(language));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(parts_, 1);
  column->addWidget(RatingCurveBox(language));
  ConnectLists();
}

QWidget* ChooserPanel::PlacePart(const Language& language) {
  const ControlMaker make(*this, language);
  volumes_ = make.Named(new DriveList(language.Say(Wording{u"Ev dizini", u"Home"}), this), "Drive1");
  folders_ = make.Named(new DirList(this), "Dir1");
  folders_->setMinimumHeight(3 * fontMetrics().height());
  auto* title = new QLabel(make.Text(u"Sürücüler  ve  Dizinler", Caption::DriveAndDirectory), this);
  volumes_->setAccessibleName(title->text());
  QWidget* part = make.Titled(title, folders_);
  static_cast<QVBoxLayout*>(part->layout())->insertWidget(1, volumes_);
  return part;
}

QWidget* ChooserPanel::StationsAndYears(const Language& language) {
  const ControlMaker make(*this, language);
  stations_ = make.List("ListIst");
  stationCount_ = make.Box("Text1", 3, true);
  stationCount_->setMaximumWidth(stationCount_->minimumWidth());
  auto* count = new QHBoxLayout;
  count->addWidget(make.Named(new QLabel(language.Text(Caption::StationCount), this), "Label2"));
  count->addWidget(stationCount_);
  count->addStretch();
  waterYears_ = make.List("ListSuYili");
  waterYears_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  auto* part = new QWidget(this);
  auto* row = new QHBoxLayout(part);
  row->setContentsMargins(0, 0, 0, 0);
  auto* stations = new QLabel(make.Text(u"İstasyonlar", Caption::StationsTab), this);
  auto* years = new QLabel(make.Text(u"Su Yılları", Caption::WaterYear), this);
  row->addWidget(make.Titled(stations, stations_, count), 1);
  row->addWidget(make.Titled(years, waterYears_), 1);
  return part;
}

QWidget* ChooserPanel::FilesPart(const Language& language) {
  const ControlMaker make(*this, language);
  filesTitle_ = make.Named(new QLabel(filesCaption_, this), "Label8");
  rawFiles_ = make.List("ListOrjDos");
  return make.Titled(filesTitle_, rawFiles_);
}

QWidget* ChooserPanel::RatingCurveBox(const Language& language) {
  const ControlMaker make(*this, language);
  ratingFrame_ = make.Named(new QGroupBox(language.Text(Caption::RatingCurve), this), "RatingFrame");
  ratingPath_ = make.Box("Text7", 8);
  ratingPath_->setReadOnly(true);
  ratingPath_->setAccessibleName(language.Text(Caption::RatingCurve));
  chooseRating_ = make.Button(QStringLiteral("Anahtar Dir."), "Command2");
  auto* row = new QHBoxLayout(ratingFrame_);
  row->setContentsMargins(kGap, kGap / 2, kGap, kGap);
  row->addWidget(ratingPath_, 1);
  row->addWidget(chooseRating_);
  return ratingFrame_;
}

void ChooserPanel::ConnectLists() {
  connect(volumes_, &DriveList::VolumeChosen, this, &ChooserPanel::FolderChosen);
  connect(folders_, &DirList::FolderPressed, this, &ChooserPanel::FolderChosen);
  const auto station = [this] { Q_EMIT StationChosen(FirstSelected(*stations_)); };
  connect(stations_, &QListWidget::itemSelectionChanged, this, station);
  connect(stations_, &QListWidget::itemDoubleClicked, this, station);
  connect(waterYears_, &QListWidget::itemSelectionChanged, this,
          [this] { Q_EMIT WaterYearsChosen(SelectedRows(*waterYears_)); });
  connect(waterYears_, &QListWidget::itemDoubleClicked, this, &ChooserPanel::Confirmed);
  connect(rawFiles_, &QListWidget::itemSelectionChanged, this, [this] {
    if (const int row = FirstSelected(*rawFiles_); row >= 0) Q_EMIT FileChosen(row);
  });
  connect(rawFiles_, &QListWidget::itemDoubleClicked, this, &ChooserPanel::FileOpened);
  connect(chooseRating_, &QPushButton::clicked, this, &ChooserPanel::RatingCurveAsked);
  for (QWidget* keyed : std::initializer_list<QWidget*>{stations_, waterYears_, rawFiles_, ratingPath_})
    keyed->installEventFilter(this);
}

void ChooserPanel::ShowFolder(const QString& folder) {
  volumes_->ShowVolumeOf(folder);
  // The list stays as it is while the folder is an entry of it, so a press does not move the entries.
  if (QDir::cleanPath(folders_->SelectedPath()) != QDir::cleanPath(folder)) folders_->SetPath(folder);
}

void ChooserPanel::ShowStations(const std::vector<StationId>& stations) {
  std::vector<QString> entries;
  for (const StationId& station : stations) entries.push_back(station.Text());
  Fill(*stations_, entries);
  stationCount_->setText(QString::number(stations.size()));
}

void ChooserPanel::ShowWaterYears(const std::vector<StationWaterYear>& years) {
  std::vector<QString> texts;
  for (const StationWaterYear& year : years) texts.push_back(EntryText(year));
  Fill(*waterYears_, texts);
}

void ChooserPanel::ShowFiles(const std::vector<QString>& entries) {
  filesTitle_->setText(filesCaption_);
  Fill(*rawFiles_, entries);
}

void ChooserPanel::ShowFileMarks(const std::vector<QString>& entries, bool marksAreShown) {
  filesTitle_->setText(marksAreShown ? filesCaption_ + QLatin1Char(':') : filesCaption_);
  const QSignalBlocker blocker(rawFiles_);
  for (int row = 0; row < rawFiles_->count() && row < static_cast<int>(entries.size()); ++row) {
    rawFiles_->item(row)->setText(entries[static_cast<std::size_t>(row)]);
  }
}

void ChooserPanel::SelectStation(std::optional<int> row) {
  Select(*stations_, row);
}

void ChooserPanel::SelectWaterYears(const std::vector<int>& rows) {
  Select(*waterYears_, rows);
}

void ChooserPanel::SelectFile(std::optional<int> row) {
  Select(*rawFiles_, row);
}

void ChooserPanel::ShowRatingCurve(const QString& path) {
  ratingPath_->setText(path);
  ratingPath_->setToolTip(path);
}

void ChooserPanel::SetFilesEnabled(bool enabled) {
  rawFiles_->setEnabled(enabled);
}

void ChooserPanel::SetRatingShown(bool shown) {
  ratingFrame_->setVisible(shown);
}

void ChooserPanel::SetRatingState(bool canChoose, bool pathShown) {
  chooseRating_->setEnabled(canChoose);
  ratingPath_->setVisible(pathShown);
}

void ChooserPanel::FocusStations() {
  stations_->setFocus();
}

std::vector<QWidget*> ChooserPanel::TabStops() const {
  return {volumes_, folders_, stations_, waterYears_, rawFiles_, ratingPath_, chooseRating_};
}

int ChooserPanel::FileListWidth() const {
  return WidthToShow(*rawFiles_, QStringLiteral("000-00000-000000=0000.txt<"));
}

/// Enter on a station goes on to its years; where there is but one, it is the one.
void ChooserPanel::GoToYears() {
  if (stations_->selectedItems().isEmpty()) Q_EMIT StationChosen(-1);
  if (waterYears_->count() == 0) return;
  waterYears_->setFocus(Qt::OtherFocusReason);
  if (waterYears_->count() == 1) waterYears_->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
}

/// The first arrow in a list in which nothing is chosen yet chooses its first entry.
bool ChooserPanel::IsFirstArrow(int key) const {
  return (key == Qt::Key_Down || key == Qt::Key_Up) && waterYears_->count() > 0 &&
         waterYears_->selectedItems().isEmpty();
}

bool ChooserPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  return HandleKey(watched, key->key()) || QWidget::eventFilter(watched, event);
}

bool ChooserPanel::HandleKey(QObject* watched, int key) {
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (watched == waterYears_) return HandleYearKey(key, enter);
  if (watched == stations_ && enter) {
    GoToYears();
  } else if (watched == rawFiles_ && enter) {
    Q_EMIT Confirmed();
  } else if (watched == ratingPath_ && key == Qt::Key_Delete) {
    ShowRatingCurve({});
    Q_EMIT RatingCurveCleared();
  } else {
    return false;
  }
  return true;
}

bool ChooserPanel::HandleYearKey(int key, bool enter) {
  if (enter) {
    Q_EMIT Confirmed();
  } else if (IsFirstArrow(key)) {
    waterYears_->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
  } else if (key == Qt::Key_Q) {
    Q_EMIT YearPickerAsked();
  } else if (key == Qt::Key_Delete) {  // the station starts afresh
    const int row = waterYears_->currentRow();
    Q_EMIT StationChosen(FirstSelected(*stations_));
    waterYears_->setCurrentRow(row, QItemSelectionModel::NoUpdate);
  } else {
    return false;
  }
  return true;
}

}  // namespace vesk

// The gaugings window: what was measured at a station, its catchment and the curve that its discharges come
// from.
#pragma once

#include <QString>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

#include "datafiles/gauging.h"
#include "platform/wording.h"
#include "ratings/recorded_levels.h"
#include "stations/station_register.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace vesk {

class GaugingSortModel;
class GaugingTableModel;
class MainFrame;

class FormOlcum : public QWidget {
  Q_OBJECT

 public:
  /// Opens a window on a station's rating curve with these gaugings.
  using OpenCurveWindow = std::function<void(const QString& station, const QString& curvePath,
                                             const std::vector<Gauging>& gaugings)>;

  /// station: its number, five characters; name: as the register has it.
  FormOlcum(MainFrame& frame, const QString& station, const QString& name, OpenCurveWindow openCurve = {});

  /// Takes the gaugings of a CSV file, and writes them to one.
  void ImportFrom(const QString& path);
  void ExportTo(const QString& path);

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void CreateControls();
  void CreateButtons();
  void LayOut();
  void OpenRegister();
  void ShowTable();
  void ShowFacts();
  void KeepFacts();
  void ChooseCurve();
  void AddShortcuts();
  void GoOnAfterEnter();
  void CopyRows();
  void PasteRows();
  void TakeIn(const std::vector<Gauging>& gaugings, const QStringList& told);
  void DeleteRows();
  void TakeBack();
  void ShowMessage(const QString& text, bool isFault);
  void ShowFailure(const Error& error);
  [[nodiscard]] std::vector<int> SelectedRows() const;
  [[nodiscard]] QString Say(const Message& message) const;

  MainFrame& frame_;
  QString station_;
  OpenCurveWindow openCurve_;
  std::optional<StationRegister> register_;
  RecordedLevels levels_;
  StationFacts facts_;  ///< as the register holds them
  GaugingTableModel* table_ = nullptr;
  GaugingSortModel* sorted_ = nullptr;
  QLabel* head_ = nullptr;
  QLineEdit* catchment_ = nullptr;
  QLineEdit* curve_ = nullptr;
  QPushButton* chooseCurve_ = nullptr;
  QTableView* grid_ = nullptr;
  QLabel* message_ = nullptr;
  QPushButton* import_ = nullptr;
  QPushButton* export_ = nullptr;
  QPushButton* delete_ = nullptr;
  QPushButton* undo_ = nullptr;
  QPushButton* curveWindow_ = nullptr;
  QPushButton* exit_ = nullptr;
};

}  // namespace vesk

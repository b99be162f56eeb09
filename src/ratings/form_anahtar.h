// The rating curve window: gaugings and curve, fitting, shaping by hand, periods and shifts, files and paper.
#pragma once

#include <QString>
#include <QWidget>

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "ratings/curve_draft.h"
#include "ratings/curve_plot.h"
#include "ratings/fit_curve.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableWidget;
class QTabWidget;
class QThread;

namespace vesk {

class CurvePlotView;
class MainFrame;

class FormAnahtar : public QWidget {
  Q_OBJECT

 public:
  /// station: number of a new curve; curvePath: of the file to open, or empty; gaugings: that the station
  /// has.
  FormAnahtar(MainFrame& frame, const QString& station, const QString& curvePath,
              std::vector<Gauging> gaugings = {});
  ~FormAnahtar() override;

  /// Opens, compares with, or writes a file; what cannot be done is told in the window.
  void OpenFile(const QString& path);
  void CompareWith(const QString& path);
  bool SaveTo(const QString& path);
  void ExportTo(const QString& path);
  [[nodiscard]] const CurveDraft& Draft() const { return draft_; }
  [[nodiscard]] bool IsFitting() const { return !running_.empty(); }

 Q_SIGNALS:
  /// A file was written.
  void CurveSaved(const QString& path);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  enum Field { Station, Name, From, To, Lowest, Highest, Below, Above, Uncertainty, FieldCount };

  void CreateButtons();
  void CreateTabs();
  QWidget* CreateFitTab();
  QWidget* CreateGaugingsTab();
  QWidget* CreateCurveTab();
  QWidget* CreateTableTab();
  void LayOut();
  void ConnectPlot();
  QPushButton* AddButton(const char* name, const Message& text, const Message& tip, const QKeySequence& keys);

  void ShowAll();
  void ShowPlot(const CurvePeriod* preview = nullptr);
  void ShowFigures();
  void ShowGaugings();
  void ShowFields();
  void ShowTable();
  void ShowFaults();
  void ShowMessage(const QString& text, bool isFault = true);
  void Judge();

  void TakeFields();
  void TakeShifts();
  void AddPeriod();
  void RemovePeriod();
  void TakeStationGaugings();
  void OpenGaugingsFile();
  void SetGaugings(std::vector<Gauging> gaugings);
  void Toggle(std::size_t gauging);
  void TellGauging(std::size_t gauging);
  void DropNode(std::size_t node, const CurveNode& to);

  /// Fits in the background; what is older than the last request is dropped.
  void RequestFit(int segments);
  void TakeFit(const Result<FitComparison>& made);
  void Undo();
  void Redo();
  bool Save();
  bool SaveAs();
  void Print();
  bool MayLeave();
  [[nodiscard]] CurvePlot PlotNow() const;
  [[nodiscard]] FitWeights Weights() const;
  [[nodiscard]] QString Say(const Message& message) const;
  [[nodiscard]] QString CurveFolder() const;

  MainFrame& frame_;
  CurveDraft draft_;
  QString path_;       ///< file of the curve; empty: none yet
  QByteArray sha256_;  ///< of its bytes as they were read or written
  std::optional<RatingCurve> older_;
  std::vector<Gauging> stationGaugings_;
  std::optional<CurveFit> fit_;  ///< of the period at hand
  std::optional<FitComparison> comparison_;
  std::vector<QThread*> running_;
  int wantedSegments_ = 0;  ///< of a fit that waits for the one under way; 0: none
  int fitSegments_ = 0;     ///< of the one under way
  bool showing_ = false;    ///< controls are being filled, nobody types

  CurvePlotView* plot_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  QCheckBox* logarithmic_ = nullptr;
  QComboBox* segments_ = nullptr;
  QComboBox* weights_ = nullptr;
  QLabel* proposal_ = nullptr;
  QLabel* tests_ = nullptr;
  QLabel* origin_ = nullptr;
  QLabel* message_ = nullptr;
  QTableWidget* parameters_ = nullptr;
  QTableWidget* gaugings_ = nullptr;
  QTableWidget* shifts_ = nullptr;
  QTableWidget* table_ = nullptr;
  QComboBox* periods_ = nullptr;
  QPlainTextEdit* remarks_ = nullptr;
  std::array<QLineEdit*, FieldCount> fields_{};
  std::vector<QPushButton*> buttons_;
  QPushButton* undo_ = nullptr;
  QPushButton* redo_ = nullptr;
  QPushButton* take_ = nullptr;
};

}  // namespace vesk

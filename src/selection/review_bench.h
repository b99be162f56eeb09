// The bench: findings, hydrograph and corrections over ranges around the review grid. It watches the session
// and the selection, and does what its controls ask for; the window only places the parts.
#pragma once

#include <QObject>
#include <QTimer>

#include <optional>
#include <vector>

#include "findings/findings.h"
#include "review/editing.h"
#include "review/review_decisions.h"
#include "review/row_selection.h"

class QWidget;

namespace vesk {

class FindingsPanel;
class HydrographPane;
class Language;
class RangeBar;
class ReviewQuestions;
struct ListedFinding;

/// What a load brings along that the session does not keep.
struct BenchLoad {
  LoadRequest request;
  std::vector<ReadOut> readOuts;
  std::vector<QString> missedFiles;
  std::vector<QString> logs;  ///< change logs, one a chosen water year, or that of the single file
  bool whole = true;
};

class ReviewBench : public QObject {
  Q_OBJECT

 public:
  struct Parts {
    FindingsPanel* findings;
    HydrographPane* hydrograph;
    RangeBar* range;
  };
  ReviewBench(EditSession& session, RowSelection& selection, const Parts& parts, const Language& language,
              QString registerPath, ReviewQuestions& questions, QWidget& window);

  /// The session has begun with these readings.
  void Take(BenchLoad load);
  void Clear();
  /// False when there is none.
  bool GoToFinding(bool next);
  /// Approves the loaded water year, or takes the approval back.
  void Approve();
  [[nodiscard]] bool CanApprove() const;
  [[nodiscard]] bool IsApproved() const;

 Q_SIGNALS:
  void Told(const QString& text);  ///< for the status line

 private:
  void Connect();
  void Follow();
  void Refresh();
  void FindAnew();
  void ShowMarks();
  void ShowLimits();
  void ReadDecisions();
  void GoTo(const Finding& finding);
  void TellSelection();
  void ShowPreview();
  void Apply();
  /// False when the operator backs out.
  bool AddRecords(std::vector<LevelChange>& changes);
  void EditLimits();
  void ChangeAcceptance(const ListedFinding& listed);
  [[nodiscard]] Status StillAsLoaded() const;
  [[nodiscard]] QString LogOf(const Finding& finding) const;
  [[nodiscard]] AcceptedFinding AcceptanceOf(const Finding& finding) const;
  [[nodiscard]] bool IsAccepted(const Finding& finding) const;
  [[nodiscard]] StationLimits Limits() const { return kept_.value_or(proposed_); }
  void RememberReason(const QString& reason);

  EditSession& session_;
  RowSelection& selection_;
  Parts parts_;
  const Language& language_;
  QString registerPath_;
  ReviewQuestions& questions_;
  QWidget& window_;
  std::optional<BenchLoad> load_;
  std::optional<StationLimits> kept_;  ///< of the register
  StationLimits proposed_;
  std::vector<Finding> findings_;
  std::vector<ReviewDecisions> decisions_;  ///< one a log
  QStringList reasons_;
  QTimer soon_;  ///< several changes behind one another are looked at once
};

}  // namespace vesk

// The list of findings beside the review grid: what is doubtful, where, and what was expected.
#pragma once

#include <QAbstractTableModel>
#include <QWidget>

#include <set>
#include <vector>

#include "findings/findings.h"

class QComboBox;
class QLabel;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace vesk {

class Language;

/// A finding, and whether somebody has accepted it.
struct ListedFinding {
  Finding finding;
  bool accepted = false;
};

class FindingsModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Rule, Time, Value, Expected, kColumns };
  enum Role { kRuleRole = Qt::UserRole, kSortRole };

  FindingsModel(const Language& language, QObject* parent);
  void Show(std::vector<ListedFinding> findings);
  [[nodiscard]] const std::vector<ListedFinding>& Findings() const { return findings_; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] QString TextOf(const ListedFinding& listed, int column) const;
  [[nodiscard]] QVariant SortKey(const ListedFinding& listed, int column) const;

  const Language& language_;
  std::vector<ListedFinding> findings_;
};

class FindingsPanel : public QWidget {
  Q_OBJECT

 public:
  FindingsPanel(const Language& language, QWidget* parent);

  /// The chosen one stays chosen while it is among them.
  void Show(std::vector<ListedFinding> findings);
  /// Where the limits come from, in a few words.
  void ShowLimits(const QString& text);
  void SetEnabledFor(bool loaded, bool mayAccept);
  void ShowApproval(bool mayApprove, bool approved);
  /// The next one in the list behind the chosen one, or before it; false when there is none.
  bool GoToNext();
  bool GoToPrevious();
  [[nodiscard]] const ListedFinding* Chosen() const;
  [[nodiscard]] const std::vector<ListedFinding>& Findings() const { return model_->Findings(); }
  [[nodiscard]] std::vector<QWidget*> TabStops() const;

 Q_SIGNALS:
  /// By a click, a key or GoToNext.
  void FindingChosen(const vesk::Finding& finding);
  void LimitsAsked();
  /// To be accepted, or no longer.
  void AcceptanceAsked(const vesk::ListedFinding& listed);
  void ApprovalAsked();

 private:
  void LayOut(const Language& language);
  void ShowFilter();
  void ShowAcceptance();
  bool GoBy(int step);
  void Choose(const QModelIndex& shown);
  [[nodiscard]] const ListedFinding* At(const QModelIndex& shown) const;

  const Language& language_;
  FindingsModel* model_ = nullptr;
  QSortFilterProxyModel* shown_ = nullptr;
  QComboBox* filter_ = nullptr;
  QTableView* list_ = nullptr;
  QLabel* limitsText_ = nullptr;
  QPushButton* accept_ = nullptr;
  QPushButton* limits_ = nullptr;
  QPushButton* approve_ = nullptr;
  bool mayAccept_ = false;
  bool quiet_ = false;  ///< the list is being filled: nobody chooses
};

}  // namespace vesk

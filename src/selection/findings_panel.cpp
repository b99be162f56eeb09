#include "selection/findings_panel.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <map>

#include "datafiles/dates.h"
#include "shell/flow_layout.h"
#include "shell/language.h"

namespace vesk {
namespace {

constexpr int kGapPixels = 4;

/// Shows the rule that was picked, or all.
class RuleFilter : public QSortFilterProxyModel {
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;
  void SetRule(int rule) {
    rule_ = rule;
    invalidateFilter();
  }

 protected:
  [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
    if (rule_ < 0) return true;
    return sourceModel()->index(row, 0, parent).data(FindingsModel::kRuleRole).toInt() == rule_;
  }

 private:
  int rule_ = -1;
};

}  // namespace

FindingsModel::FindingsModel(const Language& language, QObject* parent)
    : QAbstractTableModel(parent), language_(language) {}

void FindingsModel::Show(std::vector<ListedFinding> findings) {
  beginResetModel();
  findings_ = std::move(findings);
  endResetModel();
}

int FindingsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(findings_.size());
}

int FindingsModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kColumns);
}

QString FindingsModel::TextOf(const ListedFinding& listed, int column) const {
  const Finding& finding = listed.finding;
  switch (column) {
    case Rule:
      return (listed.accepted ? QStringLiteral("\u2713 ") : QString()) +
             language_.Say(RuleName(finding.rule));
    case Time:
      return DateTimeText(finding.from);
    case Value:
      return language_.Say(ValueText(finding));
    default:
      return language_.Say(finding.expected);
  }
}

QVariant FindingsModel::SortKey(const ListedFinding& listed, int column) const {
  if (column == Time) return QVariant::fromValue<qlonglong>(listed.finding.from.time_since_epoch().count());
  if (column == Value) return std::abs(listed.finding.value);
  return TextOf(listed, column);
}

QVariant FindingsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const ListedFinding& listed = findings_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
      return TextOf(listed, index.column());
    case Qt::ToolTipRole:
      return QStringLiteral("%1\n%2 – %3\n%4\n%5")
          .arg(TextOf(listed, Rule), DateTimeText(listed.finding.from), DateTimeText(listed.finding.to),
               TextOf(listed, Value), TextOf(listed, Expected));
    case Qt::FontRole: {
      QFont font;
      font.setBold(listed.finding.severity == FindingSeverity::Doubt && !listed.accepted);
      return index.column() == Rule ? QVariant(font) : QVariant();
    }
    case Qt::TextAlignmentRole:
      return index.column() == Value ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case kRuleRole:
      return static_cast<int>(listed.finding.rule);
    case kSortRole:
      return SortKey(listed, index.column());
    default:
      return {};
  }
}

QVariant FindingsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  static constexpr Wording kTitles[] = {
      {u"Kural", u"Rule"}, {u"Zaman", u"Time"}, {u"Değer", u"Value"}, {u"Beklenen", u"Expected"}};
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= kColumns) return {};
  return language_.Say(kTitles[section]);
}

FindingsPanel::FindingsPanel(const Language& language, QWidget* parent)
    : QWidget(parent), language_(language) {
  setObjectName(QStringLiteral("Bulgular"));
  model_ = new FindingsModel(language, this);
  auto* filtered = new RuleFilter(this);
  shown_ = filtered;
  shown_->setSourceModel(model_);
  shown_->setSortRole(FindingsModel::kSortRole);
  filter_ = new QComboBox(this);
  filter_->setObjectName(QStringLiteral("KuralSecimi"));
  filter_->setAccessibleName(language.Say(Wording{u"Gösterilen kural", u"Rule that is shown"}));
  connect(filter_, &QComboBox::currentIndexChanged, this,
          [this, filtered] { filtered->SetRule(filter_->currentData().toInt()); });
  list_ = new QTableView(this);
  list_->setObjectName(QStringLiteral("BulguListesi"));
  list_->setAccessibleName(language.Say(Wording{u"Bulgular", u"Findings"}));
  list_->setModel(shown_);
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setSelectionMode(QAbstractItemView::SingleSelection);
  list_->setSortingEnabled(true);
  list_->sortByColumn(FindingsModel::Time, Qt::AscendingOrder);
  list_->setTabKeyNavigation(false);
  list_->setWordWrap(false);
  list_->verticalHeader()->hide();
  list_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  list_->horizontalHeader()->setStretchLastSection(true);
  list_->horizontalHeader()->setHighlightSections(false);
  connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current, const QModelIndex& previous) {
            // The list makes its first row current when it gets the focus: nobody has chosen it.
            if (previous.isValid()) return Choose(current);
            ShowAcceptance();
          });
  // A click on the one that is chosen already goes there again.
  connect(list_, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) { Choose(index); });
  LayOut(language);
  ShowFilter();
  SetEnabledFor(false, false);
  ShowApproval(false, false);
}

void FindingsPanel::LayOut(const Language& language) {
  accept_ = new QPushButton(this);
  accept_->setObjectName(QStringLiteral("BulguKabul"));
  limits_ = new QPushButton(language.Say(Wording{u"Sınırlar...", u"Limits..."}), this);
  limits_->setObjectName(QStringLiteral("SinirlarDugmesi"));
  limitsText_ = new QLabel(this);
  limitsText_->setObjectName(QStringLiteral("SinirMetni"));
  limitsText_->setTextFormat(Qt::PlainText);
  limitsText_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  approve_ = new QPushButton(this);
  approve_->setObjectName(QStringLiteral("YilOnay"));
  for (QPushButton* button : {accept_, approve_, limits_}) button->setAutoDefault(false);
  connect(approve_, &QPushButton::clicked, this, &FindingsPanel::ApprovalAsked);
  connect(limits_, &QPushButton::clicked, this, &FindingsPanel::LimitsAsked);
  connect(accept_, &QPushButton::clicked, this, [this] {
    if (const ListedFinding* chosen = Chosen()) Q_EMIT AcceptanceAsked(*chosen);
  });
  auto* buttons = new FlowLayout(kGapPixels);
  for (QWidget* control : std::initializer_list<QWidget*>{accept_, approve_, limits_})
    buttons->addWidget(control);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(kGapPixels);
  all->addWidget(filter_);
  all->addWidget(list_, 1);
  all->addWidget(limitsText_);
  all->addLayout(buttons);
  const QFontMetrics letters(list_->font());
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  const int margins = letters.averageCharWidth() * 2;
  list_->setColumnWidth(FindingsModel::Rule,
                        letters.horizontalAdvance(QStringLiteral("Hızlı değişim")) + 2 * margins);
  list_->setColumnWidth(FindingsModel::Time,
                        letters.horizontalAdvance(QStringLiteral("00/00/0000 00:00")) + margins);
  list_->setColumnWidth(FindingsModel::Value,
                        letters.horizontalAdvance(QStringLiteral("-000.0 cm/sa")) + margins);
  list_->setMinimumHeight(4 * letters.height());
}

void FindingsPanel::SetEnabledFor(bool loaded, bool mayAccept) {
  mayAccept_ = mayAccept;
  limits_->setEnabled(loaded);
  ShowAcceptance();
}

void FindingsPanel::ShowApproval(bool mayApprove, bool approved) {
  approve_->setText(approved ? language_.Say(Wording{u"Onayı geri al...", u"Withdraw approval..."})
                             : language_.Say(Wording{u"Yılı onayla...", u"Approve year..."}));
  approve_->setEnabled(mayApprove);
}

void FindingsPanel::ShowLimits(const QString& text) {
  limitsText_->setText(text.isEmpty() ? QString()
                                      : language_.Say(Wording{u"Sınırlar: %1", u"Limits: %1"}, text));
  limitsText_->setToolTip(limitsText_->text());
}

void FindingsPanel::ShowAcceptance() {
  const ListedFinding* chosen = Chosen();
  const bool accepted = chosen != nullptr && chosen->accepted;
  accept_->setText(accepted ? language_.Say(Wording{u"Kabulü geri al", u"Withdraw"})
                            : language_.Say(Wording{u"Kabul et...", u"Accept..."}));
  accept_->setEnabled(chosen != nullptr && mayAccept_);
}

/// Counts a rule; a rule that found nothing is not offered.
void FindingsPanel::ShowFilter() {
  std::map<FindingRule, int> counts;
  int open = 0;
  for (const ListedFinding& listed : model_->Findings()) {
    ++counts[listed.finding.rule];
    open += listed.accepted ? 0 : 1;
  }
  const QVariant before = filter_->currentData();
  const QSignalBlocker quiet(filter_);
  filter_->clear();
  filter_->addItem(language_.Say(Wording{u"Bütün bulgular (%1, açık: %2)", u"All findings (%1, open: %2)"},
                                 model_->rowCount(), open),
                   -1);
  for (const auto& [rule, count] : counts)
    filter_->addItem(QStringLiteral("%1 (%2)").arg(language_.Say(RuleName(rule))).arg(count),
                     static_cast<int>(rule));
  filter_->setCurrentIndex(std::max(filter_->findData(before), 0));
  static_cast<RuleFilter*>(shown_)->SetRule(filter_->currentData().toInt());
}

void FindingsPanel::Show(std::vector<ListedFinding> findings) {
  const ListedFinding* chosen = Chosen();
  const std::optional<Finding> before = chosen ? std::optional(chosen->finding) : std::nullopt;
  quiet_ = true;
  model_->Show(std::move(findings));
  ShowFilter();
  const auto& all = model_->Findings();
  for (std::size_t i = 0; before && i < all.size(); ++i) {
    const Finding& finding = all[i].finding;
    if (finding.rule != before->rule || finding.from != before->from || finding.file != before->file)
      continue;
    list_->setCurrentIndex(shown_->mapFromSource(model_->index(static_cast<int>(i), 0)));
    break;
  }
  quiet_ = false;
  ShowAcceptance();
}

const ListedFinding* FindingsPanel::At(const QModelIndex& shown) const {
  if (!shown.isValid()) return nullptr;
  return &model_->Findings()[static_cast<std::size_t>(shown_->mapToSource(shown).row())];
}

const ListedFinding* FindingsPanel::Chosen() const {
  return At(list_->currentIndex());
}

void FindingsPanel::Choose(const QModelIndex& shown) {
  if (quiet_) return;
  ShowAcceptance();
  if (const ListedFinding* listed = At(shown)) Q_EMIT FindingChosen(listed->finding);
}

bool FindingsPanel::GoToNext() {
  return GoBy(1);
}

bool FindingsPanel::GoToPrevious() {
  return GoBy(-1);
}

bool FindingsPanel::GoBy(int step) {
  const QModelIndex current = list_->currentIndex();
  const int count = shown_->rowCount();
  const int start = step > 0 ? 0 : count - 1;
  const int row = current.isValid() ? current.row() + step : start;
  if (row < 0 || row >= count) return false;
  list_->setCurrentIndex(shown_->index(row, 0));
  if (!current.isValid()) Choose(list_->currentIndex());
  return true;
}

std::vector<QWidget*> FindingsPanel::TabStops() const {
  return {filter_, list_, accept_, approve_, limits_};
}

}  // namespace vesk

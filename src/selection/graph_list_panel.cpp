#include "selection/graph_list_panel.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include <algorithm>

#include "selection/control_maker.h"

namespace vesk {

GraphListPanel::GraphListPanel(const Language& language, QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("GraphPanel"));
  const ControlMaker make(*this, language);
  list_ = make.List("ListGraf");
  list_->installEventFilter(this);
  draw_ = make.Button(language.Text(Caption::Draw), "CmdCiz");
  clear_ = make.Button(make.Text(u"Listeyi Sil", Caption::ClearList), "CmdListSil");
  stored_ = make.Button(language.Text(Caption::List), "CmdListe");
  stored_->setToolTip(language.Say(Wording{u"Son çizimin grafik dosyalarından yeniden çiz",
                                           u"Draw again from the last drawing's graph files"}));
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(kGap);  // not that of the column it stands in
  for (QPushButton* button : {draw_, clear_, stored_}) buttons->addWidget(button);
  buttons->addStretch();
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(make.Titled(new QLabel(language.Text(Caption::List), this), list_, buttons));
  connect(draw_, &QPushButton::clicked, this, &GraphListPanel::DrawAsked);
  connect(stored_, &QPushButton::clicked, this, &GraphListPanel::StoredGraphsAsked);
  connect(clear_, &QPushButton::clicked, this, [this] {
    entries_.clear();
    ShowEntries();
  });
}

bool GraphListPanel::Add(const GraphListEntry& entry) {
  if (std::ranges::find(entries_, entry) != entries_.end()) return true;
  if (entries_.size() >= kMostGraphStations) return false;
  entries_.push_back(entry);
  ShowEntries();
  return true;
}

void GraphListPanel::SetCommandsEnabled(bool enabled) {
  draw_->setEnabled(enabled);
  clear_->setEnabled(enabled);
}

std::vector<QWidget*> GraphListPanel::TabStops() const {
  return {list_, draw_, clear_, stored_};
}

bool GraphListPanel::eventFilter(QObject* watched, QEvent* event) {
  const bool deletes =
      event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete;
  if (watched != list_ || !deletes) return QWidget::eventFilter(watched, event);
  const auto row = static_cast<std::size_t>(list_->currentRow());  // none: behind the end
  if (row < entries_.size()) entries_.erase(entries_.begin() + list_->currentRow());
  ShowEntries();
  return true;
}

void GraphListPanel::ShowEntries() {
  const int row = list_->currentRow();
  list_->clear();
  for (const GraphListEntry& entry : entries_) list_->addItem(entry.Text());
  list_->setCurrentRow(std::min(row, list_->count() - 1));
  Q_EMIT EntriesChanged();
}

}  // namespace vesk

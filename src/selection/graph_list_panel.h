// ListGraf and its commands: station-years that are collected for one drawing.
#pragma once

#include <QWidget>

#include <vector>

#include "graphs/graph_files.h"

class QListWidget;
class QPushButton;

namespace vesk {

class Language;

class GraphListPanel : public QWidget {
  Q_OBJECT

 public:
  GraphListPanel(const Language& language, QWidget* parent);

  [[nodiscard]] const std::vector<GraphListEntry>& Entries() const { return entries_; }
  /// An entry that is there already is taken as added. False: as many as are drawn together are there.
  bool Add(const GraphListEntry& entry);
  /// Drawing and emptying.
  void SetCommandsEnabled(bool enabled);
  /// In the operator's order.
  [[nodiscard]] std::vector<QWidget*> TabStops() const;

 Q_SIGNALS:
  void EntriesChanged();
  void DrawAsked();
  void StoredGraphsAsked();

 protected:
  /// Delete takes the current entry out.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowEntries();
  std::vector<GraphListEntry> entries_;  ///< as the list shows them
  QListWidget* list_ = nullptr;
  QPushButton* draw_ = nullptr;
  QPushButton* clear_ = nullptr;
  QPushButton* stored_ = nullptr;
};

}  // namespace vesk

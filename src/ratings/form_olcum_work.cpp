// What the gaugings window does: keys, clipboard, files, deleting and taking back, others' changes.
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>

#include <algorithm>

#include "platform/whole_file.h"
#include "ratings/form_olcum.h"
#include "ratings/gauging_table_model.h"
#include "ratings/gaugings_csv.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {
namespace {

constexpr QRgb kFaultColour = 0xB00000;
constexpr qsizetype kMostLinesTold = 6;

/// The first few, and how many more there are.
QStringList FirstOf(const QStringList& lines, const Language& language) {
  if (lines.size() <= kMostLinesTold) return lines;
  QStringList shown = lines.mid(0, kMostLinesTold);
  shown += language.Say(Wording{u"... ve %1 satır daha", u"... and %1 lines more"},
                        QString::number(lines.size() - kMostLinesTold));
  return shown;
}

}  // namespace

void FormOlcum::AddShortcuts() {
  const auto add = [this](const QKeySequence& keys, QWidget* where, auto slot) {
    auto* shortcut = new QShortcut(keys, where);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, slot);
  };
  add(QKeySequence::Undo, grid_, &FormOlcum::TakeBack);
  add(QKeySequence::Copy, grid_, &FormOlcum::CopyRows);
  add(QKeySequence::Paste, grid_, &FormOlcum::PasteRows);
  add(QKeySequence(Qt::CTRL | Qt::Key_Delete), grid_, &FormOlcum::DeleteRows);
  add(QKeySequence(Qt::CTRL | Qt::Key_O), this, [this] { import_->click(); });
  add(QKeySequence(Qt::CTRL | Qt::Key_S), this, [this] { export_->click(); });
  add(QKeySequence(Qt::Key_F9), this, [this] {
    if (openCurve_) curveWindow_->click();
  });
  add(QKeySequence(Qt::Key_Escape), this, [this] { close(); });
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    add(QKeySequence(key), grid_, &FormOlcum::GoOnAfterEnter);
  }
}

/// Along the fields of a gauging, then to the next one.
void FormOlcum::GoOnAfterEnter() {
  const QModelIndex current = grid_->currentIndex();
  const bool last = current.column() + 1 >= sorted_->columnCount();
  const int row = last ? std::min(current.row() + 1, sorted_->rowCount() - 1) : current.row();
  grid_->setCurrentIndex(sorted_->index(row, last ? 0 : current.column() + 1));
}

std::vector<int> FormOlcum::SelectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : grid_->selectionModel()->selectedIndexes())
    rows.push_back(sorted_->mapToSource(index).row());
  std::ranges::sort(rows);
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

void FormOlcum::CopyRows() {
  const std::vector<Gauging> gaugings = table_->Gaugings(SelectedRows());
  if (!gaugings.empty())
    QApplication::clipboard()->setText(GaugingsTabbed(gaugings, frame_.Run().language.Choice()));
}

void FormOlcum::PasteRows() {
  const auto read = ReadGaugingsText(QApplication::clipboard()->text(), Wording{u"Pano", u"Clipboard"});
  if (!read) return ShowFailure(read.Failure());
  QStringList told;
  for (const Message& refused : read->refused) told += Say(refused);
  for (const Message& note : read->notes) told += Say(note);
  TakeIn(read->gaugings, told);
}

void FormOlcum::ImportFrom(const QString& path) {
  if (table_ == nullptr) return;
  const auto read = ReadGaugingsCsv(path);
  if (!read) return ShowFailure(read.Failure());
  QStringList told;
  for (const Message& refused : read->refused) told += Say(refused);
  for (const Message& note : read->notes) told += Say(note);
  TakeIn(read->gaugings, told);
}

void FormOlcum::TakeIn(const std::vector<Gauging>& gaugings, const QStringList& told) {
  const auto merge = table_->Take(gaugings);
  if (!merge) return ShowFailure(merge.Failure());
  QStringList lines{
      Say({Wording{u"%1 ölçüm eklendi; %2 tanesi zaten vardı.", u"%1 gaugings added; %2 were there already."},
           merge->added.size(), merge->same.size()})};
  if (!merge->different.empty()) {
    lines +=
        Say({Wording{u"%1 ölçüm alınmadı: aynı zamanda başka bir ölçüm var, o duruyor.",
                     u"%1 gaugings were not taken: there is another one of the same time, which is kept."},
             merge->different.size()});
  }
  const bool isFault = !merge->different.empty() || !told.isEmpty();
  ShowMessage((lines + FirstOf(told, frame_.Run().language)).join(u'\n'), isFault);
  grid_->scrollToBottom();
}

void FormOlcum::ExportTo(const QString& path) {
  static constexpr Wording kFailed{u"Debi ölçümleri yazılamadı", u"The gaugings could not be written"};
  const std::vector<Gauging> gaugings = table_->Gaugings();
  const Status written = WriteWholeFile(path, GaugingsCsv(gaugings), kFailed);
  if (!written) return ShowFailure(written.Failure());
  ShowMessage(Say({Wording{u"%1 ölçüm yazıldı: %2", u"%1 gaugings written: %2"}, gaugings.size(), path}),
              false);
}

void FormOlcum::DeleteRows() {
  if (table_ == nullptr) return;
  std::vector<int> rows = SelectedRows();
  std::erase_if(rows, [this](int row) { return table_->IsNewRow(row); });
  if (rows.empty()) return QApplication::beep();
  const int place = grid_->currentIndex().row();
  if (const Status deleted = table_->Delete(rows); !deleted) return ShowFailure(deleted.Failure());
  grid_->setCurrentIndex(sorted_->index(std::min(place, sorted_->rowCount() - 1), 0));
  ShowMessage(Say({Wording{u"%1 ölçüm silindi. Geri almak için Ctrl+Z.",
                           u"%1 gaugings deleted. Ctrl+Z takes it back."},
                   rows.size()}),
              false);
}

void FormOlcum::TakeBack() {
  if (table_ == nullptr) return;
  if (!table_->CanUndo()) return QApplication::beep();
  if (const Status undone = table_->Undo(); !undone) return ShowFailure(undone.Failure());
  ShowMessage(Say(Wording{u"Son değişiklik geri alındı.", u"The last change was taken back."}), false);
}

void FormOlcum::ShowMessage(const QString& text, bool isFault) {
  QPalette palette;
  if (isFault) palette.setColor(QPalette::WindowText, QColor(kFaultColour));
  message_->setPalette(palette);
  message_->setText(text);
  message_->show();
}

void FormOlcum::ShowFailure(const Error& error) {
  ShowMessage(frame_.Run().language.Say(error), true);
}

bool FormOlcum::event(QEvent* event) {
  const bool returns = event->type() == QEvent::WindowActivate && sorted_ != nullptr;
  const bool edits = returns && grid_->indexWidget(grid_->currentIndex()) != nullptr;
  if (returns && !edits) {
    if (table_->IsOutdated()) {
      if (const Status read = table_->Load(); !read) ShowFailure(read.Failure());
    }
    table_->LookUpLevels();  // corrections may have been saved in another window
  }
  return QWidget::event(event);
}

void FormOlcum::closeEvent(QCloseEvent* event) {
  setFocus();  // ends an edit that is still open
  if (table_ == nullptr) return event->accept();
  const Status saved = table_->SaveUnsaved();
  const int unsaved = table_->UnsavedCount();
  if (saved && unsaved == 0) return event->accept();
  const QString why =
      saved ? Say(Wording{u"Debisi olmayan satırlar var.", u"There are rows without a discharge."})
            : frame_.Run().language.Say(saved.Failure());
  const QString question = Say({Wording{u"%1 satır kaydedilmedi. Pencere yine de kapatılsın mı?",
                                        u"%1 rows are not saved. Close the window all the same?"},
                                unsaved});
  const auto answer = QMessageBox::question(this, frame_.Run().language.attentionTitle,
                                            why + QStringLiteral("\n\n") + question,
                                            QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
  event->setAccepted(answer == QMessageBox::Yes);
}

}  // namespace vesk

// What the register window does: messages, deleting and taking it back, others' changes.
#include <QApplication>
#include <QCloseEvent>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>

#include <algorithm>

#include "shell/main_frame.h"
#include "shell/run_values.h"
#include "stations/form_ist_gir.h"
#include "stations/station_table_model.h"

namespace vesk {
namespace {

constexpr QRgb kArmedColour = 0xFF8000;
constexpr QRgb kFaultColour = 0xB00000;

QString NameOf(const Station& station) {
  return QStringLiteral("%1 %2").arg(station.number, station.name).trimmed();
}

bool SaysYes(QWidget* parent, const Language& language, const QString& question) {
  const auto answer = QMessageBox::question(parent, language.attentionTitle, question,
                                            QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
  return answer == QMessageBox::Yes;
}

}  // namespace

QString Form_IstGir::InWords(const Message& message) const {
  return frame_.Run().language.Say(message);
}

void Form_IstGir::ShowMessage(const QString& text, bool isFault) {
  QPalette palette;
  if (isFault) palette.setColor(QPalette::WindowText, QColor(kFaultColour));
  message_->setPalette(palette);
  message_->setText(text);
  message_->show();
}

void Form_IstGir::ShowFailure(const Error& error) {
  ShowMessage(frame_.Run().language.Say(error), true);
}

void Form_IstGir::ShowRefusedChange(const Error& error) {
  const QString kept =
      Words(Wording{u"Değişiklik tabloda duruyor; kaydedilene dek yeniden denenecek.",
                    u"The change stays in the table and is tried again until it is stored."});
  ShowMessage(frame_.Run().language.Say(error) + QLatin1Char('\n') + kept, true);
  again_.start();
}

void Form_IstGir::ShowOvertaken(const QStringList& lines) {
  Reload();
  const QString told =
      Words(Wording{u"Başka biri bu istasyonu değiştirdi veya sildi; yazdığınız kaydedilmedi:",
                    u"Somebody else has changed or deleted this station; what you typed was not stored:"});
  ShowMessage(told + QLatin1Char('\n') + lines.join(QLatin1Char('\n')), true);
}

void Form_IstGir::ClearMessage() {
  again_.stop();
  message_->clear();
  message_->hide();
}

void Form_IstGir::SaveAgain() {
  // The window must not stand still while the other one goes on writing.
  constexpr std::chrono::milliseconds kNoWait(0);
  constexpr std::chrono::milliseconds kPatience(1000);
  (void)register_->SetPatience(kNoWait);
  const Status saved = table_->SaveUnsaved();
  (void)register_->SetPatience(kPatience);
  if (!saved) return ShowRefusedChange(saved.Failure());
  ClearMessage();
}

bool Form_IstGir::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && table_ != nullptr && filter_ != nullptr) ReloadIfOutdated();
  return QWidget::event(event);
}

void Form_IstGir::ReloadIfOutdated() {
  const bool edits = grid_->indexWidget(grid_->currentIndex()) != nullptr;
  if (!edits && !doubted_ && table_->IsOutdated()) Reload();
}

void Form_IstGir::Reload() {
  const qint64 key = table_->StationAt(CurrentRow()).key;
  const int column = std::max(grid_->currentIndex().column(), 0);
  const int rowBefore = grid_->currentIndex().row();
  Disarm();
  const Status read = table_->Load();
  if (!read) return ShowFailure(read.Failure());
  const int row = key == 0 ? -1 : table_->RowOfKey(key);
  const QModelIndex same = filter_->mapFromSource(table_->index(row, column));
  const int near = std::clamp(rowBefore, 0, filter_->rowCount() - 1);
  grid_->setCurrentIndex(same.isValid() ? same : filter_->index(near, column));
  KeepCurrentInView();
}

void Form_IstGir::KeepCurrentInView() {
  Disarm();
  if (!grid_->currentIndex().isValid()) return;
  grid_->doItemsLayout();  // rows that have just come or gone move the place to scroll to
  grid_->scrollTo(grid_->currentIndex());
}

int Form_IstGir::CurrentRow() const {
  const QModelIndex source = filter_->mapToSource(grid_->currentIndex());
  return source.isValid() ? source.row() : -1;
}

/// Number, name, next new station. Elsewhere Enter leaves the cell where it is.
void Form_IstGir::GoOnAfterEnter() {
  const QModelIndex current = grid_->currentIndex();
  const int lastStation = table_->StationCount() - 1;
  if (doubted_ || CurrentRow() < 0 || CurrentRow() != lastStation) return;
  const QModelIndex next =
      current.column() == StationTableModel::Number
          ? current.siblingAtColumn(StationTableModel::Name)
          : filter_->mapFromSource(table_->index(lastStation + 1, StationTableModel::Number));
  grid_->setCurrentIndex(next);
  grid_->scrollTo(next);
}

void Form_IstGir::HoldNumberBack(const QPersistentModelIndex& index, const QString& text) {
  doubted_ = DoubtedNumber{index, text};
  QMetaObject::invokeMethod(this, &Form_IstGir::AskAboutNumber, Qt::QueuedConnection);
}

/// False when the operator goes on editing.
bool Form_IstGir::AskAboutNumber() {
  if (!doubted_ || !doubted_->index.isValid()) {
    doubted_.reset();
    return true;
  }
  const DoubtedNumber asked = *doubted_;
  const QString question =
      Words(Wording{u"“%1” bir istasyon numarası değil: numaralar beş rakamdır. Yine de kaydedilsin mi?",
                    u"“%1” is no station number: numbers have five digits. Store it all the same?"},
            asked.text);
  const bool wanted = SaysYes(this, frame_.Run().language, question);
  doubted_.reset();
  grid_->setCurrentIndex(asked.index);
  if (wanted) {
    filter_->setData(asked.index, asked.text);
    GoOnAfterEnter();
    return true;
  }
  grid_->edit(asked.index);  // with what was typed, to be mended
  if (auto* editor = qobject_cast<QLineEdit*>(grid_->indexWidget(asked.index))) editor->setText(asked.text);
  return false;
}

void Form_IstGir::mousePressEvent(QMouseEvent* event) {
  Disarm();
  QWidget::mousePressEvent(event);
}

void Form_IstGir::closeEvent(QCloseEvent* event) {
  setFocus();  // ends an edit that is still open, as leaving its cell does
  if (!AskAboutNumber()) return event->ignore();
  const Status saved = table_ != nullptr && table_->HasUnsaved() ? table_->SaveUnsaved() : Status();
  if (saved) return event->accept();
  const Language& language = frame_.Run().language;
  const QString question = Words(Wording{u"Bu değişiklik kaydedilemedi. Pencere yine de kapatılsın mı?",
                                         u"This change could not be saved. Close the window all the same?"});
  const QString text = language.Say(saved.Failure()) + QStringLiteral("\n\n") + question;
  if (SaysYes(this, language, text)) return event->accept();
  ShowRefusedChange(saved.Failure());
  event->ignore();
}

/// Of the current station, once what was typed of it is stored.
void Form_IstGir::GaugingsClicked() {
  if (!openGaugings_ || table_ == nullptr || filter_ == nullptr) return;
  setFocus();  // ends an edit that is still open
  const int row = CurrentRow();
  if (row < 0 || table_->IsNewRow(row) || table_->StationAt(row).number.isEmpty() || table_->IsUnsaved(row)) {
    QApplication::beep();
    return;
  }
  const Station station = table_->StationAt(row);
  openGaugings_(station.number, station.name);
}

void Form_IstGir::ExitClicked() {
  if (frame_.CloseChild(QStringLiteral("FormSec"))) close();
}

void Form_IstGir::DeleteClicked() {
  if (IsArmed() && sincePress_.elapsed() < QApplication::doubleClickInterval()) {
    sincePress_.start();  // the rest of a double click, or of a key that is held down
    return;
  }
  if (!ShowsArmedStation()) {
    QApplication::beep();
    Disarm();
    return Arm();
  }
  Disarm();
  DeleteCurrent();
}

// The captions of the two-step delete are Turkish in both languages.
void Form_IstGir::Arm() {
  const Station station = table_->StationAt(CurrentRow());
  if (CurrentRow() >= 0 && !table_->IsNewRow(CurrentRow())) {
    const QString told = Words(Wording{u"Silinecek: %1. Silmek için “Onayla” düğmesine basın.",
                                       u"To be deleted: %1. Press “Onayla” to delete it."},
                               NameOf(station));
    ShowMessage(told, false);
    layout()->activate();  // the message takes its room from the list
  }
  KeepCurrentInView();
  armed_ = station.key;
  sincePress_.start();
  delete_->setText(QStringLiteral("Onayla"));
  QPalette orange = delete_->palette();
  orange.setColor(QPalette::Button, QColor(kArmedColour));
  orange.setColor(QPalette::ButtonText, Qt::black);
  delete_->setPalette(orange);
}

void Form_IstGir::Disarm() {
  if (!IsArmed()) return;
  armed_.reset();
  delete_->setText(QStringLiteral("Kayıt Sil"));
  delete_->setPalette(QPalette());
  if (!table_->HasUnsaved()) ClearMessage();
}

/// The station that the armed state names is the current one, and it is in sight.
bool Form_IstGir::ShowsArmedStation() const {
  const QRect cell = grid_->visualRect(grid_->currentIndex());
  return IsArmed() && *armed_ == table_->StationAt(CurrentRow()).key &&
         grid_->viewport()->rect().intersects(cell);
}

void Form_IstGir::DeleteCurrent() {
  const QModelIndex current = grid_->currentIndex();
  const int row = CurrentRow();
  if (row < 0 || table_->IsNewRow(row)) {
    QApplication::beep();
    return;
  }
  const QString name = NameOf(table_->StationAt(row));
  const Result<bool> deleted = table_->DeleteRow(row);
  if (!deleted) return ShowFailure(deleted.Failure());
  if (!*deleted) {
    Reload();
    return ShowMessage(
        Words(Wording{u"Başka biri bu istasyonu değiştirdi veya sildi; silinmedi: %1",
                      u"Somebody else has changed or deleted this station; it was not deleted: %1"},
              name),
        true);
  }
  const int next = std::min(current.row(), filter_->rowCount() - 1);
  grid_->setCurrentIndex(filter_->index(next, current.column()));
  ShowMessage(
      Words(Wording{u"Silindi: %1. Geri almak için Ctrl+Z.", u"Deleted: %1. Ctrl+Z takes it back."}, name),
      false);
}

void Form_IstGir::TakeDeletionBack() {
  if (table_ == nullptr || filter_ == nullptr || !table_->HasDeleted()) return;
  const Result<int> row = table_->RestoreDeleted();
  if (!row) return ShowFailure(row.Failure());
  search_->clear();  // the station may not be among those that were searched
  const QModelIndex restored = filter_->mapFromSource(table_->index(*row, StationTableModel::Number));
  grid_->setCurrentIndex(restored);
  grid_->scrollTo(restored);
  ShowMessage(Words(Wording{u"Geri alındı: %1", u"Taken back: %1"}, NameOf(table_->StationAt(*row))), false);
}

}  // namespace vesk

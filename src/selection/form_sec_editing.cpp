// Correcting readings in the selection window: changes, undo, saving, jumps, date correction.
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolTip>

#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "datafiles/record_label.h"
#include "review/contradictions.h"
#include "review/review_grid_model.h"
#include "selection/changed_rows_list.h"
#include "selection/form_sec.h"
#include "selection/review_grid_view.h"
#include "shell/busy_cursor.h"
#include "shell/main_frame.h"
#include "shell/run_values.h"

namespace vesk {

void FormSec::ShowEditState() {
  filePressed_ = false;  // the count is that of the grid, and it has just changed
  c_.changedRows->ShowRows(session_.ChangedRows());
  if (session_.HasUnsavedCorrection()) {
    c_.lastReading->setText(DateTimeText(*session_.Series().LastReading()));
  }
  Refresh();
}

bool FormSec::FinishEditing() {
  refused_ = false;
  c_.grid->FinishEditing();
  return !refused_;
}

void FormSec::TellRefusal(const Error& error) {
  refused_ = true;
  const QString reason = run_.language.Say(error);
  QApplication::beep();
  TellStatus(reason);
  const QRect cell = c_.grid->visualRect(c_.grid->currentIndex());
  QToolTip::showText(c_.grid->viewport()->mapToGlobal(cell.bottomLeft()), reason, c_.grid);
}

void FormSec::ShowRowLabel(int row) {
  const StationSeries& series = session_.Series();
  QString text;
  if (series.IsReading(row)) {
    text = Say(Wording{u"Satır %1 / %2", u"Row %1 / %2"}, row, series.ReadingCount());
    if (series.IsCorrected(row)) {
      text += QStringLiteral("  ·  ") +
              Say(Wording{u"ham seviye %1 cm", u"raw level %1 cm"}, NumberText(series.RawLevel(row)));
    }
  }
  c_.rowLabel->setText(text);
}

// The logger's record of the day may say what the reading said before it was corrected; tables that take
// the logger's extremes would publish it.
void FormSec::OfferRecordCorrection(int row) {
  TellStatus({});  // what was said of an earlier attempt
  const StationSeries& series = session_.Series();
  if (!series.IsReading(row) || series.At(row).kind != ReadingKind::Ordinary) return;
  for (const RecordContradiction& found : FindContradictions(series)) {
    if (found.day != series.At(row).day || series.At(found.row).sourceFile != series.At(row).sourceFile)
      continue;
    const QString text = Say(Wording{u"Cihazın %1 günü için kaydettiği uç değer (%2) %3 cm; düzeltilen "
                                     u"kayıtlara göre %4 cm (%5). Uç değer kaydı da düzeltilsin mi?",
                                     u"The logger's own record of %1 (%2) is %3 cm; by the readings as "
                                     u"corrected it is %4 cm (%5). Correct the record as well?"},
                             DateText(found.day), KindText(found.kind), NumberText(found.recordedCm),
                             NumberText(found.readingsCm), ClockText(found.minuteOfDay));
    if (!questions_->AskToCorrectRecord(this, text)) continue;
    if (const auto edited = session_.EditLevel(found.row, NumberText(found.readingsCm)); !edited) {
      TellRefusal(edited.Failure());
    }
  }
}

void FormSec::RestoreRawLevels() {
  if (!FinishEditing()) return;
  const Result<int> restored = session_.RestoreRawLevels({selection_.First(), selection_.Last()});
  if (!restored) return TellRefusal(restored.Failure());
  TellStatus(
      *restored == 0
          ? Say(Wording{u"Seçili satırlarda düzeltilmiş seviye yok.", u"No selected level is corrected."})
          : Say(Wording{u"%1 satır ham seviyesine döndü.", u"%1 row(s) have their raw level again."},
                *restored));
}

bool FormSec::SaveChanges() {
  if (!FinishEditing()) return false;
  const Status saved = [this] {
    const BusyCursor busy;
    return session_.Save();
  }();
  if (!saved && session_.IsOutdated()) return LoadAgain();
  if (!saved) {
    questions_->Warn(this, run_.language.attentionTitle,
                     Say(Wording{u"Değişiklikler kaydedilemedi.", u"The changes could not be saved."}) +
                         QLatin1Char('\n') + run_.language.Say(saved.Failure()));
    return false;
  }
  TellStatus(Say(Wording{u"Değişiklikler kaydedildi.", u"The changes are saved."}));
  return true;
}

void FormSec::UndoAll() {
  session_.UndoAll();
  TellStatus(Say(Wording{u"Değişikliklerden vazgeçildi.", u"The unsaved changes are undone."}));
}

void FormSec::StepBack() {
  const int row = session_.UndoStep().value_or(0);
  if (row > 0) c_.grid->GoTo(row, GridColumn::Level, false);
}

void FormSec::StepForward() {
  const int row = session_.RedoStep().value_or(0);
  if (row > 0) c_.grid->GoTo(row, GridColumn::Level, false);
}

void FormSec::GoToChange(bool next) {
  const int from = selection_.Current();
  const int row = next ? session_.NextChange(from) : session_.PreviousChange(from);
  if (row > 0) {
    c_.grid->GoTo(row, GridColumn::Discharge, true);
    TellStatus({});
  } else {
    TellStatus(next ? Say(Wording{u"Bundan sonra değişiklik yok.", u"No change after this row."})
                    : Say(Wording{u"Bundan önce değişiklik yok.", u"No change before this row."}));
  }
}

void FormSec::GoToDate() {
  const DateJump jump = session_.GoToDate(c_.date->text());
  if (jump.text.isEmpty()) return;
  c_.date->setText(jump.text);
  if (jump.row > 0) {
    c_.grid->GoTo(jump.row, GridColumn::Level, true);
    c_.grid->SelectRows(jump.row, jump.row);
    c_.grid->setFocus();
    TellStatus({});
  } else {
    TellStatus(
        Say(Wording{u"%1 tarihi yüklenen verilerde yok.", u"The loaded readings have no %1."}, jump.text));
  }
}

void FormSec::CorrectDates() {
  const Result<bool> corrected = [this] {
    const BusyCursor busy;
    return session_.CorrectDates(c_.lastReading->text().trimmed());
  }();
  TellCorrected(corrected);
}

void FormSec::CorrectDatesInPieces() {
  if (!FinishEditing() || !session_.CanCorrectDates()) return;
  const StationSeries& series = session_.Series();
  const auto span = SpanOf(series.Raw());
  if (!span) return;
  const auto times =
      questions_->AskForClockPairs(this, series.Raw(), series.Target().value_or(TrueTimes(span->last)));
  if (!times) return;
  const BusyCursor busy;
  TellCorrected(session_.CorrectDates(*times));
}

void FormSec::TellCorrected(const Result<bool>& corrected) {
  if (!corrected) {
    questions_->Warn(this, run_.language.attentionTitle,
                     Say(Wording{u"Tarih düzeltmesi yapılamadı; beklenen biçim: gg/aa/yyyy ss:dd",
                                 u"The dates were not corrected; expected form: dd/mm/yyyy hh:mm"}) +
                         QLatin1Char('\n') + run_.language.Say(corrected.Failure()));
    return;
  }
  if (!*corrected) {
    TellStatus(Say(Wording{u"Son verinin tarihi zaten bu; değişiklik yok.",
                           u"The last reading has that time already."}));
    return;
  }
  c_.grid->GoTo(1, GridColumn::Level, true);
  c_.grid->setFocus();
}

void FormSec::RemoveDateCorrection() {
  const Result<bool> removed = session_.RemoveDateCorrection();
  if (!removed) {
    questions_->Warn(this, run_.language.attentionTitle, run_.language.Say(removed.Failure()));
    return;
  }
  TellStatus(Say(Wording{u"Kayıtlar cihazın kendi zamanlarını gösteriyor.",
                         u"The readings have the logger's own times."}));
  c_.grid->GoTo(1, GridColumn::Level, true);
  c_.grid->setFocus();
}

void FormSec::TellStatus(const QString& text) {
  c_.status->setText(text);
  c_.status->setToolTip(text);
}

}  // namespace vesk

#include "selection/review_questions.h"

#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include "selection/clock_pairs_dialog.h"
#include "selection/limits_dialog.h"
#include "shell/language.h"

namespace vesk {
namespace {

QString TitleOr(const QString& title) {
  return title.isEmpty() ? QStringLiteral("Vesk4") : title;
}

/// The button that Escape and the window's close button press, too.
QPushButton* AddBackOut(QMessageBox& box, const Language& language) {
  QPushButton* backOut = box.addButton(language.Say(Wording{u"Vazgeç", u"Cancel"}), QMessageBox::RejectRole);
  box.setEscapeButton(backOut);
  return backOut;
}

}  // namespace

UnsavedAnswer ReviewMessageBoxes::AskAboutUnsavedChanges(QWidget* parent) {
  QMessageBox box(QMessageBox::Warning, TitleOr(language_.attentionTitle),
                  language_.Text(Caption::DiscardChangesQuestion), QMessageBox::NoButton, parent);
  const auto* save = box.addButton(language_.Text(Caption::SaveChanges), QMessageBox::AcceptRole);
  const auto* discard = box.addButton(language_.Say(Wording{u"Kaydetmeden devam et", u"Discard changes"}),
                                      QMessageBox::DestructiveRole);
  auto* stay =
      box.addButton(language_.Say(Wording{u"Bu sayfada kal", u"Stay here"}), QMessageBox::RejectRole);
  box.setDefaultButton(stay);
  box.setEscapeButton(stay);
  box.exec();
  if (box.clickedButton() == save) return UnsavedAnswer::Save;
  return box.clickedButton() == discard ? UnsavedAnswer::Discard : UnsavedAnswer::Stay;
}

RecoverAnswer ReviewMessageBoxes::AskToRecover(QWidget* parent, int edits) {
  const QString text = language_.Say(
      Wording{
          u"Bu seçim için daha önce yapılmış, ancak kaydedilmemiş %1 değişiklik bulundu. Geri yüklensin mi?",
          u"%1 earlier change(s) of this selection were never saved. Restore them?"},
      edits);
  QMessageBox box(QMessageBox::Question, TitleOr(language_.attentionTitle), text, QMessageBox::NoButton,
                  parent);
  auto* restore = box.addButton(language_.Say(Wording{u"Geri yükle", u"Restore"}), QMessageBox::AcceptRole);
  const auto* discard =
      box.addButton(language_.Say(Wording{u"Sil", u"Delete them"}), QMessageBox::DestructiveRole);
  auto* later = box.addButton(language_.Say(Wording{u"Şimdi değil", u"Not now"}), QMessageBox::RejectRole);
  box.setDefaultButton(restore);
  box.setEscapeButton(later);
  box.exec();
  if (box.clickedButton() == restore) return RecoverAnswer::Restore;
  return box.clickedButton() == discard ? RecoverAnswer::Discard : RecoverAnswer::Later;
}

bool ReviewMessageBoxes::AskToTakeOver(QWidget* parent, const QString& text) {
  QMessageBox box(QMessageBox::Question, TitleOr(language_.attentionTitle), text, QMessageBox::NoButton,
                  parent);
  const auto* take =
      box.addButton(language_.Say(Wording{u"Devral", u"Take over"}), QMessageBox::DestructiveRole);
  auto* look = box.addButton(language_.Say(Wording{u"Yalnız bak", u"Only look"}), QMessageBox::RejectRole);
  box.setDefaultButton(look);
  box.setEscapeButton(look);
  box.exec();
  return box.clickedButton() == take;
}

bool ReviewMessageBoxes::AskToCorrectRecord(QWidget* parent, const QString& text) {
  return AskYesNo(parent, language_.attentionTitle, text);
}

std::optional<QString> ReviewMessageBoxes::AskForReason(QWidget* parent, const QString& title,
                                                        const QString& text, const QStringList& earlier) {
  bool given = false;
  QStringList offered{QString()};
  offered += earlier;
  const QString reason = QInputDialog::getItem(parent, TitleOr(title), text, offered, 0, true, &given);
  return given ? std::optional(reason.trimmed()) : std::nullopt;
}

std::optional<std::optional<StationLimits>> ReviewMessageBoxes::AskForLimits(
    QWidget* parent, const QString& station, const std::optional<StationLimits>& kept,
    const StationLimits& proposed) {
  LimitsDialog dialog(language_, station, kept, proposed, parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Chosen();
}

std::optional<TrueTimes> ReviewMessageBoxes::AskForClockPairs(QWidget* parent, const RawRows& raw,
                                                              const TrueTimes& present) {
  ClockPairsDialog dialog(language_, raw, present, parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Chosen();
}

bool ReviewMessageBoxes::AskYesNo(QWidget* parent, const QString& title, const QString& text) {
  return QMessageBox::question(parent, TitleOr(title), text) == QMessageBox::Yes;
}

std::optional<bool> ReviewMessageBoxes::AskYesNoOrBackOut(QWidget* parent, const QString& title,
                                                          const QString& text, const QString& more) {
  QMessageBox box(QMessageBox::Question, TitleOr(title), text, QMessageBox::Yes | QMessageBox::No, parent);
  box.setInformativeText(more);
  AddBackOut(box, language_);
  box.setDefaultButton(QMessageBox::Yes);
  box.exec();
  const QAbstractButton* clicked = box.clickedButton();
  if (clicked == box.button(QMessageBox::Yes)) return true;
  if (clicked == box.button(QMessageBox::No)) return false;
  return {};
}

bool ReviewMessageBoxes::AskToGoOn(QWidget* parent, const QString& title, const QString& text,
                                   const QString& goOn) {
  QMessageBox box(QMessageBox::Warning, TitleOr(title), text, QMessageBox::NoButton, parent);
  box.setTextFormat(Qt::PlainText);  // it may hold names of files
  const auto* goesOn = box.addButton(goOn, QMessageBox::AcceptRole);
  box.setDefaultButton(AddBackOut(box, language_));
  box.exec();
  return box.clickedButton() == goesOn;
}

bool ReviewMessageBoxes::WarnOrBackOut(QWidget* parent, const QString& title, const QString& text) {
  QMessageBox box(QMessageBox::Critical, TitleOr(title), text, QMessageBox::Ok, parent);
  AddBackOut(box, language_);
  box.setDefaultButton(QMessageBox::Ok);
  box.exec();
  return box.clickedButton() == box.button(QMessageBox::Ok);
}

void ReviewMessageBoxes::Tell(QWidget* parent, const QString& title, const QString& text) {
  QMessageBox::information(parent, TitleOr(title), text);
}

void ReviewMessageBoxes::Warn(QWidget* parent, const QString& title, const QString& text) {
  QMessageBox::critical(parent, TitleOr(title), text);
}

}  // namespace vesk

#include "selection/window_build_questions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QProgressDialog>

#include <algorithm>

#include "selection/review_questions.h"
#include "shell/language.h"

namespace vesk {
namespace {

constexpr std::size_t kNotesShown = 12;  // more would not fit a small screen

}  // namespace

WindowBuildQuestions::WindowBuildQuestions(QWidget& window, ReviewQuestions& questions,
                                           const Language& language, QString extremes)
    : window_(window), questions_(questions), language_(language), extremes_(std::move(extremes)) {}

WindowBuildQuestions::~WindowBuildQuestions() = default;

void WindowBuildQuestions::TellWorkbooksAreOpen(const BuildMessage& message) {
  QApplication::beep();
  questions_.Warn(&window_, message.title, message.text);
}

bool WindowBuildQuestions::AskDespiteNotes(const std::vector<QString>& notes) {
  QString text = language_.Say(Wording{u"Bu tablo yapılmadan önce bilinmesi gerekenler:",
                                       u"Before this table is made, please note:"}) +
                 QLatin1Char('\n');
  const std::size_t shown = std::min(notes.size(), kNotesShown);
  for (std::size_t i = 0; i < shown; ++i) text += QStringLiteral("\n• ") + notes[i];
  if (shown < notes.size()) {
    text += QLatin1Char('\n') +
            language_.Say(Wording{u"… ve %1 not daha", u"… and %1 more"}, notes.size() - shown);
  }
  text += QStringLiteral("\n\n") +
          language_.Say(Wording{u"Tablo yine de yapılsın mı? Bunlar tabloya da yazılır.",
                                u"Make the table all the same? It will bear these notes."});
  return questions_.AskToGoOn(&window_, language_.attentionTitle, text,
                              language_.Say(Wording{u"Yine de yap", u"Make it anyway"}));
}

bool WindowBuildQuestions::AskToReplace(const QString& path, TableOrigin origin) {
  const QFileInfo file(path);
  const QString why = origin == TableOrigin::Changed
                          ? language_.Say(Wording{u"Program yazdıktan sonra değiştirilmiş.",
                                                  u"It was changed after the program wrote it."})
                          : language_.Say(Wording{u"Bu programın yazdığına dair bir kayıt yok.",
                                                  u"There is no record that this program wrote it."});
  const QString text = language_.Say(
      Wording{u"%1 dosyası zaten var:\n%2\n\n%3\nYenisi yerine konursa içindekiler kaybolur.",
              u"%1 exists already:\n%2\n\n%3\nIf the new one takes its place, what it holds is lost."},
      file.fileName(), QDir::toNativeSeparators(file.absolutePath()), why);
  return questions_.AskToGoOn(&window_, language_.attentionTitle, text,
                              language_.Say(Wording{u"Yerine yenisini koy", u"Replace it"}));
}

HourlyAnswer WindowBuildQuestions::AskForHourlyValues(const BuildMessage& message) {
  const std::optional<bool> hourly =
      questions_.AskYesNoOrBackOut(&window_, message.title, message.text, extremes_);
  if (!hourly) return HourlyAnswer::BackOut;
  return *hourly ? HourlyAnswer::Yes : HourlyAnswer::No;
}

bool WindowBuildQuestions::WarnNotToSwitchSheets(const BuildMessage& message) {
  return questions_.WarnOrBackOut(&window_, message.title, message.text);
}

void WindowBuildQuestions::OpenDialog() {
  dialog_ = std::make_unique<QProgressDialog>(&window_);
  dialog_->setObjectName(QStringLiteral("TableProgress"));
  dialog_->setWindowModality(Qt::ApplicationModal);
  dialog_->setWindowTitle(language_.Say(Wording{u"Tablo yapılıyor", u"Making the table"}));
  dialog_->setCancelButtonText(language_.Say(Wording{u"Durdur", u"Stop"}));
  dialog_->setMinimumWidth(24 * dialog_->fontMetrics().averageCharWidth() * 2);
  dialog_->setAutoClose(false);
  dialog_->setAutoReset(false);
  dialog_->setMinimumDuration(0);
  QObject::connect(dialog_.get(), &QProgressDialog::canceled, dialog_.get(), [this] { stopped_ = true; });
  dialog_->show();
  busy_.emplace();
}

bool WindowBuildQuestions::ShowProgress(BuildStep step, int percent) {
  if (!dialog_) OpenDialog();
  if (!stopped_) {
    dialog_->setLabelText(StepText(step));
    dialog_->setValue(percent);
  }
  QCoreApplication::processEvents();
  return !stopped_;
}

QString WindowBuildQuestions::StepText(BuildStep step) const {
  switch (step) {
    case BuildStep::Opening:
      return language_.Say(Wording{u"Tablolama programı açılıyor…", u"Opening the spreadsheet application…"});
    case BuildStep::HourlySheet:
      return language_.Say(Wording{u"Saatlik sayfa yazılıyor…", u"Writing the hourly sheet…"});
    case BuildStep::DailySheet:
      return language_.Say(Wording{u"Günlük sayfa yazılıyor…", u"Writing the daily sheet…"});
    case BuildStep::Calculating:
      return language_.Say(Wording{u"Aylık değerler hesaplanıyor…", u"Calculating the monthly values…"});
    case BuildStep::Saving:
      return language_.Say(Wording{u"Kaydediliyor…", u"Saving…"});
    case BuildStep::Done:
      break;
  }
  return language_.Say(Wording{u"Tablo kaydedildi", u"The table is saved"});
}

}  // namespace vesk

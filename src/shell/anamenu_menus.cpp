// The menu tree of the main window and its captions.
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QStatusBar>

#include "shell/anamenu.h"
#include "shell/run_values.h"

namespace vesk {
namespace {

struct EntryCaption {
  const char* name;
  Caption caption;
};

constexpr EntryCaption kEntryCaptions[] = {
    {"MnuRS232", Caption::Communication},      {"MnuKontrol", Caption::OpenDataFile},
    {"MnuExit", Caption::ExitProgram},         {"MnuExcAc", Caption::OpenExcelFiles},
    {"MnuCokluCizim", Caption::MultipleGraph}, {"MnuIstAdiGir", Caption::InputStationNames},
    {"MnuGenelSetup", Caption::Options},       {"MnuLogo", Caption::LogoAndAddress},
};

/// What the language menu shows while it has no caption, so that a language can be chosen.
QIcon LanguageIcon(const QPalette& palette) {
  QPixmap pixmap(32, 32);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette.color(QPalette::ButtonText), 2));
  painter.drawEllipse(QRect(3, 3, 26, 26));
  painter.drawEllipse(QRect(10, 3, 12, 26));
  painter.drawLine(3, 16, 29, 16);
  return pixmap;
}

}  // namespace

void Anamenu::CreateMenus() {
  CreateDataMenu();
  CreateOthersMenu();
  CreateLanguageMenu();
}

QMenu* Anamenu::AddTopMenu(const char* name) {
  QMenu* menu = menuBar()->addMenu(QString());
  menu->setObjectName(QLatin1String(name));
  return menu;
}

template <class Slot>
QAction* Anamenu::AddEntry(QMenu* menu, const char* name, Slot slot) {
  auto* entry = new QAction(menu);
  entry->setObjectName(QLatin1String(name));
  connect(entry, &QAction::triggered, this, slot);
  menu->addAction(entry);
  return entry;
}

void Anamenu::AddSeparator(QMenu* menu, const char* name) {
  menu->addSeparator()->setObjectName(QLatin1String(name));
}

void Anamenu::CreateDataMenu() {
  Mnu1_ = AddTopMenu("Mnu1");
  AddEntry(Mnu1_, "MnuRS232", &Anamenu::StartCommunication);
  AddEntry(Mnu1_, "MnuKontrol", &Anamenu::OpenDataFile);
  AddSeparator(Mnu1_, "Gec2");
  AddEntry(Mnu1_, "MnuCokluCizim", &Anamenu::OpenMultipleGraph);
  AddSeparator(Mnu1_, "q2");
  AddEntry(Mnu1_, "MnuExcAc", [this] { OpenOnce(QStringLiteral("Form2"), makers_.storedTables); });
  AddEntry(Mnu1_, "MnuExit", &Anamenu::Exit)->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_X));
}

void Anamenu::CreateOthersMenu() {
  Mnu3_ = AddTopMenu("Mnu3");
  AddEntry(Mnu3_, "MnuIstAdiGir",
           [this] { OpenOnce(QStringLiteral("Form_IstGir"), makers_.stationRegister); });
  AddEntry(Mnu3_, "MnuGenelSetup", &Anamenu::OpenOptions)->setMenuRole(QAction::NoRole);
  AddSeparator(Mnu3_, "Q10");
  AddEntry(Mnu3_, "MnuLogo", &Anamenu::ShowLogo);
}

void Anamenu::CreateLanguageMenu() {
  Mnu4_ = AddTopMenu("Mnu4");
  Mnutrk_ = AddEntry(Mnu4_, "Mnutrk", [this] { Switch(LanguageChoice::Turkish); });
  Mnutrk_->setText(QStringLiteral("TÜRKÇE"));
  MnuIng_ = AddEntry(Mnu4_, "MnuIng", [this] { Switch(LanguageChoice::English); });
  MnuIng_->setText(QStringLiteral("ENGLISH"));
  for (QAction* entry : {Mnutrk_, MnuIng_}) entry->setCheckable(true);  // no group: it would draw a dot
}

void Anamenu::ApplyMenuCaptions() {
  const Language& language = run_.language;
  Mnu1_->setTitle(language.Text(Caption::MenuData));
  Mnu3_->setTitle(language.Text(Caption::MenuOthers));
  Mnu4_->setTitle(language.Text(Caption::MenuLanguage));
  Mnu4_->setIcon(Mnu4_->title().isEmpty() ? LanguageIcon(palette()) : QIcon());
  for (const EntryCaption& entry : kEntryCaptions) {
    findChild<QAction*>(QLatin1String(entry.name))->setText(language.Text(entry.caption));
  }
  Mnutrk_->setChecked(language.Choice() == LanguageChoice::Turkish);
  MnuIng_->setChecked(language.Choice() == LanguageChoice::English);
  qtTexts_.Follow(language.Choice());
  ShowDataDirectory();
}

void Anamenu::ShowDataDirectory() {
  dataDirectory_->setText(
      run_.language.Say(Wording{u"Veri dizini: %1", u"Data directory: %1"}, run_.dataDirectory));
}

void Anamenu::SetMenusEnabled(bool enabled) {
  for (QMenu* menu : {Mnu1_, Mnu3_, Mnu4_}) menu->setEnabled(enabled);
}

}  // namespace vesk

#include <QAbstractButton>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>

#include "windows/shell_fixture.h"

namespace vesk {
namespace {

using test::StandIn;
using MainWindow = test::ShellWindowsTest;

std::string EntryNames(const QMenu& menu) {
  QStringList names;
  for (const QAction* action : menu.actions()) {
    names += action->isSeparator() ? QLatin1Char('-') + action->objectName() : action->objectName();
  }
  return names.join(QLatin1Char(' ')).toStdString();
}

QString CancelText() {
  return QMessageBox(QMessageBox::NoIcon, {}, {}, QMessageBox::Cancel).button(QMessageBox::Cancel)->text();
}

TEST_F(MainWindow, HasTheMenuTreeInItsOrder) {
  Open();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Vesk4"));
  EXPECT_EQ(EntryNames(Menu("Mnu1")), "MnuRS232 MnuKontrol -Gec2 MnuCokluCizim -q2 MnuExcAc MnuExit");
  EXPECT_EQ(EntryNames(Menu("Mnu3")), "MnuIstAdiGir MnuGenelSetup -Q10 MnuLogo");
  EXPECT_EQ(EntryNames(Menu("Mnu4")), "Mnutrk MnuIng");
}

TEST_F(MainWindow, SwitchesItsMenusAndTheToolkitsButtonsAtOnceAndForTheNextStart) {
  Open();
  EXPECT_EQ(Menu("Mnu1").title(), QStringLiteral("               DATA/İLETİŞİM"));
  EXPECT_EQ(Entry("MnuExcAc").text(), QStringLiteral("ÖNCEDEN OLUŞTURULMUŞ EXCEL TABLOLARINI &AÇ"));
  EXPECT_TRUE(Entry("Mnutrk").isChecked());
  EXPECT_EQ(CancelText(), QStringLiteral("İptal"));

  Trigger("MnuIng");
  EXPECT_EQ(Menu("Mnu1").title(), QStringLiteral("               DATA/COMMUNICATION"));
  EXPECT_EQ(Entry("MnuLogo").text(), QStringLiteral("LOGO AND ADDRESS"));
  EXPECT_TRUE(Entry("MnuIng").isChecked());
  EXPECT_FALSE(Entry("Mnutrk").isChecked());
  EXPECT_EQ(CancelText(), QStringLiteral("Cancel"));
  EXPECT_NE(Child("FrmLogo"), nullptr) << "the language entries leave the logo alone";

  Start();
  EXPECT_EQ(Entry("MnuKontrol").text(), QStringLiteral("OPEN DATA FILE"));
}

TEST_F(MainWindow, WithAnUnknownLanguageItsCaptionsAreEmptyAndTheLanguageMenuStillWorks) {
  Open("english");
  EXPECT_EQ(Menu("Mnu1").title() + Entry("MnuKontrol").text(), QString());
  EXPECT_FALSE(Entry("Mnutrk").isChecked() || Entry("MnuIng").isChecked());
  const QRect place = window_->menuBar()->actionGeometry(Menu("Mnu4").menuAction());
  EXPECT_GE(place.width(), 16) << "there is something to click on";
  Trigger("Mnutrk");
  EXPECT_EQ(Entry("MnuKontrol").text(), QStringLiteral("DATA DOSYASINI OKU"));
}

TEST_F(MainWindow, AChildFillsTheAreaWhenItAsksToAndASmallOneStaysSmallBesideIt) {
  Open();
  auto* large = new StandIn(QStringLiteral("large"), refuses_);
  large->setProperty(kOpensMaximised, true);
  window_->ShowChild(large);
  auto* small = new StandIn(QStringLiteral("small"), refuses_);
  window_->ShowChild(small);
  QCoreApplication::processEvents();
  EXPECT_EQ(large->parentWidget()->size(), window_->findChild<QMdiArea*>()->viewport()->size());
  EXPECT_TRUE(large->parentWidget()->isMaximized());
  EXPECT_FALSE(small->parentWidget()->isMaximized());
}

TEST_F(MainWindow, OpensTheSelectionWindowInTheModeOfTheEntry) {
  const struct {
    const char* entry;
    QByteArray language;
    WorkMode mode;
    StationMode stations;
  } cases[] = {{"MnuKontrol", "ENGLISH", WorkMode::DataFile, StationMode::Single},
               {"MnuCokluCizim", "TURKCE", WorkMode::MultipleGraph, StationMode::Multiple}};
  for (const auto& c : cases) {
    Open(c.language);
    Trigger(c.entry);
    EXPECT_EQ(Child("FrmLogo"), nullptr);
    ASSERT_NE(Child("FormSec"), nullptr);
    EXPECT_EQ(run_.workMode, c.mode);
    EXPECT_EQ(run_.stationMode, c.stations);
  }
}

TEST_F(MainWindow, OpensEachOtherWindowOnce) {
  Open();
  const std::pair<const char*, const char*> cases[] = {
      {"MnuExcAc", "Form2"}, {"MnuIstAdiGir", "Form_IstGir"}, {"MnuGenelSetup", "FormGenelSetup"}};
  for (const auto& [entry, window] : cases) {
    Trigger("MnuLogo");
    Trigger(entry);
    EXPECT_EQ(Child("FrmLogo"), nullptr) << entry;
    ASSERT_NE(Child(window), nullptr) << entry;
    EXPECT_EQ(Child(window)->parentWidget()->pos(), QPoint(0, 0)) << entry;
    Trigger(entry);
    EXPECT_EQ(window_->findChildren<QWidget*>(QLatin1String(window)).size(), 1) << entry;
  }
}

TEST_F(MainWindow, DisabledMenusAlsoRestTheirShortcut) {
  Open();
  window_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  for (const bool enabled : {false, true}) {
    window_->SetMenusEnabled(enabled);
    for (const char* name : {"Mnu1", "Mnu3", "Mnu4"}) {
      EXPECT_EQ(Menu(name).menuAction()->isEnabled(), enabled) << name;
    }
    QTest::keyClick(window_.get(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(window_->isVisible(), !enabled);
  }
}

TEST_F(MainWindow, TheExitEntryStoresTheDataDirectoryAndClosingDoesNot) {
  Open();
  run_.dataDirectory = home_;
  const std::string before = SettingsContent();
  window_->close();
  EXPECT_EQ(SettingsContent(), before);
  window_->show();
  Trigger("MnuExit");
  EXPECT_NE(SettingsContent().find("DataDirectory=" + home_.toStdString() + "\r\n"), std::string::npos);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindow, StaysAsLongAsAWindowRefusesToClose) {
  Open();
  Trigger("MnuKontrol");
  refuses_ = true;
  run_.dataDirectory = home_;
  run_.workMode = WorkMode::LevelTable;
  const std::string before = SettingsContent();
  Trigger("MnuExit");
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(SettingsContent(), before);
  EXPECT_FALSE(window_->close());
  Trigger("MnuCokluCizim");
  EXPECT_EQ(run_.workMode, WorkMode::LevelTable);
  EXPECT_NE(Child("FormSec"), nullptr);
  refuses_ = false;
  EXPECT_TRUE(window_->close());
}

TEST_F(MainWindow, ASettingsFileThatCannotBeWrittenIsToldBeforeTheEnd) {
  Open();
  run_.dataDirectory = home_;
  ASSERT_TRUE(QFile::remove(SettingsPath()));
  MakeFolder(SettingsPath());
  Trigger("MnuExit");
  ASSERT_NE(Message(), nullptr);
  EXPECT_TRUE(Message()->text().contains(SettingsPath()));
  EXPECT_TRUE(window_->isVisible());
  QTest::mouseClick(Message()->button(QMessageBox::Ok), Qt::LeftButton);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindow, ASwitchThatCannotBeStoredIsToldInOneLanguage) {
  Open("TURKCE");
  ASSERT_TRUE(QDir(program_).removeRecursively());
  Trigger("MnuIng");
  ASSERT_NE(Message(), nullptr);
  EXPECT_EQ(Message()->windowTitle(), QStringLiteral("Attention"));
  EXPECT_EQ(Message()->text(),
            QStringLiteral("The settings file could not be written: %1: no such folder").arg(SettingsPath()));
  delete Message();
  Trigger("Mnutrk");
  ASSERT_NE(Message(), nullptr);
  EXPECT_EQ(Message()->text(),
            QStringLiteral("Ayar dosyası yazılamadı: %1: böyle bir klasör yok").arg(SettingsPath()));
}

TEST_F(MainWindow, TellsWhatStartUpCouldNotDo) {
  MakeFolder(SettingsPath());
  Start();
  ASSERT_NE(Message(), nullptr);
  EXPECT_TRUE(Message()->text().startsWith(QStringLiteral("Ayar dosyası okunamadı: ") + SettingsPath()));
}

TEST_F(MainWindow, TellsWhereToSetAMissingCommunicationProgram) {
  Open("ENGLISH");
  Trigger("MnuRS232");
  ASSERT_NE(Message(), nullptr);
  EXPECT_TRUE(Message()->text().endsWith(
      QStringLiteral("section [COMMUNICATION PROGRAMS], key RS232 (Windows-1254)")));
}

TEST_F(MainWindow, ShowsTheDataDirectoryOfTheRun) {
  Open();
  auto* label = window_->findChild<QLabel*>(QStringLiteral("LblDataDirectory"));
  EXPECT_TRUE(label->text().endsWith(home_ + QStringLiteral("Data/")));
  Trigger("MnuKontrol");
  run_.dataDirectory = home_;
  Child("FormSec")->close();
  EXPECT_EQ(Child("FormSec"), nullptr) << "its frame is gone at once";
  QTest::qWait(1);
  EXPECT_TRUE(window_->findChild<QMdiArea*>()->subWindowList().isEmpty());
  EXPECT_TRUE(label->text().endsWith(home_));
}

TEST_F(MainWindow, TheLogoStandsAtItsPlaceUntilItIsClicked) {
  Open();
  const QWidget* first = Child("FrmLogo");
  Trigger("MnuLogo");
  QWidget* logo = Child("FrmLogo");
  ASSERT_NE(logo, nullptr);
  EXPECT_NE(logo, first);
  EXPECT_EQ(logo->parentWidget()->pos(), QPoint(5, 3));
  EXPECT_EQ(logo->windowTitle(), QStringLiteral("Logo"));
  EXPECT_EQ(logo->findChild<QLabel*>(QStringLiteral("Label1"))->text(), QStringLiteral("Vesk-4 "));
  EXPECT_EQ(logo->findChild<QLabel*>(QStringLiteral("Label2"))->text(), QStringLiteral("Ver 2007.2209-11"));
  auto* picture = logo->findChild<QWidget*>(QStringLiteral("Image1"));
  EXPECT_GT(picture->grab().toImage().pixelColor(10, 10).alpha(), 0);
  QTest::mousePress(picture, Qt::LeftButton);
  EXPECT_EQ(Child("FrmLogo"), nullptr);

  Trigger("MnuLogo");
  QTest::mouseClick(Child("FrmLogo"), Qt::LeftButton, {}, QPoint(4, 4));
  EXPECT_EQ(Child("FrmLogo"), nullptr);

  Trigger("MnuLogo");
  QWidget* area = window_->findChild<QMdiArea*>()->viewport();
  QTest::mouseClick(area, Qt::LeftButton, {}, QPoint(area->width() - 10, area->height() - 10));
  EXPECT_EQ(Child("FrmLogo"), nullptr);
}

}  // namespace
}  // namespace vesk

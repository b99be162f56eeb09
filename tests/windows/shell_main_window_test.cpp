#include <QAbstractButton>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QSignalSpy>

#include "windows/shell_fixture.h"

namespace vesk {
namespace {

using MainWindow = test::ShellWindowsTest;

QStringList EntryNames(const QMenu& menu) {
  QStringList names;
  for (const QAction* action : menu.actions()) {
    names += action->isSeparator() ? QLatin1Char('-') + action->objectName() : action->objectName();
  }
  return names;
}

TEST_F(MainWindow, HasTheMenuTreeInItsOrder) {
  Open();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Vesk4"));
  EXPECT_EQ(EntryNames(Menu("Mnu1")).join(QLatin1Char(' ')).toStdString(),
            "MnuRS232 MnuKontrol -Gec2 MnuCokluCizim -q2 MnuExcAc MnuExit");
  EXPECT_EQ(EntryNames(Menu("Mnu3")).join(QLatin1Char(' ')).toStdString(),
            "MnuIstAdiGir MnuGenelSetup -Q10 MnuLogo");
  EXPECT_EQ(EntryNames(Menu("Mnu4")).join(QLatin1Char(' ')).toStdString(), "Mnutrk MnuIng");
  EXPECT_EQ(Entry("MnuExit").shortcut(), QKeySequence(QStringLiteral("Ctrl+X")));
}

TEST_F(MainWindow, SwitchesItsMenusAndTheToolkitsButtonsAtOnceAndForTheNextStart) {
  Open();
  EXPECT_EQ(Menu("Mnu1").title(), QStringLiteral("               DATA/İLETİŞİM"));
  EXPECT_EQ(Entry("MnuExcAc").text(), QStringLiteral("ÖNCEDEN OLUŞTURULMUŞ EXCEL TABLOLARINI &AÇ"));
  EXPECT_TRUE(Entry("Mnutrk").isChecked());
  EXPECT_EQ(QMessageBox(QMessageBox::NoIcon, {}, {}, QMessageBox::Cancel).button(QMessageBox::Cancel)->text(),
            QStringLiteral("İptal"));

  Trigger("MnuIng");
  EXPECT_EQ(Menu("Mnu1").title(), QStringLiteral("               DATA/COMMUNICATION"));
  EXPECT_EQ(Entry("MnuLogo").text(), QStringLiteral("LOGO AND ADDRESS"));
  EXPECT_EQ(Entry("MnuIng").text(), QStringLiteral("ENGLISH"));
  EXPECT_TRUE(Entry("MnuIng").isChecked());
  EXPECT_FALSE(Entry("Mnutrk").isChecked());
  EXPECT_EQ(QMessageBox(QMessageBox::NoIcon, {}, {}, QMessageBox::Cancel).button(QMessageBox::Cancel)->text(),
            QStringLiteral("Cancel"));
  EXPECT_NE(SettingsContent().find("21=ENGLISH\r\n"), std::string::npos);
  EXPECT_NE(Child("FrmLogo"), nullptr) << "the language entries leave the logo alone";

  Start();
  EXPECT_EQ(Entry("MnuKontrol").text(), QStringLiteral("OPEN DATA FILE"));
  EXPECT_TRUE(Entry("MnuIng").isChecked());
}

TEST_F(MainWindow, WithAnUnknownLanguageItsCaptionsAreEmptyAndTheLanguageMenuStillWorks) {
  Open("ESPANOL");
  EXPECT_EQ(Menu("Mnu1").title(), QString());
  EXPECT_EQ(Entry("MnuKontrol").text(), QString());
  EXPECT_FALSE(Entry("Mnutrk").isChecked() || Entry("MnuIng").isChecked());
  const QRect place = window_->menuBar()->actionGeometry(Menu("Mnu4").menuAction());
  EXPECT_GE(place.width(), 16) << "there is something to click on";
  Trigger("Mnutrk");
  EXPECT_EQ(Entry("MnuKontrol").text(), QStringLiteral("DATA DOSYASINI OKU"));
  EXPECT_TRUE(Menu("Mnu4").icon().isNull());
}

TEST_F(MainWindow, OpensTheSelectionWindowInTheModeOfTheEntry) {
  const struct {
    const char* entry;
    QByteArray language;
    const char* mode;
    StationMode stations;
  } cases[] = {{"MnuKontrol", "TURKCE", "DATA DOSYASINI OKU", StationMode::Single},
               {"MnuKontrol", "ENGLISH", "OPEN DATA FILE", StationMode::Single},
               {"MnuCokluCizim", "TURKCE", "ÇOKLU GRAFİK ÇİZİMİ", StationMode::Multiple},
               {"MnuCokluCizim", "ENGLISH", "MULTIPLE GRAPHIC", StationMode::Multiple}};
  for (const auto& c : cases) {
    Open(c.language);
    Trigger(c.entry);
    EXPECT_EQ(Child("FrmLogo"), nullptr);
    ASSERT_NE(Child("FormSec"), nullptr);
    EXPECT_EQ(run_.workMode.toStdString(), c.mode);
    EXPECT_EQ(Child("FormSec")->windowTitle(), run_.workMode);
    EXPECT_EQ(run_.stationMode, c.stations);
  }
}

TEST_F(MainWindow, OpensEachOtherWindowOnce) {
  Open();
  const struct {
    const char* entry;
    const char* window;
  } cases[] = {{"MnuExcAc", "Form2"}, {"MnuIstAdiGir", "Form_IstGir"}, {"MnuGenelSetup", "FormGenelSetup"}};
  for (const auto& c : cases) {
    Trigger("MnuLogo");
    Trigger(c.entry);
    EXPECT_EQ(Child("FrmLogo"), nullptr) << c.entry;
    ASSERT_NE(Child(c.window), nullptr) << c.entry;
    EXPECT_EQ(Child(c.window)->parentWidget()->pos(), QPoint(0, 0)) << c.entry;
    Trigger(c.entry);
    EXPECT_EQ(window_->findChildren<QWidget*>(QLatin1String(c.window)).size(), 1) << c.entry;
  }
}

TEST_F(MainWindow, AWindowThatClosesItselfTakesItsFrameAlong) {
  Open();
  Trigger("MnuKontrol");
  Child("FormSec")->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(window_->findChild<QWidget*>(QStringLiteral("FormSec")), nullptr);
  EXPECT_TRUE(window_->findChild<QMdiArea*>()->subWindowList().isEmpty());
  EXPECT_TRUE(window_->CloseChild(QStringLiteral("FormSec")));
}

TEST_F(MainWindow, DisabledMenusAlsoRestTheirShortcut) {
  Open();
  const QSignalSpy exits(&Entry("MnuExit"), &QAction::triggered);
  window_->SetMenusEnabled(false);
  for (const char* name : {"Mnu1", "Mnu3", "Mnu4"})
    EXPECT_FALSE(Menu(name).menuAction()->isEnabled()) << name;
  window_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  QTest::keyClick(window_.get(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(exits.count(), 0);
  EXPECT_TRUE(window_->isVisible());
  window_->SetMenusEnabled(true);
  QTest::keyClick(window_.get(), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(exits.count(), 1);
  EXPECT_FALSE(window_->isVisible());
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
  const std::string before = SettingsContent();
  Trigger("MnuExit");
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(SettingsContent(), before);
  EXPECT_FALSE(window_->close());
  EXPECT_FALSE(window_->CloseChild(QStringLiteral("FormSec")));
  run_.workMode = QStringLiteral("untouched");
  Trigger("MnuCokluCizim");
  EXPECT_EQ(run_.workMode, QStringLiteral("untouched"));
  EXPECT_NE(Child("FormSec"), nullptr);
  refuses_ = false;
  EXPECT_TRUE(window_->close());
}

TEST_F(MainWindow, ASettingsFileThatCannotBeWrittenIsToldBeforeTheEnd) {
  Open();
  run_.dataDirectory = QStringLiteral("/Ω/");
  Trigger("MnuExit");
  ASSERT_NE(Message(), nullptr);
  EXPECT_TRUE(Message()->text().contains(SettingsPath()));
  EXPECT_TRUE(window_->isVisible());
  QTest::mouseClick(Message()->button(QMessageBox::Ok), Qt::LeftButton);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(MainWindow, TellsWhatStartUpCouldNotDo) {
  MakeFolder(SettingsPath());
  Start();
  ASSERT_NE(Message(), nullptr);
  EXPECT_TRUE(Message()->text().contains(SettingsPath()));
  EXPECT_TRUE(Message()->text().startsWith(QStringLiteral("Ayar dosyası okunamadı")));
}

TEST_F(MainWindow, TellsWhereToSetAMissingCommunicationProgram) {
  Open("ENGLISH");
  Trigger("MnuRS232");
  ASSERT_NE(Message(), nullptr);
  for (const char* part : {"[COMMUNICATION PROGRAMS]", "RS232", "vesk4.ini"}) {
    EXPECT_TRUE(Message()->text().contains(QLatin1String(part))) << part;
  }
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(MainWindow, ShowsTheDataDirectoryOfTheRun) {
  Open();
  auto* label = window_->findChild<QLabel*>(QStringLiteral("LblDataDirectory"));
  EXPECT_TRUE(label->text().endsWith(home_ + QStringLiteral("Data/")));
  Trigger("MnuKontrol");
  run_.dataDirectory = home_ + QStringLiteral("Other/");
  static_cast<MainFrame&>(*window_).ShowDataDirectory();
  EXPECT_TRUE(label->text().endsWith(run_.dataDirectory)) << "while the window is open";
  run_.dataDirectory = home_;
  Child("FormSec")->close();
  EXPECT_EQ(Child("FormSec"), nullptr) << "its frame is gone at once";
  QTest::qWait(1);
  EXPECT_TRUE(label->text().endsWith(home_));
}

class Logo : public MainWindow {};

TEST_F(Logo, StandsAtItsPlaceWithItsTexts) {
  Open();
  QWidget* logo = Child("FrmLogo");
  ASSERT_NE(logo, nullptr);
  EXPECT_EQ(logo->windowTitle(), QStringLiteral("Logo"));
  EXPECT_EQ(logo->parentWidget()->pos(), QPoint(5, 3));
  EXPECT_EQ(logo->findChild<QLabel*>(QStringLiteral("Label1"))->text(), QStringLiteral("Vesk-4 "));
  EXPECT_EQ(logo->findChild<QLabel*>(QStringLiteral("Label2"))->text(), QStringLiteral("Ver 2007.2209-11"));
  EXPECT_GT(logo->findChild<QWidget*>(QStringLiteral("Image1"))->grab().toImage().pixelColor(10, 10).alpha(),
            0);
  Trigger("MnuLogo");
  ASSERT_NE(Child("FrmLogo"), nullptr);
  EXPECT_NE(Child("FrmLogo"), logo);
  EXPECT_EQ(Child("FrmLogo")->parentWidget()->pos(), QPoint(5, 3));
}

TEST_F(Logo, GoesWithAClickOnItselfOrOnTheEmptyArea) {
  Open();
  QTest::mousePress(Child("FrmLogo")->findChild<QWidget*>(QStringLiteral("Image1")), Qt::LeftButton);
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

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "shell/colour_cells.h"
#include "shell/system_colours.h"
#include "windows/shell_fixture.h"

namespace vesk {
namespace {

class OptionsDialog : public test::ShellWindowsTest {
 protected:
  void OpenDialog(const QByteArray& language = "ENGLISH") {
    if (window_ == nullptr) Open(language);
    Trigger("MnuGenelSetup");
  }
  template <class T>
  [[nodiscard]] T& Control(const char* name) const {
    auto* control = Child("FormGenelSetup")->findChild<T*>(QLatin1String(name));
    EXPECT_NE(control, nullptr) << name;
    return *control;
  }
  [[nodiscard]] ColourCell& Cell(const char* name, int index) const {
    return *Child("FormGenelSetup")
                ->findChild<ColourCell*>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index));
  }
  void Press(const char* name) const {
    QTest::mouseClick(&Control<QPushButton>(name), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
};

TEST_F(OptionsDialog, ShowsTheStoredOptionsUnderItsCaptions) {
  OpenDialog();
  EXPECT_EQ(Child("FormGenelSetup")->windowTitle(), QStringLiteral("Ayarlar"));
  auto& tabs = Control<QTabWidget>("SSTab1");
  EXPECT_EQ(tabs.tabText(0), QStringLiteral("Graphic"));
  EXPECT_EQ(tabs.tabText(1), QStringLiteral("Stations"));
  EXPECT_EQ(tabs.currentIndex(), 0);
  EXPECT_EQ(Control<QPushButton>("Command1").text(), QStringLiteral("Ok."));
  EXPECT_EQ(Control<QPushButton>("Command2").text(), QStringLiteral("Exit"));
  EXPECT_EQ(Control<QGroupBox>("Frame1").title(), QStringLiteral("Color of stations"));
  EXPECT_EQ(Control<QGroupBox>("Frame3").title(), QStringLiteral("Selection of color"));
  EXPECT_EQ(Control<QLabel>("Label1(2)").text(), QStringLiteral("Color of scale"));
  EXPECT_EQ(Control<QLabel>("Label4").text(), QStringLiteral("Mouse Dusey Ayar (41)"));
  EXPECT_TRUE(Control<QCheckBox>("Check2").text().startsWith(QStringLiteral("Tablo İşlemlerinde; Excel")));
  EXPECT_FALSE(Control<QCheckBox>("Check1(0)").isChecked());
  EXPECT_FALSE(Control<QRadioButton>("OptionExt(0)").isChecked());
  EXPECT_TRUE(Control<QRadioButton>("OptionExt(1)").isChecked());
  EXPECT_EQ(Control<QLineEdit>("Text1").text(), QStringLiteral("41"));
  EXPECT_EQ(Cell("Label3", 0).Number(), static_cast<qint32>(0x80000005));
  EXPECT_EQ(Cell("Label3", 1).Number(), 0xFF0000);
  EXPECT_EQ(Cell("Label3", 5).Number(), 0) << "no number counts as black";
}

TEST_F(OptionsDialog, OffersThirteenColoursForEachSwatch) {
  OpenDialog();
  const quint32 first[] = {0x80000005, 0x00000000, 0x00000000, 0x80000005, 0x80000005, 0x00000000};
  const quint32 eighth[] = {0x000080FF, 0x00FF8080, 0x00FF8080, 0x000080FF, 0x000080FF, 0x00FF8080};
  for (int row = 0; row < 6; ++row) {
    EXPECT_EQ(static_cast<quint32>(Cell("Label2", row * 13).Number()), first[row]) << row;
    EXPECT_EQ(static_cast<quint32>(Cell("Label2", row * 13 + 7).Number()), eighth[row]) << row;
    QTest::mouseClick(&Cell("Label2", row * 13 + 7), Qt::LeftButton);
    EXPECT_EQ(static_cast<quint32>(Cell("Label3", row).Number()), eighth[row]) << row;
  }
  EXPECT_EQ(Child("FormGenelSetup")->findChild<ColourCell*>(QStringLiteral("Label2(78)")), nullptr);
}

TEST_F(OptionsDialog, ConfirmingStoresAllFortyKeysAndKeepsWhatNobodyChanged) {
  OpenDialog();
  QTest::mouseClick(&Cell("Label2", 20), Qt::LeftButton);
  Control<QCheckBox>("Check1(0)").setChecked(true);
  Control<QTabWidget>("SSTab1").setCurrentIndex(1);
  QTest::mouseClick(&Control<QRadioButton>("OptionExt(0)"), Qt::LeftButton);
  QTest::mouseClick(&Control<QCheckBox>("Check2"), Qt::LeftButton);
  Control<QLineEdit>("Text1").setText(QStringLiteral("abc"));
  Press("Command1");
  EXPECT_EQ(Child("FormGenelSetup"), nullptr);
  const QString path = home_;
  QByteArray expected =
      "[Genel]\r\nDataDirectory=" + path.toUtf8() +
      "Data/\r\nArvelDataDirectory=C:\\Reg\\\r\n[Options]\r\n"
      "02=-2147483643\r\n03=16744576\r\n08=TF\r\n17=kept\r\n21=ENGLISH\r\n22=abc\r\n01=1\r\n04=0\r\n"
      "05=0\r\n06=0\r\n07=0\r\n09=1\r\n";
  for (int n = 10; n <= 40; ++n) {
    if (n != 17 && n != 21 && n != 22) expected += QByteArray::number(n) + "=\r\n";
  }
  EXPECT_EQ(SettingsContent(), expected.toStdString());
  EXPECT_EQ(run_.options.extremeOptionIndex, 0);
  EXPECT_EQ(run_.options.Slot(3), QStringLiteral("16744576"));

  OpenDialog();
  Press("Command1");
  EXPECT_EQ(SettingsContent(), expected.toStdString());
}

TEST_F(OptionsDialog, LeavingStoresNothingAndOpensAfresh) {
  for (const bool byKey : {false, true}) {
    OpenDialog();
    const std::string before = SettingsContent();
    QTest::mouseClick(&Cell("Label2", 20), Qt::LeftButton);
    Control<QTabWidget>("SSTab1").setCurrentIndex(1);
    if (byKey) {
      QTest::keyClick(&Control<QTabWidget>("SSTab1"), Qt::Key_Escape);
    } else {
      Press("Command2");
    }
    EXPECT_EQ(Child("FormGenelSetup"), nullptr);
    EXPECT_EQ(SettingsContent(), before);
    OpenDialog();
    EXPECT_EQ(Cell("Label3", 1).Number(), 0xFF0000);
    EXPECT_EQ(Control<QTabWidget>("SSTab1").currentIndex(), 0);
  }
}

TEST_F(OptionsDialog, WithoutAnExtremeModeNoOptionIsChosen) {
  Open();
  ASSERT_TRUE(run_.settings.WriteSetting(QStringLiteral("Options"), QStringLiteral("08"), {}).Ok());
  OpenDialog();
  EXPECT_FALSE(Control<QRadioButton>("OptionExt(0)").isChecked() ||
               Control<QRadioButton>("OptionExt(1)").isChecked());
  Press("Command1");
  EXPECT_NE(SettingsContent().find("08=FF\r\n"), std::string::npos);
}

TEST_F(OptionsDialog, ThePaletteIsWorkedWithTheKeyboardAndHasNames) {
  OpenDialog();
  window_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  EXPECT_EQ(Cell("Label2", 20).accessibleName(), QStringLiteral("medium blue"));
  EXPECT_EQ(Cell("Label3", 1).accessibleName(), QStringLiteral("Color of station-1: blue"));
  Cell("Label2", 13).setFocus();
  QTest::keyClick(&Cell("Label2", 13), Qt::Key_Left);  // the edge holds
  EXPECT_TRUE(Cell("Label2", 13).hasFocus());
  QTest::keyClick(&Cell("Label2", 13), Qt::Key_Right);
  QTest::keyClick(&Cell("Label2", 14), Qt::Key_Down);
  EXPECT_TRUE(Cell("Label2", 27).hasFocus());
  QTest::keyClick(&Cell("Label2", 27), Qt::Key_Space);
  EXPECT_EQ(Cell("Label3", 2).Number(), 0x808000);
  EXPECT_TRUE(Cell("Label2", 27).isChecked());
  EXPECT_EQ(Cell("Label2", 26).focusPolicy(), Qt::ClickFocus) << "one stop of the Tab key a row";
}

/// Controls that the Tab key reaches, in its order, from the dialog's first on.
QStringList TabStops(const QWidget& dialog) {
  QStringList names;
  for (const QWidget* at = dialog.nextInFocusChain(); at != &dialog; at = at->nextInFocusChain()) {
    const bool stops =
        (at->focusPolicy() & Qt::TabFocus) != 0 && at->isVisible() && at->focusProxy() == nullptr;
    if (stops && dialog.isAncestorOf(at) && !at->objectName().isEmpty()) names += at->objectName();
  }
  return names;
}

TEST_F(OptionsDialog, TheTabKeyWalksInReadingOrder) {
  OpenDialog();
  EXPECT_EQ(
      TabStops(*Child("FormGenelSetup")).join(QLatin1Char(' ')).toStdString(),
      "qt_tabwidget_tabbar Label3(0) Label3(1) Label3(2) Label3(3) Label3(4) Label3(5) Label2(0) Label2(19) "
      "Label2(26) Label2(51) Label2(64) Label2(65) Check1(0) Text1 Command1 Command2");
  QTest::mouseClick(&Cell("Label3", 1), Qt::LeftButton);
  EXPECT_EQ(Child("FormGenelSetup")->window()->focusWidget(), &Cell("Label2", 19))
      << "a swatch leads to its colours";
}

TEST_F(OptionsDialog, SystemColoursFollowTheDesktop) {
  QPalette palette;
  palette.setColor(QPalette::Base, QColor(1, 2, 3));
  palette.setColor(QPalette::Text, QColor(4, 5, 6));
  EXPECT_EQ(DesktopColour(static_cast<qint32>(0x80000005), palette), QColor(1, 2, 3));
  EXPECT_EQ(DesktopColour(static_cast<qint32>(0x80000008), palette), QColor(4, 5, 6));
  EXPECT_EQ(DesktopColour(0x00FF8001, palette), QColor(0x01, 0x80, 0xFF));
}

/// Every text of a control fits the place that it has.
void ExpectNothingClipped(const QWidget& dialog, const char* what) {
  for (const auto* button : dialog.findChildren<QAbstractButton*>()) {
    if (!button->isVisible() || button->text().isEmpty()) continue;
    const QSize needed(
        button->hasHeightForWidth() ? button->width() : button->sizeHint().width(),
        button->hasHeightForWidth() ? button->heightForWidth(button->width()) : button->sizeHint().height());
    EXPECT_GE(button->height(), needed.height()) << what << ' ' << button->text().toStdString();
    EXPECT_GE(button->width(), needed.width()) << what << ' ' << button->text().toStdString();
  }
  for (const auto* label : dialog.findChildren<QLabel*>()) {
    if (!label->isVisible()) continue;
    const int height = label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
    EXPECT_GE(label->height(), height) << what << ' ' << label->text().toStdString();
    if (!label->wordWrap()) {
      EXPECT_GE(label->width(), label->sizeHint().width()) << what << ' ' << label->text().toStdString();
    }
  }
}

TEST_F(OptionsDialog, NothingIsClippedFromNormalToDoubleFonts) {
  const QFont normal = QApplication::font();
  for (const double scale : {1.0, 1.5, 2.0}) {
    QFont font = normal;
    font.setPointSizeF(normal.pointSizeF() * scale);
    QApplication::setFont(font);
    for (const char* language : {"TURKCE", "ENGLISH"}) {
      window_.reset();
      OpenDialog(language);
      const QWidget* dialog = Child("FormGenelSetup");
      for (int tab = 0; tab < 2; ++tab) {
        Control<QTabWidget>("SSTab1").setCurrentIndex(tab);
        QTest::qWait(1);
        ExpectNothingClipped(*dialog, language);
      }
      EXPECT_TRUE(window_->centralWidget()->rect().contains(dialog->parentWidget()->geometry()))
          << language << scale;
    }
  }
  QApplication::setFont(normal);
}

}  // namespace
}  // namespace vesk

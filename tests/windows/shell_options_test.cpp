#include <QCheckBox>
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
  [[nodiscard]] T& Control(const QString& name) const {
    auto* control = Child("FormGenelSetup")->findChild<T*>(name);
    EXPECT_NE(control, nullptr) << name.toStdString();
    return *control;
  }
  template <class T>
  [[nodiscard]] T& Control(const char* name) const {
    return Control<T>(QString::fromLatin1(name));
  }
  [[nodiscard]] ColourCell& Swatch(int index) const {
    return Control<ColourCell>(QStringLiteral("Label3(%1)").arg(index));
  }
  [[nodiscard]] ColourCell& Cell(int index) const {
    return Control<ColourCell>(QStringLiteral("Label2(%1)").arg(index));
  }
  void Press(const char* name) const {
    QTest::mouseClick(&Control<QPushButton>(name), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
};

TEST_F(OptionsDialog, ShowsTheStoredOptionsUnderItsCaptions) {
  OpenDialog();
  EXPECT_EQ(Child("FormGenelSetup")->windowTitle(), QStringLiteral("Ayarlar"));
  EXPECT_EQ(Control<QTabWidget>("SSTab1").tabText(1), QStringLiteral("Stations"));
  EXPECT_EQ(Control<QPushButton>("Command1").text(), QStringLiteral("Ok."));
  EXPECT_EQ(Control<QLabel>("Label1(2)").text(), QStringLiteral("Color of scale"));
  EXPECT_EQ(Control<QLabel>("Label4").text(), QStringLiteral("Mouse Dusey Ayar (41)"));
  EXPECT_TRUE(Control<QCheckBox>("Check2").text().startsWith(QStringLiteral("Tablo İşlemlerinde; Excel")));
  EXPECT_FALSE(Control<QCheckBox>("Check1(0)").isChecked());
  EXPECT_FALSE(Control<QRadioButton>("OptionExt(0)").isChecked());
  EXPECT_TRUE(Control<QRadioButton>("OptionExt(1)").isChecked());
  EXPECT_EQ(Control<QLineEdit>("Text1").text(), QStringLiteral("41"));
  EXPECT_EQ(Swatch(0).Number(), static_cast<qint32>(0x80000005));
  EXPECT_EQ(Swatch(1).Number(), 0xFF0000);
  EXPECT_EQ(Swatch(5).Number(), 0) << "no number counts as black";
}

TEST_F(OptionsDialog, OffersThirteenColoursForEachSwatch) {
  OpenDialog();
  const quint32 first[] = {0x80000005, 0x00000000, 0x00000000, 0x80000005, 0x80000005, 0x00000000};
  const quint32 eighth[] = {0x000080FF, 0x00FF8080, 0x00FF8080, 0x000080FF, 0x000080FF, 0x00FF8080};
  for (int row = 0; row < 6; ++row) {
    EXPECT_EQ(static_cast<quint32>(Cell(row * 13).Number()), first[row]) << row;
    QTest::mouseClick(&Cell(row * 13 + 7), Qt::LeftButton);
    EXPECT_EQ(static_cast<quint32>(Swatch(row).Number()), eighth[row]) << row;
  }
}

TEST_F(OptionsDialog, ConfirmingStoresAllFortyKeysAndKeepsWhatNobodyChanged) {
  OpenDialog();
  QTest::mouseClick(&Cell(20), Qt::LeftButton);
  Control<QCheckBox>("Check1(0)").setChecked(true);
  Control<QTabWidget>("SSTab1").setCurrentIndex(1);
  QTest::mouseClick(&Control<QRadioButton>("OptionExt(0)"), Qt::LeftButton);
  QTest::mouseClick(&Control<QCheckBox>("Check2"), Qt::LeftButton);
  Control<QLineEdit>("Text1").setText(QStringLiteral("abc"));
  Press("Command1");
  EXPECT_EQ(Child("FormGenelSetup"), nullptr);
  QByteArray expected =
      "[Genel]\r\nDataDirectory=" + home_.toUtf8() +
      "Data/\r\nArvelDataDirectory=C:\\Reg\\\r\n[Options]\r\n02=-2147483643\r\n03=16744576\r\n"
      "08=TF\r\n17=kept\r\n21=ENGLISH\r\n22=abc\r\n01=1\r\n04=0\r\n05=0\r\n06=0\r\n07=0\r\n"
      "09=1\r\n";
  for (int n = 10; n <= 40; ++n) {
    if (n != 17 && n != 21 && n != 22) expected += QByteArray::number(n) + "=\r\n";
  }
  EXPECT_EQ(SettingsContent(), expected.toStdString());
  EXPECT_EQ(run_.options.extremeOptionIndex, 0);
  EXPECT_EQ(run_.options.Slot(3), QStringLiteral("16744576"));
}

TEST_F(OptionsDialog, LeavingStoresNothingAndOpensAfresh) {
  for (const auto key : {Qt::Key_unknown, Qt::Key_Escape, Qt::Key_Return}) {
    OpenDialog();
    const std::string before = SettingsContent();
    QTest::mouseClick(&Cell(20), Qt::LeftButton);
    Control<QTabWidget>("SSTab1").setCurrentIndex(1);
    if (key == Qt::Key_unknown) {
      Press("Command2");
    } else {
      QTest::keyClick(&Control<QPushButton>("Command2"), key);
    }
    EXPECT_EQ(Child("FormGenelSetup"), nullptr);
    EXPECT_EQ(SettingsContent(), before) << key;
    OpenDialog();
    EXPECT_EQ(Swatch(1).Number(), 0xFF0000);
    EXPECT_EQ(Control<QTabWidget>("SSTab1").currentIndex(), 0);
  }
}

TEST_F(OptionsDialog, ThePaletteIsWorkedWithTheKeyboardAndHasNames) {
  OpenDialog();
  window_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  EXPECT_EQ(Swatch(1).accessibleName(), QStringLiteral("Color of station-1: blue"));
  QTest::mouseClick(&Swatch(1), Qt::LeftButton);
  EXPECT_TRUE(Cell(19).hasFocus()) << "a swatch leads to its colours";
  QTest::keyClick(&Cell(19), Qt::Key_Right);
  EXPECT_EQ(Cell(20).accessibleName(), QStringLiteral("medium blue"));
  QTest::keyClick(&Cell(20), Qt::Key_Down);
  QTest::keyClick(&Cell(33), Qt::Key_Space);
  EXPECT_EQ(Swatch(2).Number(), 0xFF8080);
  EXPECT_TRUE(Cell(33).isChecked());
}

TEST(DesktopColour, SystemColoursFollowTheDesktop) {
  QPalette palette;
  palette.setColor(QPalette::Base, QColor(1, 2, 3));
  EXPECT_EQ(DesktopColour(static_cast<qint32>(0x80000005), palette), QColor(1, 2, 3));
  EXPECT_EQ(DesktopColour(0x00FF8001, palette), QColor(0x01, 0x80, 0xFF));
}

/// Every text of a control fits the place that it has.
void ExpectNothingClipped(const QWidget& dialog, const char* what) {
  for (const auto* control : dialog.findChildren<QWidget*>()) {
    const auto* label = qobject_cast<const QLabel*>(control);
    const auto* button = qobject_cast<const QAbstractButton*>(control);
    const QString text = label ? label->text() : button ? button->text() : QString();
    if (!control->isVisible() || text.isEmpty()) continue;
    const bool wraps = control->hasHeightForWidth();
    const int height = wraps ? control->heightForWidth(control->width()) : control->sizeHint().height();
    EXPECT_GE(control->height(), height) << what << ' ' << text.toStdString();
    const int width = wraps ? 0 : control->sizeHint().width();
    EXPECT_GE(control->width(), width) << what << ' ' << text.toStdString();
  }
}

TEST_F(OptionsDialog, NothingIsClippedFromNormalToDoubleFonts) {
  const QFont normal = QApplication::font();
  for (const double scale : {1.0, 2.0}) {
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
      EXPECT_TRUE(window_->centralWidget()->rect().contains(dialog->parentWidget()->geometry()));
    }
  }
  QApplication::setFont(normal);
}

}  // namespace
}  // namespace vesk

// FormGraf: read-out, zoom, pages, dates, output and closing.
#include <QAccessible>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPrinter>
#include <QProcess>
#include <QTimer>

#include "windows/graphs_fixture.h"

namespace vesk::test {
namespace {

class GraphWindowInEnglish : public GraphWindow {
 protected:
  GraphWindowInEnglish() : GraphWindow(LanguageChoice::English) {}
};

TEST_F(GraphWindowInEnglish, OpensOnTheWholeWaterYear) {
  Open();
  EXPECT_EQ(frame_.Run().stationMode, StationMode::Single);
  EXPECT_TRUE(form_->windowTitle().contains(QStringLiteral("Water Year:2011")));
  EXPECT_EQ(Field("Text8"), QStringLiteral("01/10/2010  00:00"));
  EXPECT_EQ(Field("Text10"), QStringLiteral("30/09/2011  23:59"));
  EXPECT_EQ(Field("Text9"), QStringLiteral("0"));
  EXPECT_EQ(Field("Text11"), QStringLiteral("300")) << "1.1 x 250 rounded up to the step of 25";
  EXPECT_FALSE(Action("MnuGeri").isEnabled());
  EXPECT_FALSE(Action("MnuIleri").isEnabled());
  EXPECT_FALSE(Find<QGroupBox>("Frame1").isVisible());
  EXPECT_EQ(Action("MnuSec").text(), QStringLiteral("Draw selected area"));
}

TEST_F(GraphWindow, TheCursorReadsTimeAdjustedLevelAndTheNearestReading) {
  frame_.Run().options.mouseAdjustment = 30;
  Open();
  const QPoint point = At("15/03/2011 12:00", 180);
  Hover(point);
  const PageScale scale = Scale();
  const DateTime time = TimeOfCoordinate(form_->Sheet().firstDay, TimeOfX(scale, point.x()));
  const int level = static_cast<int>(LevelOfY(scale, point.y() + 30));
  const QString text = Label("Label3");
  EXPECT_TRUE(text.startsWith(QStringLiteral("Mouse:") + DateTimeText(time) + QStringLiteral("   H=") +
                              QString::number(level) + QLatin1Char(' ')))
      << text.toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral("Okuma: 1"))) << text.toStdString();
}

TEST_F(GraphWindow, ARectangleInEveryDirectionMakesTheSamePage) {
  Open();
  const QPoint a = At("05/11/2010 00:00", 180);
  const QPoint b = At("05/01/2011 00:00", 40);
  for (const auto& [from, to] :
       {std::pair(a, b), std::pair(b, a), std::pair(QPoint(a.x(), b.y()), QPoint(b.x(), a.y())),
        std::pair(QPoint(b.x(), a.y()), QPoint(a.x(), b.y()))}) {
    Drag(from, to);
    Action("MnuSec").trigger();
    const GraphPage& page = form_->Pages().Current();
    EXPECT_EQ(DateText(std::chrono::round<std::chrono::days>(page.start)), QStringLiteral("05/11/2010"));
    EXPECT_EQ(DateText(std::chrono::round<std::chrono::days>(page.end)), QStringLiteral("05/01/2011"));
    EXPECT_NEAR(page.maximumCm, 180, 2);
    EXPECT_NEAR(page.minimumCm, 40, 2);
    EXPECT_EQ(form_->Pages().LastNumber(), 1) << "a page made on the first one is the second";
    Action("Mnuilk").trigger();
  }
}

TEST_F(GraphWindow, CornerFieldsFollowTheDragInsideThePlotAndWithoutThemNoPageIsMade) {
  Open();
  QTest::mousePress(picture_, Qt::LeftButton, {}, At("05/11/2010 00:00", 180));
  const auto corners = [this] {
    QStringList texts;
    for (const char* name : {"Text3_0", "Text3_1", "Text3_2", "Text4_0", "Text4_1", "Text4_2"})
      texts.append(Field(name));
    return texts.join(QLatin1Char(' '));
  };
  MoveWithButton({5000, 5000});
  EXPECT_TRUE(corners().endsWith(QStringLiteral(" 30/09/2011 23:59 0")));
  MoveWithButton({-50, -50});
  EXPECT_TRUE(corners().startsWith(QStringLiteral("01/10/2010 00:00 300 ")));
  QTest::mouseRelease(picture_, Qt::LeftButton);
  QTest::keyClick(picture_, Qt::Key_Escape);
  EXPECT_TRUE(corners().trimmed().isEmpty());
  QTest::mouseClick(picture_, Qt::LeftButton, {}, At("05/11/2010 00:00", 180));
  Action("MnuSec").trigger();
  EXPECT_EQ(form_->Pages().LastNumber(), 0);
}

TEST_F(GraphWindow, PagesAreWalkedAndTheirImagesShownAgain) {
  Open();
  const QImage whole = picture_->grab().toImage();
  Drag(At("05/11/2010 00:00", 180), At("05/01/2011 00:00", 40));
  QTest::keyClick(picture_, Qt::Key_Return);
  EXPECT_FALSE(Action("MnuIleri").isEnabled());
  const QImage zoomed = picture_->grab().toImage();
  EXPECT_NE(zoomed, whole);
  QTest::keyClick(form_, Qt::Key_PageUp);
  EXPECT_EQ(picture_->grab().toImage(), whole);
  EXPECT_EQ(Field("Text8"), QStringLiteral("01/10/2010  00:00"));
  EXPECT_FALSE(Action("MnuGeri").isEnabled());
  QTest::keyClick(form_, Qt::Key_PageDown);
  EXPECT_EQ(picture_->grab().toImage(), zoomed);
  for (const QString& name : QDir(form_->ImageFolder()).entryList({QStringLiteral("picture*")}, QDir::Files))
    EXPECT_TRUE(QFile::remove(form_->ImageFolder() + QLatin1Char('/') + name));
  QTest::mouseDClick(picture_, Qt::LeftButton, {}, {300, 200});
  EXPECT_EQ(picture_->grab().toImage(), whole) << "a lost image is drawn again";
  form_->resize(900, 600);
  EXPECT_TRUE(QTest::qWaitFor([this, &whole] { return picture_->width() < whole.width(); }));
  EXPECT_EQ(picture_->grab().toImage().pixelColor(45, picture_->height() - 95), QColor(Qt::black))
      << "the frame's corner has moved along";
}

TEST_F(GraphWindow, TheEleventhZoomReplacesTheLastPageAndSaysSo) {
  Open();
  for (int i = 1; i <= 11; ++i) {
    EXPECT_FALSE(Label("LabelMessage").contains(QStringLiteral("11 sayfa"))) << i;
    Drag(picture_->rect().center() - QPoint(200, 50), picture_->rect().center() + QPoint(200, 50));
    Action("MnuSec").trigger();
    EXPECT_EQ(form_->Pages().Number(), std::min(i, 10));
  }
  EXPECT_TRUE(Label("LabelMessage").contains(QStringLiteral("11 sayfa")));
}

TEST_F(GraphWindow, WheelAndKeysZoomOnlyOnceItIsConfirmed) {
  const auto days = [this] {
    const GraphPage& page = form_->Pages().Current();
    return std::chrono::duration<double, std::ratio<86400>>(page.end - page.start).count();
  };
  Open();
  const QPoint cursor = At("15/03/2011 12:00", 100);
  TurnWheel(cursor, 1);
  TurnWheel(cursor, 2);
  EXPECT_EQ(form_->Pages().LastNumber(), 0);
  EXPECT_FALSE(Label("LabelMessage").isEmpty());
  QTest::keyClick(picture_, Qt::Key_Return);
  EXPECT_EQ(form_->Pages().Number(), 1);
  EXPECT_NEAR(days(), 365 * 0.512, 2);
  TurnWheel(cursor, 1);
  TurnWheel(cursor, -3);
  EXPECT_TRUE(Field("Text3_0").isEmpty()) << "wide open again: nothing is selected";
  Action("Mnuilk").trigger();
  QTest::keyClick(picture_, Qt::Key_Home);
  QTest::keyClick(picture_, Qt::Key_Plus);
  EXPECT_EQ(Field("Text3_0"), QStringLiteral("01/10/2010")) << "around the read-out";
  QTest::keyClick(picture_, Qt::Key_Return);
  EXPECT_NEAR(days(), 365 * 0.8, 2);
}

TEST_F(GraphWindow, DatesMakeAPageOfWholeDaysOrAreRefusedWithAMessage) {
  Open();
  Action("MnuSecformKeyboard").trigger();
  EXPECT_TRUE(Find<QGroupBox>("Frame1").isVisible());
  EXPECT_EQ(Field("Text1"), QStringLiteral("1.10"));
  EXPECT_EQ(Field("Text5"), QStringLiteral("30.9"));
  struct Case {
    const char* start;
    const char* end;
    const char* message;
  };
  for (const Case& one :
       {Case{"31.11", "30.9", "31.11"}, Case{"1.10", "x", "\"x\""}, Case{"5.3", "5.11", "önce"}}) {
    Find<QLineEdit>("Text1").setText(QString::fromUtf8(one.start));
    Find<QLineEdit>("Text5").setText(QString::fromUtf8(one.end));
    QTest::keyClick(&Find<QLineEdit>("Text5"), Qt::Key_Return);
    EXPECT_TRUE(Label("LabelDateMessage").contains(QString::fromUtf8(one.message))) << one.message;
    EXPECT_EQ(form_->Pages().LastNumber(), 0);
  }
  Find<QLineEdit>("Text1").setText(QStringLiteral("5:11"));
  Find<QLineEdit>("Text5").setText(QStringLiteral("5/3"));
  Push("Command1");
  EXPECT_TRUE(Label("LabelDateMessage").isEmpty());
  EXPECT_EQ(Field("Text8"), QStringLiteral("05/11/2010  00:00"));
  EXPECT_EQ(Field("Text10"), QStringLiteral("05/03/2011  23:59"));
  EXPECT_EQ(form_->Pages().Number(), 1);
}

TEST_F(GraphWindow, ArrowsWalkFromReadingToReadingAndTellAssistiveTools) {
  Open();
  const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(picture_);
  QTest::keyClick(picture_, Qt::Key_Home);
  EXPECT_EQ(Label("Label3"), QStringLiteral("Okuma: 01/10/2010 00:00  100 cm"));
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Left}) QTest::keyClick(picture_, key);
  EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("01/10/2010 01:00  101 cm"));
  QTest::keyClick(picture_, Qt::Key_End);
  QTest::keyClick(picture_, Qt::Key_Right);
  EXPECT_EQ(Label("Label3"), QStringLiteral("Okuma: 30/09/2011 23:00  159 cm")) << "stays at the end";
  Action("Mnuilk").trigger();
  EXPECT_EQ(accessible->text(QAccessible::Name), form_->Sheet().texts.title) << "the page is drawn anew";
}

TEST_F(GraphWindow, ALineThatEndsEarlyAndAStationWithoutReadingsAreTold) {
  auto grid = YearGrid();
  grid->SetLevel(49, -3);
  Open(grid);
  EXPECT_TRUE(Label("LabelMessage").contains(QStringLiteral("03/10/2010 00:00")));
  Open(std::make_shared<ReviewGrid>());
  EXPECT_EQ(Label("LabelMessage"), QStringLiteral("Çizilecek okuma yok"));
  QTest::keyClick(picture_, Qt::Key_Right);
  EXPECT_TRUE(Label("Label3").isEmpty());
}

TEST_F(GraphWindow, AnOlderPictureIsReplacedOnlyWhenTheOperatorSaysSo) {
  Open();
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("page.png"));
  QFile older(path);
  ASSERT_TRUE(older.open(QIODevice::WriteOnly));
  older.close();
  for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      dialog->findChild<QLineEdit*>()->setText(path.chopped(4));  // the ending is the dialog's
      QTimer::singleShot(0, [&] {
        auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(question, nullptr);
        QTest::mouseClick(question->button(answer), Qt::LeftButton);
      });
      QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
      if (answer == QMessageBox::No) dialog->reject();
    });
    Action("MnuSave").trigger();
    EXPECT_EQ(QImage(path).size(), answer == QMessageBox::Yes ? picture_->size() : QSize(0, 0));
  }
  EXPECT_TRUE(Label("LabelMessage").contains(path));
  Action("MnuCopy").trigger();
  EXPECT_EQ(QGuiApplication::clipboard()->image().size(), picture_->size());
}

TEST_F(GraphWindow, PaperGetsTheTitleAsTextAndTheSeriesAsAPath) {
  Open();
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("print.pdf"));
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(path);
  printer.setPageSize(QPageSize(QPageSize::A4));
  printer.setPageOrientation(QPageLayout::Landscape);
  ASSERT_TRUE(form_->PrintPage(printer));
  QProcess reader;
  reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), path, QStringLiteral("-")});
  EXPECT_TRUE(reader.waitForFinished());
  const QString page = QString::fromUtf8(reader.readAllStandardOutput());
  EXPECT_TRUE(page.contains(QStringLiteral(">Göksu<"))) << "the title is text";
  EXPECT_TRUE(page.contains(QStringLiteral("<page width=\"842.0"))) << page.left(600).toStdString();
}

TEST_F(GraphWindow, ClosingRemovesThePageImagesAndNothingElse) {
  Open();
  const QString images = form_->ImageFolder();
  EXPECT_TRUE(QFile::exists(images + QStringLiteral("/picture0")));
  QFile own(frame_.Run().dataDirectory + QStringLiteral("Picture of the bridge.jpg"));
  ASSERT_TRUE(own.open(QIODevice::WriteOnly));
  Push("CmdCik");
  EXPECT_EQ(frame_.Child(QStringLiteral("FormGraf")), nullptr);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(QDir(images).exists());
  EXPECT_TRUE(own.exists()) << "a file of the operator's";
}

}  // namespace
}  // namespace vesk::test

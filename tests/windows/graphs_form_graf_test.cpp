// FormGraf: read-out, zoom, pages, dates, output and closing.
#include <QAccessible>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QPrinter>
#include <QProcess>

#include "windows/graphs_fixture.h"

namespace vesk::test {
namespace {

class GraphWindowInEnglish : public GraphWindow {
 protected:
  GraphWindowInEnglish() : GraphWindow(LanguageChoice::English) {}
};

TEST_F(GraphWindow, OpensOnTheWholeWaterYear) {
  Open();
  EXPECT_EQ(frame_.Run().stationMode, StationMode::Single);
  EXPECT_EQ(Field("Text8"), QStringLiteral("01/10/2010  00:00"));
  EXPECT_EQ(Field("Text10"), QStringLiteral("30/09/2011  23:59"));
  EXPECT_EQ(Field("Text9"), QStringLiteral("0"));
  EXPECT_EQ(Field("Text11"), QStringLiteral("300")) << "1.1 x 250 rounded up to the step of 25";
  EXPECT_FALSE(Action("MnuGeri").isEnabled());
  EXPECT_FALSE(Action("MnuIleri").isEnabled());
  EXPECT_FALSE(Find<QGroupBox>("Frame1").isVisible());
  EXPECT_EQ(Action("Mnuilk").text(), QStringLiteral("Başlangıç çizimi"));
  EXPECT_EQ(Action("MnuSec").text(), QStringLiteral("Seçilmiş bölgeyi çiz"));
  EXPECT_EQ(Find<QPushButton>("CmdCik").text(), QStringLiteral("Çık"));
}

TEST_F(GraphWindowInEnglish, TakesItsTextsFromTheLanguage) {
  Open();
  EXPECT_EQ(Action("Mnuilk").text(), QStringLiteral("Initial drawing"));
  EXPECT_EQ(Action("MnuSec").text(), QStringLiteral("Draw selected area"));
  EXPECT_EQ(Action("MnuPrint").text(), QStringLiteral("Print"));
  EXPECT_EQ(Find<QPushButton>("CmdCik").text(), QStringLiteral("Exit"));
  EXPECT_TRUE(form_->Sheet().texts.title.contains(QStringLiteral("Water Year:2011")));
}

TEST_F(GraphWindow, TheCursorReadsTimeLevelAndTheNearestReading) {
  Open();
  const QPoint point = At("15/03/2011 12:00", 180);
  Hover(point);
  const PageScale scale = Scale();
  const DateTime time = TimeOfCoordinate(form_->Sheet().firstDay, TimeOfX(scale, point.x()));
  const int level = static_cast<int>(LevelOfY(scale, point.y()));
  const QString text = Label("Label3");
  EXPECT_TRUE(text.startsWith(QStringLiteral("Mouse:") + DateTimeText(time) + QStringLiteral("   H=") +
                              QString::number(level)))
      << text.toStdString();
  EXPECT_TRUE(text.contains(QStringLiteral("Okuma: 1"))) << text.toStdString();
}

TEST_F(GraphWindow, TheReadOutFollowsTheMouseAdjustment) {
  frame_.Run().options.mouseAdjustment = 30;
  Open();
  const QPoint point = At("15/03/2011 12:00", 180);
  Hover(point);
  const int lower = static_cast<int>(LevelOfY(Scale(), point.y() + 30));
  EXPECT_TRUE(Label("Label3").contains(QStringLiteral("H=") + QString::number(lower)));
}

TEST_F(GraphWindow, ARectangleInEveryDirectionMakesTheSamePage) {
  Open();
  const QPoint a = At("05/11/2010 00:00", 180);
  const QPoint b = At("05/01/2011 00:00", 40);
  std::vector<GraphPage> made;
  for (const auto& [from, to] :
       {std::pair(a, b), std::pair(b, a), std::pair(QPoint(a.x(), b.y()), QPoint(b.x(), a.y())),
        std::pair(QPoint(b.x(), a.y()), QPoint(a.x(), b.y()))}) {
    Drag(from, to);
    EXPECT_FALSE(Field("Text3_0").isEmpty());
    Action("MnuSec").trigger();
    made.push_back(form_->Pages().Current());
    EXPECT_TRUE(Field("Text3_0").isEmpty()) << "the rectangle belonged to the page before";
    Action("Mnuilk").trigger();
  }
  for (const GraphPage& page : made) {
    EXPECT_EQ(page.start, made.front().start);
    EXPECT_EQ(page.end, made.front().end);
    EXPECT_EQ(page.maximumCm, made.front().maximumCm);
  }
  EXPECT_NEAR(made.front().maximumCm, 180, 2);
  EXPECT_EQ(form_->Pages().LastNumber(), 1);
}

TEST_F(GraphWindow, CornerFieldsFollowTheDragAndStayInsideThePlot) {
  Open();
  QTest::mousePress(picture_, Qt::LeftButton, {}, At("05/11/2010 00:00", 180));
  MoveWithButton({5000, 5000});
  EXPECT_EQ(Field("Text4_0"), QStringLiteral("30/09/2011"));
  EXPECT_EQ(Field("Text4_1"), QStringLiteral("23:59"));
  EXPECT_EQ(Field("Text4_2"), QStringLiteral("0"));
  MoveWithButton({-50, -50});
  EXPECT_EQ(Field("Text3_0"), QStringLiteral("01/10/2010"));
  EXPECT_EQ(Field("Text3_1"), QStringLiteral("00:00"));
  EXPECT_EQ(Field("Text3_2"), QStringLiteral("300"));
  QTest::mouseRelease(picture_, Qt::LeftButton);
  QTest::keyClick(picture_, Qt::Key_Escape);
  EXPECT_TRUE(Field("Text3_0").isEmpty());
}

TEST_F(GraphWindow, WithoutARectangleNoPageIsMade) {
  Open();
  Action("MnuSec").trigger();
  QTest::mouseClick(picture_, Qt::LeftButton, {}, At("05/11/2010 00:00", 180));
  Action("MnuSec").trigger();
  EXPECT_EQ(form_->Pages().LastNumber(), 0);
}

TEST_F(GraphWindow, PagesAreWalkedAndTheirImagesShownAgain) {
  Open();
  const QImage whole = picture_->grab().toImage();
  Drag(At("05/11/2010 00:00", 180), At("05/01/2011 00:00", 40));
  QTest::keyClick(picture_, Qt::Key_Return);
  EXPECT_EQ(form_->Pages().Number(), 1);
  EXPECT_TRUE(Action("MnuGeri").isEnabled());
  EXPECT_FALSE(Action("MnuIleri").isEnabled());
  const QImage zoomed = picture_->grab().toImage();
  EXPECT_NE(zoomed, whole);
  Action("MnuGeri").trigger();
  EXPECT_EQ(picture_->grab().toImage(), whole);
  EXPECT_EQ(Field("Text8"), QStringLiteral("01/10/2010  00:00"));
  EXPECT_FALSE(Action("MnuGeri").isEnabled());
  EXPECT_TRUE(Action("MnuIleri").isEnabled());
  Action("MnuIleri").trigger();
  EXPECT_EQ(picture_->grab().toImage(), zoomed);
  for (const QString& name :
       QDir(form_->ImageFolder()).entryList({QStringLiteral("picture*")}, QDir::Files)) {
    EXPECT_TRUE(QFile::remove(form_->ImageFolder() + QLatin1Char('/') + name));
  }
  QTest::mouseDClick(picture_, Qt::LeftButton, {}, {300, 200});
  EXPECT_EQ(picture_->grab().toImage(), whole) << "a lost image is drawn again";
}

TEST_F(GraphWindow, ANewSizeRedrawsThePageAndDropsTheRectangle) {
  Open();
  Drag(At("05/11/2010 00:00", 180), At("05/01/2011 00:00", 40));
  form_->resize(900, 600);
  EXPECT_TRUE(QTest::qWaitFor([this] { return Field("Text3_0").isEmpty(); }));
  const QImage image = picture_->grab().toImage();
  EXPECT_EQ(image.pixelColor(45, picture_->height() - 95), QColor(Qt::black))
      << "the frame's corner has moved along";
}

TEST_F(GraphWindow, TheEleventhZoomReplacesTheLastPageAndSaysSo) {
  Open();
  for (int i = 0; i < 10; ++i) {
    Drag(picture_->rect().center() - QPoint(200, 50), picture_->rect().center() + QPoint(200, 50));
    Action("MnuSec").trigger();
  }
  EXPECT_EQ(form_->Pages().Number(), 10);
  EXPECT_TRUE(Label("LabelMessage").isEmpty());
  Drag(picture_->rect().center() - QPoint(200, 50), picture_->rect().center() + QPoint(200, 50));
  Action("MnuSec").trigger();
  EXPECT_EQ(form_->Pages().Number(), 10);
  EXPECT_TRUE(Label("LabelMessage").contains(QStringLiteral("11 sayfa")));
}

TEST_F(GraphWindow, TheWheelZoomsOnlyOnceItIsConfirmed) {
  Open();
  const QPoint cursor = At("15/03/2011 12:00", 100);
  TurnWheel(cursor, 1);
  TurnWheel(cursor, 2);
  EXPECT_EQ(form_->Pages().LastNumber(), 0);
  EXPECT_FALSE(Field("Text3_0").isEmpty());
  EXPECT_FALSE(Label("LabelMessage").isEmpty());
  QTest::keyClick(picture_, Qt::Key_Return);
  const GraphPage& page = form_->Pages().Current();
  EXPECT_EQ(form_->Pages().Number(), 1);
  EXPECT_LT(DateTimeText(page.start).mid(6, 4) + DateTimeText(page.start).mid(3, 2),
            QStringLiteral("201103"));
  EXPECT_NEAR(std::chrono::duration<double>(page.end - page.start).count() / 86400, 365 * 0.512, 2);
  TurnWheel(cursor, 1);
  TurnWheel(cursor, -3);
  EXPECT_TRUE(Field("Text3_0").isEmpty()) << "wide open again: nothing is selected";
}

TEST_F(GraphWindow, DatesMakeAPageOfWholeDays) {
  Open();
  Action("MnuSecformKeyboard").trigger();
  EXPECT_TRUE(Find<QGroupBox>("Frame1").isVisible());
  EXPECT_EQ(Field("Text1"), QStringLiteral("1.10"));
  EXPECT_EQ(Field("Text5"), QStringLiteral("30.9"));
  Find<QLineEdit>("Text1").setText({});
  QTest::keyClicks(&Find<QLineEdit>("Text1"), QStringLiteral("5:11"));
  Find<QLineEdit>("Text5").setText({});
  QTest::keyClicks(&Find<QLineEdit>("Text5"), QStringLiteral("5/3"));
  Push("Command1");
  EXPECT_EQ(Field("Text8"), QStringLiteral("05/11/2010  00:00"));
  EXPECT_EQ(Field("Text10"), QStringLiteral("05/03/2011  23:59"));
  EXPECT_EQ(form_->Pages().Number(), 1);
}

TEST_F(GraphWindow, DatesThatAreNoneAreRefusedWithAMessage) {
  Open();
  Action("MnuSecformKeyboard").trigger();
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
}

TEST_F(GraphWindow, ArrowsWalkFromReadingToReadingAndTellAssistiveTools) {
  Open();
  picture_->setFocus();
  QTest::keyClick(picture_, Qt::Key_Home);
  EXPECT_EQ(Label("Label3"), QStringLiteral("Okuma: 01/10/2010 00:00  100 cm"));
  QTest::keyClick(picture_, Qt::Key_Right);
  EXPECT_EQ(Label("Label3"), QStringLiteral("Okuma: 01/10/2010 01:00  101 cm"));
  QTest::keyClick(picture_, Qt::Key_Right);
  QTest::keyClick(picture_, Qt::Key_Left);
  const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(picture_);
  ASSERT_NE(accessible, nullptr);
  EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("01/10/2010 01:00  101 cm"));
  QTest::keyClick(picture_, Qt::Key_End);
  QTest::keyClick(picture_, Qt::Key_Right);
  EXPECT_EQ(Label("Label3"), QStringLiteral("Okuma: 30/09/2011 23:00  159 cm")) << "stays at the end";
}

TEST_F(GraphWindow, PlusAndMinusZoomAroundTheReadOut) {
  Open();
  QTest::keyClick(picture_, Qt::Key_Home);
  QTest::keyClick(picture_, Qt::Key_Plus);
  QTest::keyClick(picture_, Qt::Key_Plus);
  EXPECT_EQ(Field("Text3_0"), QStringLiteral("01/10/2010"));
  QTest::keyClick(picture_, Qt::Key_Return);
  EXPECT_EQ(form_->Pages().Number(), 1);
  const std::chrono::duration<double, std::ratio<86400>> days =
      form_->Pages().Current().end - form_->Pages().Current().start;
  EXPECT_NEAR(days.count(), 365 * 0.64, 2);
  QTest::keyClick(form_, Qt::Key_PageUp);
  EXPECT_EQ(form_->Pages().Number(), 0);
  QTest::keyClick(form_, Qt::Key_PageDown);
  EXPECT_EQ(form_->Pages().Number(), 1);
}

TEST_F(GraphWindow, ANegativeLevelIsNamed) {
  auto grid = YearGrid();
  grid->SetLevel(49, -3);
  Open(grid);
  EXPECT_TRUE(Label("LabelMessage").contains(QStringLiteral("03/10/2010 00:00")));
}

TEST_F(GraphWindow, AStationWithoutReadingsIsSaidToHaveNone) {
  Open(std::make_shared<ReviewGrid>());
  EXPECT_EQ(Label("LabelMessage"), QStringLiteral("Çizilecek okuma yok"));
  QTest::keyClick(picture_, Qt::Key_Right);
  EXPECT_TRUE(Label("Label3").isEmpty());
}

TEST_F(GraphWindow, ThePageIsSavedAndCopied) {
  Open();
  QTemporaryDir folder;
  for (const char* name : {"page.png", "page.pdf", "page.svg"}) {
    EXPECT_TRUE(form_->SavePage(folder.filePath(QString::fromLatin1(name)))) << name;
  }
  EXPECT_EQ(QImage(folder.filePath(QStringLiteral("page.png"))).size(), picture_->size());
  EXPECT_FALSE(form_->SavePage(folder.filePath(QStringLiteral("none/page.png"))));
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
  const auto output = [](const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
  };
  EXPECT_TRUE(output(QStringLiteral("pdftotext"), {path, QStringLiteral("-")})
                  .contains(QStringLiteral("12345 Göksu AGI")));
  EXPECT_EQ(
      output(QStringLiteral("pdfimages"), {QStringLiteral("-list"), path}).trimmed().count(QLatin1Char('\n')),
      1);
  EXPECT_TRUE(output(QStringLiteral("pdfinfo"), {path}).contains(QStringLiteral("842 x 595 pts (A4)")));
}

TEST_F(GraphWindow, ClosingRemovesThePageImages) {
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

TEST_F(GraphWindow, OpeningAgainClosesTheWindowThatIsOpen) {
  Open();
  Open();
  EXPECT_EQ(frame_.closeRequests.size(), 2U);
}

}  // namespace
}  // namespace vesk::test

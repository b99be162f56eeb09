// FormGraf: read-out, zoom, pages, dates, output and closing.
#include <QAccessible>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTimer>

#include "datafiles/dates.h"
#include "support/full_disk.h"
#include "windows/graphs_fixture.h"

namespace vesk::test {
namespace {

TEST_F(GraphWindow, OpensOnTheWholeWaterYear) {
  frame_.Run().language.FillEnglish();
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
  const QPoint point = At("15/03/2011 12:00", 252);
  Move(point, Qt::NoButton);
  const PageScale scale = Scale();
  const DateTime time = TimeOfCoordinate(form_->Sheet().firstDay, TimeOfX(scale, point.x()));
  const int level = static_cast<int>(LevelOfY(scale, point.y() + 30));
  const QString text = Label("Label3");
  EXPECT_TRUE(text.startsWith(QStringLiteral("Mouse:") + DateTimeText(time) + QStringLiteral("   H=") +
                              QString::number(level) + QLatin1Char(' ')))
      << text.toStdString();
  EXPECT_TRUE(text.endsWith(QStringLiteral("Okuma: 15/03/2011 12:00  250 cm")))
      << "the spike that the cursor points at: " << text.toStdString();
  Move(At("15/06/2011 12:00", 280), Qt::NoButton);
  EXPECT_FALSE(Label("Label3").contains(QStringLiteral("Okuma"))) << "far away from every reading";
}

TEST_F(GraphWindow, KeysReachTheGraphAsSoonAsTheMainWindowShowsIt) {
  for (const bool maximised : {false, true}) {
    QMdiArea area;
    area.resize(1200, 700);
    area.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
    GraphSheet sheet = MakeSingleSheet(YearGrid(), {QStringLiteral("12345"), {}, 2011}, frame_.Run().options,
                                       frame_.Run().language);
    auto* form = new FormGraf(std::move(sheet), frame_.Run().language, 0, frame_.Run().dataDirectory);
    QMdiSubWindow* child = area.addSubWindow(form);
    maximised ? child->showMaximized() : child->show();
    form->setFocus();
    QTest::qWait(20);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(form->findChild<QLabel*>(QStringLiteral("Label3"))->text(),
              QStringLiteral("Okuma: 01/10/2010 00:00  100 cm"))
        << QApplication::focusWidget()->metaObject()->className() << maximised;
  }
}

TEST_F(GraphWindow, WordsOfAnEarlierCommandDoNotOutliveIt) {
  Open();
  QTemporaryDir folder;
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(folder.filePath(QStringLiteral("print.pdf")));
  Action("MnuCopy").trigger();
  EXPECT_TRUE(Label("LabelMessage").contains(QStringLiteral("kopyalandı")));
  ASSERT_TRUE(form_->PrintPage(printer));
  EXPECT_EQ(Label("LabelMessage"), QStringLiteral("Dosyaya yazdırıldı: ") + printer.outputFileName());
  QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
  Action("MnuSave").trigger();
  EXPECT_TRUE(Label("LabelMessage").isEmpty()) << "nothing was saved, and the print is over";
  Action("MnuSecformKeyboard").trigger();
  Find<QLineEdit>("Text1").setText(QStringLiteral("31.2"));
  Push("Command1");
  EXPECT_TRUE(Label("LabelMessage").contains(QStringLiteral("31.2")));
  QTest::keyClick(&Find<QLineEdit>("Text1"), Qt::Key_Backspace);
  EXPECT_TRUE(Label("LabelMessage").isEmpty()) << "it was said of another text";
  EXPECT_TRUE(Label("LabelDateMessage").isEmpty());
}

TEST_F(GraphWindow, SavingProposesANameInTheDataDirectory) {
  Open();
  QString proposed;
  QTimer::singleShot(0, [&proposed] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    proposed = dialog->selectedFiles().value(0);
    dialog->reject();
  });
  Action("MnuSave").trigger();
  EXPECT_EQ(proposed, frame_.Run().dataDirectory + QStringLiteral("Seviye-12345(2011).png"));
}

TEST_F(GraphWindow, NotesOfTheLoadStandInTheStatusLineAndOnThePicture) {
  Open();
  const QImage without = picture_->grab().toImage();
  OpenSingleGraph(frame_, YearGrid(), {QStringLiteral("12345"), QStringLiteral("Göksu"), 2011},
                  {QStringLiteral("yükleme tam değil")});
  Take();
  EXPECT_EQ(Label("LabelMessage"), QStringLiteral("yükleme tam değil"));
  EXPECT_LT(Scale().height, picture_->height()) << "the note has its own paper";
  EXPECT_NE(picture_->grab().toImage(), without);
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
    EXPECT_EQ(form_->Pages().LastNumber(), 1) << "a page made on the first one is the second";
    Action("Mnuilk").trigger();
  }
}

TEST_F(GraphWindow, CornerFieldsFollowTheDragInsideThePlotAndWithoutThemNoPageIsMade) {
  Open();
  QTest::mousePress(picture_, Qt::LeftButton, {}, At("05/11/2010 00:00", 180));
  Move({5000, 5000}, Qt::LeftButton);
  EXPECT_EQ(Field("Text4_0") + Field("Text4_1") + Field("Text4_2"), QStringLiteral("30/09/201123:590"));
  Move({-50, -50}, Qt::LeftButton);
  EXPECT_EQ(Field("Text3_0") + Field("Text3_1") + Field("Text3_2"), QStringLiteral("01/10/201000:00300"));
  QTest::mouseRelease(picture_, Qt::LeftButton);
  QTest::keyClick(picture_, Qt::Key_Escape);
  EXPECT_TRUE(Field("Text3_0").isEmpty());
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
  Action("MnuGeri").trigger();
  EXPECT_EQ(form_->Pages().Number(), 9);
}

TEST_F(GraphWindow, WheelAndKeysZoomOnlyOnceItIsConfirmed) {
  Open();
  QTest::keyClick(picture_, Qt::Key_Home);
  TurnWheel(At("01/10/2010 00:00", 100), 2);
  QTest::keyClick(picture_, Qt::Key_Plus);
  EXPECT_EQ(form_->Pages().LastNumber(), 0);
  EXPECT_FALSE(Label("LabelMessage").isEmpty()) << "how to confirm";
  QTest::keyClick(picture_, Qt::Key_Return);
  const GraphPage& page = form_->Pages().Current();
  EXPECT_EQ(DateTimeText(page.start), QStringLiteral("01/10/2010 00:00")) << "around the read-out";
  EXPECT_NEAR(std::chrono::duration<double>(page.end - page.start).count() / 86400, 365 * 0.512, 2);
  TurnWheel({300, 200}, 1);
  TurnWheel({300, 200}, -3);
  EXPECT_TRUE(Field("Text3_0").isEmpty()) << "wide open again: nothing is selected";
}

TEST_F(GraphWindow, DatesMakeAPageOfWholeDaysOrAreRefusedWithAMessage) {
  Open();
  Action("MnuSecformKeyboard").trigger();
  EXPECT_TRUE(Find<QGroupBox>("Frame1").isVisible());
  EXPECT_EQ(Field("Text1") + Field("Text5"), QStringLiteral("1.1030.9"));
  struct Case {
    const char* start;
    const char* end;
    const char* page;  // empty: refused
    const char* message;
  };
  for (const Case& one :
       {Case{"1.10", "30.9", "01/10/2010  00:00 30/09/2011  23:59", ""},
        Case{"5:11", " 5 / 3", "05/11/2010  00:00 05/03/2011  23:59", ""},
        Case{"31\\12", "31.12", "31/12/2010  00:00 31/12/2010  23:59", ""},
        Case{"29.2", "30.9", "", "\"29.2\""}, Case{"1.10", "31.11", "", "\"31.11\""},
        Case{"0.5", "30.9", "", "0.5"}, Case{"5.13", "30.9", "", "5.13"}, Case{"5", "30.9", "", "\"5\""},
        Case{"1.1.2011", "30.9", "", "1.1.2011"}, Case{"-5.3", "30.9", "", "-5.3"},
        Case{"261.3", "30.9", "", "261.3"}, Case{"5.259", "30.9", "", "5.259"}, Case{"", "30.9", "", "\"\""},
        Case{"5.3", "5.11", "", "önce"}}) {
    Action("Mnuilk").trigger();
    Find<QLineEdit>("Text1").setText(QString::fromUtf8(one.start));
    Find<QLineEdit>("Text5").setText(QString::fromUtf8(one.end));
    QTest::keyClick(&Find<QLineEdit>("Text5"), Qt::Key_Return);
    const bool made = *one.page != '\0';
    EXPECT_EQ(form_->Pages().Number(), made ? 1 : 0) << one.start;
    const QString page = Field("Text8") + QLatin1Char(' ') + Field("Text10");
    EXPECT_TRUE(!made || page == QString::fromUtf8(one.page)) << page.toStdString();
    EXPECT_TRUE(Label("LabelDateMessage").contains(QString::fromUtf8(one.message))) << one.message;
    EXPECT_EQ(Label("LabelDateMessage").isEmpty(), made);
  }
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
  std::vector<Reading> readings = YearGrid().Raw().Readings();
  readings[48].levelCm = -3;
  Open(StationSeries(readings));
  EXPECT_TRUE(Label("LabelMessage").contains(QStringLiteral("03/10/2010 00:00")));
  Open(StationSeries());
  EXPECT_EQ(Label("LabelMessage"), QStringLiteral("Çizilecek okuma yok"));
  QTest::keyClick(picture_, Qt::Key_Right);
  EXPECT_TRUE(Label("Label3").isEmpty());
}

TEST_F(GraphWindow, APictureIsSavedUnderTheCompletedNameAndAnOlderFileStaysUnlessReplaced) {
  Open();
  QFile file(frame_.Run().dataDirectory + QStringLiteral("page.png"));
  for (const bool older : {false, true}) {
    if (older) {
      ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("older") == 5 && file.flush());
    }
    bool asked = false;
    QTimer answer;
    answer.callOnTimeout([&asked] {
      auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (question == nullptr) return;
      asked = true;
      question->reject();
    });
    QTimer::singleShot(0, [&file, &answer] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      answer.start(0);
      dialog->findChild<QLineEdit*>()->setText(file.fileName().chopped(4));  // the ending is the dialog's
      QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
      if (dialog->isVisible()) dialog->reject();
    });
    Action("MnuSave").trigger();
    EXPECT_EQ(asked, older);
    EXPECT_EQ(QImage(file.fileName()).size(), older ? QSize(0, 0) : picture_->size());
  }
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
  const QRegularExpression lastDate(QStringLiteral("xMin=\"([0-9.]+)\"[^>]*>30/09/2011<"));
  EXPECT_GT(lastDate.match(page).captured(1).toDouble(), 780) << "the graph fills the sheet";
  const FullDisk full(4096);
  EXPECT_FALSE(form_->PrintPage(printer)) << "half a file is no print";
  QFile older(path);
  ASSERT_TRUE(older.open(QIODevice::ReadOnly));
  EXPECT_TRUE(older.readAll().trimmed().endsWith("%%EOF")) << "and leaves the older one";
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
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

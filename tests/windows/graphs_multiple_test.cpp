// Several stations in one graph, the graph file list and the water-year chooser.
#include <QListWidget>

#include "datafiles/graph_file.h"
#include "graphs/form_coklu_secim.h"
#include "graphs/frm_gr_lis.h"
#include "windows/graphs_fixture.h"

namespace vesk::test {
namespace {

class MultipleGraph : public GraphWindow {
 protected:
  GraphFileEntry Write(const char* station, double levelCm) {
    std::vector<Reading> readings = YearGrid().Raw().Readings();
    for (Reading& reading : readings) reading.levelCm = levelCm;
    const QString directory = frame_.Run().dataDirectory;
    const auto written = WriteGraphFile(directory, 2011, QString::fromLatin1(station), readings);
    EXPECT_TRUE(written);
    return {directory + written->name, written->name, StationOfGraphFile(written->name), 2011};
  }
};

TEST_F(MultipleGraph, FilesAreDrawnTogetherAndAMissingOneIsNamed) {
  const GraphFileEntry missing{frame_.Run().dataDirectory + QStringLiteral("gone.txt"), {}, {}, 2011};
  OpenMultipleGraph(frame_, {Write("001-11111", 50), missing, Write("001-22222", 150)});
  Take();
  EXPECT_EQ(frame_.Run().stationMode, StationMode::Multiple);
  EXPECT_EQ(form_->Sheet().texts.title, QStringLiteral("Su Yili:2011"));
  EXPECT_TRUE(Label("LabelMessage").contains(missing.path));
  Move(At("05/01/2011 00:00", 146), Qt::NoButton);
  EXPECT_TRUE(Label("Label3").contains(QStringLiteral("22222"))) << "the series next to the cursor";
  QTest::keyClick(picture_, Qt::Key_Down);
  EXPECT_TRUE(Label("Label3").contains(QStringLiteral("11111")));
  EXPECT_TRUE(Label("Label3").endsWith(QStringLiteral("50 cm")));
}

TEST_F(MultipleGraph, AReadoutInLargeLettersLeavesTheScrolledGraphItsSize) {
  const QFont usual = QApplication::font();
  QFont large = usual;
  large.setPointSize(24);
  QApplication::setFont(large);
  frame_.Run().language.FillEnglish();
  OpenMultipleGraph(frame_, {Write("001-11111", 1150.5), Write("001-22222", 1250.5)});
  Take();
  form_->resize(400, 500);
  QTest::qWait(50);
  const QSize size = picture_->size();
  Move(At("05/01/2011 00:00", 1140), Qt::NoButton);
  QTest::qWait(50);
  EXPECT_TRUE(Label("Label3").contains(QStringLiteral("11111")));
  EXPECT_EQ(picture_->size(), size);
  QApplication::setFont(usual);
}

TEST_F(MultipleGraph, TheFileListChoosesWhatIsDrawnAgain) {
  Write("001-11111", 50);
  const GraphFileEntry other = Write("001-22222", 150);
  FrmGrLis list(
      {{StationId(QStringLiteral("001-11111")), {2011}}, {StationId(QStringLiteral("001-99999")), {2011}}},
      frame_.Run().dataDirectory, frame_.Run().language);
  list.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
  auto& files = *list.findChild<QListWidget*>(QStringLiteral("List1"));
  auto& stored = *list.findChild<QListWidget*>(QStringLiteral("List3"));
  const auto push = [&list](const char* name) {
    QTest::mouseClick(list.findChild<QPushButton*>(QString::fromLatin1(name)), Qt::LeftButton);
  };
  push("Command2");
  EXPECT_TRUE(
      list.findChild<QLabel*>(QStringLiteral("LabelMessage"))->text().contains(QStringLiteral("99999")))
      << "one file is missing";
  const QPoint second = files.visualItemRect(files.item(1)).center();
  QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, second);
  QTest::mouseDClick(files.viewport(), Qt::LeftButton, {}, second);
  EXPECT_EQ(files.count(), 1);
  stored.setFocus();
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Down, Qt::Key_Return}) QTest::keyClick(&stored, key);
  EXPECT_TRUE(list.isVisible()) << "Return adds and does not draw yet";
  files.setFocus();
  files.setCurrentRow(0);
  QTest::keyClick(&files, Qt::Key_Delete);
  push("Command2");
  EXPECT_FALSE(list.isVisible());
  ASSERT_EQ(list.Chosen().size(), 1U);
  EXPECT_EQ(list.Chosen()[0].path, other.path);
  EXPECT_EQ(list.Chosen()[0].station, QStringLiteral("22222"));
  push("Command1");
  EXPECT_EQ(files.count(), 0);
  for (const char* name : {"Command1", "Command2"})
    EXPECT_FALSE(list.findChild<QPushButton*>(QString::fromLatin1(name))->isEnabled()) << name;
}

TEST(YearChooser, HandsOverTheCheckedYearsInListOrder) {
  Language language;
  language.FillTurkish();
  const QStringList years = {QStringLiteral("2009 "), QStringLiteral("2011 ")};
  FormCokluSecim form(years, {1}, language);
  form.show();
  QTest::keyClick(form.findChild<QListWidget*>(QStringLiteral("List1")), Qt::Key_Space);
  EXPECT_EQ(form.Chosen(), (std::vector{0, 1}));
  EXPECT_EQ(form.findChild<QPushButton*>(QStringLiteral("Command2"))->text(), QStringLiteral("Vazgeç"));
  QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
  EXPECT_EQ(form.result(), QDialog::Accepted);
}

}  // namespace
}  // namespace vesk::test

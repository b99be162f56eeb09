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
    auto grid = YearGrid();
    for (int row = 1; row <= grid->ReadingCount(); ++row) grid->SetLevel(row, levelCm);
    const QString directory = frame_.Run().dataDirectory;
    const auto written = WriteGraphFile(directory, 2011, QString::fromLatin1(station), grid->Readings());
    EXPECT_TRUE(written);
    return {directory + written->name, written->name, StationOfGraphFile(written->name), 2011};
  }
};

TEST_F(MultipleGraph, FilesAreDrawnTogetherAndWalkedWithTheArrows) {
  OpenMultipleGraph(frame_, {Write("001-11111", 50), Write("001-22222", 150)});
  Take();
  EXPECT_EQ(frame_.Run().stationMode, StationMode::Multiple);
  EXPECT_EQ(form_->Sheet().texts.title, QStringLiteral("Su Yili:2011"));
  Hover(At("05/01/2011 00:00", 140));
  EXPECT_TRUE(Label("Label3").contains(QStringLiteral("22222"))) << "the series next to the cursor";
  QTest::keyClick(picture_, Qt::Key_Down);
  EXPECT_TRUE(Label("Label3").contains(QStringLiteral("11111")));
  EXPECT_TRUE(Label("Label3").endsWith(QStringLiteral("50 cm")));
}

TEST_F(MultipleGraph, AMissingFileIsNamed) {
  GraphFileEntry missing = Write("001-11111", 50);
  ASSERT_TRUE(QFile::remove(missing.path));
  OpenMultipleGraph(frame_, {missing});
  Take();
  EXPECT_TRUE(Label("LabelMessage").contains(missing.path));
}

TEST_F(MultipleGraph, TheFileListChoosesWhatIsDrawnAgain) {
  const GraphFileEntry first = Write("001-11111", 50);
  Write("001-22222", 150);
  FrmGrLis list({QStringLiteral("001-11111/2011"), QStringLiteral("001-99999/2011")},
                frame_.Run().dataDirectory, frame_.Run().language);
  list.show();
  auto& files = *list.findChild<QListWidget*>(QStringLiteral("List1"));
  auto& stored = *list.findChild<QListWidget*>(QStringLiteral("List3"));
  auto& draw = *list.findChild<QPushButton*>(QStringLiteral("Command2"));
  EXPECT_EQ(files.count(), 2);
  EXPECT_EQ(stored.count(), 2);
  QTest::mouseClick(&draw, Qt::LeftButton);
  EXPECT_TRUE(list.isVisible()) << "one file is missing";
  EXPECT_TRUE(
      list.findChild<QLabel*>(QStringLiteral("LabelMessage"))->text().contains(QStringLiteral("99999")));
  const auto doubleClick = [](QListWidget& widget, int row) {
    const QPoint at = widget.visualItemRect(widget.item(row)).center();
    QTest::mouseClick(widget.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(widget.viewport(), Qt::LeftButton, {}, at);
  };
  doubleClick(files, 1);
  doubleClick(stored, 1);
  EXPECT_EQ(files.count(), 2);
  QTest::mouseClick(&draw, Qt::LeftButton);
  EXPECT_FALSE(list.isVisible());
  ASSERT_EQ(list.Chosen().size(), 2U);
  EXPECT_EQ(list.Chosen()[0].path, first.path);
  EXPECT_EQ(list.Chosen()[1].station, QStringLiteral("22222"));
  EXPECT_EQ(list.Chosen()[1].waterYear, 2011);
}

TEST_F(MultipleGraph, AnEmptiedFileListCannotBeDrawn) {
  Write("001-11111", 50);
  FrmGrLis list({}, frame_.Run().dataDirectory, frame_.Run().language);
  list.show();
  auto& files = *list.findChild<QListWidget*>(QStringLiteral("List1"));
  auto& clear = *list.findChild<QPushButton*>(QStringLiteral("Command1"));
  EXPECT_EQ(files.count(), 1) << "without entries the stored files stand there";
  QTest::mouseClick(&clear, Qt::LeftButton);
  EXPECT_EQ(files.count(), 0);
  EXPECT_FALSE(clear.isEnabled());
  EXPECT_FALSE(list.findChild<QPushButton*>(QStringLiteral("Command2"))->isEnabled());
  QTest::mouseClick(list.findChild<QPushButton*>(QStringLiteral("Command3")), Qt::LeftButton);
  EXPECT_EQ(list.result(), QDialog::Rejected);
  EXPECT_FALSE(list.isVisible());
}

TEST(YearChooser, HandsOverTheCheckedYearsInListOrder) {
  Language language;
  language.FillTurkish();
  const QStringList years = {QStringLiteral("2009 "), QStringLiteral("2010 Dönüşmüş"),
                             QStringLiteral("2011 ")};
  FormCokluSecim form(years, {years[2]}, language);
  form.show();
  auto& list = *form.findChild<QListWidget*>(QStringLiteral("List1"));
  list.setCurrentRow(0);
  QTest::keyClick(&list, Qt::Key_Space);
  EXPECT_EQ(form.Chosen(), (QStringList{years[0], years[2]}));
  EXPECT_EQ(form.findChild<QPushButton*>(QStringLiteral("Command2"))->text(), QStringLiteral("Vazgeç"));
  QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
  EXPECT_EQ(form.result(), QDialog::Accepted);
}

}  // namespace
}  // namespace vesk::test

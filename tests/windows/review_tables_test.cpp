// Tables, graphs and rating curves from the selection window.
#include <gmock/gmock.h>

#include <QDir>
#include <QProgressDialog>
#include <QTimer>

#include "graphs/form_coklu_secim.h"
#include "graphs/form_graf.h"
#include "graphs/frm_gr_lis.h"
#include "tables/plain_answers.h"
#include "tables/recording_spreadsheet.h"
#include "windows/review_fixture.h"

namespace vesk::test {
namespace {

QString Texts(const char* text) {
  return QString::fromUtf8(text);
}

class Tables : public ReviewWindowTest {
 protected:
  void SetUp() override {
    QFile file(frame_.Run().programFolder + Texts("Sablon.xls"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    frame_.office = &office_;
  }
  [[nodiscard]] QString TablePath() { return Data() + Texts("Tablo-12345(2010).xls"); }

  RecordingSpreadsheet office_;
};

TEST_F(Tables, AFileOnItsOwnIsDrawnInTheYearOfItsReadings) {
  Open();
  Click("ListIst", 0);
  Click("ListOrjDos", 0);
  Push("CmdTamam");
  EXPECT_FALSE(Button("Command3").isEnabled()) << "a table is made of water years";
  Push("CmdGrf");
  const auto* graph = qobject_cast<FormGraf*>(frame_.Child(Texts("FormGraf")));
  ASSERT_NE(graph, nullptr);
  EXPECT_EQ(graph->Sheet().waterYear, 2010);
}

TEST_F(Tables, ATableMadeHereHoldsWhatTheCommandLineWrites) {
  Open();
  LoadWaterYear();
  TypeLevel(3, Texts("105"));  // within the day's records
  Push("Command4");
  Push("Command3");
  EXPECT_EQ(form_->focusWidget(), &Grid()) << "not the button that hides the panel";
  ASSERT_EQ(operator_.told.size(), 2);
  EXPECT_TRUE(QFile::exists(TablePath()));
  EXPECT_TRUE(Find<QLabel>("StatusLine").text().contains(TablePath()));
  Push("CmdGrf");
  EXPECT_NE(frame_.Child(Texts("FormGraf")), nullptr);
  ASSERT_NE(form_, nullptr) << "the graph opens beside it";

  const LoadRequest request = WaterYearRequest(Data(), StationId(Texts(kStation)), {2010}, {});
  const auto loaded = LoadReadings(request);
  ASSERT_TRUE(loaded);
  RecordingSpreadsheet plain;
  PlainAnswers asking;
  ASSERT_TRUE(BuildLevelTable({.series = loaded->series,
                               .stationNumber = Texts("12345"),
                               .stationName = {},
                               .waterYear = 2010,
                               .tableDirectory = Data(),
                               .templateDirectory = frame_.Run().programFolder,
                               .templateName = Texts("Sablon.xls")},
                              plain, asking));
  for (const auto& [name, sheet] : plain.sheets)
    EXPECT_EQ(office_.sheets[name].cells, sheet.cells) << name.toStdString();
  EXPECT_GT(plain.sheets[Texts("Saatlik")].cells.size(), 7000U);
}

TEST_F(Tables, WhatIsWrongWithTheReadingsIsAskedAboutAndStandsInTheTable) {
  QFile cut(Data() + Texts("001-12345-010203.txt"));
  ASSERT_TRUE(cut.resize(cut.size() - 29 * 200));
  Open();
  LoadWaterYear();
  EXPECT_TRUE(Find<QLabel>("StatusLine").text().contains(Texts("yükleme eksik")));
  TypeLevel(3, Texts("5"));
  operator_.backsOut = true;
  Push("Command3");
  ASSERT_EQ(operator_.told.size(), 1);
  EXPECT_THAT(operator_.told.last().toStdString(), testing::HasSubstr("01/11/2009 Min 100 → 5"));
  EXPECT_THAT(operator_.told.last().toStdString(), testing::HasSubstr("001-12345-010203"));
  EXPECT_FALSE(QFile::exists(TablePath()));
}

TEST_F(Tables, BackingOutOrStoppingWritesNothingAndTheWindowGoesOn) {
  Open();
  LoadWaterYear();
  const auto files = [this] { return QDir(Data()).entryList(QDir::Files | QDir::Hidden); };
  const QStringList before = files();
  operator_.backsOut = true;
  Push("Command3");
  EXPECT_EQ(operator_.told.size(), 1);
  EXPECT_TRUE(operator_.told.last().contains(Texts("TF"))) << "no extreme mode was ever chosen";
  operator_.backsOut = false;
  QTimer stopping;
  QObject::connect(&stopping, &QTimer::timeout, form_, [this] {
    if (auto* dialog = form_->findChild<QProgressDialog*>()) dialog->findChild<QPushButton*>()->click();
  });
  stopping.start(0);
  Push("Command3");
  stopping.stop();
  EXPECT_TRUE(Find<QLabel>("StatusLine").text().startsWith(Texts("Durduruldu")));
  EXPECT_EQ(files(), before);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(Button("Command3").isEnabled());
  Push("Command3");
  EXPECT_TRUE(QFile::exists(TablePath()));

  QFile table(TablePath());
  ASSERT_TRUE(table.open(QIODevice::Append) && table.write("by hand") > 0);
  table.close();
  operator_.backsOut = true;
  Push("Command3");
  EXPECT_TRUE(operator_.told.last().contains(Texts("değiştirilmiş")));
  EXPECT_TRUE(table.open(QIODevice::ReadOnly) && table.readAll().endsWith("by hand"));
}

TEST_F(Tables, OpenWorkbooksAndAMissingTemplateAreToldAndTheWindowGoesOn) {
  Open();
  LoadWaterYear();
  ASSERT_TRUE(QFile::remove(frame_.Run().programFolder + Texts("Sablon.xls")));
  for (const bool open : {true, false}) {
    office_.windowIsOpen = open;
    Push("Command3");
    EXPECT_TRUE(operator_.told.last().contains(Texts(open ? "açık olan tüm EXCEL" : "Sablon.xls")));
    EXPECT_FALSE(QFile::exists(TablePath()));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(Button("Command3").isEnabled());
  }
}

TEST_F(Tables, DrawingTheListWritesGraphFilesThatAreDrawnAgainWithoutLoading) {
  QFile raw(Data() + Texts("001-20000-010203.txt"));
  ASSERT_TRUE(raw.open(QIODevice::ReadWrite));
  const QByteArray content = raw.readAll().replace("1.03", "1x03");
  ASSERT_TRUE(raw.seek(0) && raw.write(content) == content.size());
  raw.close();
  Open(WorkMode::MultipleGraph);
  LoadWaterYear(0);
  LoadWaterYear(1);
  Push("CmdCiz");
  EXPECT_EQ(form_, nullptr) << "makes way for the graph";
  EXPECT_NE(frame_.Child(Texts("FormGraf")), nullptr);
  EXPECT_EQ(frame_.Run().stationMode, StationMode::Multiple);
  ASSERT_EQ(operator_.told.size(), 1);
  EXPECT_TRUE(operator_.told.first().contains(Texts("19. satır yüklenmedi")))
      << operator_.told.first().toStdString();
  ASSERT_TRUE(frame_.CloseChild(Texts("FormGraf")));
  Settle();

  ASSERT_TRUE(QFile::remove(Data() + Texts("001-20000-010203=0001.txt")));  // not needed any more
  Open(WorkMode::MultipleGraph);
  for (const bool draw : {false, true}) {
    QTimer::singleShot(0, [draw] {
      auto* list = qobject_cast<FrmGrLis*>(QApplication::activeModalWidget());
      ASSERT_NE(list, nullptr);
      EXPECT_EQ(list->findChild<QListWidget*>(Texts("List1"))->count(), 2);
      if (!draw) return list->reject();
      QTest::mouseClick(list->findChild<QPushButton*>(Texts("Command2")), Qt::LeftButton);
    });
    Push("CmdListe");
    EXPECT_EQ(form_ == nullptr, draw);
    EXPECT_EQ(frame_.Child(Texts("FormGraf")) != nullptr, draw);
  }
}

TEST_F(Tables, ThePickerHandsWaterYearsToTheList) {
  Open();
  Click("ListIst", 0);
  QTimer::singleShot(0, [] {
    auto* picker = qobject_cast<FormCokluSecim*>(QApplication::activeModalWidget());
    ASSERT_NE(picker, nullptr);
    auto* list = picker->findChild<QListWidget*>(Texts("List1"));
    for (int row = 0; row < list->count(); ++row) list->item(row)->setCheckState(Qt::Checked);
    picker->accept();
  });
  QTest::keyClick(&Find<QListWidget>("ListSuYili"), Qt::Key_Q);
  EXPECT_EQ(Chosen("ListSuYili"), QStringList({Texts("2010 "), Texts("2011 ")}));
  EXPECT_TRUE(Button("CmdTamam").isEnabled());
}

TEST_F(Tables, ARatingCurveIsKeptUntilTheNextChoice) {
  QFile curve(Data() + Texts("E1.dat"));
  ASSERT_TRUE(curve.open(QIODevice::WriteOnly));
  curve.write("0,0\n500,90\n");
  curve.close();
  ASSERT_TRUE(frame_.Run().settings.WriteSetting(Texts("Genel"), Texts("AnahtarDirectory"), Data()));
  Open();
  LoadWaterYear();
  auto& shown = Find<QLineEdit>("Text7");
  const auto choose = [&] {
    Push("Command2");
    QWidget* chooser = frame_.Child(Texts("Form5"));
    ASSERT_NE(chooser, nullptr);
    chooser->findChild<QListWidget*>(Texts("File1"))->setCurrentRow(0);
    QTest::mouseClick(chooser->findChild<QPushButton*>(Texts("Command2")), Qt::LeftButton);
    EXPECT_EQ(shown.text(), Data() + Texts("E1.dat"));
  };
  choose();
  QTest::keyClick(&shown, Qt::Key_Delete);
  EXPECT_TRUE(shown.text().isEmpty());
  choose();
  Click("ListSuYili", 1);
  EXPECT_TRUE(shown.text().isEmpty());
}

}  // namespace
}  // namespace vesk::test

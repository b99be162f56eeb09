// Tables, graphs and rating curves from the selection window.
#include <gmock/gmock.h>

#include <QDir>
#include <QTimer>

#include "graphs/form_coklu_secim.h"
#include "graphs/frm_gr_lis.h"
#include "tables/build_level_table.h"
#include "tables/recording_spreadsheet.h"
#include "windows/review_fixture.h"

namespace vesk::test {
namespace {

QString Texts(const char* text) {
  return QString::fromUtf8(text);
}

/// Answers as the fixture's operator, who wants hourly values.
class PlainBuild : public BuildQuestions {
 public:
  void TellWorkbooksAreOpen(const BuildMessage&) override {}
  bool AskForHourlyValues(const BuildMessage&) override { return true; }
  void WarnNotToSwitchSheets(const BuildMessage&) override {}
  void ShowProgress(int) override {}
};

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

TEST_F(Tables, ATableMadeHereHoldsWhatTheCommandLineWrites) {
  Open();
  LoadWaterYear();
  TypeLevel(3, Texts("50"));
  Push("Command4");
  Push("Command3");
  ASSERT_EQ(operator_.told.size(), 2);
  EXPECT_EQ(operator_.told[0], Texts("Saatlik Değerler Tabloya Dahil Edilsin mi?"));
  EXPECT_TRUE(operator_.told[1].contains(Texts("sayfalar arasında geçiş")));
  EXPECT_TRUE(QFile::exists(TablePath()));
  EXPECT_TRUE(Find<QLabel>("StatusLine").text().contains(TablePath()));
  EXPECT_TRUE(Button("Command3").isEnabled());

  const LoadRequest request = WaterYearRequest(Data(), Texts(kStation), 2010, {});
  const auto loaded = LoadReadings(request);
  ASSERT_TRUE(loaded);
  RecordingSpreadsheet plain;
  PlainBuild asking;
  ASSERT_TRUE(BuildLevelTable({.grid = loaded->grid,
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

TEST_F(Tables, OpenWorkbooksAndAMissingTemplateAreToldAndTheWindowGoesOn) {
  Open();
  LoadWaterYear();
  office_.windowIsOpen = true;
  Push("Command3");
  ASSERT_EQ(operator_.told.size(), 1);
  EXPECT_TRUE(operator_.told[0].startsWith(Texts("Öncelikle açık olan tüm EXCEL")));
  EXPECT_FALSE(QFile::exists(TablePath()));

  office_.windowIsOpen = false;
  operator_.told.clear();
  ASSERT_TRUE(QFile::remove(frame_.Run().programFolder + Texts("Sablon.xls")));
  Push("Command3");
  ASSERT_FALSE(operator_.told.isEmpty());
  EXPECT_TRUE(operator_.told.last().contains(Texts("Sablon.xls")));
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(Button("Command3").isEnabled());
  EXPECT_FALSE(Find<QWidget>("ProgressBar1").isVisible());
}

TEST_F(Tables, TheGraphOpensBesideTheSelectionWindow) {
  Open();
  LoadWaterYear();
  Push("CmdGrf");
  EXPECT_NE(frame_.Child(Texts("FormGraf")), nullptr);
  ASSERT_NE(form_, nullptr);
  EXPECT_EQ(frame_.Run().stationMode, StationMode::Single);
}

TEST_F(Tables, DrawingTheListWritesGraphFilesAndMakesWayForTheGraph) {
  Open(Caption::MultipleGraph);
  LoadWaterYear(0);
  LoadWaterYear(1);
  Push("CmdCiz");
  EXPECT_EQ(form_, nullptr);
  EXPECT_NE(frame_.Child(Texts("FormGraf")), nullptr);
  EXPECT_EQ(frame_.Run().stationMode, StationMode::Multiple);
  EXPECT_TRUE(QFile::exists(Data() + Texts("Graf2010--12345.txt")));
  EXPECT_TRUE(QFile::exists(Data() + Texts("Graf2010--20000.txt")));
}

TEST_F(Tables, WhatADrawingCouldNotReadIsToldInTheOperatorsLanguage) {
  QFile raw(Data() + Texts("001-20000-010203.txt"));
  ASSERT_TRUE(raw.open(QIODevice::ReadWrite));
  const QByteArray content = raw.readAll().replace("1.03", "1x03");
  ASSERT_TRUE(raw.seek(0));
  ASSERT_EQ(raw.write(content), content.size());
  raw.close();
  Open(Caption::MultipleGraph);
  LoadWaterYear(1);
  Push("CmdCiz");
  ASSERT_EQ(operator_.told.size(), 1);
  EXPECT_TRUE(operator_.told.first().contains(Texts("19. satır yüklenmedi")))
      << operator_.told.first().toStdString();
}

TEST_F(Tables, StoredGraphFilesAreDrawnAgainWithoutLoading) {
  Open(Caption::MultipleGraph);
  LoadWaterYear(0);
  LoadWaterYear(1);
  Push("CmdCiz");
  ASSERT_TRUE(QFile::remove(Data() + Texts("001-20000-010203=0001.txt")));  // not needed any more
  ASSERT_TRUE(frame_.CloseChild(Texts("FormGraf")));
  Settle();

  Open(Caption::MultipleGraph);
  EXPECT_EQ(Button("CmdListe").text(), Texts("Liste"));
  const auto answer = [this](bool accept) {
    QTimer::singleShot(0, [accept] {
      auto* list = qobject_cast<FrmGrLis*>(QApplication::activeModalWidget());
      ASSERT_NE(list, nullptr);
      EXPECT_EQ(list->findChild<QListWidget*>(Texts("List1"))->count(), 2);
      if (!accept) return list->reject();
      QTest::mouseClick(list->findChild<QPushButton*>(Texts("Command2")), Qt::LeftButton);
    });
    Push("CmdListe");
  };
  answer(false);
  ASSERT_NE(form_, nullptr);
  EXPECT_EQ(frame_.Child(Texts("FormGraf")), nullptr);
  answer(true);
  EXPECT_EQ(form_, nullptr);
  EXPECT_NE(frame_.Child(Texts("FormGraf")), nullptr);
  EXPECT_EQ(frame_.Run().stationMode, StationMode::Multiple);
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
  const QString curves = Data() + Texts("curves");
  ASSERT_TRUE(QDir().mkpath(curves));
  QFile curve(curves + Texts("/E1.dat"));
  ASSERT_TRUE(curve.open(QIODevice::WriteOnly));
  ASSERT_TRUE(frame_.Run().settings.WriteSetting(Texts("Genel"), Texts("AnahtarDirectory"), curves));
  Open();
  LoadWaterYear();
  Push("Command2");
  QWidget* chooser = frame_.Child(Texts("Form5"));
  ASSERT_NE(chooser, nullptr);
  chooser->findChild<QListWidget*>(Texts("File1"))->setCurrentRow(0);
  QTest::mouseClick(chooser->findChild<QPushButton*>(Texts("Command2")), Qt::LeftButton);
  auto& shown = Find<QLineEdit>("Text7");
  EXPECT_EQ(shown.text(), curve.fileName());
  QTest::keyClick(&shown, Qt::Key_Delete);
  EXPECT_TRUE(shown.text().isEmpty());
  Push("Command2");
  Click("ListSuYili", 1);
  EXPECT_TRUE(shown.text().isEmpty());
}

TEST_F(Tables, ThePanelClosesAndComesBackWithTheNextLoad) {
  Open();
  LoadWaterYear();
  Push("Command1");
  EXPECT_FALSE(Find<QWidget>("Frame3").isVisible());
  Push("CmdTamam");
  EXPECT_TRUE(Find<QWidget>("Frame3").isVisible());
}

}  // namespace
}  // namespace vesk::test

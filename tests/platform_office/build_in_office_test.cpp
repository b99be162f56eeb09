#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

#include "platform/libreoffice/office.h"
#include "platform_office/workbook_reader.h"
#include "tables/build_level_table.h"

namespace vesk::test {
namespace {

class WithHourlyValues : public BuildQuestions {
 public:
  void TellWorkbooksAreOpen(const BuildMessage&) override {}
  bool AskForHourlyValues(const BuildMessage&) override { return true; }
  void WarnNotToSwitchSheets(const BuildMessage&) override {}
  void ShowProgress(int percent) override { progress.push_back(percent); }
  std::vector<int> progress;
};

Reading At(const char* time, double levelCm, ReadingKind kind = ReadingKind::Ordinary) {
  const DateTime at = ReadDateTime(QString::fromLatin1(time)).value();
  Reading reading;
  reading.day = std::chrono::floor<std::chrono::days>(at);
  reading.minuteOfDay = static_cast<std::int16_t>((at - reading.day).count());
  reading.levelCm = levelCm;
  reading.kind = kind;
  return reading;
}

/// Two whole days, a day without extremes, a leap day.
ReviewGrid SmallGrid() {
  ReviewGrid grid;
  grid.Assign({At("01/10/2011 06:00", 100), At("01/10/2011 12:00", 110), At("01/10/2011 23:59", 120),
               At("01/10/2011 18:30", 131.5, ReadingKind::Maximum),
               At("01/10/2011 03:15", 90, ReadingKind::Minimum), At("02/10/2011 12:00", 150),
               At("02/10/2011 23:59", 160), At("03/10/2011 12:00", 140), At("03/10/2011 23:59", 141),
               At("03/10/2011 20:00", 142, ReadingKind::Maximum),
               At("03/10/2011 01:00", 139, ReadingKind::Minimum), At("29/02/2012 12:00", 80),
               At("29/02/2012 23:59", 70), At("29/02/2012 11:00", 81, ReadingKind::Maximum),
               At("29/02/2012 23:00", 69, ReadingKind::Minimum)});
  grid.SetDischarge(1, QStringLiteral("12.5"));
  grid.SetDischarge(2, QStringLiteral("yok"));
  grid.SetDischarge(4, QStringLiteral("20"));
  return grid;
}

class OfficeTable : public testing::Test {
 protected:
  static void SetUpTestSuite() { office_ = MakeUnattendedSpreadsheet(); }
  static void TearDownTestSuite() { office_.reset(); }

  Result<BuildReport> Build(const QString& templateName = QStringLiteral("Sablon.xls")) {
    return BuildLevelTable(
        {grid_, QStringLiteral("12345"), QStringLiteral("Çamlıdere"), 2012, ExtremeMode::Recorded,
         folder_.path(), QStringLiteral(VESK_RESOURCES), templateName, AfterSave::Close},
        *office_, questions_);
  }

  static std::unique_ptr<Spreadsheet> office_;
  QTemporaryDir folder_;
  ReviewGrid grid_ = SmallGrid();
  WithHourlyValues questions_;
};

std::unique_ptr<Spreadsheet> OfficeTable::office_;

struct Expected {
  const char* sheet;
  int row, column;
  Content content;
  const char* text;
};

TEST_F(OfficeTable, ReadsBackAsWritten) {
  const auto report = Build();
  ASSERT_TRUE(report.Ok()) << report.Failure().Text().toStdString();
  for (const Error& warning : report->warnings) ADD_FAILURE() << warning.Text().toStdString();
  EXPECT_EQ(report->path, folder_.filePath(QStringLiteral("Tablo-12345(2012).xls")));
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
  EXPECT_TRUE(std::ranges::is_sorted(questions_.progress));

  WorkbookReader reader(report->path);
  ASSERT_TRUE(reader.IsOpen()) << reader.Failure().toStdString();
  EXPECT_EQ(reader.ActiveSheet(), QStringLiteral("Gunluk"));
  const Expected cells[] = {
      {"Saatlik", 1, 3, Content::Text, "12345 - Çamlıdere"},
      {"Saatlik", 2, 3, Content::Number, "2012"},
      {"Saatlik", 5, 1, Content::Number, "01/10/2011"},
      {"Saatlik", 5, 2, Content::Text, "06:00"},
      {"Saatlik", 5, 3, Content::Number, "100"},
      {"Saatlik", 5, 4, Content::Number, "12.5"},
      {"Saatlik", 6, 4, Content::Text, "yok"},
      {"Saatlik", 7, 4, Content::Empty, ""},
      {"Saatlik", 6, 6, Content::Text, "Maksimum"},
      {"Saatlik", 6, 7, Content::Text, "18:30"},
      {"Saatlik", 6, 8, Content::Number, "131.5"},
      {"Saatlik", 6, 9, Content::Number, "20"},
      {"Saatlik", 7, 6, Content::Text, "Minimum"},
      {"Saatlik", 8, 1, Content::Number, "02/10/2011"},
      {"Saatlik", 9, 6, Content::Text,
       "Cihaz Bu Günün Sonunda Çalışır Durumda Olmadığı İçin EXTREMLER KAYDEDİLEMEMİŞTİR."},
      {"Saatlik", 14, 1, Content::Empty, ""},
      {"Gunluk", 1, 1, Content::Number, "2012"},
      {"Gunluk", 1, 4, Content::Text, "12345 - Çamlıdere"},
      {"Gunluk", 5, 2, Content::Text, "01/10/2011"},
      {"Gunluk", 5, 3, Content::Text, "18:30"},
      {"Gunluk", 5, 4, Content::Number, "131.5"},
      {"Gunluk", 5, 5, Content::Number, "20"},
      {"Gunluk", 5, 7, Content::Number, "90"},
      {"Gunluk", 5, 9, Content::Number, "112"},
      {"Gunluk", 6, 2, Content::Empty, ""},
      {"Gunluk", 6, 9, Content::Empty, ""},
      {"Gunluk", 36, 1, Content::Formula, "3"},
      {"Gunluk", 36, 2, Content::Text, "Aylık Maks:"},
      {"Gunluk", 36, 3, Content::Formula, "20:00"},
      {"Gunluk", 36, 4, Content::Formula, "142"},
      {"Gunluk", 37, 1, Content::Formula, "1"},
      {"Gunluk", 37, 7, Content::Formula, "90"},
      {"Gunluk", 38, 9, Content::Formula, "126.0"},
      {"Gunluk", 71, 4, Content::Formula, ""},
      {"Gunluk", 173, 1, Content::Formula, "29"},
      {"Gunluk", 173, 4, Content::Number, "81"},
      {"Aylik", 1, 1, Content::Formula, "12345 - Çamlıdere"},
      {"Aylik", 6, 3, Content::Formula, "03/10/2011"},
      {"Aylik", 7, 2, Content::Formula, ""},
      {"Aylik", 7, 3, Content::Formula, ""},
      {"Aylik", 10, 3, Content::Formula, "29/02/2012"},
      {"Aylik", 18, 2, Content::Formula, "142"},
      {"Aylik", 18, 3, Content::Formula, "03/10/2011"},
      {"Aylik", 18, 5, Content::Formula, "20:00"},
      {"Aylik", 18, 6, Content::Formula, "69"},
      {"Aylik", 18, 7, Content::Formula, "29/02/2012"},
      {"Aylik", 18, 11, Content::Formula, "3"},
      {"Aylik", 18, 12, Content::Formula, "363"},
      {"Aylik", 21, 4, Content::Empty, ""},
      {"Aylik", 23, 2, Content::Formula, "112"},
      {"Aylik", 24, 2, Content::Formula, ""},
  };
  for (const Expected& expected : cells) {
    const Cell cell = reader.At(expected.sheet, expected.row, expected.column);
    const auto where = testing::Message() << expected.sheet << " " << expected.row << "," << expected.column;
    EXPECT_EQ(cell.content, expected.content) << where;
    EXPECT_EQ(cell.text.toStdString(), expected.text) << where;
  }
}

TEST_F(OfficeTable, ColoursAndUnderlinesRecords) {
  const auto report = Build(QStringLiteral("SABLON_E.XLS"));
  ASSERT_TRUE(report.Ok()) << report.Failure().Text().toStdString();
  WorkbookReader reader(report->path);
  ASSERT_TRUE(reader.IsOpen()) << reader.Failure().toStdString();
  EXPECT_EQ(reader.At("Gunluk", 36, 2).text, QStringLiteral("Monthly Max:"));
  for (const int column : {6, 7, 8, 9}) {
    EXPECT_EQ(reader.At("Saatlik", 6, column).colour, 0xFF0000) << column;
    EXPECT_EQ(reader.At("Saatlik", 7, column).colour, 0x3366FF) << column;
  }
  EXPECT_EQ(reader.At("Saatlik", 7, 3).colour, -1);
  for (const int row : {7, 9, 11}) {
    for (const int column : {1, 5, 9}) EXPECT_GT(reader.At("Saatlik", row, column).lineBelow, 50) << row;
  }
  EXPECT_EQ(reader.At("Saatlik", 8, 1).lineBelow, 0);
}

QString RunPython(const QStringList& arguments, int& exitCode) {
  QProcess python;
  python.start(QStringLiteral("/usr/bin/python3"), arguments);
  exitCode = python.waitForFinished(60'000) ? python.exitCode() : -1;
  return QString::fromUtf8(python.readAllStandardOutput() + python.readAllStandardError());
}

TEST_F(OfficeTable, UnrelatedReaderFindsTheSameFigures) {
  int exitCode = 0;
  (void)RunPython({QStringLiteral("-c"), QStringLiteral("import xlrd")}, exitCode);
  if (exitCode != 0) GTEST_SKIP() << "python3-xlrd is not installed";
  const auto report = Build();
  ASSERT_TRUE(report.Ok()) << report.Failure().Text().toStdString();
  const QString checker = QStringLiteral(VESK_TOOLS "/check_table.py");
  EXPECT_EQ(RunPython({checker, report->path}, exitCode).toStdString(),
            "01/10/2011,18:30,131.5,20,03:15,90,,112\n"
            "03/10/2011,20:00,142,,01:00,139,,140\n"
            "29/02/2012,11:00,81,,23:00,69,,75\n");
  EXPECT_EQ(exitCode, 0);
  const QString hourly = RunPython({checker, QStringLiteral("--hourly"), report->path}, exitCode);
  EXPECT_EQ(exitCode, 0) << hourly.toStdString();
  EXPECT_TRUE(
      hourly.startsWith(QLatin1String("01/10/2011,06:00,100,12.5,,,,,\n"
                                      "01/10/2011,12:00,110,yok,,Maksimum,18:30,131.5,20\n"
                                      "01/10/2011,23:59,120,,,Minimum,03:15,90,\n")))
      << hourly.toStdString();
}

TEST_F(OfficeTable, MacroOfASavedTableStillEmptiesEmptyTexts) {
  const auto report = Build();
  ASSERT_TRUE(report.Ok()) << report.Failure().Text().toStdString();
  WorkbookReader reader(report->path);
  ASSERT_TRUE(reader.IsOpen()) << reader.Failure().toStdString();
  reader.MakeEmptyTexts("Saatlik", "D7:D9");
  reader.MakeEmptyTexts("Gunluk", "H6:H7");
  ASSERT_EQ(reader.At("Saatlik", 8, 4).content, Content::Text);
  ASSERT_EQ(reader.At("Gunluk", 6, 8).content, Content::Text);
  const Status ran = reader.Book().RunMacro(QStringLiteral("BosHucreleriSil"));
  ASSERT_TRUE(ran.Ok()) << ran.Failure().Text().toStdString();
  EXPECT_EQ(reader.At("Saatlik", 8, 4).content, Content::Empty);
  EXPECT_EQ(reader.At("Gunluk", 6, 8).content, Content::Empty);
  EXPECT_EQ(reader.At("Saatlik", 6, 4).text, QStringLiteral("yok"));
  EXPECT_EQ(reader.At("Saatlik", 5, 2).text, QStringLiteral("06:00"));
  EXPECT_EQ(reader.At("Gunluk", 36, 5).content, Content::Formula);
}

TEST_F(OfficeTable, TemplateThatIsNoWorkbookLeavesTheOldTable) {
  QTemporaryDir templates;
  QFile rubbish(templates.filePath(QStringLiteral("Sablon.xls")));
  ASSERT_TRUE(rubbish.open(QIODevice::WriteOnly));
  rubbish.write(QByteArray(4096, '\0'));
  rubbish.close();
  const QString tablePath = folder_.filePath(QStringLiteral("Tablo-12345(2012).xls"));
  QFile old(tablePath);
  ASSERT_TRUE(old.open(QIODevice::WriteOnly));
  old.write("old");
  old.close();
  const auto report = BuildLevelTable({grid_,
                                       QStringLiteral("12345"),
                                       {},
                                       2012,
                                       ExtremeMode::Recorded,
                                       folder_.path(),
                                       templates.path(),
                                       QStringLiteral("Sablon.xls"),
                                       AfterSave::Close},
                                      *office_, questions_);
  ASSERT_FALSE(report.Ok());
  EXPECT_EQ(QFileInfo(tablePath).size(), 3);
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
}

}  // namespace
}  // namespace vesk::test

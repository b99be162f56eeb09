#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include "platform/libreoffice/office.h"
#include "platform_office/workbook_reader.h"
#include "tables/plain_answers.h"

namespace vesk::test {
namespace {

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
  void Build(const QString& templateName) {
    PlainAnswers questions;
    const auto report = BuildLevelTable(
        {grid_, QStringLiteral("12345"), QStringLiteral("Çamlıdere"), 2012, ExtremeMode::Recorded,
         folder_.path(), QStringLiteral(VESK_RESOURCES), templateName, AfterSave::Close},
        *MakeUnattendedSpreadsheet(), questions);
    ASSERT_TRUE(report.Ok()) << report.Failure().Text().toStdString();
    for (const Error& warning : report->warnings) ADD_FAILURE() << warning.Text().toStdString();
    const auto files = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    EXPECT_EQ(QDir(folder_.path()).entryList(files), QStringList(QStringLiteral("Tablo-12345(2012).xls")));
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("Tablo-12345(2012).xls"));
  ReviewGrid grid_ = SmallGrid();
};

TEST_F(OfficeTable, ReadsBackAsWrittenAndItsMacroStillEmptiesEmptyTexts) {
  Build(QStringLiteral("Sablon.xls"));
  WorkbookReader reader(path_);
  ASSERT_TRUE(reader.IsOpen()) << reader.Failure().toStdString();
  EXPECT_EQ(reader.ActiveSheet(), QStringLiteral("Gunluk"));
  const struct {
    const char* sheet;
    int row, column;
    Content content;
    const char* text;
  } kCells[] = {
      {"Saatlik", 1, 3, Content::Text, "12345 - Çamlıdere"},
      {"Saatlik", 5, 4, Content::Number, "12.5"},
      {"Saatlik", 6, 4, Content::Text, "yok"},
      {"Saatlik", 7, 4, Content::Empty, ""},
      {"Saatlik", 9, 6, Content::Text,
       "Cihaz Bu Günün Sonunda Çalışır Durumda Olmadığı İçin EXTREMLER KAYDEDİLEMEMİŞTİR."},
      {"Saatlik", 14, 1, Content::Empty, ""},
      {"Gunluk", 1, 1, Content::Number, "2012"},
      {"Gunluk", 5, 2, Content::Text, "01/10/2011"},
      {"Gunluk", 5, 9, Content::Number, "112"},
      {"Gunluk", 36, 1, Content::Formula, "3"},
      {"Gunluk", 36, 2, Content::Text, "Aylık Maks:"},
      {"Gunluk", 36, 3, Content::Formula, "20:00"},
      {"Gunluk", 36, 4, Content::Formula, "142"},
      {"Gunluk", 38, 9, Content::Formula, "126.0"},
      {"Aylik", 1, 1, Content::Formula, "12345 - Çamlıdere"},
      {"Aylik", 7, 2, Content::Formula, ""},
      {"Aylik", 18, 2, Content::Formula, "142"},
      {"Aylik", 18, 5, Content::Formula, "20:00"},
      {"Aylik", 18, 7, Content::Formula, "29/02/2012"},
      {"Aylik", 18, 10, Content::Formula, "109.0"},
      {"Aylik", 18, 12, Content::Formula, "363"},
      {"Aylik", 21, 4, Content::Empty, ""},
      {"Aylik", 23, 2, Content::Formula, "112"},
  };
  for (const auto& expected : kCells) {
    const Cell cell = reader.At(expected.sheet, expected.row, expected.column);
    const auto where = testing::Message() << expected.sheet << " " << expected.row << "," << expected.column;
    EXPECT_EQ(cell.content, expected.content) << where;
    EXPECT_EQ(cell.text.toStdString(), expected.text) << where;
  }

  reader.MakeEmptyTexts("Saatlik", "D7:D9");
  reader.MakeEmptyTexts("Gunluk", "H6:H7");
  ASSERT_EQ(reader.At("Saatlik", 8, 4).content, Content::Text);
  ASSERT_EQ(reader.At("Gunluk", 6, 8).content, Content::Text);
  const Status ran = reader.Book().RunMacro(QStringLiteral("BosHucreleriSil"));
  ASSERT_TRUE(ran.Ok()) << ran.Failure().Text().toStdString();
  EXPECT_EQ(reader.At("Saatlik", 8, 4).content, Content::Empty);
  EXPECT_EQ(reader.At("Gunluk", 6, 8).content, Content::Empty);
  EXPECT_EQ(reader.At("Saatlik", 6, 4).text, QStringLiteral("yok"));
  EXPECT_EQ(reader.At("Gunluk", 36, 5).content, Content::Formula);
}

std::string RunPython(const QStringList& arguments, int& exitCode) {
  QProcess python;
  python.start(QStringLiteral("/usr/bin/python3"), arguments);
  exitCode = python.waitForFinished(60'000) ? python.exitCode() : -1;
  return (python.readAllStandardOutput() + python.readAllStandardError()).toStdString();
}

/// The reader checks colours, lines, the macro's work and the year sheet as well.
TEST_F(OfficeTable, UnrelatedReaderFindsTheSameFigures) {
  int exitCode = 0;
  (void)RunPython({QStringLiteral("-c"), QStringLiteral("import xlrd")}, exitCode);
  if (exitCode != 0) GTEST_SKIP() << "python3-xlrd is not installed";
  Build(QStringLiteral("SABLON_E.XLS"));
  const QString checker = QStringLiteral(VESK_TOOLS "/check_table.py");
  EXPECT_EQ(RunPython({checker, path_}, exitCode),
            "01/10/2011,18:30,131.5,20,03:15,90,,112\n"
            "03/10/2011,20:00,142,,01:00,139,,140\n"
            "29/02/2012,11:00,81,,23:00,69,,75\n");
  EXPECT_EQ(exitCode, 0);
  const std::string hourly = RunPython({checker, QStringLiteral("--hourly"), path_}, exitCode);
  EXPECT_EQ(exitCode, 0) << hourly;
  EXPECT_TRUE(
      hourly.starts_with("01/10/2011,06:00,100,12.5,,,,,\n"
                         "01/10/2011,12:00,110,yok,,Maksimum,18:30,131.5,20\n"
                         "01/10/2011,23:59,120,,,Minimum,03:15,90,\n"))
      << hourly;
}

}  // namespace
}  // namespace vesk::test

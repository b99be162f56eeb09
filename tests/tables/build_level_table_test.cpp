#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <filesystem>

#include "tables/plain_answers.h"
#include "tables/recording_spreadsheet.h"

namespace vesk::test {
namespace {

class BuildLevelTableTest : public testing::Test {
 protected:
  void SetUp() override {
    Write(template_, "template");
    grid_.Append({.levelCm = 120, .day = WaterYearFirstDay(2011), .minuteOfDay = 60});
  }

  static void Write(const QString& path, const char* content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  [[nodiscard]] QByteArray TableContent() const {
    QFile file(table_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
  }
  [[nodiscard]] QStringList DataFolder() const {
    return QDir(data_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }

  Result<BuildReport> Build(AfterSave afterSave, RecordingSpreadsheet& office) {
    return BuildLevelTable({grid_, QStringLiteral("12345"), QStringLiteral("Ad"), 2011, ExtremeMode::Recorded,
                            data_.path(), templates_.path(), QStringLiteral("Sablon.xls"), afterSave},
                           office, questions_);
  }
  Result<BuildReport> Build(AfterSave afterSave = AfterSave::Close) { return Build(afterSave, office_); }

  /// The steps on the workbook; "copy" and "final" stand for the paths of the one in the making and the
  /// table.
  [[nodiscard]] std::string Steps() const {
    QString steps;
    for (QString step : office_.steps) {
      if (step.startsWith(QLatin1String("put")) || step.startsWith(QLatin1String("colour"))) continue;
      step.replace(table_, QLatin1String("final"));
      if (step.contains(data_.path())) step = step.section(QLatin1Char(' '), 0, 0) + QLatin1String(" copy");
      steps += step + QLatin1Char('\n');
    }
    return steps.toStdString();
  }

  QTemporaryDir data_, templates_;
  QString template_ = templates_.filePath(QStringLiteral("SABLON.XLS"));
  QString table_ = data_.filePath(QStringLiteral("Tablo-12345(2011).xls"));
  ReviewGrid grid_;
  RecordingSpreadsheet office_;
  PlainAnswers questions_;
};

TEST_F(BuildLevelTableTest, OpenWorkbooksStopItBeforeAnythingIsWritten) {
  office_.windowIsOpen = true;
  const auto report = Build();
  ASSERT_TRUE(report.Ok());
  EXPECT_TRUE(report->stoppedByOpenWorkbooks);
  EXPECT_EQ(questions_.said.toStdString(),
            "D İ K K A T|Öncelikle açık olan tüm EXCEL dosyalarını\nkapatmanız gerekmektedir (kaydederek "
            "veya kaydetmeden)\n");
  EXPECT_TRUE(office_.steps.isEmpty());
  EXPECT_TRUE(DataFolder().isEmpty());
}

TEST_F(BuildLevelTableTest, AsksThenRunsItsStepsInOrder) {
  const struct {
    AfterSave afterSave;
    const char* end;
  } kCases[] = {{AfterSaveOf(QString()), "open final\nwindow\nselect Gunluk\nclose copy\n"},
                {AfterSave::Close, "close copy\n"},
                {AfterSaveOf(QStringLiteral("1")), "close copy\nquit\n"}};
  for (const auto& row : kCases) {
    office_.steps.clear();
    questions_.said.clear();
    const auto report = Build(row.afterSave);
    ASSERT_TRUE(report.Ok());
    EXPECT_TRUE(report->warnings.empty());
    EXPECT_EQ(report->path, table_);
    EXPECT_EQ(questions_.said.toStdString(),
              "|Saatlik Değerler Tabloya Dahil Edilsin mi?\n"
              "|Excel tablosu oluşturulurken, lütfen sayfalar arasında geçiş yapmayınız. Aksi taktirde "
              "Excel Tablosunda hatalar oluşacaktır.\n");
    EXPECT_EQ(Steps(),
              std::string("open copy\nshow\nwindow\nselect Gunluk\nselect Saatlik\nmacro BosHucreleriSil\n"
                          "reenter Gunluk\nreenter Aylik\nrecalculate\nselect Aylik\n"
                          "formula Aylik 21,4 ''\nselect Gunluk\nsave copy\n") +
                  row.end);
  }
}

TEST_F(BuildLevelTableTest, TakesTheOldTablesPlaceOnlyWhenSavedWhole) {
  const struct {
    const char* failing;
    bool ok;
    std::size_t warnings;
  } kCases[] = {{"open", false, 0},       {"put Saatlik", false, 0}, {"put Gunluk", false, 0},
                {"no Gunluk", false, 0},  {"save", false, 0},        {"macro", true, 1},
                {"recalculate", true, 1}, {"formula", true, 1},      {"show", true, 1},
                {"close", true, 1},       {"quit", true, 1},         {"no Saatlik", true, 1},
                {"no Aylik", true, 1}};
  for (const auto& row : kCases) {
    RecordingSpreadsheet office;
    office.failing = {QString::fromLatin1(row.failing)};
    office.sheets.erase(office.failing.front().section(QLatin1String("no "), 1));
    for (const char* before : {"old", "none"}) {
      const bool hadOne = *before == 'o';
      if (hadOne) Write(table_, before);
      const auto report = Build(AfterSave::Quit, office);
      ASSERT_EQ(report.Ok(), row.ok) << row.failing;
      EXPECT_EQ(TableContent(), row.ok ? "saved" : before) << row.failing;
      EXPECT_EQ(DataFolder().size(), row.ok || hadOne ? 1 : 0) << row.failing;
      if (report) {
        EXPECT_EQ(report->warnings.size(), row.warnings) << row.failing;
      } else if (*row.failing != 'p') {
        EXPECT_EQ(report.Failure().path, table_) << row.failing;
      }
      QFile::remove(table_);
    }
  }
}

TEST_F(BuildLevelTableTest, FolderOfAKilledBuildIsSweptAfterADay) {
  const QDir data(data_.path());
  ASSERT_TRUE(data.mkdir(QStringLiteral(".Tablo-abcdef")) && data.mkdir(QStringLiteral(".Tablo-ghijkl")));
  const auto twoDaysAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(48);
  std::filesystem::last_write_time(data.filePath(QStringLiteral(".Tablo-abcdef")).toStdString(), twoDaysAgo);
  ASSERT_TRUE(Build().Ok());
  EXPECT_EQ(DataFolder(),
            QStringList({QStringLiteral(".Tablo-ghijkl"), QStringLiteral("Tablo-12345(2011).xls")}));
}

TEST_F(BuildLevelTableTest, MissingTemplateAndFolderAreNamed) {
  ASSERT_TRUE(QFile::setPermissions(template_, QFile::ReadOwner));
  EXPECT_TRUE(Build().Ok());  // a template that is installed read-only
  ASSERT_TRUE(QFile::remove(template_));
  const auto withoutTemplate = Build();
  ASSERT_FALSE(withoutTemplate.Ok());
  EXPECT_TRUE(withoutTemplate.Failure().path.endsWith(QLatin1String("/Sablon.xls")));
  EXPECT_EQ(TableContent(), "saved");

  Write(template_, "template");
  ASSERT_TRUE(QDir(data_.path()).removeRecursively());
  const auto withoutFolder = Build();
  ASSERT_FALSE(withoutFolder.Ok());
  EXPECT_EQ(withoutFolder.Failure().path, data_.path());
}

TEST_F(BuildLevelTableTest, WithoutHourlyValuesOnlyTheDailySheetIsFilled) {
  questions_.hourly = false;
  ASSERT_TRUE(Build().Ok());
  EXPECT_EQ(office_.sheets[QStringLiteral("Saatlik")].calls, 0);
  EXPECT_EQ(office_.At("Gunluk", 1, 4), CellValue(QStringLiteral("12345 - Ad")));
  EXPECT_EQ(office_.At("Gunluk", 1, 1), CellValue(2011.0));
}

}  // namespace
}  // namespace vesk::test

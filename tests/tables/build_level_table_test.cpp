#include "tables/build_level_table.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <filesystem>

#include "tables/recording_spreadsheet.h"

namespace vesk::test {
namespace {

class RecordedQuestions : public BuildQuestions {
 public:
  bool hourly = true;
  QStringList asked;
  std::vector<int> progress;

  void TellWorkbooksAreOpen(const BuildMessage& message) override { Note(QStringLiteral("open"), message); }
  bool AskForHourlyValues(const BuildMessage& message) override {
    Note(QStringLiteral("hourly"), message);
    return hourly;
  }
  void WarnNotToSwitchSheets(const BuildMessage& message) override {
    Note(QStringLiteral("switch"), message);
  }
  void ShowProgress(int percent) override { progress.push_back(percent); }

 private:
  void Note(const QString& kind, const BuildMessage& message) {
    asked += kind + QLatin1Char('|') + message.title + QLatin1Char('|') + message.text;
  }
};

class BuildLevelTableTest : public testing::Test {
 protected:
  void SetUp() override {
    Write(QDir(templates_.path()).filePath(QStringLiteral("SABLON.XLS")), "template");
    table_ = QDir(data_.path()).filePath(QStringLiteral("Tablo-12345(2011).xls"));
    Reading reading;
    reading.day = WaterYearFirstDay(2011);
    reading.minuteOfDay = 60;
    reading.levelCm = 120;
    grid_.Assign({reading});
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

  Result<BuildReport> Build(AfterSave afterSave = AfterSave::LeaveOpen) {
    return BuildLevelTable({grid_, QStringLiteral("12345"), QStringLiteral("Ad"), 2011, ExtremeMode::Recorded,
                            data_.path(), templates_.path(), QStringLiteral("Sablon.xls"), afterSave},
                           office_, questions_);
  }

  /// The steps with the making's own folder taken out of them, without the writing of cells.
  [[nodiscard]] QStringList Steps() const {
    QStringList steps;
    for (const QString& step : office_.steps) {
      const bool final = step.endsWith(QLatin1Char(' ') + table_);
      const QString verb = step.section(QLatin1Char(' '), 0, 0);
      if (verb == QLatin1String("put") || verb == QLatin1String("colour")) continue;
      steps += step.contains(data_.path())
                   ? verb + (final ? QStringLiteral(" final") : QStringLiteral(" copy"))
                   : step;
    }
    return steps;
  }

  QTemporaryDir data_, templates_;
  QString table_;
  ReviewGrid grid_;
  RecordingSpreadsheet office_;
  RecordedQuestions questions_;
};

TEST_F(BuildLevelTableTest, OpenWorkbooksStopItBeforeAnythingIsWritten) {
  office_.windowIsOpen = true;
  const auto report = Build();
  ASSERT_TRUE(report.Ok());
  EXPECT_TRUE(report->stoppedByOpenWorkbooks);
  EXPECT_EQ(questions_.asked, QStringList(QStringLiteral(
                                  "open|D İ K K A T|Öncelikle açık olan tüm EXCEL dosyalarını\nkapatmanız "
                                  "gerekmektedir (kaydederek veya kaydetmeden)")));
  EXPECT_TRUE(office_.steps.isEmpty());
  EXPECT_TRUE(DataFolder().isEmpty());
}

TEST_F(BuildLevelTableTest, AsksAndWarnsBeforeItStarts) {
  ASSERT_TRUE(Build().Ok());
  EXPECT_EQ(
      questions_.asked,
      QStringList({QStringLiteral("hourly||Saatlik Değerler Tabloya Dahil Edilsin mi?"),
                   QStringLiteral("switch||Excel tablosu oluşturulurken, lütfen sayfalar arasında geçiş "
                                  "yapmayınız. Aksi taktirde Excel Tablosunda hatalar oluşacaktır.")}));
  ASSERT_FALSE(questions_.progress.empty());
  EXPECT_EQ(questions_.progress.front(), 0);
  EXPECT_EQ(questions_.progress.back(), 100);
}

TEST_F(BuildLevelTableTest, RunsItsStepsInOrder) {
  struct Case {
    AfterSave afterSave = AfterSave::Close;
    QStringList end;
  };
  const Case cases[] = {
      {AfterSave::LeaveOpen,
       {QStringLiteral("open final"), QStringLiteral("window"), QStringLiteral("select Gunluk"),
        QStringLiteral("close copy")}},
      {AfterSave::Close, {QStringLiteral("close copy")}},
      {AfterSave::Quit, {QStringLiteral("close copy"), QStringLiteral("quit")}},
  };
  for (const Case& row : cases) {
    office_.steps.clear();
    const auto report = Build(row.afterSave);
    ASSERT_TRUE(report.Ok());
    EXPECT_TRUE(report->warnings.empty());
    EXPECT_EQ(report->path, table_);
    const QStringList steps = QStringList{QStringLiteral("open copy"),
                                          QStringLiteral("show"),
                                          QStringLiteral("window"),
                                          QStringLiteral("select Gunluk"),
                                          QStringLiteral("select Saatlik"),
                                          QStringLiteral("macro BosHucreleriSil"),
                                          QStringLiteral("reenter Gunluk"),
                                          QStringLiteral("reenter Aylik"),
                                          QStringLiteral("recalculate"),
                                          QStringLiteral("select Aylik"),
                                          QStringLiteral("formula Aylik 21,4 ''"),
                                          QStringLiteral("select Gunluk"),
                                          QStringLiteral("save copy")} +
                              row.end;
    EXPECT_EQ(Steps().join(QLatin1Char('\n')).toStdString(), steps.join(QLatin1Char('\n')).toStdString());
  }
}

TEST_F(BuildLevelTableTest, TakesTheOldTablesPlaceOnlyWhenSavedWhole) {
  struct Case {
    const char* failing;
    bool ok;
    std::size_t warnings;
  };
  const Case cases[] = {
      {"open", false, 0}, {"put Saatlik", false, 0}, {"put Gunluk", false, 0}, {"save", false, 0},
      {"macro", true, 1}, {"recalculate", true, 1},  {"formula", true, 1},     {"show", true, 1},
      {"close", true, 1}, {"quit", true, 1},
  };
  for (const Case& row : cases) {
    Write(table_, "old");
    office_.failing = {QString::fromLatin1(row.failing)};
    const auto report = Build(AfterSave::Quit);
    ASSERT_EQ(report.Ok(), row.ok) << row.failing;
    EXPECT_EQ(TableContent(), row.ok ? "saved" : "old") << row.failing;
    EXPECT_EQ(DataFolder(), QStringList(QStringLiteral("Tablo-12345(2011).xls"))) << row.failing;
    if (report) {
      EXPECT_EQ(report->warnings.size(), row.warnings) << row.failing;
    }
    if (!report && *row.failing != 'p') {
      EXPECT_EQ(report.Failure().path, table_) << row.failing;
    }
  }
}

TEST_F(BuildLevelTableTest, NothingIsLeftWhereThereWasNoTable) {
  office_.failing = {QStringLiteral("save")};
  EXPECT_FALSE(Build().Ok());
  EXPECT_TRUE(DataFolder().isEmpty());
}

TEST_F(BuildLevelTableTest, FolderOfAKilledBuildIsSweptAfterADay) {
  const QDir data(data_.path());
  ASSERT_TRUE(data.mkdir(QStringLiteral(".Tablo-abcdef")));
  ASSERT_TRUE(data.mkdir(QStringLiteral(".Tablo-ghijkl")));
  const auto twoDaysAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(48);
  std::filesystem::last_write_time(data.filePath(QStringLiteral(".Tablo-abcdef")).toStdString(), twoDaysAgo);
  ASSERT_TRUE(Build().Ok());
  EXPECT_EQ(DataFolder(),
            QStringList({QStringLiteral(".Tablo-ghijkl"), QStringLiteral("Tablo-12345(2011).xls")}));
}

TEST_F(BuildLevelTableTest, MissingTemplateAndFolderAreNamed) {
  const QString templatePath = QDir(templates_.path()).filePath(QStringLiteral("SABLON.XLS"));
  ASSERT_TRUE(QFile::setPermissions(templatePath, QFile::ReadOwner));
  EXPECT_TRUE(Build().Ok());  // a template that is installed read-only
  ASSERT_TRUE(QFile::remove(templatePath));
  const auto withoutTemplate = Build();
  ASSERT_FALSE(withoutTemplate.Ok());
  EXPECT_TRUE(withoutTemplate.Failure().path.endsWith(QLatin1String("/Sablon.xls")));
  EXPECT_EQ(TableContent(), "saved");

  Write(templatePath, "template");
  ASSERT_TRUE(QDir(data_.path()).removeRecursively());
  const auto withoutFolder = Build();
  ASSERT_FALSE(withoutFolder.Ok());
  EXPECT_EQ(withoutFolder.Failure().path, data_.path());
  EXPECT_FALSE(withoutFolder.Failure().reason.isEmpty());
}

TEST_F(BuildLevelTableTest, MissingMonthlySheetIsToldAndTheTableIsMade) {
  office_.sheets.erase(QStringLiteral("Aylik"));
  const auto report = Build();
  ASSERT_TRUE(report.Ok());
  ASSERT_EQ(report->warnings.size(), 1U);
  EXPECT_TRUE(report->warnings.front().reason.contains(QLatin1String("Aylik")));
  EXPECT_EQ(TableContent(), "saved");
}

TEST_F(BuildLevelTableTest, TitleAndHourlyAnswerReachTheSheets) {
  questions_.hourly = false;
  const auto report = Build();
  ASSERT_TRUE(report.Ok());
  EXPECT_FALSE(report->withHourlyValues);
  EXPECT_EQ(office_.sheets[QStringLiteral("Saatlik")].calls, 0);
  EXPECT_EQ(office_.At("Gunluk", 1, 4), CellValue(QStringLiteral("12345 - Ad")));
  EXPECT_EQ(office_.At("Gunluk", 1, 1), CellValue(2011.0));
}

TEST(AfterSaveOf, OnlyOneQuits) {
  EXPECT_EQ(AfterSaveOf(QStringLiteral("1")), AfterSave::Quit);
  for (const char* text : {"", "0", "10", "T"}) {
    EXPECT_EQ(AfterSaveOf(QString::fromLatin1(text)), AfterSave::LeaveOpen) << text;
  }
}

}  // namespace
}  // namespace vesk::test

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <filesystem>

#include "support/failing_sync.h"
#include "tables/grid_rows.h"
#include "tables/plain_answers.h"
#include "tables/recording_spreadsheet.h"
#include "tables/table_cells.h"

namespace vesk::test {
namespace {

class BuildLevelTableTest : public testing::Test {
 protected:
  void SetUp() override { Write(template_, "template"); }

  static void Write(const QString& path, const char* content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  [[nodiscard]] QByteArray TableContent() const {
    QFile file(table_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
  }
  /// But for the record beside the table, which stays once there was one.
  [[nodiscard]] QStringList DataFolder() const {
    QStringList files = QDir(data_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    files.removeAll(QFileInfo(TableRecordPath(table_)).fileName());
    return files;
  }

  Result<BuildReport> Build(AfterSave afterSave = AfterSave::Close) {
    return BuildLevelTable({grid_, QStringLiteral("12345"), QStringLiteral("Ad"), 2011, ExtremeMode::Recorded,
                            data_.path(), templates_.path(), QStringLiteral("Sablon.xls"), afterSave, notes_},
                           office_, questions_);
  }

  /// The steps on the workbook; "copy" and "final" stand for the paths of the one in the making and the
  /// table.
  [[nodiscard]] std::string Steps() const {
    QString steps;
    for (QString step : office_.steps) {
      if (step.startsWith(QLatin1String("put")) || step.startsWith(QLatin1String("format"))) continue;
      step.replace(table_, QLatin1String("final"));
      if (step.contains(data_.path())) step = step.section(QLatin1Char(' '), 0, 0) + QLatin1String(" copy");
      steps += step + QLatin1Char('\n');
    }
    return steps.toStdString();
  }

  QTemporaryDir data_, templates_;
  QString template_ = templates_.filePath(QStringLiteral("SABLON.XLS"));
  QString table_ = data_.filePath(QStringLiteral("Tablo-12345(2011).xls"));
  std::vector<QString> notes_;
  StationSeries grid_ = GridOf("01/10/2010 01:00 120");
  RecordingSpreadsheet office_;
  PlainAnswers questions_;
};

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
    EXPECT_EQ(
        Steps(),
        std::string("openMacros copy\nshow\nwindow\nselect Gunluk\nselect Saatlik\nmacro BosHucreleriSil\n"
                    "reenter Gunluk\nreenter Aylik\nrecalculate\nselect Aylik\n"
                    "empty Aylik 21,4\nselect Gunluk\nsave copy\n") +
            row.end);
  }
}

TEST_F(BuildLevelTableTest, TakesTheOldTablesPlaceOnlyWhenSavedWhole) {
  const struct {
    const char* failing;
    bool ok;
    std::size_t warnings;
  } kCases[] = {{"open", false, 0},       {"put Saatlik", false, 0},  {"put Gunluk", false, 0},
                {"no Gunluk", false, 0},  {"save", false, 0},         {"macro", true, 1},
                {"recalculate", true, 1}, {"empty", true, 1},         {"show", true, 1},
                {"select", true, 3},      {"format Gunluk", true, 1}, {"close", true, 1},
                {"quit", true, 1},        {"no Saatlik", true, 1},    {"no Aylik", true, 1}};
  for (const auto& row : kCases) {
    office_ = {};
    office_.failing = {QString::fromLatin1(row.failing)};
    office_.sheets.erase(office_.failing.front().section(QLatin1String("no "), 1));
    for (const char* before : {"old", "none"}) {
      const bool hadOne = *before == 'o';
      if (hadOne) Write(table_, before);
      const auto report = Build(AfterSave::Quit);
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
  const std::filesystem::path data(data_.path().toStdString());
  ASSERT_TRUE(create_directory(data / ".Tablo-abcdef") && create_directory(data / ".Tablo-ghijkl"));
  last_write_time(data / ".Tablo-abcdef",
                  std::filesystem::file_time_type::clock::now() - std::chrono::hours(48));
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

TEST_F(BuildLevelTableTest, NotesAreAskedAboutFirstAndStandOnTheSheetsThatAreFilled) {
  notes_ = {QStringLiteral("001-12345-010203.txt yok"),
            QStringLiteral("12/01/2011: kayıt 30, düzeltilmiş 572")};
  const std::pair noteCell{1, 6};
  const CellValue joined = notes_[0] + QStringLiteral(" • ") + notes_[1];
  for (const bool hourly : {true, false}) {
    questions_.said.clear();
    questions_.hourly = hourly ? HourlyAnswer::Yes : HourlyAnswer::No;
    office_.sheets[kHourlySheet] = {};
    ASSERT_TRUE(Build().Ok());
    EXPECT_TRUE(
        questions_.said.startsWith(QStringLiteral("note|%1\nnote|%2\n|Saatlik").arg(notes_[0], notes_[1])))
        << questions_.said.toStdString();
    EXPECT_EQ(office_.sheets[kHourlySheet].cells[noteCell], hourly ? joined : CellValue());
    EXPECT_EQ(office_.sheets[kHourlySheet].calls > 0, hourly);
    EXPECT_EQ(office_.sheets[kDailySheet].cells.at(noteCell), joined);
    EXPECT_EQ(office_.sheets[kDailySheet].cells.at({1, 4}), CellValue(QStringLiteral("12345 - Ad")));
  }
}

TEST_F(BuildLevelTableTest, EachQuestionCanBeAnsweredWithNoTable) {
  notes_ = {QStringLiteral("a file is missing")};
  Write(table_, "by hand");
  const struct {
    bool PlainAnswers::*answer;
    BuildEnd end;
  } kCases[] = {{&PlainAnswers::despiteNotes, BuildEnd::BackedOut},
                {&PlainAnswers::replace, BuildEnd::KeptOther},
                {&PlainAnswers::goOn, BuildEnd::BackedOut}};
  for (const auto& row : kCases) {
    questions_.*row.answer = false;
    const auto report = Build();
    ASSERT_TRUE(report.Ok());
    EXPECT_EQ(report->end, row.end);
    questions_.*row.answer = true;
  }
  questions_.hourly = HourlyAnswer::BackOut;
  EXPECT_EQ(Build()->end, BuildEnd::BackedOut);
  office_.windowIsOpen = true;
  questions_.said.clear();
  EXPECT_EQ(Build()->end, BuildEnd::WorkbooksAreOpen);
  EXPECT_EQ(questions_.said.toStdString(),
            "D İ K K A T|Öncelikle açık olan tüm EXCEL dosyalarını\nkapatmanız gerekmektedir (kaydederek "
            "veya kaydetmeden)\n");
  EXPECT_TRUE(office_.steps.isEmpty());
  EXPECT_EQ(TableContent(), "by hand");
  EXPECT_FALSE(QFile::exists(TableRecordPath(table_)));
}

TEST_F(BuildLevelTableTest, IsAskedOnlyAboutATableThatIsNotAsItWasWritten) {
  const auto asked = [this] {
    questions_.said.clear();
    EXPECT_TRUE(Build().Ok());
    return questions_.said.section(QLatin1Char('|'), 0, 0).toStdString();
  };
  Write(table_, "from elsewhere");
  EXPECT_EQ(asked(), "unknown");
  EXPECT_EQ(asked(), "") << "its own";
  Write(table_, "by hand");
  EXPECT_EQ(asked(), "changed");
  ASSERT_TRUE(QFile::remove(table_));
  EXPECT_EQ(asked(), "") << "none there";
  Write(TableRecordPath(table_), "torn");
  EXPECT_EQ(asked(), "changed");
  EXPECT_EQ(asked(), "") << "the torn line harms no other";
}

TEST_F(BuildLevelTableTest, KilledBeforeOrAfterTheTableTakesItsPlaceItIsKnownAlsoByALongRecord) {
  ASSERT_TRUE(Build().Ok());  // content "saved"
  QFile record(TableRecordPath(table_));
  ASSERT_TRUE(record.open(QIODevice::ReadWrite));
  const QByteArray line = record.readAll();
  record.seek(0);
  for (int i = 0; i < 1000; ++i) record.write(QByteArray(64, 'a') + "  Tablo\n");
  record.write(line);
  record.close();
  ASSERT_GT(record.size(), 64 * 1024);
  const QString next = data_.filePath(QStringLiteral("next"));
  Write(next, "next");
  ASSERT_TRUE(RememberTable(next, table_).Ok());
  EXPECT_LT(record.size(), 8 * 1024);
  EXPECT_EQ(LookAtTable(table_).origin, TableOrigin::Own) << "the old one still lies there";
  ASSERT_TRUE(QFile::remove(table_) && QFile::rename(next, table_));
  EXPECT_EQ(LookAtTable(table_).origin, TableOrigin::Own);
}

TEST_F(BuildLevelTableTest, ATableChangedMeanwhileIsKeptAndOneThatTheDiskDidNotKeepReplacesNone) {
  for (const char* before : {"none", "old"}) {
    if (*before == 'o') Write(table_, before);
    questions_.progress = [this](BuildStep step, int) {
      if (step == BuildStep::Calculating) Write(table_, "by hand");
      return true;
    };
    const auto report = Build();
    ASSERT_FALSE(report.Ok());
    EXPECT_EQ(report.Failure().path, table_);
    EXPECT_EQ(TableContent(), "by hand");
  }
  questions_.progress = [](BuildStep, int) { return true; };
  const FailingSync failing(FailingSync::Of::Files, EIO);
  EXPECT_FALSE(Build().Ok());
  EXPECT_EQ(TableContent(), "by hand");
}

TEST_F(BuildLevelTableTest, StoppedAnywhereItLeavesTheOldTableAndNothingElse) {
  Write(table_, "old");
  int calls = 0;
  questions_.progress = [&calls](BuildStep step, int) { return ++calls, step != BuildStep::Done; };
  ASSERT_TRUE(Build().Ok());
  const int all = calls;
  ASSERT_GT(all, 6);
  for (int stopAt = 1; stopAt < all; ++stopAt) {
    Write(table_, "old");
    calls = 0;
    office_.steps.clear();
    questions_.progress = [&](BuildStep, int) { return ++calls != stopAt; };
    const auto report = Build();
    ASSERT_TRUE(report.Ok());
    EXPECT_EQ(report->end, BuildEnd::Stopped) << stopAt;
    EXPECT_EQ(calls, stopAt) << "no step after it";
    EXPECT_EQ(TableContent(), "old");
    EXPECT_EQ(DataFolder().size(), 1);
    EXPECT_EQ(office_.steps.filter(QStringLiteral("open")).size(),
              office_.steps.filter(QStringLiteral("close")).size());
  }
}

/// 1 m3/s a centimetre.
class OneToOne : public DischargeSource {
 public:
  [[nodiscard]] DischargeValue At(DateTime, double levelCm) const override {
    return {levelCm, DischargeFlag::None};
  }
  [[nodiscard]] Message Explain(DateTime, DischargeFlag) const override { return {}; }
  [[nodiscard]] Message Describe(Day, Day) const override {
    return Message::Verbatim(QStringLiteral("E12345.dat"));
  }
};

TEST_F(BuildLevelTableTest, ATableWithARatingCurveTakesTheTemplateForDischarges) {
  grid_.SetCurve(std::make_shared<OneToOne>());
  const auto without = Build();
  ASSERT_TRUE(without);
  ASSERT_EQ(without->warnings.size(), 1U) << "an older program folder has no such template: told, and made";
  EXPECT_TRUE(without->warnings[0].English().contains(QStringLiteral("SablonDebi.xls")));
  Write(templates_.filePath(QStringLiteral("SABLONDEBI.XLS")), "for discharges");
  const auto made = Build();
  ASSERT_TRUE(made);
  EXPECT_TRUE(made->warnings.empty());
  grid_.SetCurve(nullptr);
  ASSERT_TRUE(QFile::remove(templates_.filePath(QStringLiteral("SABLONDEBI.XLS"))));
  const auto levels = Build();
  ASSERT_TRUE(levels);
  EXPECT_TRUE(levels->warnings.empty()) << "a level table never asks for it";
}

}  // namespace
}  // namespace vesk::test

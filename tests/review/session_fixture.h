// An edit session over made-up readings, in a folder of its own; its load can be done anew, as after a crash.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "review/editing.h"
#include "review/grid_maker.h"

namespace vesk::test {

class SessionTest : public testing::Test {
 protected:
  /// waterYears empty: the readings of a single file.
  void Load(StationSeries grid, const std::vector<int>& waterYears, std::vector<RawFileRows> files = {}) {
    LoadedReadings loaded =
        LoadOf(std::move(grid), folder_.path() + QLatin1Char('/'), waterYears, std::move(files));
    logPath_ = loaded.changeLogs.front().saveTo;
    journalPath_ =
        JournalPath(logPath_, waterYears.empty() ? loaded.series.Files().front().rawFile : QString());
    session_.Begin(std::move(loaded));
  }
  /// 48 hourly readings from 01/10/2010 on.
  static StationSeries TwoDays() { return HourlyGrid("01/10/2010 00:00", 48); }
  void LoadFile() { Load(TwoDays(), {}); }
  void LoadYear() { Load(TwoDays(), {2011}); }
  /// Four hours of the night in which a water year ends, and two of the next one.
  void LoadTwoYears() { Load(HourlyGrid("30/09/2010 22:00", 6), {2010, 2011}); }

  void Edit(int row, const char* typed) {
    const auto edited = session_.EditLevel(row, QString::fromUtf8(typed));
    ASSERT_TRUE(edited) << typed;
    EXPECT_TRUE(*edited) << typed;
  }
  void CorrectDates(const char* target) { ASSERT_TRUE(session_.CorrectDates(QLatin1String(target))); }
  std::string Row(int row) const { return LevelAndCode(session_.Series(), row); }
  std::size_t Pending() { return session_.Pending()->records.size(); }
  int RestorePending() {
    const auto pending = session_.Pending();
    EXPECT_TRUE(pending);
    return session_.Restore(*pending);
  }
  QString Path(const char* name) const { return folder_.filePath(QLatin1String(name)); }
  QStringList Journals() const {
    return QDir(folder_.path()).entryList({QStringLiteral("*.journal*")}, QDir::Files, QDir::Name);
  }

  QTemporaryDir folder_;
  QString logPath_, journalPath_;
  EditSession session_;
};

/// For as long as it lives, a folder stands where a file is: nothing can remove or write that.
class FolderInTheWay {
 public:
  explicit FolderInTheWay(QString path) : path_(std::move(path)) {
    EXPECT_TRUE(!QFile::exists(path_) || QFile::rename(path_, Away()));
    EXPECT_TRUE(QDir().mkpath(path_));
  }
  ~FolderInTheWay() {
    EXPECT_TRUE(QDir().rmdir(path_));
    EXPECT_TRUE(!QFile::exists(Away()) || QFile::rename(Away(), path_));
  }
  FolderInTheWay(const FolderInTheWay&) = delete;
  FolderInTheWay& operator=(const FolderInTheWay&) = delete;

 private:
  [[nodiscard]] QString Away() const { return path_ + QStringLiteral(".away"); }
  QString path_;
};

}  // namespace vesk::test

#include "datafiles/graph_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <limits>

#include "datafiles/helpers.h"

namespace vesk {
namespace {

using namespace std::chrono_literals;

Reading At(double levelCm, ReadingKind kind = ReadingKind::Ordinary) {
  Reading reading;
  reading.day = Day(2008y / 10 / 1);
  reading.minuteOfDay = 750;
  reading.levelCm = levelCm;
  reading.kind = kind;
  return reading;
}

class GraphFile : public testing::Test {
 protected:
  QByteArray Write(const std::vector<Reading>& readings, GraphFileWritten* written = nullptr) {
    const auto result = WriteGraphFile(directory_, 2009, QStringLiteral("001-12345"), readings);
    EXPECT_TRUE(result);
    if (!result) return {};
    if (written != nullptr) *written = *result;
    const auto content = ReadGraphFile(directory_ + result->name);
    EXPECT_TRUE(content);
    return content ? *content : QByteArray();
  }

  QTemporaryDir folder_;
  QString directory_ = folder_.path() + QLatin1Char('/');
};

TEST(GraphFileNames, CarryYearAndTheStationsLastSixCharacters) {
  struct Case {
    const char* station;
    const char* name;
    const char* shown;
  };
  for (const Case& one :
       {Case{"001-12345", "Graf2009--12345.txt", "12345"}, Case{"12345", "Graf2009- 12345.txt", "12345"},
        Case{"123456", "Graf2009-123456.txt", "123456"}}) {
    const QString name = GraphFileName(2009, QString::fromLatin1(one.station));
    EXPECT_EQ(name, QString::fromLatin1(one.name));
    EXPECT_EQ(StationOfGraphFile(name), QString::fromLatin1(one.shown));
    EXPECT_EQ(WaterYearOfGraphFile(name), 2009);
  }
  EXPECT_EQ(GraphFileName(9, QStringLiteral("1")), QStringLiteral("Graf0009-     1.txt"));
  EXPECT_EQ(WaterYearOfGraphFile(QStringLiteral("Grafik notlari.txt")), 0);
  EXPECT_EQ(StationOfGraphFile(QStringLiteral("Graf2009-12345.txt")), QString());
}

TEST_F(GraphFile, RecordsHaveThirtyTwoBytesWhateverTheLevel) {
  struct Case {
    double levelCm;
    QByteArray field;
  };
  const std::vector<Case> cases = {{123, "   123"},     {-5, "    -5"},     {12.5, "  12.5"},
                                   {0, "     0"},       {1234.5, "1234.5"}, {1234.56, "234.56"},
                                   {-12345.6, "2345.6"}};
  std::vector<Reading> readings;
  for (const Case& one : cases) readings.push_back(At(one.levelCm));
  GraphFileWritten written;
  const QByteArray content = Write(readings, &written);
  ASSERT_EQ(content.size(), static_cast<qsizetype>(cases.size()) * kGraphRecordBytes);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    EXPECT_EQ(content.mid(static_cast<qsizetype>(i) * 32, 32),
              "01/10/2008,12:30," + cases[i].field + ",01-ort\r\n");
  }
  EXPECT_EQ(written.records, 7);
  EXPECT_EQ(written.cutRecords, (std::vector<qint64>{6, 7})) << "only a lost sign blank is no loss";
}

TEST_F(GraphFile, LabelsNameKindAndSourceFile) {
  std::vector<Reading> readings = {At(1), At(2, ReadingKind::Maximum), At(3, ReadingKind::Minimum)};
  readings[2].sourceFile = 12;
  const QByteArray content = Write(readings);
  EXPECT_EQ(content.mid(24, 6), "01-ort");
  EXPECT_EQ(content.mid(56, 6), "01-Max");
  EXPECT_EQ(content.mid(88, 6), "12-Min");
}

TEST_F(GraphFile, AReadingWithoutLevelEndsTheFile) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Write({At(1), At(none), At(3)}).size(), 32);
  EXPECT_EQ(Write({}).size(), 0) << "an empty grid replaces the file of an earlier draw";
}

TEST_F(GraphFile, RecordsAreReadByNumber) {
  const QByteArray content = Write({At(1), At(22)});
  EXPECT_FALSE(GraphRecordAt(content, 0));
  ASSERT_TRUE(GraphRecordAt(content, 2));
  EXPECT_EQ(GraphRecordAt(content, 2)->level.toByteArray(), "    22");
  EXPECT_EQ(GraphRecordAt(content, 2)->label.toByteArray(), "01-ort");
  EXPECT_FALSE(GraphRecordAt(content, 3));
  EXPECT_EQ(GraphRecordCount(content + "01/1"), 2) << "fewer than five bytes are no record";
  EXPECT_EQ(GraphRecordCount(content + "01/10"), 3);
  EXPECT_TRUE(GraphRecordAt(content + "01/10", 3)->label.isEmpty());
}

TEST_F(GraphFile, FailuresNameTheFile) {
  const auto written =
      WriteGraphFile(directory_ + QStringLiteral("missing/"), 2009, QStringLiteral("12345"), {});
  ASSERT_FALSE(written);
  EXPECT_TRUE(written.Failure().path.contains(QStringLiteral("Graf2009- 12345.txt")));
  EXPECT_FALSE(ReadGraphFile(directory_ + QStringLiteral("none.txt")));
  EXPECT_FALSE(ReadGraphFile(directory_));
}

}  // namespace
}  // namespace vesk

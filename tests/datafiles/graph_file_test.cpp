#include "datafiles/graph_file.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <limits>

namespace vesk {
namespace {

using namespace std::chrono_literals;

Reading At(double levelCm, ReadingKind kind = ReadingKind::Ordinary, int sourceFile = 1) {
  Reading reading;
  reading.day = Day(2008y / 10 / 1);
  reading.minuteOfDay = 750;
  reading.levelCm = levelCm;
  reading.kind = kind;
  reading.sourceFile = static_cast<std::uint8_t>(sourceFile);
  return reading;
}

class GraphFile : public testing::Test {
 protected:
  QByteArray Write(const std::vector<Reading>& readings) {
    auto result = WriteGraphFile(directory_, 2009, QStringLiteral("001-12345"), readings);
    EXPECT_TRUE(result);
    if (!result) return {};
    written_ = *result;
    const auto content = ReadGraphFile(directory_ + QStringLiteral("Graf2009--12345.txt"));
    EXPECT_TRUE(content);
    return content ? *content : QByteArray();
  }

  QTemporaryDir folder_;
  QString directory_ = folder_.path() + QLatin1Char('/');
  GraphFileWritten written_;
};

TEST_F(GraphFile, RecordsHaveThirtyTwoBytesWhateverTheLevel) {
  const QByteArray content = Write({At(123), At(-5, ReadingKind::Maximum), At(12.5, ReadingKind::Minimum, 12),
                                    At(0), At(1234.5), At(1234.56), At(-12345.6)});
  EXPECT_EQ(content.toStdString(),
            "01/10/2008,12:30,   123,01-ort\r\n"
            "01/10/2008,12:30,    -5,01-Max\r\n"
            "01/10/2008,12:30,  12.5,12-Min\r\n"
            "01/10/2008,12:30,     0,01-ort\r\n"
            "01/10/2008,12:30,1234.5,01-ort\r\n"
            "01/10/2008,12:30,234.56,01-ort\r\n"
            "01/10/2008,12:30,2345.6,01-ort\r\n");
  EXPECT_TRUE(IsOwnGraphFile(written_.name, content));
  for (const char* other : {"01/10/2008,12:30,   123,01-ort\n", "01/10/2008,12:30,   123,01-Ort\r\n",
                            "01/10/2008,12:30,      ,01-ort\r\n", "01/10/2008,12:30,   123,01-ort"}) {
    EXPECT_FALSE(IsOwnGraphFile(written_.name, other)) << other;
  }
  EXPECT_EQ(GraphRecordCount(content.first(64 + 5)), 2) << "five bytes are no record";
  EXPECT_EQ(GraphRecordCount(content.first(64 + 6)), 3);
  EXPECT_EQ(written_.records, 7);
  EXPECT_EQ(written_.cutRecords, (std::vector<qint64>{6, 7})) << "only a lost sign blank is no loss";
}

TEST_F(GraphFile, AReadingWithoutLevelEndsTheFile) {
  EXPECT_EQ(Write({At(1), At(std::numeric_limits<double>::quiet_NaN()), At(3)}).size(), 32);
  EXPECT_EQ(Write({}).size(), 0) << "an empty grid replaces the file of an earlier draw";
}

TEST_F(GraphFile, FailuresNameTheFile) {
  const auto written = WriteGraphFile(directory_ + QStringLiteral("none/"), 2009, QStringLiteral("1"), {});
  ASSERT_FALSE(written);
  EXPECT_TRUE(written.Failure().path.contains(QStringLiteral("Graf2009-     1.txt")));
  EXPECT_FALSE(ReadGraphFile(directory_));
}

}  // namespace
}  // namespace vesk

#include "tools/sample_data.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>

#include <algorithm>
#include <set>

#include "datafiles/data_lines.h"
#include "datafiles/raw_header.h"

namespace vesk::sample {
namespace {

struct Decoded {
  HeaderReading header = HeaderRefusal{};
  std::vector<Reading> readings;
  DataLineTally tally;
};

Decoded Decode(const RawFilePlan& plan) {
  const QByteArray bytes = RawFileBytes(plan);
  Decoded decoded;
  decoded.header = ReadRawHeader(bytes, {}, RawFileName(plan));
  const RawHeader& header = decoded.header ? *decoded.header : decoded.header.Failure().header;
  decoded.tally = DecodeDataLines(bytes, header.HeaderEnd, 1, {}, decoded.readings);
  return decoded;
}

std::vector<Reading> OfKind(const std::vector<Reading>& readings, ReadingKind kind) {
  std::vector<Reading> found;
  std::copy_if(readings.begin(), readings.end(), std::back_inserter(found),
               [kind](const Reading& reading) { return reading.kind == kind; });
  return found;
}

const RawFilePlan& SampleFile(const std::vector<SampleStation>& stations, const QString& name) {
  for (const SampleStation& station : stations) {
    for (const RawFilePlan& plan : station.files) {
      if (RawFileName(plan) == name) return plan;
    }
  }
  throw std::runtime_error("no such sample file");
}

// Figures in the documentation and in other tests stand on these bytes: a change here is made on purpose or
// not at all.
TEST(SampleData, TheSameBytesOnEveryMachine) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  for (const SampleStation& station : SampleStations()) {
    for (const RawFilePlan& plan : station.files) hash.addData(RawFileBytes(plan));
  }
  EXPECT_EQ(hash.result().toHex(), "1861d689d11e4d58e5346299c4c3c5ab32c9361c3b38d598bde2ae5cc2b91c07");
}

TEST(SampleData, EveryFileIsReadWithoutALeftover) {
  std::set<QByteArray> types;
  for (const SampleStation& station : SampleStations()) {
    for (const RawFilePlan& plan : station.files) {
      SCOPED_TRACE(RawFileName(plan).toStdString());
      const Decoded decoded = Decode(plan);
      EXPECT_EQ(RawFileName(plan).left(9), station.entry);
      EXPECT_EQ(decoded.header.Ok(), plan.version != "12");
      EXPECT_EQ((decoded.header ? *decoded.header : decoded.header.Failure().header).StationNo,
                station.entry.right(5));
      EXPECT_EQ(decoded.tally.refused, 0);
      EXPECT_EQ(decoded.tally.blank, 0);
      EXPECT_EQ(decoded.tally.kept, static_cast<qint64>(decoded.readings.size()));
      EXPECT_TRUE(std::is_sorted(decoded.readings.begin(), decoded.readings.end(),
                                 [](const Reading& a, const Reading& b) { return a.day < b.day; }));
      types.insert(LoggerText(plan.logger));
    }
  }
  EXPECT_EQ(types.size(), 3U);
}

TEST(SampleData, OddThingsAreWhereTheyAreSaidToBe) {
  const auto stations = SampleStations();
  const auto river = Decode(SampleFile(stations, QStringLiteral("101-12001-241201.txt")));
  EXPECT_TRUE(std::any_of(river.readings.begin(), river.readings.end(), [](const Reading& reading) {
    return reading.Time() == At(2024, 5, 17, 14) && reading.levelCm == 999;
  }));
  const auto well = OfKind(Decode(SampleFile(stations, QStringLiteral("102-20510-241001.txt"))).readings,
                           ReadingKind::Ordinary);
  const auto slow = Decode(SampleFile(stations, QStringLiteral("103-31007-240401.txt")));
  std::chrono::minutes longestGap{0};
  for (std::size_t i = 1; i < well.size(); ++i) {
    longestGap = std::max(longestGap, well[i].Time() - well[i - 1].Time());
  }
  EXPECT_EQ(longestGap, std::chrono::hours(9 * 24 + 1));
  const DateTime still = At(2024, 2, 14);
  for (const Reading& reading : slow.readings) {
    EXPECT_FALSE(DateTime(reading.day) == still && reading.kind != ReadingKind::Ordinary);
  }
  EXPECT_EQ(slow.header->LastRecordTime, At(2024, 4, 1, 0, 47));
}

}  // namespace
}  // namespace vesk::sample

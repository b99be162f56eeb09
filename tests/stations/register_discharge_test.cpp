// Gaugings, catchments and curves in the register.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

#include <csignal>

#include "datafiles/dates.h"
#include "stations/register_maker.h"
#include "stations/station_register.h"
#include "support/other_process.h"

namespace vesk {
namespace {

QString Text(const char* text) {
  return QString::fromUtf8(text);
}

Gauging GaugingAt(const char* time, double m3s) {
  Gauging gauging;
  if (*time != 0) gauging.time = ReadDateTime(QString::fromLatin1(time));
  gauging.levelCm = 123.25;
  gauging.dischargeM3s = m3s;
  return gauging;
}

class RegisterDischarge : public testing::Test {
 protected:
  RegisterDischarge() {
    test::MakeRegister(path_);
    test::SqlHand(path_).Do("INSERT INTO IstNoAd VALUES ('12001', 'Irmak')");
  }
  StationRegister Open(StationRegister::Access access = StationRegister::Access::ReadWrite) {
    auto opened = StationRegister::Open(path_, access);
    EXPECT_TRUE(opened);
    return std::move(*opened);
  }
  std::vector<GaugingChange> Add(StationRegister& stations, const std::vector<Gauging>& gaugings) {
    std::vector<GaugingChange> changes;
    for (const Gauging& gauging : gaugings) changes.push_back({{}, StoredGauging{0, gauging}});
    auto made = stations.ChangeGaugings(number_, changes);
    EXPECT_TRUE(made && *made);
    return made && *made ? **made : changes;
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(Text("Istasyon.mdb"));
  QString number_ = Text("12001");
};

TEST_F(RegisterDischarge, GaugingsComeBackAsTheyWereInOrderOfTime) {
  StationRegister stations = Open();
  EXPECT_TRUE(stations.GaugingsOf(number_)->empty()) << "no table yet";
  Gauging whole = GaugingAt("05/10/2023 14:30", 0.000123456789012345);
  whole.uncertaintyPercent = 4.5;
  whole.method = Text("Muline \"küçük\"");
  whole.party = Text("Öztürk; Ş.");
  whole.remark = Text("=1+1\nikinci satır");
  whole.used = false;
  const Gauging timeless = GaugingAt("", 7);
  const Gauging early = GaugingAt("31/12/1999 23:59", 300);
  Add(stations, {timeless, whole, early});
  const auto read = Open(StationRegister::Access::ReadOnly).GaugingsOf(number_);
  ASSERT_TRUE(read);
  ASSERT_EQ(read->size(), 3U);
  EXPECT_EQ((*read)[0].gauging, early);
  EXPECT_EQ((*read)[1].gauging, whole);
  EXPECT_EQ((*read)[2].gauging, timeless);
  EXPECT_TRUE(Open().GaugingsOf(Text("12002"))->empty());
  EXPECT_EQ(Open().Stations()->size(), 1U) << "the table of numbers and names is another one";
}

TEST_F(RegisterDischarge, ChangesAreMadeAllOrNoneAndTakenBackUnderTheirKeys) {
  StationRegister stations = Open();
  const auto added = Add(stations, {GaugingAt("05/10/2023 14:30", 1), GaugingAt("06/10/2023 14:30", 2)});
  const StoredGauging first = *added[0].after, second = *added[1].after;
  EXPECT_NE(first.key, second.key);

  // Another one has changed the second meanwhile: the deletion of the first is not made either.
  test::SqlHand(path_).Do("UPDATE IstOlcum SET DebiM3s = 2.5 WHERE DebiM3s = 2");
  const auto refused = stations.ChangeGaugings(number_, {{first, {}}, {second, {}}});
  ASSERT_TRUE(refused);
  EXPECT_FALSE(refused->has_value());
  EXPECT_EQ(stations.GaugingsOf(number_)->size(), 2U);
  // A fault in one stops all.
  EXPECT_FALSE(stations.ChangeGaugings(number_, {{{}, StoredGauging{0, GaugingAt("07/10/2023 10:00", 3)}},
                                                 {{}, StoredGauging{0, Gauging()}}}));
  EXPECT_EQ(stations.GaugingsOf(number_)->size(), 2U);

  const auto deleted = stations.ChangeGaugings(number_, {{first, {}}});
  ASSERT_TRUE(deleted && *deleted);
  Add(stations, {GaugingAt("08/10/2023 10:00", 4)});
  const auto back = stations.ChangeGaugings(number_, {{{}, first}});
  ASSERT_TRUE(back && *back);
  EXPECT_EQ((*back)->front().after->key, first.key) << "no other has got it";
  // Nor does a change of another station's row pass.
  EXPECT_FALSE(stations.ChangeGaugings(Text("12002"), {{first, {}}})->has_value());
}

TEST_F(RegisterDischarge, ARowThatIsNoGaugingIsNamed) {
  {
    StationRegister stations = Open();
    Add(stations, {GaugingAt("05/10/2023 14:30", 1)});
  }
  test::SqlHand(path_).Do("UPDATE IstOlcum SET SeviyeCm = 'yüz'");
  const auto level = Open().GaugingsOf(number_);
  ASSERT_FALSE(level);
  EXPECT_TRUE(level.Failure().English().contains(Text("row 1"))) << level.Failure().English().toStdString();
  EXPECT_TRUE(level.Failure().English().contains(Text("SeviyeCm")));
  test::SqlHand(path_).Do("UPDATE IstOlcum SET SeviyeCm = 1, Zaman = '2023-13-05 10:00'");
  EXPECT_TRUE(Open().GaugingsOf(number_).Failure().English().contains(Text("2023-13-05")));
  test::SqlHand(path_).Do("UPDATE IstOlcum SET Zaman = NULL, DebiM3s = -1");
  EXPECT_FALSE(Open().GaugingsOf(number_));
}

// Its journal holds the pages as they were; a reader that may not write cannot put them back.
TEST_F(RegisterDischarge, WhatAKilledWriterLeftHalfDoneKeepsNobodyFromReading) {
  {
    StationRegister stations = Open();
    Add(stations, {GaugingAt("05/10/2023 14:30", 1)});
  }
  test::OtherProcess killed([this](test::OtherProcess::Signals&) {
    test::SqlHand hand(path_);
    hand.Do("PRAGMA cache_size = 2");
    hand.Do("BEGIN");
    hand.Do(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
        "INSERT INTO IstNoAd SELECT i, hex(zeroblob(200)) FROM n");
    ::kill(::getpid(), SIGKILL);
  });
  EXPECT_EQ(killed.WaitForEnd(), -1);
  ASSERT_TRUE(QFile::exists(path_ + Text("-journal"))) << "nothing was left half done";
  const auto read = StationRegister::Open(path_, StationRegister::Access::ReadOnly);
  ASSERT_TRUE(read) << read.Failure().English().toStdString();
  EXPECT_EQ(read->GaugingsOf(number_)->size(), 1U);
  EXPECT_EQ(read->Stations()->size(), 1U) << "all or none";
}

TEST_F(RegisterDischarge, ACorrectedNumberTakesItsGaugingsAlong) {
  StationRegister stations = Open();
  Add(stations, {GaugingAt("05/10/2023 14:30", 1), GaugingAt("06/10/2023 14:30", 2)});
  ASSERT_TRUE(*stations.SetFacts(number_, {}, {.catchmentKm2 = 7}));
  const auto renumber = [&stations](const QString& to) {
    const auto changed = stations.Change(stations.Stations()->front(), StationField::Number, to);
    EXPECT_TRUE(changed && *changed);
  };
  renumber(Text("12010"));
  EXPECT_TRUE(stations.GaugingsOf(number_)->empty());
  EXPECT_EQ(stations.GaugingsOf(Text("12010"))->size(), 2U);
  EXPECT_EQ(stations.FactsOf(Text("12010"))->catchmentKm2, 7);
  // Another row of the number, or a number with gaugings of its own: they stay where they are.
  ASSERT_TRUE(stations.Add(Text("12010"), Text("the same once more")));
  renumber(Text("12020"));
  EXPECT_EQ(stations.GaugingsOf(Text("12010"))->size(), 2U);
  ASSERT_TRUE(
      stations.ChangeGaugings(Text("12020"), {{{}, StoredGauging{0, GaugingAt("01/01/2020 10:00", 9)}}}));
  const auto second = stations.Stations()->back();
  ASSERT_TRUE(stations.Change(second, StationField::Number, Text("12020")));
  EXPECT_EQ(stations.GaugingsOf(Text("12010"))->size(), 2U);
  EXPECT_EQ(stations.GaugingsOf(Text("12020"))->size(), 1U);
  EXPECT_EQ(stations.FactsOf(Text("12020"))->catchmentKm2, 7) << "each table by itself";
}

TEST_F(RegisterDischarge, CatchmentAndCurveAreKeptUnlessAnotherChangedThem) {
  StationRegister stations = Open();
  EXPECT_EQ(*stations.FactsOf(number_), StationFacts());
  const StationFacts facts{.catchmentKm2 = 1234.5, .curve = Text("Anahtar/E12001.dat")};
  EXPECT_TRUE(*stations.SetFacts(number_, {}, facts));
  EXPECT_EQ(*LookupStationFacts(path_, number_), facts);
  EXPECT_FALSE(*stations.SetFacts(number_, {}, {.catchmentKm2 = 5})) << "read before the others wrote";
  EXPECT_FALSE(stations.SetFacts(number_, facts, {.catchmentKm2 = -5}));
  EXPECT_EQ(*stations.FactsOf(number_), facts);
  test::SqlHand(path_).Do("UPDATE IstDebi SET HavzaKm2 = 'bin'");
  const auto read = stations.FactsOf(number_);
  ASSERT_FALSE(read);
  EXPECT_TRUE(read.Failure().English().contains(Text("HavzaKm2")));
}

}  // namespace
}  // namespace vesk

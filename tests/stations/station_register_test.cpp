#include "stations/station_register.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "stations/register_maker.h"
#include "support/other_process.h"

namespace vesk {
namespace {

using test::BytesOf;
using test::SqlHand;

class Register : public testing::Test {
 protected:
  void SetUp() override { test::MakeRegister(path_); }

  std::string Lookup(const char* number) const {
    const auto name = LookupStationName(path_, QString::fromLatin1(number));
    return name ? name->toStdString() : "failed: " + name.Failure().English().toStdString();
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("Istasyon.mdb"));
};

TEST_F(Register, LooksNamesUpByNumber) {
  EXPECT_EQ(Lookup("12345"), "-") << "an empty table";
  SqlHand(path_).Do(
      "INSERT INTO IstNoAd VALUES ('12345', 'Çığlı'), ('12345', 'second'), ('22222', NULL), ('33333', '')");
  EXPECT_EQ(Lookup("12345"), "Çığlı");
  for (const char* number : {"22222", "33333", "99999", "", "1234"}) EXPECT_EQ(Lookup(number), "") << number;
}

TEST_F(Register, ATextMatchesAnEqualNumericField) {
  SqlHand hand(path_);
  hand.Do("DROP TABLE IstNoAd");
  hand.Do("CREATE TABLE IstNoAd (No INTEGER, Ad TEXT)");
  hand.Do("INSERT INTO IstNoAd VALUES (0, 'zero'), (12345, 'numeric')");
  EXPECT_EQ(Lookup("12345"), "numeric");
  EXPECT_EQ(Lookup("0000"), "zero");
  EXPECT_EQ(Lookup("abc"), "") << "no number, so not equal to 0";
}

TEST_F(Register, WhatIsNoRegisterIsNamedAndLeftAlone) {
  const QByteArray sqlite = BytesOf(path_);
  SqlHand(path_).Do("ALTER TABLE IstNoAd RENAME TO Other");
  const struct {
    const char* name;
    QByteArray bytes;
    const char* reason;
  } kCases[] = {{"old", QByteArray("\x00\x01\x00\x00Standard Jet DB\x00", 20) + QByteArray(4096, '\0'),
                 "old desktop engine"},
                {"text", "12345;Name\r\n", "no SQLite database"},
                {"empty", {}, "empty"},
                {"cut", sqlite.left(1000), ""},
                {"damaged", sqlite.left(100) + QByteArray(sqlite.size() - 100, 'x'), ""},
                {"other", BytesOf(path_), "IstNoAd"}};
  for (const auto& c : kCases) {
    const QString path = folder_.filePath(QLatin1String(c.name));
    ASSERT_TRUE(test::WriteBytes(path, c.bytes));
    const auto opened = OpenStationDatabase(path);
    ASSERT_FALSE(opened) << c.name;
    EXPECT_EQ(opened.Failure().path, path);
    EXPECT_FALSE(opened.Failure().reason.English().isEmpty()) << c.name;
    EXPECT_TRUE(opened.Failure().reason.English().contains(QLatin1String(c.reason)))
        << opened.Failure().reason.English().toStdString();
    EXPECT_FALSE(LookupStationName(path, QStringLiteral("1"))) << c.name;
    EXPECT_EQ(BytesOf(path), c.bytes) << c.name;
  }
  const QString missing = folder_.filePath(QStringLiteral("none.mdb"));
  EXPECT_FALSE(OpenStationDatabase(missing));
  EXPECT_FALSE(QFile::exists(missing));
}

TEST_F(Register, ALockedFileIsReadAndRefusesChanges) {
  SqlHand hand(path_);
  hand.Do("INSERT INTO IstNoAd VALUES ('1', 'a')");
  auto stations = OpenStationDatabase(path_);
  ASSERT_TRUE(stations);
  const auto change = stations->Change({99, {}, {}, {}, {}}, StationField::Name, QStringLiteral("b"));
  EXPECT_TRUE(change && !*change) << "no such row";
  hand.Do("BEGIN IMMEDIATE");
  EXPECT_EQ(Lookup("1"), "a");
  const auto added = stations->Add(QStringLiteral("2"), {});
  ASSERT_FALSE(added);
  EXPECT_TRUE(added.Failure().reason.English().contains(QStringLiteral("locked")))
      << added.Failure().reason.English().toStdString();
}

TEST_F(Register, ChangesHoldOnlyForWhatWasRead) {
  SqlHand hand(path_);
  hand.Do("DROP TABLE IstNoAd");
  hand.Do("CREATE TABLE IstNoAd (No, Ad TEXT COLLATE NOCASE)");
  hand.Do("INSERT INTO IstNoAd VALUES (12345, NULL), ('1', 'ad')");
  auto stations = OpenStationDatabase(path_);
  ASSERT_TRUE(stations);
  const auto read = stations->Stations();
  const auto name = QStringLiteral("Çay");
  hand.Do("UPDATE IstNoAd SET Ad = 'AD' WHERE No = '1'");
  auto late = stations->Change((*read)[1], StationField::Number, QStringLiteral("2"));
  EXPECT_TRUE(late && !*late) << "the other's capitals count";

  auto named = stations->Change((*read)[0], StationField::Name, name);
  ASSERT_TRUE(named && *named) << "numbers and null are what was read, too";
  EXPECT_EQ((**named).storedNumber.typeId(), QMetaType::LongLong) << "the number was not written";
  auto again = stations->Change((*read)[0], StationField::Name, {});
  EXPECT_TRUE(again && !*again);
  const auto stale = stations->Delete((*read)[0]);
  EXPECT_TRUE(stale && !*stale);
  const auto deleted = stations->Delete(**named);
  ASSERT_TRUE(deleted && *deleted);

  hand.Do("INSERT INTO IstNoAd (rowid, No, Ad) VALUES (1, '9', 'in its place')");
  ASSERT_TRUE(stations->Restore(**deleted));
  const auto all = stations->Stations();
  ASSERT_EQ(all->size(), 3U);
  EXPECT_EQ((*all)[2].storedNumber, QVariant(12345));
  EXPECT_EQ((*all)[2].name, name);
}

bool Told(const char* what) {
  ADD_FAILURE() << what;
  return false;
}

/// Several processes add, change and delete; each counts what it was told was done.
TEST_F(Register, ProcessesThatWorkAtOnceLoseNothing) {
  constexpr int kProcesses = 3;
  constexpr int kRounds = 12;
  const auto work = [this](int process) {
    Result<StationRegister> stations = Error{};
    while (!stations) stations = OpenStationDatabase(path_);  // a busy register is told, and tried again
    for (int round = 0; round < kRounds; ++round) {
      const QString number = QStringLiteral("%1%2").arg(process).arg(round, 4, 10, QLatin1Char('0'));
      Result<Station> added = Error{};
      while (!added) added = stations->Add(number, {});
      Result<std::optional<Station>> named = Error{};
      while (!named) named = stations->Change(*added, StationField::Name, QStringLiteral("Ad ") + number);
      if (!*named) return Told("a change was refused");
      if (round % 3 != 0) continue;
      Result<std::optional<DeletedStation>> deleted = Error{};
      while (!deleted) deleted = stations->Delete(**named);
      if (!*deleted) return Told("a deletion was refused");
    }
    return true;
  };
  std::vector<std::unique_ptr<test::OtherProcess>> processes;
  for (int p = 1; p <= kProcesses; ++p) {
    processes.push_back(std::make_unique<test::OtherProcess>(
        [&work, p](test::OtherProcess::Signals& /*signals*/) { ::_exit(work(p) ? 0 : 1); }));
  }
  for (const auto& process : processes) EXPECT_EQ(process->WaitForEnd(), 0);
  const auto stored = OpenStationDatabase(path_)->Stations();
  EXPECT_EQ(stored->size(), static_cast<std::size_t>(kProcesses * kRounds * 2 / 3));
  for (const Station& station : *stored) EXPECT_EQ(station.name, QStringLiteral("Ad ") + station.number);
}

TEST_F(Register, TheShippedTemplateIsAnEmptyRegister) {
  path_ = folder_.filePath(QStringLiteral("copy.mdb"));
  ASSERT_TRUE(QFile::copy(QStringLiteral(VESK_RESOURCES "/IstSbl.mdb"), path_));
  ASSERT_TRUE(QFile::setPermissions(path_, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
  EXPECT_EQ(Lookup("12345"), "-");
  EXPECT_TRUE(OpenStationDatabase(path_)->Add(QStringLiteral("12345"), QStringLiteral("Ad")));
  EXPECT_EQ(Lookup("12345"), "Ad");
}

// Limits live in a table of their own: a register that has never had any stays as it is until some are kept.
TEST_F(Register, KeepsTheLimitsOfAStation) {
  const QString number = QStringLiteral("AB001");
  const QByteArray before = BytesOf(path_);
  auto stations = StationRegister::Open(path_);
  ASSERT_TRUE(stations);
  EXPECT_EQ(*stations->LimitsOf(number), std::nullopt);
  EXPECT_EQ(BytesOf(path_), before);
  const StationLimits limits{.spikeCm = 6.5, .flatHours = 24, .flatCm = 1, .lowestCm = -20};
  EXPECT_TRUE(*stations->SetLimits(number, std::nullopt, limits));
  EXPECT_EQ(*LookupStationLimits(path_, QStringLiteral("ab001")), limits) << "one station in either case";
  EXPECT_EQ(*LookupStationLimits(path_, QStringLiteral("AB002")), std::nullopt);
  // Somebody else has set others since these were read.
  const StationLimits others{.highestCm = 900};
  EXPECT_FALSE(*stations->SetLimits(number, std::nullopt, others));
  EXPECT_EQ(*stations->LimitsOf(number), limits);
  EXPECT_TRUE(*stations->SetLimits(number, limits, others));
  EXPECT_EQ(*stations->LimitsOf(number), others);
  EXPECT_TRUE(*stations->SetLimits(number, others, std::nullopt));
  EXPECT_EQ(*stations->LimitsOf(number), std::nullopt);
}

TEST_F(Register, ALimitThatIsNoNumberIsNamed) {
  auto stations = StationRegister::Open(path_);
  ASSERT_TRUE(*stations->SetLimits(QStringLiteral("12345"), std::nullopt, StationLimits{.spikeCm = 5}));
  SqlHand(path_).Do("UPDATE IstSinir SET EnDusukCm = 'zero'");
  const auto read = stations->LimitsOf(QStringLiteral("12345"));
  ASSERT_FALSE(read);
  for (const char* part : {"EnDusukCm", "\"zero\"", "expected a number"})
    EXPECT_TRUE(read.Failure().English().contains(QLatin1String(part)))
        << read.Failure().English().toStdString();
  EXPECT_FALSE(stations->SetLimits(QStringLiteral("12345"), std::nullopt, StationLimits{}))
      << "what cannot be read is not written over";
}

}  // namespace
}  // namespace vesk

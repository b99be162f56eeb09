#include "stations/station_register.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "stations/register_maker.h"

namespace vesk {
namespace {

using test::BytesOf;
using test::SqlHand;
using test::WriteBytes;

class Register : public testing::Test {
 protected:
  void SetUp() override { test::MakeRegister(path_); }

  StationRegister Open(StationRegister::Access access = StationRegister::Access::ReadWrite) const {
    auto opened = StationRegister::Open(path_, access);
    EXPECT_TRUE(opened) << opened.Failure().Text().toStdString();
    return std::move(*opened);
  }
  QString Lookup(const char* number) const {
    const auto name = LookupStationName(path_, QString::fromLatin1(number));
    EXPECT_TRUE(name);
    return name ? *name : QStringLiteral("failed");
  }
  QStringList Names() const {
    QStringList names;
    const auto stations = Open().Stations();
    for (const Station& station : *stations) names += station.number + QLatin1Char('=') + station.name;
    return names;
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("Istasyon.mdb"));
};

TEST_F(Register, KeepsStationsInStoredOrderWithTheirTurkishLetters) {
  StationRegister stations = Open();
  ASSERT_TRUE(stations.Add(QStringLiteral("20001"), QStringLiteral("Çığlı Deresi, İğdeşu")));
  const auto second = stations.Add(QStringLiteral("10002"), QStringLiteral("B"));
  ASSERT_TRUE(second);
  ASSERT_TRUE(stations.Add(QStringLiteral("10002"), QStringLiteral("twice")));
  EXPECT_EQ(Names(), QStringList({QStringLiteral("20001=Çığlı Deresi, İğdeşu"), QStringLiteral("10002=B"),
                                  QStringLiteral("10002=twice")}));
  ASSERT_TRUE(stations.Change({*second, QStringLiteral("10003"), QStringLiteral("ŞÖÜ")}));
  ASSERT_TRUE(stations.Delete(*second + 1));
  EXPECT_EQ(Names(),
            QStringList({QStringLiteral("20001=Çığlı Deresi, İğdeşu"), QStringLiteral("10003=ŞÖÜ")}));
  EXPECT_FALSE(stations.Change({99, QStringLiteral("1"), QString()}));
}

TEST_F(Register, LooksNamesUpByNumber) {
  EXPECT_EQ(Lookup("12345"), QStringLiteral("-"));  // an empty table
  SqlHand(path_).Do(
      "INSERT INTO IstNoAd VALUES ('12345', 'first'), ('12345', 'second'), ('22222', NULL), ('33333', '')");
  EXPECT_EQ(Lookup("12345"), QStringLiteral("first"));
  for (const char* number : {"22222", "33333", "99999", "", "1234"})
    EXPECT_EQ(Lookup(number), QString()) << number;
}

TEST_F(Register, ATextMatchesAnEqualNumericField) {
  SqlHand hand(path_);
  hand.Do("DROP TABLE IstNoAd");
  hand.Do("CREATE TABLE IstNoAd (No INTEGER, Ad TEXT)");
  hand.Do("INSERT INTO IstNoAd VALUES (0, 'zero'), (12345, 'numeric'), (12346.0, 'real')");
  EXPECT_EQ(Lookup("12345"), QStringLiteral("numeric"));
  EXPECT_EQ(Lookup("12346"), QStringLiteral("real"));
  EXPECT_EQ(Lookup("0000"), QStringLiteral("zero"));
  EXPECT_EQ(Lookup("abc"), QString());  // no number, so not equal to 0
}

TEST_F(Register, WhatIsNoRegisterIsNamedAndLeftAlone) {
  const QByteArray sqlite = BytesOf(path_);
  const struct {
    const char* name;
    QByteArray bytes;
    const char* reason;
  } kCases[] = {{"old", QByteArray("\x00\x01\x00\x00Standard Jet DB\x00", 20) + QByteArray(4096, '\0'),
                 "old desktop engine"},
                {"text", "12345;Name\r\n", "no SQLite database"},
                {"empty", {}, "empty"},
                {"cut", sqlite.left(1000), ""},
                {"damaged", sqlite.left(100) + QByteArray(sqlite.size() - 100, 'x'), ""}};
  for (const auto& c : kCases) {
    const QString path = folder_.filePath(QLatin1String(c.name));
    ASSERT_TRUE(WriteBytes(path, c.bytes));
    const auto opened = StationRegister::Open(path);
    ASSERT_FALSE(opened) << c.name;
    EXPECT_EQ(opened.Failure().path, path);
    EXPECT_FALSE(opened.Failure().reason.isEmpty()) << c.name;
    EXPECT_TRUE(opened.Failure().reason.contains(QLatin1String(c.reason)))
        << opened.Failure().reason.toStdString();
    EXPECT_FALSE(LookupStationName(path, QStringLiteral("1"))) << c.name;
    EXPECT_EQ(BytesOf(path), c.bytes) << c.name;
  }
  EXPECT_FALSE(StationRegister::Open(folder_.path()));
}

TEST_F(Register, AMissingFileIsNotCreatedAndAMissingTableIsTold) {
  const QString missing = folder_.filePath(QStringLiteral("none.mdb"));
  EXPECT_FALSE(StationRegister::Open(missing));
  EXPECT_FALSE(LookupStationName(missing, QStringLiteral("1")));
  EXPECT_FALSE(QFile::exists(missing));
  SqlHand(path_).Do("ALTER TABLE IstNoAd RENAME TO Other");
  const auto opened = StationRegister::Open(path_);
  ASSERT_FALSE(opened);
  EXPECT_TRUE(opened.Failure().reason.contains(QStringLiteral("IstNoAd")));
}

TEST_F(Register, ALockedOrReadOnlyFileRefusesChangesAndKeepsItsRows) {
  SqlHand hand(path_);
  hand.Do("INSERT INTO IstNoAd VALUES ('1', 'a')");
  StationRegister readOnly = Open(StationRegister::Access::ReadOnly);
  EXPECT_FALSE(readOnly.Add(QStringLiteral("2"), QString()));
  EXPECT_FALSE(readOnly.Delete(1));

  StationRegister stations = Open();
  hand.Do("BEGIN IMMEDIATE");
  EXPECT_EQ(Lookup("1"), QStringLiteral("a"));
  const auto added = stations.Add(QStringLiteral("2"), QString());
  ASSERT_FALSE(added);
  EXPECT_TRUE(added.Failure().reason.contains(QStringLiteral("locked")))
      << added.Failure().reason.toStdString();
  hand.Do("COMMIT");
  EXPECT_EQ(Names(), QStringList({QStringLiteral("1=a")}));
}

TEST_F(Register, TheShippedTemplateIsAnEmptyRegister) {
  const QString copy = folder_.filePath(QStringLiteral("copy.mdb"));
  ASSERT_TRUE(QFile::copy(QStringLiteral(VESK_RESOURCES "/IstSbl.mdb"), copy));
  ASSERT_TRUE(QFile::setPermissions(copy, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
  EXPECT_EQ(*LookupStationName(copy, QStringLiteral("12345")), QStringLiteral("-"));
  auto stations = StationRegister::Open(copy);
  ASSERT_TRUE(stations);
  ASSERT_TRUE(stations->Add(QStringLiteral("12345"), QStringLiteral("Ad")));
  EXPECT_EQ(*LookupStationName(copy, QStringLiteral("12345")), QStringLiteral("Ad"));
}

}  // namespace
}  // namespace vesk

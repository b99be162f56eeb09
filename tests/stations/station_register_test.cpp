#include "stations/station_register.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "stations/register_maker.h"

namespace vesk {
namespace {

using test::BytesOf;
using test::SqlHand;

class Register : public testing::Test {
 protected:
  void SetUp() override { test::MakeRegister(path_); }

  std::string Lookup(const char* number) const {
    const auto name = LookupStationName(path_, QString::fromLatin1(number));
    return name ? name->toStdString() : "failed: " + name.Failure().Text().toStdString();
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
    EXPECT_FALSE(opened.Failure().reason.isEmpty()) << c.name;
    EXPECT_TRUE(opened.Failure().reason.contains(QLatin1String(c.reason)))
        << opened.Failure().reason.toStdString();
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
  EXPECT_FALSE(stations->Change({99, QStringLiteral("1"), {}})) << "no such row";
  hand.Do("BEGIN IMMEDIATE");
  EXPECT_EQ(Lookup("1"), "a");
  const auto added = stations->Add(QStringLiteral("2"), {});
  ASSERT_FALSE(added);
  EXPECT_TRUE(added.Failure().reason.contains(QStringLiteral("locked")))
      << added.Failure().reason.toStdString();
}

TEST_F(Register, TheShippedTemplateIsAnEmptyRegister) {
  path_ = folder_.filePath(QStringLiteral("copy.mdb"));
  ASSERT_TRUE(QFile::copy(QStringLiteral(VESK_RESOURCES "/IstSbl.mdb"), path_));
  ASSERT_TRUE(QFile::setPermissions(path_, QFileDevice::ReadOwner | QFileDevice::WriteOwner));
  EXPECT_EQ(Lookup("12345"), "-");
  EXPECT_TRUE(OpenStationDatabase(path_)->Add(QStringLiteral("12345"), QStringLiteral("Ad")));
  EXPECT_EQ(Lookup("12345"), "Ad");
}

}  // namespace
}  // namespace vesk

#include "datafiles/raw_header.h"
#include "datafiles/dates.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "datafiles/header_checks.h"
#include "datafiles/marker.h"
#include "support/raw_file_writer.h"

namespace vesk {
namespace {

DateTime T(const char* text) {
  return *ReadDateTime(QString::fromLatin1(text));
}

class RawHeaderTest : public testing::Test {
 protected:
  RawHeaderTest() {
    sketch_.first = T("30/09/2008 23:30");
    sketch_.last = T("02/10/2008 00:10");
    sketch_.stepMinutes = 10;
  }

  HeaderReading Decode(const QByteArray& content) const {
    return ReadRawHeader(content, folderName_, QStringLiteral("001-12345-010203.txt"));
  }
  static std::string Said(const HeaderReading& reading, HeaderScope scope = HeaderScope::SingleFile) {
    std::string text;
    for (const Message& note : HeaderNotes(reading, scope)) text += note.English().toStdString() + '|';
    return text;
  }
  QByteArray FileBytes(const QString& name) {
    QFile file(folderName_ + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  QTemporaryDir folder_;
  QString folderName_ = folder_.path() + QLatin1Char('/');
  test::RawFileSketch sketch_;
};

TEST_F(RawHeaderTest, FillsTheRecord) {
  const QByteArray content = test::SketchContent(sketch_).replace(
      "Setup                     30/09/2008 23:30", "Setup                     29/09/2008 7:05:30");
  const HeaderReading reading = Decode(content);
  ASSERT_TRUE(reading);
  const RawHeader& header = *reading;
  EXPECT_EQ(header.SetupTime, T("29/09/2008 07:05"));
  EXPECT_EQ(header.FirstClock, QStringLiteral("23:30"));
  EXPECT_EQ(header.LastClock, QStringLiteral("0:10")) << "clock texts are not padded";
  EXPECT_EQ(header.FirstWaterYear, 2008);
  EXPECT_EQ(header.LastWaterYear, 2009);
  EXPECT_EQ(header.WaterYearStart, QStringLiteral("01/10/2007"));
  EXPECT_EQ(header.DaysCovered, 2);
  EXPECT_EQ(header.CompanionName, folderName_ + QStringLiteral("001-1234_-010203.txt.xxx"));
  EXPECT_EQ(content.mid(header.HeaderEnd - 1, 10), "30/09/2008") << "the data lines begin there";
}

TEST_F(RawHeaderTest, AcceptsTheVersionsInUseOnly) {
  const std::pair<const char*, bool> rows[] = {{"10", true}, {"11", true},  {"21", true},  {"1", true},
                                               {"4", false}, {"12", false}, {"20", false}, {"V10", false}};
  for (const auto& [version, accepted] : rows) {
    sketch_.version = version;
    const HeaderReading reading = Decode(test::SketchContent(sketch_));
    ASSERT_EQ(reading.Ok(), accepted) << version;
    if (accepted) continue;
    const HeaderRefusal& refusal = reading.Failure();
    EXPECT_EQ(refusal.fault, HeaderFault::Version);
    EXPECT_EQ(refusal.header.WaterYearsText, QStringLiteral(" 2008 - 2009"));
    EXPECT_EQ(refusal.header.DaysCovered, 0);
    EXPECT_EQ(Said(reading), "Version Hatasi|");
    EXPECT_TRUE(refusal.detail.English().contains(QStringLiteral("line 3")));
  }
}

TEST_F(RawHeaderTest, CorrectionCodesAreTold) {
  const struct {
    const char* firstLine;
    HeaderScope scope;
    const char* note;
  } rows[] = {
      {"01", HeaderScope::SingleFile, "-Bu dosyada seviye düzeltmesi yapılmış.|"},
      {" 02 ", HeaderScope::WaterYear, "-Su Yılını Oluşturan Dosyalarda zaman düzeltmesi yapılmış.|"},
      {"03", HeaderScope::SingleFile, "-Bu dosyada hem zaman hem de seviye düzeltmesi yapılmış.|"},
      {"1", HeaderScope::SingleFile, ""},
      {"sefnor  ", HeaderScope::SingleFile, ""},
  };
  for (const auto& row : rows) {
    sketch_.firstLine = row.firstLine;
    EXPECT_EQ(Said(Decode(test::SketchContent(sketch_)), row.scope), row.note) << row.firstLine;
  }
}

TEST_F(RawHeaderTest, BadHeadersAreNamedAndNeverCrash) {
  const QByteArray good = test::SketchContent(sketch_);
  QByteArray badDate = good;
  badDate.replace("First record              30/09/2008", "First record              31/09/2008");
  const struct {
    const char* name;
    QByteArray content;
    const char* expectedInDetail;
  } rows[] = {
      {"empty", QByteArray(), "line 1"},
      {"cut in the middle of line 9", good.left(good.indexOf("First record") + 20), "line 9"},
      {"unreadable date", badDate, "line 9"},
      {"year of two digits", QByteArray(badDate).replace("31/09/2008", "30/09/08"), "line 9"},
      {"first behind last", QByteArray(badDate).replace("31/09/2008", "30/09/2028"), "line 10"},
      {"binary", QByteArray(5000, '\xff'), "line 1"},
      {"UTF-16", QByteArray(reinterpret_cast<const char*>(u"00/00/0000\n00"), 24).repeated(40), "line 8"},
  };
  for (const auto& row : rows) {
    const HeaderReading reading = Decode(row.content);
    ASSERT_FALSE(reading) << row.name;
    EXPECT_NE(Said(reading), "") << row.name;
    EXPECT_TRUE(reading.Failure().detail.English().contains(QLatin1String(row.expectedInDetail)))
        << row.name << ": " << reading.Failure().detail.English().toStdString();
  }
  EXPECT_TRUE(Decode(QByteArray(good).replace("\r\n", "\n"))) << "LF line ends are read";
}

TEST_F(RawHeaderTest, AFreshFileIsStampedOnceAndNothingElseOfItChanges) {
  sketch_.firstLine = "sefnor  ";
  const QString name = test::WriteSketch(folderName_, sketch_);
  const QByteArray fresh = FileBytes(name);
  ASSERT_TRUE(ReadHeaderOfFile(folderName_, name));
  EXPECT_EQ(FileBytes(name), fresh) << "reading writes nothing";
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(StampMarker(folderName_ + name));
    EXPECT_EQ(FileBytes(name), "        \r\n" + fresh.mid(10)) << "round " << round;
  }
}

TEST_F(RawHeaderTest, WhatIsNoFileIsToldFromWhatIsNotThere) {
  const QString name = QStringLiteral("001-12345-010203.txt");
  const HeaderReading missing = ReadHeaderOfFile(folderName_, name);
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.Failure().fault, HeaderFault::Missing);
  EXPECT_EQ(Said(missing), "");
  ASSERT_TRUE(QDir(folder_.path()).mkdir(name));
  const HeaderReading folder = ReadHeaderOfFile(folderName_, name);
  ASSERT_FALSE(folder);
  EXPECT_EQ(folder.Failure().fault, HeaderFault::Unreadable);
  EXPECT_TRUE(folder.Failure().detail.English().contains(name));
  EXPECT_NE(Said(folder), "");
}

}  // namespace
}  // namespace vesk

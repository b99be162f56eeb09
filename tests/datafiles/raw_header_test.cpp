#include "datafiles/raw_header.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "datafiles/header_checks.h"
#include "support/english.h"
#include "support/raw_file_writer.h"

namespace vesk {
namespace {

DateTime T(const char* text) {
  return *ReadDateTime(QString::fromLatin1(text));
}

class RawHeaderTest : public testing::Test {
 protected:
  RawHeaderTest() {
    sinks_.dataDirectory = folder_.path() + QLatin1Char('/');
    sinks_.messages = &messages_;
    sinks_.cells = &cells_;
    sketch_.first = T("30/09/2008 23:30");
    sketch_.last = T("02/10/2008 00:10");
    sketch_.stepMinutes = 10;
  }

  RawHeaderReading Decode(const QByteArray& content, HeaderScope scope = HeaderScope::SingleFile) {
    return DecodeRawHeader(content, QStringLiteral("001-12345-010203.txt"), scope, HeaderMode::Full, sinks_);
  }
  RawHeaderReading Read(const QString& name) {
    return ReadRawHeader(name, HeaderScope::SingleFile, HeaderMode::HeaderOnly, sinks_);
  }
  QByteArray FileBytes(const QString& name) {
    QFile file(sinks_.dataDirectory + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  QTemporaryDir folder_;
  std::vector<Message> messages_;
  SetupCells cells_;
  HeaderSinks sinks_;
  test::RawFileSketch sketch_;
};

TEST_F(RawHeaderTest, FillsTheRecordAndTheCells) {
  sinks_.stationName = QStringLiteral("Çayırhan");
  const QByteArray content = test::SketchContent(sketch_).replace(
      "Setup                     30/09/2008 23:30", "Setup                     29/09/2008 7:05:30");
  const RawHeader header = Decode(content).header;
  EXPECT_EQ(header.FirstClock, QStringLiteral("23:30"));
  EXPECT_EQ(header.LastClock, QStringLiteral("0:10")) << "clock texts are not padded";
  EXPECT_EQ(header.FirstWaterYear, 2008);
  EXPECT_EQ(header.LastWaterYear, 2009);
  EXPECT_EQ(header.WaterYearStart, QStringLiteral("01/10/2007"));
  EXPECT_EQ(header.DaysCovered, 2);
  EXPECT_EQ(header.CompanionName, sinks_.dataDirectory + QStringLiteral("001-1234_-010203.txt.xxx"));
  EXPECT_EQ(content.mid(header.HeaderEnd - 1, 10), "30/09/2008") << "the data lines begin there";
  EXPECT_EQ(QStringList(cells_.begin(), cells_.end()).join(QLatin1Char('|')).toStdString(),
            "10|Optical Encoder||26|7|12345|Çayırhan|29/09/2008 07:05|30/09/2008 23:30|02/10/2008 00:10"
            "| 2 Gün|149 Adet|10 Dak.|10 Dak.| 2008 - 2009");
}

TEST_F(RawHeaderTest, AcceptsTheVersionsInUseOnly) {
  const std::pair<const char*, bool> rows[] = {{"10", true}, {"11", true},  {"21", true}, {"1", true},
                                               {"4", false}, {"12", false}, {"20", false}};
  for (const auto& [version, accepted] : rows) {
    sketch_.version = version;
    const RawHeaderReading reading = Decode(test::SketchContent(sketch_));
    EXPECT_EQ(reading.Usable(), accepted) << version;
    EXPECT_EQ(reading.header.WaterYearsText, QStringLiteral(" 2008 - 2009"));
    if (accepted) continue;
    EXPECT_EQ(reading.errorText, QStringLiteral("Version Hatasi"));
    EXPECT_EQ(InEnglish(messages_), std::vector{QStringLiteral("Version Hatasi")});
    EXPECT_EQ(reading.header.DaysCovered, 0);
    EXPECT_TRUE(reading.detail.English().contains(QStringLiteral("line 3")))
        << reading.detail.English().toStdString();
  }
}

TEST_F(RawHeaderTest, NotesCorrectionCodesOnce) {
  const struct {
    const char* firstLine;
    HeaderScope scope;
    const char* note;
  } rows[] = {
      {"01", HeaderScope::SingleFile, "-Bu dosyada seviye düzeltmesi yapılmış."},
      {" 02 ", HeaderScope::WaterYear, "-Su Yılını Oluşturan Dosyalarda zaman düzeltmesi yapılmış."},
      {"03", HeaderScope::SingleFile, "-Bu dosyada hem zaman hem de seviye düzeltmesi yapılmış."},
      {"1", HeaderScope::SingleFile, ""},
      {"sefnor  ", HeaderScope::SingleFile, ""},
  };
  for (const auto& row : rows) {
    sketch_.firstLine = row.firstLine;
    for (int round = 0; round < 2; ++round) {
      EXPECT_TRUE(Decode(test::SketchContent(sketch_), row.scope).Usable());
      EXPECT_EQ(messages_.empty() ? "" : messages_[0].English().toStdString(), row.note);
      EXPECT_LE(messages_.size(), 1U) << row.firstLine;
    }
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
    const RawHeaderReading reading = Decode(row.content);
    EXPECT_FALSE(reading.Usable()) << row.name;
    EXPECT_FALSE(messages_.empty()) << row.name;
    EXPECT_TRUE(reading.detail.English().contains(QLatin1String(row.expectedInDetail)))
        << row.name << ": " << reading.detail.English().toStdString();
  }
  EXPECT_TRUE(Decode(QByteArray(good).replace("\r\n", "\n")).Usable()) << "LF line ends are read";
}

TEST_F(RawHeaderTest, StampsAFreshFileOnceAndNothingElse) {
  sketch_.firstLine = "sefnor  ";
  const QString name = test::WriteSketch(sinks_.dataDirectory, sketch_);
  const QByteArray fresh = FileBytes(name);
  ASSERT_TRUE(Read(name).Usable());
  EXPECT_EQ(FileBytes(name), fresh) << "without the request nothing is written";
  sinks_.stampMarker = true;
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(Read(name).Usable());
    EXPECT_EQ(FileBytes(name), "        \r\n" + fresh.mid(10)) << "round " << round;
  }
}

TEST_F(RawHeaderTest, FoldersAreToldAndMissingFilesAreNoError) {
  const QString name = QStringLiteral("001-12345-010203.txt");
  EXPECT_TRUE(Read(name).Usable());
  ASSERT_TRUE(QDir(folder_.path()).mkdir(name));
  const RawHeaderReading reading = Read(name);
  EXPECT_EQ(reading.errorText, UnknownErrorText());
  EXPECT_TRUE(reading.detail.English().contains(name));
}

}  // namespace
}  // namespace vesk

#include "datafiles/raw_header.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "datafiles/header_checks.h"
#include "platform/code_page.h"
#include "support/raw_file_writer.h"

namespace vesk {
namespace {

using test::RawFileSketch;

DateTime T(const char* text) {
  return *ReadDateTime(QString::fromLatin1(text));
}

class RawHeaderTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(folder_.isValid());
    sinks_.dataDirectory = folder_.path() + QLatin1Char('/');
    sinks_.messages = &messages_;
    sinks_.cells = &cells_;
    sketch_.first = T("30/09/2008 23:30");
    sketch_.last = T("02/10/2008 00:10");
    sketch_.stepMinutes = 10;
  }

  RawHeaderReading Read(const QByteArray& content, HeaderScope scope = HeaderScope::SingleFile) {
    return DecodeRawHeader(content, QStringLiteral("001-12345-010203.txt"), scope, HeaderMode::Full, sinks_);
  }

  QByteArray FileBytes(const QString& name) {
    QFile file(sinks_.dataDirectory + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  QTemporaryDir folder_;
  std::vector<QString> messages_;
  SetupCells cells_;
  HeaderSinks sinks_;
  RawFileSketch sketch_;
};

TEST_F(RawHeaderTest, FillsTheRecordAndTheCells) {
  sinks_.stationName = QStringLiteral("Çayırhan");
  const QByteArray content = test::SketchContent(sketch_);
  const RawHeader header = Read(content).header;
  EXPECT_EQ(header.FirstClock, QStringLiteral("23:30"));
  EXPECT_EQ(header.LastClock, QStringLiteral("0:10")) << "clock texts are not padded";
  EXPECT_EQ(header.FirstWaterYear, 2008);
  EXPECT_EQ(header.LastWaterYear, 2009);
  EXPECT_EQ(header.WaterYearStart, QStringLiteral("01/10/2007"));
  EXPECT_EQ(header.WaterYearsText, QStringLiteral(" 2008 - 2009"));
  EXPECT_EQ(header.DaysCovered, 2);
  EXPECT_EQ(header.CompanionName, sinks_.dataDirectory + QStringLiteral("001-1234_-010203.txt.xxx"));
  EXPECT_EQ(content.mid(header.HeaderEnd - 1, 10), "30/09/2008") << "the data lines begin there";
  const SetupCells expected = {QStringLiteral("10"),
                               QStringLiteral("Optical Encoder"),
                               QString(),
                               QStringLiteral("26"),
                               QStringLiteral("7"),
                               QStringLiteral("12345"),
                               QStringLiteral("Çayırhan"),
                               QStringLiteral("30/09/2008 23:30"),
                               QStringLiteral("30/09/2008 23:30"),
                               QStringLiteral("02/10/2008 00:10"),
                               QStringLiteral(" 2 Gün"),
                               QStringLiteral("149 Adet"),
                               QStringLiteral("10 Dak."),
                               QStringLiteral("10 Dak."),
                               QStringLiteral(" 2008 - 2009")};
  EXPECT_EQ(cells_, expected);
}

TEST_F(RawHeaderTest, AcceptsTheVersionsInUseOnly) {
  const struct {
    const char* version;
    bool accepted;
  } rows[] = {{"10", true}, {"11", true},  {"21", true}, {"1", true},
              {"4", false}, {"12", false}, {"20", false}};
  for (const auto& row : rows) {
    sketch_.version = row.version;
    const RawHeaderReading reading = Read(test::SketchContent(sketch_));
    EXPECT_EQ(reading.Usable(), row.accepted) << row.version;
    if (row.accepted) continue;
    EXPECT_EQ(reading.errorText, QStringLiteral("Version Hatasi"));
    EXPECT_EQ(messages_, std::vector{QStringLiteral("Version Hatasi")});
    EXPECT_EQ(reading.header.DaysCovered, 0);
    EXPECT_TRUE(reading.detail.contains(QStringLiteral("line 3"))) << reading.detail.toStdString();
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
      {"04", HeaderScope::SingleFile, ""},
      {"1", HeaderScope::SingleFile, ""},
      {"sefnor  ", HeaderScope::SingleFile, ""},
  };
  for (const auto& row : rows) {
    sketch_.firstLine = row.firstLine;
    for (int round = 0; round < 2; ++round) {
      EXPECT_TRUE(Read(test::SketchContent(sketch_), row.scope).Usable());
      const QString note = QString::fromUtf8(row.note);
      EXPECT_EQ(messages_, note.isEmpty() ? std::vector<QString>{} : std::vector{note}) << row.firstLine;
    }
  }
}

TEST_F(RawHeaderTest, BadHeadersAreNamedAndNeverCrash) {
  const QByteArray good = test::SketchContent(sketch_);
  QByteArray badDate = good;
  badDate.replace("First record              30/09/2008", "First record              31/09/2008");
  ASSERT_NE(badDate, good);
  const struct {
    const char* name;
    QByteArray content;
    const char* expectedInDetail;
  } rows[] = {
      {"empty", QByteArray(), "line 1"},
      {"cut in the middle of line 9", good.left(good.indexOf("First record") + 20), "line 9"},
      {"unreadable date", badDate, "line 9"},
      {"binary", QByteArray(5000, '\xff'), "line 1"},
      {"nul bytes", QByteArray(5000, '\0'), "line 1"},
      {"UTF-16", QByteArray(reinterpret_cast<const char*>(u"00/00/0000\n00"), 24).repeated(40), "line"},
  };
  for (const auto& row : rows) {
    const RawHeaderReading reading = Read(row.content);
    EXPECT_FALSE(reading.Usable()) << row.name;
    EXPECT_FALSE(messages_.empty()) << row.name;
    const bool version = reading.errorText == VersionErrorText();
    EXPECT_TRUE(version || reading.detail.contains(QLatin1String(row.expectedInDetail)))
        << row.name << ": " << reading.detail.toStdString();
  }
  const QByteArray lineFeeds = QByteArray(good).replace("\r\n", "\n");
  EXPECT_TRUE(Read(lineFeeds).Usable()) << "LF line ends are read";
  EXPECT_TRUE(Read("\xEF\xBB\xBF" + good).Usable())
      << "a byte order mark stands in line 1, which holds no value";
}

TEST_F(RawHeaderTest, StampsAFreshFileOnceAndNothingElse) {
  sketch_.firstLine = "sefnor  ";
  const QString name = test::WriteSketch(sinks_.dataDirectory, sketch_);
  const QByteArray fresh = FileBytes(name);
  ASSERT_TRUE(ReadRawHeader(name, HeaderScope::SingleFile, HeaderMode::HeaderOnly, sinks_).Usable());
  EXPECT_EQ(FileBytes(name), fresh) << "without the request nothing is written";
  sinks_.stampMarker = true;
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(ReadRawHeader(name, HeaderScope::SingleFile, HeaderMode::HeaderOnly, sinks_).Usable());
    EXPECT_EQ(FileBytes(name), "        \r\n" + fresh.mid(10)) << "round " << round;
  }
}

TEST_F(RawHeaderTest, MissingFilesAndFoldersAreTold) {
  EXPECT_TRUE(
      ReadRawHeader(QStringLiteral("001-00000-000000.txt"), HeaderScope::SingleFile, HeaderMode::Full, sinks_)
          .Usable())
      << "a missing file is no error of the reader";
  ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("001-12345-010203.txt")));
  const auto reading = ReadRawHeader(QStringLiteral("001-12345-010203.txt"), HeaderScope::SingleFile,
                                     HeaderMode::Full, sinks_);
  EXPECT_FALSE(reading.Usable());
  EXPECT_TRUE(reading.detail.contains(QStringLiteral("001-12345-010203.txt")));
}

}  // namespace
}  // namespace vesk

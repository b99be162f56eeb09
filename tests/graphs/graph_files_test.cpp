#include "graphs/graph_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vesk {
namespace {

class BuildGraphs : public testing::Test {
 protected:
  BuildGraphs() {
    Put("Graf2001- 11111.txt", "01/10/2000,00:00,   100,01-ort\r\n");
    Put("Graf2002- 11111.txt", "");  // of a year without readings
    Put("001-12345-010203.txt", "raw");
    language_.FillTurkish();
  }
  void Put(const char* name, const char* content) const {
    QFile file(directory_ + QString::fromLatin1(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) >= 0);
  }
  QString Files() const { return QDir(folder_.path()).entryList(QDir::Files).join(QLatin1Char(' ')); }
  Result<GraphFilesBuilt> Build(const char* list) const {
    const auto load = [](const GraphListEntry& entry) -> Result<LoadedReadings> {
      if (entry.station.Text() == QLatin1String("000-00000"))
        return Error{
            Wording{u"İstasyonun ham dosyası yok", u"No raw file of the station"}, entry.station.Text(), {}};
      LoadedReadings loaded;
      loaded.whole = entry.station.Text() != QLatin1String("009-99999");
      loaded.series = StationSeries({{.levelCm = 100, .day = entry.year.FirstDay()}});
      loaded.messages.push_back(Message::Verbatim(QStringLiteral("a note")));
      return loaded;
    };
    std::vector<GraphListEntry> entries;
    for (const QString& text : QString::fromLatin1(list).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
      entries.push_back({StationId(text), {text.section(QLatin1Char('/'), 1).toInt()}});
    }
    return BuildGraphFiles(directory_, entries, load, language_);
  }

  QTemporaryDir folder_;
  QString directory_ = folder_.path() + QLatin1Char('/');
  Language language_;
};

TEST_F(BuildGraphs, EveryEntryBecomesAFileAndEarlierOnesGo) {
  const auto built = Build("001-12345/2010 002-12345/2011");
  ASSERT_TRUE(built);
  EXPECT_EQ(Files(), QStringLiteral("001-12345-010203.txt Graf2010--12345.txt Graf2011--12345.txt"));
  ASSERT_EQ(built->files.size(), 2U);
  EXPECT_EQ(built->files[1].path, directory_ + QStringLiteral("Graf2011--12345.txt"));
  EXPECT_EQ(built->files[1].station, QStringLiteral("12345"));
  EXPECT_EQ(built->files[1].waterYear, 2011);
  EXPECT_EQ(built->messages.join(QLatin1Char(' ')),
            QStringLiteral("001-12345/2010: a note 002-12345/2011: a note"));
}

TEST_F(BuildGraphs, AListThatCannotBeDrawnIsRefusedBeforeAnythingIsDeleted) {
  const QString before = Files();
  for (const auto& [list, reason] :
       {std::pair("", "empty"),
        std::pair("001-1/2001 001-1/2002 001-1/2003 001-1/2004 001-1/2005", "5 entries"),
        std::pair("001-12345/2011 001-22222/2011 002-12345/2011", "001-12345 and 002-12345")}) {
    const auto built = Build(list);
    ASSERT_FALSE(built) << list;
    EXPECT_TRUE(built.Failure().reason.English().contains(QString::fromUtf8(reason))) << list;
    EXPECT_EQ(Files(), before);
  }
}

// A picture of the operator's, a note with a graph file's name, other spellings: all of it is kept.
TEST_F(BuildGraphs, WhatTheProgramDidNotWriteGoesToTheArchiveAndIsNamed) {
  const std::vector<std::pair<const char*, const char*>> foreign = {
      {"Grafik raporu.png", "a picture"},
      {"graf1.tmp", ""},
      {"Graf2003- 11111.txt", "01/10/2000,00:00,   100,01-ort\r\nremember the staff gauge\r\n"},
      {"Graf2004- 11111.txt", "01/10/2000,00:00,   100,01-ort\r\n01/10/2000,01:0"},
      {"Graf2010--12345.txt", "notes of mine under a name that is drawn next"}};
  for (const auto& [name, content] : foreign) Put(name, content);
  const auto built = Build("001-12345/2010");
  ASSERT_TRUE(built);
  EXPECT_EQ(Files(), QStringLiteral("001-12345-010203.txt Graf2010--12345.txt"));
  for (const auto& [name, content] : foreign) {
    const QString title = QString::fromLatin1(name);
    QFile kept(directory_ + QStringLiteral("Arsiv/") + title);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly)) << name;
    EXPECT_EQ(kept.readAll(), content) << name;
    EXPECT_EQ(built->messages.filter(title).size(), 1) << name;
  }
  EXPECT_EQ(QDir(directory_ + QStringLiteral("Arsiv")).entryList(QDir::Files).size(),
            static_cast<qsizetype>(foreign.size()))
      << "the program's own files are not kept";
}

TEST_F(BuildGraphs, LinksAndFoldersStayAndWhatCannotBeArchivedStaysToo) {
  ASSERT_TRUE(QFile::link(directory_ + QStringLiteral("001-12345-010203.txt"),
                          directory_ + QStringLiteral("Graf2001.lnk")));
  ASSERT_TRUE(QDir(directory_).mkpath(QStringLiteral("Graf old.d/inside")));
  Put("Arsiv", "a file has the archive folder's name");
  Put("Grafik.png", "a picture");
  const auto built = Build("001-12345/2010");
  ASSERT_TRUE(built);
  for (const char* name : {"Graf2001.lnk", "Graf old.d", "Grafik.png"}) {
    EXPECT_TRUE(QFile::exists(directory_ + QString::fromLatin1(name))) << name;
    EXPECT_EQ(built->messages.filter(QString::fromLatin1(name)).size(), 1) << name;
  }
  EXPECT_TRUE(QFile::exists(directory_ + QStringLiteral("001-12345-010203.txt")));
  ASSERT_TRUE(QDir(directory_).mkpath(QStringLiteral("Graf2011--12345.txt")));
  EXPECT_FALSE(Build("001-12345/2011"));
  EXPECT_TRUE(QFile::exists(directory_ + QStringLiteral("Graf2010--12345.txt"))) << "nothing is deleted yet";
}

TEST_F(BuildGraphs, AStationThatCannotBeLoadedIsNamedAndTheOthersAreDrawn) {
  const auto built = Build("001-12345/2010 000-00000/2010 009-99999/2010");
  ASSERT_TRUE(built);
  EXPECT_EQ(built->files.size(), 2U);
  ASSERT_EQ(built->notes.size(), 2);
  EXPECT_TRUE(built->notes.join(QLatin1Char(' ')).contains(QStringLiteral("000-00000/2010: İstasyonun ham")));
  EXPECT_TRUE(
      built->notes.join(QLatin1Char(' ')).contains(QStringLiteral("009-99999/2010: Yükleme tam değil")));
  const QString before = Files();
  EXPECT_FALSE(Build("000-00000/2010"));
  EXPECT_EQ(Files(), before) << "nothing was loaded, nothing is deleted";
}

}  // namespace
}  // namespace vesk

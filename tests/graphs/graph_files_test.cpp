#include "graphs/graph_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vesk {
namespace {

TEST(GraphList, EntriesCarryStationAndYear) {
  const QString text = GraphListText(QStringLiteral(" 12345"), QStringLiteral("2011 Dönüşmüş"));
  EXPECT_EQ(text, QStringLiteral("12345    /2011"));
  const auto entry = ReadGraphListText(text);
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->station, QStringLiteral("12345"));
  EXPECT_EQ(entry->waterYear, 2011);
  for (const char* bad : {"", "2011", "001-12345/20x1", "         /2011", "001-12345/0000"}) {
    EXPECT_FALSE(ReadGraphListText(QString::fromLatin1(bad))) << bad;
  }
}

class BuildGraphs : public testing::Test {
 protected:
  BuildGraphs() {
    for (const char* name : {"Graf2001- 11111.txt", "graf1.tmp", "001-12345-010203.txt"}) {
      QFile file(directory_ + QString::fromLatin1(name));
      EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    language_.FillTurkish();
  }
  QString Files() const { return QDir(folder_.path()).entryList(QDir::Files).join(QLatin1Char(' ')); }
  Result<GraphFilesBuilt> Build(const char* list) const {
    const auto load = [](const GraphListEntry& entry) -> Result<LoadedReadings> {
      LoadedReadings loaded;
      loaded.grid.Append({.levelCm = 100, .day = WaterYearFirstDay(entry.waterYear)});
      loaded.messages.push_back(QStringLiteral("a note"));
      return loaded;
    };
    return BuildGraphFiles(directory_, QString::fromLatin1(list).split(QLatin1Char(' '), Qt::SkipEmptyParts),
                           load, language_);
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
       {std::pair("", "empty"), std::pair("001-12345/2010 nonsense", "nonsense"),
        std::pair("001-1/2001 001-1/2002 001-1/2003 001-1/2004 001-1/2005", "5 entries"),
        std::pair("001-12345/2011 001-22222/2011 002-12345/2011", "001-12345 ve 002-12345")}) {
    const auto built = Build(list);
    ASSERT_FALSE(built) << list;
    EXPECT_TRUE(built.Failure().reason.contains(QString::fromUtf8(reason))) << list;
    EXPECT_EQ(Files(), before);
  }
}

}  // namespace
}  // namespace vesk

#include "graphs/graph_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vesk {
namespace {

TEST(GraphList, EntriesCarryStationAndYear) {
  const QString text = GraphListText(QStringLiteral("001-12345"), QStringLiteral("2011 Dönüşmüş"));
  EXPECT_EQ(text, QStringLiteral("001-12345/2011"));
  const auto entry = ReadGraphListText(text);
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->station, QStringLiteral("001-12345"));
  EXPECT_EQ(entry->waterYear, 2011);
  EXPECT_EQ(ReadGraphListText(GraphListText(QStringLiteral("12345"), QStringLiteral("2009 ")))->station,
            QStringLiteral("12345"));
  for (const char* bad : {"", "2011", "001-12345/20x1", "         /2011", "001-12345/0000"}) {
    EXPECT_FALSE(ReadGraphListText(QString::fromLatin1(bad))) << bad;
  }
}

class BuildGraphs : public testing::Test {
 protected:
  QStringList Files() const { return QDir(folder_.path()).entryList(QDir::Files); }
  void Touch(const char* name) const {
    QFile file(directory_ + QString::fromLatin1(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  static Result<LoadedReadings> Load(const GraphListEntry& entry) {
    if (entry.station.contains(QLatin1String("99999")))
      return Error{QStringLiteral("No such station"), {}, {}};
    LoadedReadings loaded;
    Reading reading;
    reading.day = WaterYearFirstDay(entry.waterYear);
    reading.levelCm = 100;
    loaded.grid.Append(reading);
    loaded.messages.push_back(entry.station);
    return loaded;
  }

  QTemporaryDir folder_;
  QString directory_ = folder_.path() + QLatin1Char('/');
};

TEST_F(BuildGraphs, EveryEntryBecomesAFileAndEarlierOnesGo) {
  Touch("Graf2001- 11111.txt");
  Touch("graf1.tmp");
  Touch("001-12345-010203.txt");
  const auto built = BuildGraphFiles(
      directory_, {QStringLiteral("001-12345/2010"), QStringLiteral("001-12345/2011")}, &BuildGraphs::Load);
  ASSERT_TRUE(built);
  EXPECT_EQ(Files(),
            (QStringList{QStringLiteral("001-12345-010203.txt"), QStringLiteral("Graf2010--12345.txt"),
                         QStringLiteral("Graf2011--12345.txt")}));
  ASSERT_EQ(built->files.size(), 2U);
  EXPECT_EQ(built->files[1].path, directory_ + QStringLiteral("Graf2011--12345.txt"));
  EXPECT_EQ(built->files[1].station, QStringLiteral("12345"));
  EXPECT_EQ(built->files[1].waterYear, 2011);
  EXPECT_EQ(built->messages.size(), 2);
}

TEST_F(BuildGraphs, AListThatCannotBeDrawnTouchesNothing) {
  Touch("Graf2001- 11111.txt");
  const QString entry = QStringLiteral("001-12345/2010");
  for (const QStringList& list : {QStringList{}, QStringList{entry, entry, entry, entry, entry},
                                  QStringList{entry, QStringLiteral("nonsense")}}) {
    EXPECT_FALSE(BuildGraphFiles(directory_, list, &BuildGraphs::Load));
    EXPECT_EQ(Files().size(), 1);
  }
}

TEST_F(BuildGraphs, TwoEntriesOfOneFileAreNamedAndNothingIsDeleted) {
  Touch("Graf2001- 11111.txt");
  const QStringList list = {QStringLiteral("001-12345/2011"), QStringLiteral("001-22222/2011"),
                            QStringLiteral("002-12345/2011")};
  for (const auto& [fill, word] : {std::pair(&Language::FillTurkish, "aynı dosyaya"),
                                   std::pair(&Language::FillEnglish, "the same file")}) {
    Language language;
    (language.*fill)();
    const auto built = BuildGraphFiles(directory_, list, &BuildGraphs::Load, language);
    ASSERT_FALSE(built);
    for (const char* part : {word, "001-12345", "002-12345", "2011", "Graf2011--12345.txt"}) {
      EXPECT_TRUE(built.Failure().reason.contains(QString::fromUtf8(part))) << part;
    }
    EXPECT_EQ(Files(), QStringList{QStringLiteral("Graf2001- 11111.txt")});
  }
  const QStringList apart = {list[0], QStringLiteral("002-12345/2010")};
  EXPECT_TRUE(BuildGraphFiles(directory_, apart, &BuildGraphs::Load)) << "other years are other files";
}

TEST_F(BuildGraphs, ALoadThatFailsIsTheCallersToShow) {
  const auto built = BuildGraphFiles(directory_, {QStringLiteral("001-99999/2010")}, &BuildGraphs::Load);
  ASSERT_FALSE(built);
  EXPECT_EQ(built.Failure().what, QStringLiteral("No such station"));
}

}  // namespace
}  // namespace vesk

#include "graphs/graph_pages.h"

#include <gtest/gtest.h>

#include <QDir>

#include "datafiles/helpers.h"

namespace vesk {
namespace {

using namespace std::chrono_literals;

DateTime Time(const char* text) {
  return ReadDateTime(QString::fromLatin1(text)).value_or(DateTime{});
}

TEST(GraphPages, TheFirstPageIsTheWholePeriod) {
  GraphSheet sheet;
  sheet.start = WaterYearFirstDay(2011);
  sheet.end = WaterYearLastDay(2012);
  sheet.series.emplace_back(std::vector<SeriesPoint>{{200, 5000, ReadingKind::Ordinary}}, true);
  const GraphPage page = WholePeriodPage(sheet);
  EXPECT_EQ(DateTimeText(page.start), QStringLiteral("01/10/2010 00:00"));
  EXPECT_EQ(DateTimeText(page.end), QStringLiteral("30/09/2012 23:59"));
  EXPECT_DOUBLE_EQ(page.maximumCm, 220);
}

TEST(GraphPages, ARectangleGivesTheSamePageFromEveryCorner) {
  const GraphCorner left{Time("05/11/2010 10:00"), 40};
  const GraphCorner right{Time("07/12/2010 11:30"), 180};
  for (const GraphPage& page : {PageOfCorners(left, right), PageOfCorners(right, left),
                                PageOfCorners({left.time, right.levelCm}, {right.time, left.levelCm}),
                                PageOfCorners({right.time, left.levelCm}, {left.time, right.levelCm})}) {
    EXPECT_EQ(page.start, left.time);
    EXPECT_EQ(page.end, right.time);
    EXPECT_EQ(page.maximumCm, 180);
    EXPECT_EQ(page.minimumCm, 40);
  }
}

TEST(GraphPages, ADayAndAMonthFallIntoTheWaterYear) {
  struct Case {
    const char* text;
    const char* date;  // empty: refused
  };
  for (const Case& one :
       {Case{"1.10", "01/10/2010"}, Case{"30.9", "30/09/2011"}, Case{"5/3", "05/03/2011"},
        Case{"5:11", "05/11/2010"}, Case{"31\\12", "31/12/2010"}, Case{" 01 . 01 ", "01/01/2011"},
        Case{"29.2", ""}, Case{"31.11", ""}, Case{"0.5", ""}, Case{"5.13", ""}, Case{"5", ""}, Case{"", ""},
        Case{"5.3.2011", ""}, Case{"-5.3", ""}, Case{"a.b", ""}, Case{"261.3", ""}, Case{"5.259", ""}}) {
    const auto day = ReadDayOfWaterYear(QString::fromLatin1(one.text), 2011);
    EXPECT_EQ(day ? DateText(*day) : QString(), QString::fromLatin1(one.date)) << one.text;
  }
  EXPECT_TRUE(ReadDayOfWaterYear(QStringLiteral("29.2"), 2012));
}

TEST(GraphPages, ADateRangeIncludesBothDays) {
  const GraphPage page = PageOfDates(Day(2010y / 11 / 5), Day(2010y / 11 / 5), 100);
  EXPECT_EQ(DateTimeText(page.start), QStringLiteral("05/11/2010 00:00"));
  EXPECT_EQ(DateTimeText(page.end), QStringLiteral("05/11/2010 23:59"));
}

TEST(GraphPages, TheTableHoldsElevenPagesAndReplacesTheLast) {
  PageTable pages(GraphPage{});
  EXPECT_FALSE(pages.CanGoBack());
  EXPECT_FALSE(pages.CanGoOn());
  for (int i = 1; i <= kLastPageNumber; ++i) EXPECT_TRUE(pages.Add({{}, {}, double(i), 0}));
  EXPECT_EQ(pages.Number(), 10);
  EXPECT_FALSE(pages.Add({{}, {}, 77, 0}));
  EXPECT_EQ(pages.Number(), 10);
  EXPECT_EQ(pages.Current().maximumCm, 77);
  pages.GoBack();
  EXPECT_EQ(pages.Current().maximumCm, 9);
  pages.GoFirst();
  EXPECT_FALSE(pages.CanGoBack());
  pages.GoOn();
  EXPECT_EQ(pages.Number(), 1);
  EXPECT_TRUE(pages.Add({{}, {}, 5, 0}));
  EXPECT_EQ(pages.LastNumber(), 2) << "a page made after going back is the last one";
  pages.GoOn();
  EXPECT_EQ(pages.Number(), 2);
}

TEST(PageImages, LiveInAFolderOfTheirOwnThatGoesWithThem) {
  QString folder;
  {
    PageImages images;
    folder = images.Folder();
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::green);
    images.Save(3, image);
    EXPECT_TRUE(QFile::exists(folder + QStringLiteral("/picture3")));
    EXPECT_EQ(images.Load(3, {40, 30}, 1).pixelColor(5, 5), QColor(Qt::green));
    EXPECT_TRUE(images.Load(3, {41, 30}, 1).isNull()) << "the window has another size now";
    EXPECT_TRUE(images.Load(4, {40, 30}, 1).isNull());
  }
  EXPECT_FALSE(QDir(folder).exists());
}

}  // namespace
}  // namespace vesk

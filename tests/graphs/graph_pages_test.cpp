#include "graphs/graph_pages.h"

#include <gtest/gtest.h>

#include "datafiles/helpers.h"

namespace vesk {
namespace {

TEST(GraphPages, ADayAndAMonthFallIntoTheWaterYear) {
  struct Case {
    const char* text;
    const char* date;  // empty: refused
  };
  for (const Case& one :
       {Case{"1.10", "01/10/2010"}, Case{"30.9", "30/09/2011"}, Case{"5/3", "05/03/2011"},
        Case{"5:11", "05/11/2010"}, Case{"31\\12", "31/12/2010"}, Case{" 01 . 01 ", "01/01/2011"},
        Case{"29.2", ""}, Case{"31.11", ""}, Case{"0.5", ""}, Case{"5.13", ""}, Case{"5", ""}, Case{"", ""},
        Case{"5.3.2011", ""}, Case{"-5.3", ""}, Case{"261.3", ""}, Case{"5.259", ""}}) {
    const auto day = ReadDayOfWaterYear(QString::fromLatin1(one.text), 2011);
    EXPECT_EQ(day ? DateText(*day) : QString(), QString::fromLatin1(one.date)) << one.text;
  }
  EXPECT_TRUE(ReadDayOfWaterYear(QStringLiteral("29.2"), 2012));
}

}  // namespace
}  // namespace vesk

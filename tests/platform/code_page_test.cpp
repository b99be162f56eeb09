#include "platform/code_page.h"

#include <gtest/gtest.h>

namespace vesk {
namespace {

TEST(CodePage, TurkishTextBecomesTheBytesThatTheFilesHold) {
  const QString text = QStringLiteral("ÇĞİÖŞÜ çğıöşü €–’");
  const QByteArray bytes("\xC7\xD0\xDD\xD6\xDE\xDC \xE7\xF0\xFD\xF6\xFE\xFC \x80\x96\x92");
  EXPECT_EQ(EncodeWindows1254(text), bytes);
  EXPECT_EQ(DecodeWindows1254(bytes), text);
  EXPECT_TRUE(FitsWindows1254(text));
}

TEST(CodePage, EveryByteSurvivesARoundTrip) {
  QByteArray all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(EncodeWindows1254(DecodeWindows1254(all)), all);
}

TEST(CodePage, WhatHasNoPlaceBecomesOneMark) {
  // Eth and thorn of Latin-1 gave way to Turkish letters; the wave lies beyond the basic plane.
  EXPECT_EQ(EncodeWindows1254(QStringLiteral("a\u00D0\u00FE\u03A9\U0001F30Ab")), "a????b");
  EXPECT_EQ(EncodeWindows1254(QString(QChar(0xD83C)) + QLatin1Char('x')), "?x") << "half of a pair";
  EXPECT_FALSE(FitsWindows1254(QStringLiteral("\u00D0")));
}

}  // namespace
}  // namespace vesk

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
  const QString text = DecodeWindows1254(all);
  EXPECT_EQ(text.size(), 256);
  EXPECT_EQ(EncodeWindows1254(text), all);
}

TEST(CodePage, LettersThatGaveWayToTurkishOnesAreNotEncoded) {
  // Eth, y with acute and thorn of Latin-1 have no place in the page; their bytes are Turkish letters.
  for (const char16_t character :
       {u'\u00D0', u'\u00DD', u'\u00DE', u'\u00F0', u'\u00FD', u'\u00FE', u'\u03A9'}) {
    const QString text(1, QChar(character));
    EXPECT_EQ(EncodeWindows1254(text), "?") << static_cast<int>(character);
    EXPECT_FALSE(FitsWindows1254(text));
  }
}

TEST(CodePage, CharactersBeyondTheBasicPlaneBecomeOneMark) {
  const QString wave = QStringLiteral("a\U0001F30Ab");
  EXPECT_EQ(EncodeWindows1254(wave), "a?b");
  EXPECT_EQ(EncodeWindows1254(QString(QChar(0xD83C)) + QLatin1Char('x')), "?x");  // half of a pair
}

}  // namespace
}  // namespace vesk

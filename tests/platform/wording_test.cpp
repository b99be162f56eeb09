#include "platform/wording.h"

#include <gtest/gtest.h>

#include "platform/result.h"

namespace vesk {
namespace {

constexpr Wording kMoved{u"%1 dosyasının adı %2 yapıldı (%3)", u"%2 is the new name of %1 (%3)"};
constexpr Wording kReason{u"disk dolu", u"the disk is full"};

TEST(WordingTest, FillsThePlacesOfTheLanguageThatIsSpoken) {
  // Places in another order, a name that looks like a place, a message and a number in places.
  const Message message(kMoved, QStringLiteral("a%2.txt"), Message(kReason), 24);
  EXPECT_EQ(message.English(), QStringLiteral("the disk is full is the new name of a%2.txt (24)"));
  EXPECT_EQ(message.In(LanguageChoice::Turkish),
            QStringLiteral("a%2.txt dosyasının adı disk dolu yapıldı (24)"));
  EXPECT_EQ(message.In(LanguageChoice::Unknown), message.In(LanguageChoice::Turkish));
}

TEST(WordingTest, AnErrorLeavesOutWhatIsEmpty) {
  const Error whole{kReason, QStringLiteral("/x/y"), Message::Verbatim(QStringLiteral("EIO"))};
  EXPECT_EQ(whole.In(LanguageChoice::Turkish), QStringLiteral("disk dolu: /x/y: EIO"));
  EXPECT_EQ((Error{{}, {}, kReason}).English(), QStringLiteral("the disk is full"));
  EXPECT_TRUE((Error{}).Said().IsEmpty());
}

}  // namespace
}  // namespace vesk

#include "platform/profile_file.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace vesk {
namespace {

const QString kSection = QStringLiteral("Genel");
const QString kKey = QStringLiteral("Dir");

TEST(ProfileText, ReadsAsTheClassicCallsDo) {
  const struct {
    const char* what;
    QByteArray content;
    const char* value;  // nullptr: missing
  } cases[] = {
      {"names without regard to case", "[GENEL]\r\ndIR=C:\\Data\\\r\n", "C:\\Data\\"},
      {"blanks around everything", "  [ Genel ]  \n \tDir \t=  a b  \n", "a b"},
      {"quotes", "[Genel]\nDir=\" a \"\n", " a "},
      {"unlike quotes stay", "[Genel]\nDir=\"a'\n", "\"a'"},
      {"one quote stays", "[Genel]\nDir=\"\n", "\""},
      {"value with an equals sign, no line end", "[Genel]\nDir=a=b", "a=b"},
      {"key without an equals sign", "[Genel]\nDir\n", ""},
      {"first of two keys", "[Genel]\nDir=1\nDir=2\n", "1"},
      {"first of two sections", "[Genel]\nOther=1\n[Genel]\nDir=2\n", nullptr},
      {"comment", "[Genel]\n;Dir=1\n", nullptr},
      {"other section", "Dir=0\n[Options]\nDir=1\n", nullptr},
      {"longer key", "[Genel]\nDir2=1\n", nullptr},
      {"header without its end", "[Genel\nDir=x\n", "x"},
      {"below a broken header", "[Genel]\nA=1\n[Opt\nDir=x\n", nullptr},
      {"byte order mark", "\xEF\xBB\xBF[Genel]\nDir=x\n", "x"},
      {"binary rubbish", QByteArray("\0\xFF[\0]=\n[Genel]\nDir=x\n", 21), "x"},
      {"Turkish letters", "[Genel]\nDir=\xDDzmir \xDE\n", "İzmir Ş"},
  };
  for (const auto& c : cases) {
    const std::optional<QString> value = ProfileText(c.content).Value(kSection, kKey);
    ASSERT_EQ(value.has_value(), c.value != nullptr) << c.what;
    EXPECT_EQ(value ? value->toStdString() : "", c.value ? c.value : "") << c.what;
  }
  const QByteArray longValue = "[Genel]\nDir=" + QByteArray(300, 'x') + "\n";
  EXPECT_EQ(ProfileText(longValue).Value(kSection, kKey)->size(), 254);
}

TEST(ProfileText, ChangesItsOwnLineOnly) {
  const struct {
    const char* what;
    QByteArray before;
    QByteArray after;
  } cases[] = {
      {"new file", "", "[Genel]\r\nDir=v\r\n"},
      {"value in its place", "; top\r\n[Genel]\r\nA=1\r\nDIR = old ; x\r\n\r\n[B]\r\nDir=2\r\n",
       "; top\r\n[Genel]\r\nA=1\r\nDIR =v\r\n\r\n[B]\r\nDir=2\r\n"},
      {"new key before the blank lines", "[Genel]\nA=1\n\n\n[B]\nC=1\n",
       "[Genel]\nA=1\nDir=v\n\n\n[B]\nC=1\n"},
      {"new key in an empty section", "[Genel]\n[B]\n", "[Genel]\nDir=v\n[B]\n"},
      {"new section", "[B]\nC=1\n", "[B]\nC=1\n[Genel]\nDir=v\n"},
      {"last line without an end", "[Genel]\r\nA=1", "[Genel]\r\nA=1\r\nDir=v\r\n"},
      {"key without an equals sign", "[Genel]\nDir\nA=1\n", "[Genel]\nDir=v\nA=1\n"},
      {"other bytes stay", "\xFF\x81\n[Genel\nDir=1\n\xDD=\xDE\n", "\xFF\x81\n[Genel\nDir=v\n\xDD=\xDE\n"},
  };
  for (const auto& c : cases) {
    ProfileText profile(c.before);
    profile.SetValue(kSection, kKey, QStringLiteral("v"));
    EXPECT_EQ(profile.Content().toStdString(), c.after.toStdString()) << c.what;
    EXPECT_EQ(profile.Value(kSection, kKey), QStringLiteral("v")) << c.what;
  }
}

TEST(ProfileText, AValueCannotBreakOutOfItsLine) {
  ProfileText profile;
  profile.SetValue(kSection, kKey, QStringLiteral("a\r\n[Options]\n21=ENGLISH"));
  EXPECT_EQ(profile.Content(), "[Genel]\r\nDir=a  [Options] 21=ENGLISH\r\n");
}

class ProfileFile : public testing::Test {
 protected:
  [[nodiscard]] QByteArray Content() const {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("vesk4.ini"));
};

TEST_F(ProfileFile, WritesSeveralValuesOrNone) {
  ASSERT_TRUE(
      WriteProfileValues(path_, kSection, {{kKey, QStringLiteral("Çay/")}, {QStringLiteral("B"), {}}}));
  const QByteArray before =
      "[Genel]\r\nDir=\xC7"
      "ay/\r\nB=\r\n";
  EXPECT_EQ(Content(), before);
  const Status unknownLetters = WriteProfileValues(
      path_, kSection, {{QStringLiteral("B"), QStringLiteral("1")}, {kKey, QStringLiteral("/home/Ωmega/")}});
  ASSERT_FALSE(unknownLetters);
  EXPECT_EQ(unknownLetters.Failure().path, path_ + QStringLiteral(" [Genel] Dir"));
  EXPECT_EQ(Content(), before);
  EXPECT_FALSE(WriteProfileValues(folder_.path(), kSection, {{kKey, QStringLiteral("x")}}));
}

}  // namespace
}  // namespace vesk

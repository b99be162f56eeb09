#include "platform/profile_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace vesk {
namespace {

const QString kSection = QStringLiteral("Genel");
const QString kKey = QStringLiteral("Dir");

QByteArray FileContent(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

void MakeFile(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(content), content.size());
}

TEST(ProfileText, ReadsAsTheClassicCallsDo) {
  const struct {
    const char* what;
    QByteArray content;
    const char* value;  // nullptr: missing
  } cases[] = {
      {"plain", "[Genel]\r\nDir=C:\\Data\\\r\n", "C:\\Data\\"},
      {"names without regard to case", "[GENEL]\ndIR=x\n", "x"},
      {"blanks around everything", "  [ Genel ]  \n \tDir \t=  a b  \n", "a b"},
      {"double quotes", "[Genel]\nDir=\" a \"\n", " a "},
      {"single quotes", "[Genel]\nDir=' a '\n", " a "},
      {"unlike quotes stay", "[Genel]\nDir=\"a'\n", "\"a'"},
      {"one quote stays", "[Genel]\nDir=\"\n", "\""},
      {"value with an equals sign", "[Genel]\nDir=a=b\n", "a=b"},
      {"empty value", "[Genel]\nDir=\n", ""},
      {"key without an equals sign", "[Genel]\nDir\n", ""},
      {"no line end", "[Genel]\nDir=x", "x"},
      {"first of two keys", "[Genel]\nDir=1\nDir=2\n", "1"},
      {"first of two sections", "[Genel]\nOther=1\n[Genel]\nDir=2\n", nullptr},
      {"comment", "[Genel]\n;Dir=1\n", nullptr},
      {"other section", "[Options]\nDir=1\n", nullptr},
      {"before any section", "Dir=1\n[Genel]\n", nullptr},
      {"longer key", "[Genel]\nDir2=1\n", nullptr},
      {"header without its end", "[Genel\nDir=x\n", "x"},
      {"keys below a broken header are not those of the section before", "[Genel]\nA=1\n[Opt\nDir=x\n",
       nullptr},
      {"byte order mark", "\xEF\xBB\xBF[Genel]\nDir=x\n", "x"},
      {"empty file", "", nullptr},
      {"binary rubbish", QByteArray("\0\xFF[\0]=\n[Genel]\nDir=x\n", 21), "x"},
  };
  for (const auto& c : cases) {
    const std::optional<QString> value = ProfileText(c.content).Value(kSection, kKey);
    ASSERT_EQ(value.has_value(), c.value != nullptr) << c.what;
    if (value) {
      EXPECT_EQ(value->toStdString(), c.value) << c.what;
    }
  }
}

TEST(ProfileText, CutsLongValuesAndReadsTurkishLetters) {
  const QByteArray content = "[Genel]\nDir=" + QByteArray(300, 'x') + "\nAd=\xDDzmir \xDE\n";
  EXPECT_EQ(ProfileText(content).Value(kSection, kKey)->size(), 254);
  EXPECT_EQ(*ProfileText(content).Value(kSection, QStringLiteral("Ad")), QStringLiteral("İzmir Ş"));
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
      {"broken header", "[Genel\nDir=1\n", "[Genel\nDir=v\n"},
      {"other bytes stay", "\xFF\x81\n[Genel]\nDir=1\n\xDD=\xDE\n", "\xFF\x81\n[Genel]\nDir=v\n\xDD=\xDE\n"},
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

TEST(WriteProfileValues, WritesSeveralValuesAndKeepsAnUnchangedFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("vesk4.ini"));
  const std::vector<ProfileEntry> entries = {{QStringLiteral("Dir"), QStringLiteral("Çay/")},
                                             {QStringLiteral("B"), QStringLiteral("2")}};
  ASSERT_TRUE(WriteProfileValues(path, kSection, entries).Ok());
  EXPECT_EQ(FileContent(path),
            "[Genel]\r\nDir=\xC7"
            "ay/\r\nB=2\r\n");

  ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
  ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
  EXPECT_TRUE(WriteProfileValues(path, kSection, entries).Ok()) << "nothing to change, nothing to write";
  ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

TEST(WriteProfileValues, RefusesWhatItCannotStoreAndLeavesTheFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("vesk4.ini"));
  const QByteArray before = "[Genel]\r\nDir=old\r\n";
  MakeFile(path, before);
  const Status unknownLetters = WriteProfileValues(path, kSection, {{kKey, QStringLiteral("/home/Ωmega/")}});
  ASSERT_FALSE(unknownLetters);
  EXPECT_EQ(unknownLetters.Failure().path, path + QStringLiteral(" [Genel] Dir"));
  EXPECT_EQ(FileContent(path), before);

  const QString noFolder = folder.filePath(QStringLiteral("none/vesk4.ini"));
  EXPECT_FALSE(WriteProfileValues(noFolder, kSection, {{kKey, QStringLiteral("x")}}));
  EXPECT_FALSE(WriteProfileValues(folder.path(), kSection, {{kKey, QStringLiteral("x")}}));
}

TEST(ProfileText, AFileThatIsTooLargeIsNotReadWhole) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("vesk4.ini"));
  MakeFile(path, {});
  ASSERT_TRUE(QFile::resize(path, 3LL << 30));  // sparse
  const Result<ProfileText> profile = ProfileText::Load(path);
  ASSERT_FALSE(profile);
  EXPECT_EQ(profile.Failure().path, path);
}

}  // namespace
}  // namespace vesk

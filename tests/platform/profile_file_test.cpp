#include "platform/profile_file.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/code_page.h"
#include "platform/locks.h"
#include "support/full_disk.h"
#include "support/other_process.h"

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

TEST(ProfileText, TellsUtf8OfAnEditorFromWindows1254) {
  const struct {
    const char* what;
    QByteArray bytes;
    ProfileEncoding encoding;
    const char* value;
  } cases[] = {
      {"Turkish letters of an editor", "Çığ Ölçüm", ProfileEncoding::Utf8, "Çığ Ölçüm"},
      {"one letter", "/home/ayşe/", ProfileEncoding::Utf8, "/home/ayşe/"},
      {"Greek and quotes", "Ωmega – “x”", ProfileEncoding::Utf8, "Ωmega – “x”"},
      {"Cyrillic", "/home/иван/", ProfileEncoding::Utf8, "/home/иван/"},
      {"Turkish letters of the classic calls", "\xC7\xFD\xF0", ProfileEncoding::Windows1254, "Çığ"},
      {"a capital and a sign, which is valid UTF-8", "DS\xDD\x92nin", ProfileEncoding::Windows1254,
       "DSİ’nin"},
      {"two of them",
       "\xAB"
       "DA\xD0\xBB, \xAB\xDC\xBB",
       ProfileEncoding::Windows1254, "«DAĞ», «Ü»"},
      {"UTF-8 that was cut", "\xC3\xA7 \xC3", ProfileEncoding::Windows1254, "Ã§ Ã"},
      {"nothing beyond ASCII", "C:\\Data", ProfileEncoding::Windows1254, "C:\\Data"},
  };
  for (const auto& c : cases) {
    const ProfileText profile("[Genel]\r\nDir=" + c.bytes + "\r\n");
    EXPECT_EQ(profile.Encoding(), c.encoding) << c.what;
    EXPECT_EQ(profile.Value(kSection, kKey).value_or(QString()).toStdString(), c.value) << c.what;
  }
  const ProfileText mixed("\xEF\xBB\xBF[Genel]\nDir=\xC7\xFD\xF0\n");
  EXPECT_EQ(mixed.Value(kSection, kKey), QStringLiteral("Çığ")) << "a line of an older hand in a marked file";
}

TEST(ProfileText, AFileKeepsItsEncodingAsLongAsItCanHoldTheValue) {
  const struct {
    const char* what;
    QByteArray before;
    const char* value;
    QByteArray after;
  } cases[] = {
      {"an editor's file", "; Ölçüm\n[Genel]\nDir=ç\n", "ğ", "; Ölçüm\n[Genel]\nDir=ğ\n"},
      {"a mark stays", "\xEF\xBB\xBF[Genel]\nDir=1\n", "ğ", "\xEF\xBB\xBF[Genel]\nDir=ğ\n"},
      {"the classic one", "; \xD6l\n[Genel]\nDir=1\n", "ğ", "; \xD6l\n[Genel]\nDir=\xF0\n"},
      {"a letter that it cannot hold", "; \xD6l\x81\n[Genel]\nDir=1\n", "Ω",
       "\xEF\xBB\xBF; Öl\xC2\x81\n[Genel]\nDir=Ω\n"},
      {"a new file", "", "Ω", "\xEF\xBB\xBF[Genel]\r\nDir=Ω\r\n"},
      {"its last letter goes", "[Genel]\nDir=ç\nA=1\n", "x", "[Genel]\nDir=x\nA=1\n"},
  };
  for (const auto& c : cases) {
    ProfileText profile(c.before);
    profile.SetValue(kSection, kKey, QString::fromUtf8(c.value));
    EXPECT_EQ(profile.Content().toStdString(), c.after.toStdString()) << c.what;
  }
}

/// Whatever two letters of the code page are stored, they are read back by the next start.
TEST(ProfileText, EveryPairOfLettersSurvives) {
  for (int first = 0x80; first < 0x100; ++first) {
    for (int second = 0x80; second < 0x100; ++second) {
      const QByteArray bytes{static_cast<char>(first), static_cast<char>(second)};
      const QString text = QChar(u'a') + DecodeWindows1254(bytes) + QChar(u'a');
      ProfileText profile("[Genel]\nDir=1\n");
      profile.SetValue(kSection, kKey, text);
      ASSERT_EQ(ProfileText(profile.Content()).Value(kSection, kKey), text) << first << ' ' << second;
    }
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
  EXPECT_FALSE(WriteProfileValues(folder_.path(), kSection, {{kKey, QStringLiteral("x")}}));
  EXPECT_EQ(Content(), before);
}

TEST_F(ProfileFile, TwoThatWriteAtOnceLoseNothing) {
  constexpr int kRounds = 30;
  std::vector<std::unique_ptr<test::OtherProcess>> processes;
  const QStringList keys{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")};
  for (const QString& key : keys) {
    processes.push_back(std::make_unique<test::OtherProcess>([&](test::OtherProcess::Signals& /*signals*/) {
      for (int round = 1; round <= kRounds; ++round) {
        // One that had to give up says so, and tries again.
        while (!WriteProfileValues(path_, kSection, {{key, QString::number(round)}})) continue;
      }
    }));
  }
  for (const auto& process : processes) EXPECT_EQ(process->WaitForEnd(), 0);
  for (const QString& key : keys) {
    EXPECT_EQ(ProfileText(Content()).Value(kSection, key), QString::number(kRounds)) << key.toStdString();
  }
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList(QStringLiteral("vesk4.ini")));
}

TEST_F(ProfileFile, OneThatIsBeingWrittenIsNotTouchedAndItsWriterNamed) {
  ASSERT_TRUE(WriteProfileValues(path_, kSection, {{kKey, QStringLiteral("1")}}));
  const auto lock = TryLock(path_ + QStringLiteral(".lock"), QStringLiteral("another window"));
  ASSERT_TRUE(lock && std::holds_alternative<FileLock>(*lock));
  const Status refused = WriteProfileValues(path_, kSection, {{kKey, QStringLiteral("2")}});
  ASSERT_FALSE(refused);
  EXPECT_TRUE(refused.Failure().path.contains(QString::number(::getpid())));
  EXPECT_TRUE(WriteProfileValues(path_, kSection, {{kKey, QStringLiteral("1")}})) << "nothing to write";
  EXPECT_EQ(Content(), "[Genel]\r\nDir=1\r\n");
}

/// The folder belongs to an administrator; the file was given to everybody.
TEST_F(ProfileFile, InAFolderThatCannotBeWrittenItIsWrittenInPlace) {
  ASSERT_TRUE(ProfileText("[Genel]\r\nDir=a long value\r\nB=1\r\n").Save(path_));
  ASSERT_EQ(::chmod(qPrintable(path_), 0666), 0);
  ASSERT_EQ(::chmod(qPrintable(folder_.path()), 0555), 0);
  test::OtherProcess operators([this](test::OtherProcess::Signals& /*signals*/) {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() == 0 && ::setuid(kNobody) != 0) ADD_FAILURE() << "still the administrator";
    EXPECT_TRUE(IsWrittenInPlace(path_));
    EXPECT_TRUE(WriteProfileValues(path_, kSection, {{kKey, QStringLiteral("x")}}));
    {
      const test::FullDisk full(10);
      EXPECT_FALSE(WriteProfileValues(path_, kSection, {{QStringLiteral("C"), QString(5000, u'c')}}));
    }
  });
  EXPECT_EQ(operators.WaitForEnd(), 0);
  ASSERT_EQ(::chmod(qPrintable(folder_.path()), 0755), 0);
  EXPECT_EQ(Content(), "[Genel]\r\nDir=x\r\nB=1\r\n");
}

}  // namespace
}  // namespace vesk

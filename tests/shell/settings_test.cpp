#include "shell/settings.h"

#include "shell/options.h"
#include "shell/program_folder_fixture.h"

namespace vesk {
namespace {

using SettingsTest = test::ProgramFolderTest;

TEST_F(SettingsTest, WhatIsMissingReadsAsEmpty) {
  const Settings settings(SettingsPath(), home_);
  EXPECT_EQ(settings.ReadSetting(QStringLiteral("Genel"), QStringLiteral("X")), QString());
  MakeSettings("[Genel]\r\nX=(error)\r\n");
  EXPECT_EQ(settings.ReadSetting(QStringLiteral("Genel"), QStringLiteral("X")), QString());
  EXPECT_EQ(settings.ReadSetting(QStringLiteral("Options"), QStringLiteral("01")), QString());
}

TEST_F(SettingsTest, FolderTextsEndInOneSlashOrFallBack) {
  MakeFolder(home_ + QStringLiteral("Data/Ham"));
  MakeFile(home_ + QStringLiteral("file"));
  const QString data = home_ + QStringLiteral("Data/");
  const struct {
    QString text;
    QString folder;
  } cases[] = {
      {{}, home_},
      {QStringLiteral("C:\\"), home_},
      {QStringLiteral("C:"), home_},
      {QStringLiteral("D:\\Data"), data},
      {QStringLiteral("D:\\Data\\"), data},
      {QStringLiteral("D:\\Data\\\\"), data},
      {QStringLiteral("D:\\Data\\\\Ham"), data + QStringLiteral("Ham/")},
      {data, data},
      {data.chopped(1), data},
      {data + QLatin1String("//"), data},
      {QStringLiteral("/"), QStringLiteral("/")},
      {QStringLiteral("D:\\None"), home_},
      {home_ + QStringLiteral("file"), home_},
      {QStringLiteral("\\\\server\\share"), home_},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(NormaliseFolderPath(c.text, home_).toStdString(), c.folder.toStdString())
        << c.text.toStdString();
  }
}

TEST_F(SettingsTest, EveryReadOfTheDataDirectoryRewritesIt) {
  MakeFolder(home_ + QStringLiteral("Data"));
  Settings settings(SettingsPath(), home_);
  MakeSettings("[Genel]\r\nDataDirectory=D:\\Data\r\nAnahtarDirectory=x\r\n");
  const QString data = home_ + QStringLiteral("Data/");
  EXPECT_EQ(settings.ReadDataDirectory(), data);
  EXPECT_EQ(SettingsContent(),
            "[Genel]\r\nDataDirectory=" + data.toStdString() + "\r\nAnahtarDirectory=x\r\n");

  MakeSettings("[Genel]\r\nDataDirectory=D:\\None\\\r\n");
  EXPECT_EQ(settings.ReadDataDirectory(), home_);
  EXPECT_EQ(SettingsContent(), "[Genel]\r\nDataDirectory=" + home_.toStdString() + "\r\n");
}

std::string FirstRunSettings(const QString& home) {
  const std::string root = home.toStdString();
  return "[Genel]\r\nDataDirectory=" + root + "Sefnor/\r\nArvelDataDirectory=" + root +
         "Sefnor/ArvelDat/"
         "\r\n[Options]\r\n01=1\r\n02=-2147483643\r\n03=16711680\r\n04=0\r\n05=0\r\n06=16711680\r\n"
         "07=33023\r\n11=3\r\n12=False\r\n13=True\r\n21=TURKCE\r\n";
}

TEST_F(SettingsTest, TheFirstRunWritesItsDefaultsOnce) {
  Settings settings(SettingsPath(), home_);
  MakeFile(program_ + QStringLiteral("ILK.SIL"));
  EXPECT_TRUE(InitialiseDefaults(program_, settings).empty());
  EXPECT_EQ(SettingsContent(), FirstRunSettings(home_));
  EXPECT_FALSE(QFile::exists(program_ + QStringLiteral("ILK.SIL")));
  EXPECT_TRUE(QDir(home_ + QStringLiteral("Sefnor/Arsiv")).exists());
  EXPECT_TRUE(QDir(home_ + QStringLiteral("Sefnor/ArvelDat")).exists());

  MakeSettings("[Genel]\r\n");
  EXPECT_TRUE(InitialiseDefaults(program_, settings).empty());
  EXPECT_EQ(SettingsContent(), "[Genel]\r\n");
}

TEST_F(SettingsTest, AProjectFileBesideTheMarkerKeepsEverythingAsItIs) {
  Settings settings(SettingsPath(), home_);
  MakeFile(program_ + QStringLiteral("ilk.sil"));
  MakeFile(program_ + QStringLiteral("Vesk4.VBP"));
  EXPECT_TRUE(InitialiseDefaults(program_, settings).empty());
  EXPECT_FALSE(QFile::exists(SettingsPath()));
  EXPECT_TRUE(QFile::exists(program_ + QStringLiteral("ilk.sil")));
}

TEST_F(SettingsTest, AFailedFirstRunKeepsTheMarkerAndNamesTheFile) {
  MakeFolder(SettingsPath());  // a folder in the place of the file
  Settings settings(SettingsPath(), home_);
  MakeFile(program_ + QStringLiteral("ilk.sil"));
  const std::vector<Error> failures = InitialiseDefaults(program_, settings);
  ASSERT_FALSE(failures.empty());
  EXPECT_EQ(failures.front().path, SettingsPath());
  EXPECT_TRUE(QFile::exists(program_ + QStringLiteral("ilk.sil")));
  EXPECT_TRUE(QDir(home_ + QStringLiteral("Sefnor/Arsiv")).exists());
}

TEST_F(SettingsTest, AMarkerThatCannotBeDeletedIsNamed) {
  Settings settings(SettingsPath(), home_);
  MakeFolder(program_ + QStringLiteral("ilk.sil"));
  const std::vector<Error> failures = InitialiseDefaults(program_, settings);
  ASSERT_EQ(failures.size(), 1U);
  EXPECT_EQ(failures.front().path, program_ + QStringLiteral("ilk.sil"));
  EXPECT_EQ(SettingsContent(), FirstRunSettings(home_));
}

TEST_F(SettingsTest, FortyOptionsSurviveASave) {
  QByteArray stored = "[Options]\r\n";
  for (int n = 1; n <= 40; ++n) {
    stored += QByteArray::number(n).rightJustified(2, '0') + "=value " + QByteArray::number(n) + "\r\n";
  }
  MakeSettings(stored);
  Settings settings(SettingsPath(), home_);
  Options options = LoadOptions(settings);
  for (int n = 1; n <= 40; ++n) EXPECT_EQ(options.Slot(n), QStringLiteral("value %1").arg(n));
  ASSERT_TRUE(SaveOptions(options, settings).Ok());
  EXPECT_EQ(SettingsContent(), stored.toStdString());

  options.Slot(1) = QStringLiteral("changed");
  ASSERT_TRUE(SaveOptions(options, settings).Ok());
  EXPECT_EQ(SettingsContent(), QByteArray(stored).replace("=value 1\r", "=changed\r").toStdString());
}

TEST_F(SettingsTest, SavingFewOptionsWritesAllForty) {
  Settings settings(SettingsPath(), home_);
  ASSERT_TRUE(SaveOptions(Options{}, settings).Ok());
  EXPECT_EQ(QByteArray::fromStdString(SettingsContent()).count("=\r\n"), 40);
}

TEST_F(SettingsTest, OptionsDeriveTheirTwoValues) {
  const struct {
    QByteArray extremes;
    int index;
    QByteArray adjustment;
    double pixels;
  } cases[] = {{"TF", 0, "41", 41},  {"FT", 1, "-3.5", -3.5}, {"", -1, "", 0},
               {"FF", -1, "abc", 0}, {"xxT", 2, "2,5", 2.5},  {"tf", -1, "7 px", 7}};
  Settings settings(SettingsPath(), home_);
  for (const auto& c : cases) {
    MakeSettings("[Options]\r\n08=" + c.extremes + "\r\n22=" + c.adjustment + "\r\n");
    const Options options = LoadOptions(settings);
    EXPECT_EQ(options.extremeOptionIndex, c.index) << c.extremes.constData();
    EXPECT_EQ(options.mouseAdjustment, c.pixels) << c.adjustment.constData();
  }
}

TEST(ColourNumber, TakesTheTextsThatTheSettingsHold) {
  const struct {
    const char* text;
    qint32 number;
  } cases[] = {{"-2147483643", static_cast<qint32>(0x80000005)},
               {"2147483653", static_cast<qint32>(0x80000005)},
               {"16711680", 0xFF0000},
               {" 33023 ", 33023},
               {"", 0},
               {"red", 0},
               {"99999999999", 0},
               {"1e5", 0}};
  for (const auto& c : cases) EXPECT_EQ(ColourNumber(QString::fromLatin1(c.text)), c.number) << c.text;
}

}  // namespace
}  // namespace vesk

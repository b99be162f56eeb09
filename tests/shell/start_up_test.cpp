#include "shell/start_up.h"

#include "shell/program_folder_fixture.h"

namespace vesk {
namespace {

class StartUpTest : public test::ProgramFolderTest {
 protected:
  StartUpTest() { MakeFile(program_ + QStringLiteral("IstSbl.mdb"), "empty register"); }

  StartUpReport Start() { return StartUp(input_, run_); }
  /// An office that keeps its data below the home folder: its settings, and the folders that exist.
  void MakeOffice(const std::vector<const char*>& folders, const QByteArray& language = "ENGLISH") const {
    for (const char* folder : folders) MakeFolder(Home(folder));
    MakeSettings("[Genel]\r\nDataDirectory=C:\\Data\\\r\nArvelDataDirectory=C:\\Reg\\\r\n[Options]\r\n21=" +
                 language + "\r\n");
  }
  [[nodiscard]] QString Home(const char* name) const { return home_ + QLatin1String(name); }

  StartUpInput input_{program_, QStringLiteral("vesk4"), home_, QStringLiteral("02.01.1999"),
                      QLatin1Char(',')};
  RunValues run_;
};

TEST_F(StartUpTest, AFreshInstallationOpensInTurkishAndASecondStartChangesNoByte) {
  MakeFile(program_ + QStringLiteral("ILK.SIL"));
  EXPECT_TRUE(Start().problems.empty());
  const std::string data = Home("Sefnor/").toStdString();
  const std::string defaults =
      "[Genel]\r\nDataDirectory=" + data + "\r\nArvelDataDirectory=" + data +
      "ArvelDat/\r\n[Options]\r\n01=1\r\n02=-2147483643\r\n03=16711680\r\n04=0\r\n05=0\r\n"
      "06=16711680\r\n07=33023\r\n11=3\r\n12=False\r\n13=True\r\n21=";
  EXPECT_EQ(SettingsContent(), defaults + "TURKCE\r\n");
  EXPECT_FALSE(QFile::exists(program_ + QStringLiteral("ILK.SIL")));
  EXPECT_TRUE(QDir(Home("Sefnor/Arsiv")).exists());
  EXPECT_EQ(run_.dataDirectory, Home("Sefnor/"));
  EXPECT_EQ(run_.hydrologyDirectory, Home("Sefnor/ArvelDat/"));
  EXPECT_EQ(run_.stationDatabasePath, Home("Sefnor/ArvelDat/Istasyon.mdb"));
  EXPECT_EQ(Content(run_.stationDatabasePath), "empty register");
  EXPECT_EQ(run_.language.Choice(), LanguageChoice::Turkish);
  EXPECT_EQ(run_.regional.decimalSign, QLatin1Char(','));
  EXPECT_EQ(run_.regional.dateSeparator, QLatin1Char('.'));
  EXPECT_EQ(run_.options.Slot(7), QStringLiteral("33023"));

  SwitchLanguage(run_, LanguageChoice::English);
  ASSERT_TRUE(StoreLanguage(run_).Ok());
  MakeFile(run_.stationDatabasePath, "stations of the office");
  RunValues second;
  EXPECT_TRUE(StartUp(input_, second).problems.empty());
  EXPECT_EQ(SettingsContent(), defaults + "ENGLISH\r\n");
  EXPECT_EQ(second.language.Choice(), LanguageChoice::English);
  EXPECT_EQ(Content(second.stationDatabasePath), "stations of the office");
}

TEST_F(StartUpTest, TheFirstRunIsTheFirstOneInAHomeFolderOfAnyLetters) {
  input_.home = root_.filePath(QStringLiteral("Ωμέγα əğ/"));
  MakeFolder(input_.home);
  MakeFile(program_ + QStringLiteral("ilk.sil"));
  EXPECT_TRUE(Start().problems.empty());
  EXPECT_FALSE(QFile::exists(program_ + QStringLiteral("ilk.sil")));
  run_.options.Slot(22) = QStringLiteral("7");
  ASSERT_TRUE(SaveOptions(run_.options, FirstRunOptions(), run_.settings));
  RunValues second;
  EXPECT_TRUE(StartUp(input_, second).problems.empty());
  EXPECT_EQ(second.dataDirectory, input_.home + QStringLiteral("Sefnor/"));
  EXPECT_EQ(second.options.Slot(22), QStringLiteral("7"));
}

TEST_F(StartUpTest, TwoWindowsKeepEachOthersSettings) {
  MakeOffice({"Data/Arsiv", "Other/Arsiv", "Reg"});
  RunValues other;
  StartUp(input_, other);
  Start();
  Options changed = run_.options;
  changed.Slot(3) = QStringLiteral("255");
  ASSERT_TRUE(SaveOptions(changed, run_.options, run_.settings));
  run_.dataDirectory = Home("Other/");
  ASSERT_TRUE(StoreDataDirectory(run_));

  changed = other.options;
  changed.Slot(22) = QStringLiteral("41");
  ASSERT_TRUE(SaveOptions(changed, other.options, other.settings));
  ASSERT_TRUE(StoreDataDirectory(other)) << "which it has not changed";
  RunValues next;
  StartUp(input_, next);
  EXPECT_EQ(next.options.Slot(3), QStringLiteral("255"));
  EXPECT_EQ(next.options.Slot(22), QStringLiteral("41"));
  EXPECT_EQ(next.dataDirectory, Home("Other/"));
  for (const char* key : {"10", "40"}) {
    EXPECT_NE(SettingsContent().find(std::string(key) + "=\r\n"), std::string::npos) << "all forty are there";
  }
}

TEST_F(StartUpTest, AProjectFileBesideTheMarkerKeepsTheDefaultsAway) {
  MakeFile(program_ + QStringLiteral("ilk.sil"));
  MakeFile(program_ + QStringLiteral("Vesk4.VBP"));
  Start();
  EXPECT_EQ(SettingsContent(), "[Genel]\r\nDataDirectory=" + home_.toStdString() + "\r\n");
  EXPECT_TRUE(QFile::exists(program_ + QStringLiteral("ilk.sil")));
}

TEST_F(StartUpTest, AMarkerThatCannotBeDeletedIsNamed) {
  const QString marker = program_ + QStringLiteral("ilk.sil");
  MakeFolder(marker);
  const StartUpReport report = Start();
  ASSERT_EQ(report.problems.size(), 1U);
  EXPECT_EQ(report.problems.front().path, marker);
  EXPECT_EQ(run_.dataDirectory, Home("Sefnor/"));
}

TEST_F(StartUpTest, WithoutAnArchiveTheHomeFolderStandsInAndIsStoredOnExit) {
  MakeOffice({"Data", "Reg"});
  EXPECT_TRUE(Start().problems.empty());
  EXPECT_EQ(run_.dataDirectory, home_);
  EXPECT_NE(SettingsContent().find("DataDirectory=" + Home("Data/").toStdString()), std::string::npos);
  ASSERT_TRUE(StoreDataDirectory(run_).Ok());
  EXPECT_NE(SettingsContent().find("DataDirectory=" + home_.toStdString() + "\r\n"), std::string::npos);
}

TEST_F(StartUpTest, AFileOfThatNameIsNoArchive) {
  MakeOffice({"Data", "Reg"});
  MakeFile(Home("Data/Arsiv"));
  Start();
  EXPECT_EQ(run_.dataDirectory, home_);
}

TEST_F(StartUpTest, FolderAndFileNamesMatchWithoutRegardToCase) {
  MakeOffice({"Data/ARSIV", "Reg"});
  MakeFile(Home("Reg/ISTASYON.MDB"), "old");
  Start();
  EXPECT_EQ(run_.dataDirectory, Home("Data/"));
  EXPECT_EQ(run_.stationDatabasePath, Home("Reg/ISTASYON.MDB"));
}

TEST_F(StartUpTest, AMissingRegisterFolderFallsBackToTheHomeFolder) {
  MakeOffice({"Data/Arsiv"});
  Start();
  EXPECT_EQ(run_.dataDirectory, Home("Data/"));
  EXPECT_EQ(run_.hydrologyDirectory, home_);
  EXPECT_EQ(Content(Home("Istasyon.mdb")), "empty register");
}

TEST_F(StartUpTest, AMissingTemplateIsNamedAndTheRunGoesOn) {
  ASSERT_TRUE(QFile::remove(program_ + QStringLiteral("IstSbl.mdb")));
  MakeOffice({"Data/Arsiv", "Reg"});
  const StartUpReport report = Start();
  ASSERT_EQ(report.problems.size(), 1U);
  EXPECT_EQ(report.problems.front().path, program_ + QStringLiteral("IstSbl.mdb"));
  EXPECT_EQ(run_.stationDatabasePath, Home("Reg/Istasyon.mdb"));
  EXPECT_EQ(run_.hydrologyDirectory, home_);
  EXPECT_EQ(run_.language.Choice(), LanguageChoice::English);
}

TEST_F(StartUpTest, ASettingsFileThatCannotBeUsedIsNamedOnceAndTheRunGoesOn) {
  MakeFolder(SettingsPath());
  MakeFile(program_ + QStringLiteral("ilk.sil"));
  const StartUpReport report = Start();
  ASSERT_EQ(report.problems.size(), 1U);
  EXPECT_EQ(report.problems.front().path, SettingsPath());
  EXPECT_TRUE(QFile::exists(program_ + QStringLiteral("ilk.sil"))) << "the next start tries again";
  SwitchLanguage(run_, LanguageChoice::English);
  EXPECT_FALSE(StoreLanguage(run_));
  EXPECT_EQ(run_.language.Choice(), LanguageChoice::English);
}

}  // namespace
}  // namespace vesk

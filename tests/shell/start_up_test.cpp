#include "shell/start_up.h"

#include "shell/program_folder_fixture.h"

namespace vesk {
namespace {

class StartUpTest : public test::ProgramFolderTest {
 protected:
  StartUpTest() { MakeFile(program_ + QStringLiteral("IstSbl.mdb"), "empty register"); }

  StartUpReport Start() { return StartUp(input_, run_); }
  /// Settings of a run in an office that keeps its data below the home folder.
  void MakeOfficeSettings(const QByteArray& language) const {
    MakeSettings("[Genel]\r\nDataDirectory=C:\\Data\\\r\nArvelDataDirectory=C:\\Reg\\\r\n[Options]\r\n21=" +
                 language + "\r\n");
  }
  [[nodiscard]] QString Home(const char* name) const { return home_ + QLatin1String(name); }

  StartUpInput input_{program_, QStringLiteral("vesk4"), home_, QStringLiteral("02/01/1999"),
                      QLatin1Char(',')};
  RunValues run_;
};

TEST_F(StartUpTest, AFreshInstallationOpensInTurkishWithItsFoldersAndRegister) {
  MakeFile(program_ + QStringLiteral("ilk.sil"));
  const StartUpReport report = Start();
  EXPECT_TRUE(report.problems.empty());
  EXPECT_FALSE(report.archiveMissing);
  EXPECT_FALSE(report.registerFolderMissing);
  EXPECT_EQ(run_.programFolder, program_);
  EXPECT_EQ(run_.settings.Path(), SettingsPath());
  EXPECT_EQ(run_.dataDirectory, Home("Sefnor/"));
  EXPECT_EQ(run_.hydrologyDirectory, Home("Sefnor/ArvelDat/"));
  EXPECT_EQ(run_.stationDatabasePath, Home("Sefnor/ArvelDat/Istasyon.mdb"));
  EXPECT_EQ(Content(run_.stationDatabasePath), "empty register");
  EXPECT_EQ(run_.language.Choice(), LanguageChoice::Turkish);
  EXPECT_EQ(run_.regional.decimalSign, QLatin1Char(','));
  EXPECT_EQ(run_.options.Slot(7), QStringLiteral("33023"));
  EXPECT_EQ(run_.workMode, QString());
}

TEST_F(StartUpTest, ASecondStartChangesNoByte) {
  MakeFile(program_ + QStringLiteral("ilk.sil"));
  Start();
  ASSERT_TRUE(SwitchLanguage(run_, LanguageChoice::English).Ok());
  const std::string before = SettingsContent();
  MakeFile(run_.stationDatabasePath, "stations of the office");
  RunValues second;
  EXPECT_TRUE(StartUp(input_, second).problems.empty());
  EXPECT_EQ(SettingsContent(), before);
  EXPECT_NE(before.find("21=ENGLISH\r\n"), std::string::npos);
  EXPECT_EQ(second.language.Choice(), LanguageChoice::English);
  EXPECT_EQ(Content(second.stationDatabasePath), "stations of the office");
}

TEST_F(StartUpTest, WithoutAnArchiveTheHomeFolderStandsInAndIsStoredOnExit) {
  MakeFolder(Home("Data"));
  MakeFolder(Home("Reg"));
  MakeOfficeSettings("ENGLISH");
  const StartUpReport report = Start();
  EXPECT_TRUE(report.archiveMissing);
  EXPECT_TRUE(report.problems.empty());
  EXPECT_EQ(run_.dataDirectory, home_);
  EXPECT_NE(SettingsContent().find("DataDirectory=" + Home("Data/").toStdString()), std::string::npos);
  ASSERT_TRUE(StoreDataDirectory(run_).Ok());
  EXPECT_NE(SettingsContent().find("DataDirectory=" + home_.toStdString() + "\r\n"), std::string::npos);
}

TEST_F(StartUpTest, FolderAndFileNamesMatchWithoutRegardToCase) {
  MakeFolder(Home("Data/ARSIV"));
  MakeFolder(Home("Reg"));
  MakeFile(Home("Reg/ISTASYON.MDB"), "old");
  MakeOfficeSettings("ENGLISH");
  const StartUpReport report = Start();
  EXPECT_FALSE(report.archiveMissing);
  EXPECT_EQ(run_.dataDirectory, Home("Data/"));
  EXPECT_EQ(run_.stationDatabasePath, Home("Reg/ISTASYON.MDB"));
}

TEST_F(StartUpTest, AMissingRegisterFolderFallsBackToTheHomeFolder) {
  MakeFolder(Home("Data/Arsiv"));
  MakeOfficeSettings("ENGLISH");
  const StartUpReport report = Start();
  EXPECT_TRUE(report.registerFolderMissing);
  EXPECT_EQ(run_.dataDirectory, Home("Data/"));
  EXPECT_EQ(run_.hydrologyDirectory, home_);
  EXPECT_EQ(run_.stationDatabasePath, Home("Istasyon.mdb"));
  EXPECT_EQ(Content(run_.stationDatabasePath), "empty register");
}

TEST_F(StartUpTest, AMissingTemplateIsNamedAndTheRunGoesOn) {
  ASSERT_TRUE(QFile::remove(program_ + QStringLiteral("IstSbl.mdb")));
  MakeFolder(Home("Data/Arsiv"));
  MakeFolder(Home("Reg"));
  MakeOfficeSettings("ENGLISH");
  const StartUpReport report = Start();
  ASSERT_EQ(report.problems.size(), 1U);
  EXPECT_EQ(report.problems.front().path, program_ + QStringLiteral("IstSbl.mdb"));
  EXPECT_EQ(run_.stationDatabasePath, Home("Reg/Istasyon.mdb"));
  EXPECT_EQ(run_.hydrologyDirectory, home_);
  EXPECT_EQ(run_.language.Choice(), LanguageChoice::English);
}

TEST_F(StartUpTest, AnUnknownLanguageFillsNoText) {
  MakeFolder(Home("Data/Arsiv"));
  MakeFolder(Home("Reg"));
  MakeOfficeSettings("english");
  Start();
  EXPECT_EQ(run_.language.Choice(), LanguageChoice::Unknown);
  EXPECT_EQ(run_.language.Text(Caption::OpenDataFile), QString());
  EXPECT_EQ(run_.options.Slot(21), QStringLiteral("english"));
}

TEST_F(StartUpTest, ASettingsFileThatCannotBeUsedIsNamedOnceAndTheRunGoesOn) {
  MakeFolder(SettingsPath());
  MakeFile(program_ + QStringLiteral("ilk.sil"));
  const StartUpReport report = Start();
  ASSERT_EQ(report.problems.size(), 1U);
  EXPECT_EQ(report.problems.front().path, SettingsPath());
  EXPECT_EQ(run_.dataDirectory, home_);
  EXPECT_FALSE(SwitchLanguage(run_, LanguageChoice::English));
  EXPECT_EQ(run_.language.Choice(), LanguageChoice::English);
}

TEST(DateSeparator, ComesFromTheShortDateForm) {
  EXPECT_EQ(DateSeparatorOf(QStringLiteral("02/01/1999")), QLatin1Char('/'));
  EXPECT_EQ(DateSeparatorOf(QStringLiteral("02.01.1999")), QLatin1Char('.'));
  EXPECT_EQ(DateSeparatorOf(QStringLiteral("2/1.1999")), QLatin1Char('.'));
  EXPECT_FALSE(DateSeparatorOf(QStringLiteral("1999-01-02")));
}

}  // namespace
}  // namespace vesk

#include "shell/settings.h"

#include "shell/options_form.h"
#include "shell/program_folder_fixture.h"

namespace vesk {
namespace {

using SettingsTest = test::ProgramFolderTest;

TEST_F(SettingsTest, FolderTextsEndInOneSlashOrFallBack) {
  MakeFolder(home_ + QStringLiteral("Data/Ham"));
  MakeFile(home_ + QStringLiteral("file"));
  const QString data = home_ + QStringLiteral("Data/");
  const std::pair<QString, QString> cases[] = {
      {{}, home_},
      {QStringLiteral("C:\\"), home_},
      {QStringLiteral("D:\\Data"), data},
      {QStringLiteral("D:\\Data\\\\"), data},
      {QStringLiteral("D:\\Data\\\\Ham"), data + QStringLiteral("Ham/")},
      {data.chopped(1), data},
      {QStringLiteral("/"), QStringLiteral("/")},
      {QStringLiteral("D:\\None"), home_},
      {home_ + QStringLiteral("file"), home_},
  };
  for (const auto& [text, folder] : cases) {
    EXPECT_EQ(NormaliseFolderPath(text, home_), folder) << text.toStdString();
  }
}

TEST_F(SettingsTest, OptionsDeriveTheirTwoValuesAndAModeNobodyChoseStaysUnchosen) {
  const struct {
    QByteArray mode;
    int index;
    const char* modeSaved;
    QByteArray adjustment;
    double pixels;
  } cases[] = {{"TF", 0, "TF", "41", 41},
               {"FT", 1, "FT", "-3.5", -3.5},
               {"(error)", -1, "FF", "", 0},
               {"FF", -1, "FF", "2,5 px", 2}};
  for (const auto& c : cases) {
    MakeSettings("[Options]\r\n08=" + c.mode + "\r\n22=" + c.adjustment + "\r\n");
    Options options = LoadOptions(Settings(SettingsPath(), home_));
    EXPECT_EQ(options.extremeOptionIndex, c.index) << c.mode.constData();
    EXPECT_EQ(options.mouseAdjustment, c.pixels) << c.adjustment.constData();
    PutForm(FormOf(options), options);
    EXPECT_EQ(options.Slot(8).toStdString(), c.modeSaved);
  }
}

}  // namespace
}  // namespace vesk

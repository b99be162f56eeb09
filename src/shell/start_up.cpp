#include "shell/start_up.h"

#include <algorithm>

#include "datafiles/archive.h"
#include "platform/folders.h"

namespace vesk {
namespace {

/// One line a file is enough: what fails once for the settings file fails at every step that needs it.
void AddProblem(StartUpReport& report, const Error& error) {
  const bool known =
      std::ranges::any_of(report.problems, [&](const Error& e) { return e.path == error.path; });
  if (!known) report.problems.push_back(error);
}

void FillLanguage(RunValues& run, LanguageChoice choice) {
  if (choice == LanguageChoice::English) run.language.FillEnglish();
  if (choice == LanguageChoice::Turkish) run.language.FillTurkish();
}

void FormPaths(const StartUpInput& input, RunValues& run) {
  run.programFolder = WithTrailingSlash(input.programFolder);
  run.settings = Settings(run.programFolder + input.executableName + QLatin1String(".ini"), input.home);
  if (const auto separator = DateSeparatorOf(input.referenceDateText))
    run.regional.dateSeparator = *separator;
  run.regional.decimalSign = input.decimalSign;
}

void CheckSettingsFile(const RunValues& run, StartUpReport& report) {
  const Result<ProfileText> profile = ProfileText::Load(run.settings.Path());
  if (!profile) AddProblem(report, profile.Failure());
  if (IsWrittenInPlace(run.settings.Path())) {
    AddProblem(report,
               Error{Wording{u"Ayar dosyası yerinde yazılıyor", u"The settings file is written in place"},
                     run.settings.Path(), Wording{u"klasöre yazılamıyor", u"the folder cannot be written"}});
  }
}

/// Reads the data directory. The stored text differs from it only when it could not be written back.
void ReadDataDirectory(RunValues& run, StartUpReport& report) {
  run.dataDirectory = run.settings.ReadDataDirectory();
  if (run.settings.ReadSetting(kGeneralSection, kDataDirectoryKey) == run.dataDirectory) return;
  const Status again = run.settings.WriteSetting(kGeneralSection, kDataDirectoryKey, run.dataDirectory);
  if (!again) AddProblem(report, again.Failure());
}

void ReadRegisterFolder(RunValues& run) {
  const QString stored = run.settings.ReadSetting(kGeneralSection, QStringLiteral("ArvelDataDirectory"));
  run.hydrologyDirectory = TranslateFolderText(stored, run.settings.Home());
}

/// The archive folder has to be reachable; otherwise the fallback holds for the whole run, the second reading
/// of the stored directory included.
void CheckArchive(RunValues& run) {
  const auto archive = FindEntry(run.dataDirectory, QLatin1String(kArchiveFolder));
  if (archive && IsReachableFolder(*archive)) return;
  run.dataDirectory = run.settings.Home();
}

void FallBackFromRegisterFolder(RunValues& run) {
  run.hydrologyDirectory = run.settings.Home();
}

/// Copies the empty register when there is none yet; one that exists is never touched.
Status EnsureRegister(const RunValues& run) {
  const auto emptyRegister = FindEntry(run.programFolder, kRegisterTemplate);
  if (!emptyRegister) {
    return Error{Wording{u"Boş istasyon veri tabanı yok", u"The empty station database is missing"},
                 run.programFolder + kRegisterTemplate,
                 {}};
  }
  return CopyNewFile(*emptyRegister, run.stationDatabasePath);
}

void PrepareRegister(RunValues& run, StartUpReport& report) {
  if (!IsReachableFolder(run.hydrologyDirectory)) FallBackFromRegisterFolder(run);
  const QString name = QStringLiteral("Istasyon.mdb");
  const auto existing = FindEntry(run.hydrologyDirectory, name);
  run.stationDatabasePath = existing.value_or(WithTrailingSlash(run.hydrologyDirectory) + name);
  if (existing) return;
  if (const Status made = EnsureRegister(run); !made) {
    AddProblem(report, made.Failure());
    FallBackFromRegisterFolder(run);
  }
}

}  // namespace

std::optional<QChar> DateSeparatorOf(const QString& referenceDateText) {
  for (const QChar separator : {QLatin1Char('.'), QLatin1Char('/')}) {
    if (referenceDateText.contains(separator)) return separator;
  }
  return std::nullopt;
}

StartUpReport StartUp(const StartUpInput& input, RunValues& run) {
  StartUpReport report;
  FormPaths(input, run);
  CheckSettingsFile(run, report);
  for (const Error& failure : InitialiseDefaults(run.programFolder, run.settings))
    AddProblem(report, failure);
  ReadDataDirectory(run, report);
  ReadRegisterFolder(run);
  CheckArchive(run);
  PrepareRegister(run, report);
  run.options = LoadOptions(run.settings);
  FillLanguage(run, LanguageChoiceOf(run.options.Slot(21)));
  return report;
}

void SwitchLanguage(RunValues& run, LanguageChoice choice) {
  run.options.Slot(21) = LanguageSlotText(choice);
  FillLanguage(run, choice);
}

Status StoreLanguage(RunValues& run) {
  return run.settings.WriteSetting(kOptionsSection, QStringLiteral("21"), run.options.Slot(21));
}

Status StoreDataDirectory(RunValues& run) {
  return run.settings.StoreDataDirectory(run.dataDirectory);
}

}  // namespace vesk

#include "tables/build_level_table.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <filesystem>
#include <memory>
#include <system_error>

#include "datafiles/numbers.h"
#include "datafiles/water_year.h"
#include "platform/system_reason.h"
#include "platform/whole_file.h"
#include "tables/level_table_workbook.h"
#include "tables/table_record.h"

namespace vesk {
namespace {

constexpr int kOpened = 10;  // progress, percent, once the workbook is open
constexpr int kWritten = 80;
constexpr int kCalculated = 90;
constexpr int kSaved = 98;

constexpr Wording kNotWritable{u"Seviye tablosu yazılamıyor", u"The level table cannot be written"};
constexpr Wording kNotPlaced{u"Seviye tablosu yerine konamadı",
                             u"The level table could not be put in its place"};

BuildMessage WorkbooksAreOpen() {
  return {
      QStringLiteral("Öncelikle açık olan tüm EXCEL dosyalarını\nkapatmanız gerekmektedir (kaydederek veya "
                     "kaydetmeden)"),
      QStringLiteral("D İ K K A T")};
}

BuildMessage HourlyQuestion() {
  return {QStringLiteral("Saatlik Değerler Tabloya Dahil Edilsin mi?"), QString()};
}

BuildMessage DoNotSwitchSheets() {
  return {
      QStringLiteral("Excel tablosu oluşturulurken, lütfen sayfalar arasında geçiş yapmayınız. Aksi taktirde "
                     "Excel Tablosunda hatalar oluşacaktır."),
      QString()};
}

/// The path of a template, its name matched without regard to case; empty when there is none.
QString TemplatePath(const BuildInput& input, const QString& name) {
  const QDir folder(input.templateDirectory);
  const QStringList found = folder.entryList({name}, QDir::Files);
  return found.isEmpty() ? QString() : folder.filePath(found.front());
}

Error NoTemplate(const BuildInput& input, const QString& name) {
  const QDir folder(input.templateDirectory);
  return {Wording{u"Seviye tablosunun şablonu yok", u"The template of the level table is missing"},
          folder.filePath(name),
          folder.exists() ? Wording{u"böyle bir dosya yok", u"no such file"}
                          : Wording{u"böyle bir klasör yok", u"no such folder"}};
}

/// "SablonDebi_E.xls" of "Sablon_E.xls".
QString DischargeTemplateName(QString name) {
  return name.replace(QStringLiteral("Sablon"), QStringLiteral("SablonDebi"), Qt::CaseInsensitive);
}

/// Folders of the making that a killed program left behind. Those of a day ago belong to nobody any more.
void SweepForsakenFolders(const QString& directory) {
  const QDir folder(directory);
  const QDateTime yesterday = QDateTime::currentDateTimeUtc().addDays(-1);
  const QFileInfoList left =
      folder.entryInfoList({QStringLiteral(".Tablo-??????")}, QDir::Dirs | QDir::Hidden);
  for (const QFileInfo& info : left) {
    if (info.lastModified() < yesterday) QDir(info.filePath()).removeRecursively();
  }
}

std::filesystem::path NativePath(const QString& path) {
  return QFile::encodeName(path).toStdString();
}

/// One run of the build, from the template's copy to the finished file. The workbook is made in a folder of
/// its own beside the table file and takes its place only once it is saved whole.
class TableBuild {
 public:
  TableBuild(const BuildInput& input, Spreadsheet& spreadsheet, BuildQuestions& questions)
      : input_(input),
        spreadsheet_(spreadsheet),
        questions_(questions),
        fileName_(TableFileName(input.stationNumber, input.waterYear)),
        folder_(QDir(input.tableDirectory).filePath(QStringLiteral(".Tablo-XXXXXX"))) {
    report_.path = QDir(input.tableDirectory).filePath(fileName_);
    SweepForsakenFolders(input.tableDirectory);
  }

  /// before: the table file as it was when the operator was asked about it.
  Result<BuildReport> Run(bool withHourly, const TableFound& before) {
    report_.withHourlyValues = withHourly;
    before_ = before;
    using Step = Status (TableBuild::*)();
    for (const Step step : {&TableBuild::CopyTemplate, &TableBuild::OpenCopy, &TableBuild::Fill,
                            &TableBuild::Calculate, &TableBuild::SaveCopy, &TableBuild::PutInPlace}) {
      const Status done = (this->*step)();
      if (!done) {
        GiveUp();
        return UnderItsName(done.Failure());
      }
      if (report_.end == BuildEnd::Stopped) {
        GiveUp();
        return report_;
      }
    }
    HandOver();
    (void)questions_.ShowProgress(BuildStep::Done, 100);
    return report_;
  }

 private:
  /// False when the operator wants no more of it.
  bool GoesOn(BuildStep step, int percent) {
    if (questions_.ShowProgress(step, percent)) return true;
    report_.end = BuildEnd::Stopped;
    return false;
  }

  void GiveUp() {
    if (workbook_) (void)workbook_->Close();
    workbook_.reset();
    if (input_.afterSave == AfterSave::Quit) (void)spreadsheet_.Quit();
  }

  /// Tables without a rating curve are what they have always been: they keep their template.
  Result<QString> ChooseTemplate() {
    if (input_.series.Curve()) {
      const QString name = DischargeTemplateName(input_.templateName);
      const QString path = TemplatePath(input_, name);
      if (!path.isEmpty()) {
        forDischarges_ = true;
        return path;
      }
      report_.warnings.push_back(NoTemplate(input_, name));
    }
    const QString path = TemplatePath(input_, input_.templateName);
    if (path.isEmpty()) return NoTemplate(input_, input_.templateName);
    return path;
  }

  Status CopyTemplate() {
    const Result<QString> source = ChooseTemplate();
    if (!source) return source.Failure();
    if (!folder_.isValid()) {
      return Error{kNotWritable, input_.tableDirectory, SystemReason(folder_.errorString())};
    }
    copy_ = folder_.filePath(fileName_);
    QFile file(*source);
    if (!file.copy(copy_)) {
      return Error{Wording{u"Seviye tablosunun şablonu kopyalanamadı",
                           u"The template of the level table could not be copied"},
                   *source, SystemReason(file.errorString())};
    }
    // A template may be installed read-only; its copy is to be written.
    if (!QFile::setPermissions(copy_, QFile::permissions(copy_) | QFile::ReadOwner | QFile::WriteOwner)) {
      return Error{kNotWritable, copy_, Wording{u"salt okunur", u"it is read-only"}};
    }
    return {};
  }

  Status OpenCopy() {
    if (!GoesOn(BuildStep::Opening, 0)) return {};
    auto opened = spreadsheet_.Open(copy_, Macros::MayRun);
    if (!opened) return opened.Failure();
    workbook_ = std::move(*opened);
    Forgive(spreadsheet_.Show());
    Forgive(workbook_->ShowWindow());
    return {};
  }

  Status Fill() {
    const auto progress = [this](TablePart part, int percent) {
      return GoesOn(part == TablePart::Hourly ? BuildStep::HourlySheet : BuildStep::DailySheet,
                    kOpened + percent * (kWritten - kOpened) / 100);
    };
    LevelTable table = TableOf(input_, report_.withHourlyValues);
    if (!forDischarges_) table.curveText.clear();  // the plain template has no place for it
    auto written = WriteLevelTable(table, *workbook_, progress);
    if (!written) return written.Failure();
    report_.hourlyRowsLeftOut = written->hourlyRowsLeftOut;
    for (const Error& warning : written->warnings) Forgive(warning);
    return {};
  }

  /// The template's own part. Nothing of it holds a figure of ours, so a failing step is told and passed
  /// over.
  Status Calculate() {
    if (!GoesOn(BuildStep::Calculating, kWritten)) return {};
    Forgive(workbook_->RunMacro(QStringLiteral("BosHucreleriSil")));
    auto monthly = workbook_->Sheet(kMonthlySheet);
    if (auto daily = workbook_->Sheet(kDailySheet)) Forgive((*daily)->ReenterFormulas());
    if (monthly) Forgive((*monthly)->ReenterFormulas());
    Forgive(spreadsheet_.Recalculate());
    if (monthly) {
      Forgive((*monthly)->Select());
      Forgive((*monthly)->EmptyFormula(21, 4));
    } else {
      Forgive(monthly.Failure());
    }
    SelectDailySheet(*workbook_);
    return {};
  }

  void SelectDailySheet(Workbook& workbook) {
    auto daily = workbook.Sheet(kDailySheet);
    Forgive(daily ? (*daily)->Select() : Status(daily.Failure()));
  }

  Status SaveCopy() {
    if (!GoesOn(BuildStep::Saving, kCalculated)) return {};
    if (Status saved = workbook_->Save(); !saved) return saved;
    if (Status synced = SyncToDisk(copy_, kNotPlaced); !synced)
      return synced;  // or a power cut could leave it empty
    (void)GoesOn(BuildStep::Saving, kSaved);
    return {};
  }

  Status PutInPlace() {
    if (const TableFound now = LookAtTable(report_.path);
        now.origin != TableOrigin::Own && now.digest != before_.digest) {
      return Error{kNotPlaced, report_.path,
                   Wording{u"yenisi yapılırken değiştirildi; olduğu gibi bırakıldı",
                           u"it was changed while the new one was made"}};
    }
    Forgive(RememberTable(copy_, report_.path));
    std::error_code failed;
    std::filesystem::rename(NativePath(copy_), NativePath(report_.path), failed);
    if (!failed) return {};
    return Error{kNotPlaced, report_.path, SystemReason(failed.value())};
  }

  /// The finished table is opened under its own name before the window of its making goes away.
  void HandOver() {
    std::unique_ptr<Workbook> finished;
    if (input_.afterSave == AfterSave::LeaveOpen) {
      auto opened = spreadsheet_.Open(report_.path, Macros::AsTheOfficeSays);
      if (opened) {
        finished = std::move(*opened);
        Forgive(finished->ShowWindow());
        SelectDailySheet(*finished);
      } else {
        Forgive(opened.Failure());
      }
    }
    Forgive(workbook_->Close());
    workbook_.reset();
    if (input_.afterSave == AfterSave::Quit) Forgive(spreadsheet_.Quit());
  }

  /// The operator knows the table by its own name, not by that of the copy in the making.
  [[nodiscard]] Error UnderItsName(Error error) const {
    if (error.path == copy_) error.path = report_.path;
    return error;
  }

  void Forgive(const Status& step) {
    if (!step) report_.warnings.push_back(UnderItsName(step.Failure()));
  }

  const BuildInput& input_;
  Spreadsheet& spreadsheet_;
  BuildQuestions& questions_;
  const QString fileName_;
  QTemporaryDir folder_;
  TableFound before_;
  QString copy_;
  std::unique_ptr<Workbook> workbook_;
  BuildReport report_;
  bool forDischarges_ = false;  ///< the template has places for what discharges come to
};

}  // namespace

AfterSave AfterSaveOf(const QString& optionText) {
  return optionText == QLatin1String("1") ? AfterSave::Quit : AfterSave::LeaveOpen;
}

LevelTable TableOf(const BuildInput& input, bool withHourly) {
  const QString title = input.stationNumber + QStringLiteral(" - ") + input.stationName;
  LevelTable table = ComputeLevelTable(input.series, input.waterYear, input.extremeMode, title, withHourly);
  if (const auto& curve = input.series.Curve()) {
    const WaterYear year{input.waterYear};
    table.curveText = curve->Describe(year.FirstDay(), year.LastDay()).In(input.language);
    table.catchmentKm2 = input.catchmentKm2;
  }
  table.note = QStringList(input.notes.begin(), input.notes.end()).join(QStringLiteral(" • "));
  return table;
}

QString TableFileName(const QString& stationNumber, int waterYear) {
  return QStringLiteral("Tablo-%1(%2).xls").arg(stationNumber, PaddedNumber(waterYear, 4));
}

Result<BuildReport> BuildLevelTable(const BuildInput& input, Spreadsheet& spreadsheet,
                                    BuildQuestions& questions) {
  BuildReport unmade;
  unmade.path = QDir(input.tableDirectory).filePath(TableFileName(input.stationNumber, input.waterYear));
  unmade.end = BuildEnd::BackedOut;
  if (spreadsheet.HasOpenWindow()) {
    questions.TellWorkbooksAreOpen(WorkbooksAreOpen());
    unmade.end = BuildEnd::WorkbooksAreOpen;
    return unmade;
  }
  if (!input.notes.empty() && !questions.AskDespiteNotes(input.notes)) return unmade;
  const TableFound before = LookAtTable(unmade.path);
  const bool foreign = before.origin == TableOrigin::Changed || before.origin == TableOrigin::Unknown;
  if (foreign && !questions.AskToReplace(unmade.path, before.origin)) {
    unmade.end = BuildEnd::KeptOther;
    return unmade;
  }
  const HourlyAnswer hourly = questions.AskForHourlyValues(HourlyQuestion());
  if (hourly == HourlyAnswer::BackOut) return unmade;
  if (!questions.WarnNotToSwitchSheets(DoNotSwitchSheets())) return unmade;
  return TableBuild(input, spreadsheet, questions).Run(hourly == HourlyAnswer::Yes, before);
}

}  // namespace vesk

// The verb that tells what was corrected in a water year, by whom and why.
#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "datafiles/record_label.h"
#include "platform/csv.h"
#include "platform/whole_file.h"
#include "programs/batch.h"
#include "programs/batch_support.h"
#include "review/change_log.h"
#include "review/review_decisions.h"

namespace vesk {
namespace {

/// A correction, or a line of the log of which no more is known than it says.
struct HistoryLine {
  DateTime time{};
  double levelCm = 0;
  QString discharge;
  bool known = false;  ///< whose correction it is
  Correction correction;
};

HistoryLine LineOf(const Correction& correction) {
  return {correction.time, correction.levelCm, correction.discharge, true, correction};
}

/// What the record knows of the log as it is, the bare lines where it is another log's.
std::vector<HistoryLine> LinesOf(const QByteArray& log, const ReviewRecord& record, const Teller& tell) {
  std::vector<HistoryLine> lines;
  const RecordState* state = record.StateOf(HashOf(log));
  if (state == nullptr && !record.states.empty() && !log.isEmpty())
    tell(QStringLiteral(
        "the review record is of another content of the change log; lines are given as they are"));
  std::vector<RecordedLine> recorded = state ? state->lines : std::vector<RecordedLine>();
  if (state == nullptr) {
    for (const QByteArray& text : log.split('\n')) {
      if (!text.trimmed().isEmpty()) recorded.push_back({text, {}});
    }
  }
  for (const RecordedLine& line : recorded) {
    if (line.correction) {
      lines.push_back(LineOf(*line.correction));
      continue;
    }
    Message expected;
    const auto read = ReadChangeLogLine(line.text.trimmed(), expected);
    if (!read) {
      tell(QStringLiteral("a line of the change log could not be read; expected %1").arg(expected.English()));
      continue;
    }
    lines.push_back({DateTime(read->day) + std::chrono::minutes(read->minuteOfDay),
                     read->levelCm,
                     read->discharge,
                     false,
                     {}});
  }
  if (state) {
    for (const Correction& hidden : state->hidden) lines.push_back(LineOf(hidden));
  }
  std::ranges::stable_sort(lines, {}, &HistoryLine::time);
  return lines;
}

class HistoryWriter {
 public:
  HistoryWriter(const StationYear& choice, QByteArray& text) : choice_(choice), csv_(text) {}

  void Corrections(const std::vector<HistoryLine>& lines) {
    for (const HistoryLine& line : lines) {
      Begin();
      csv_.Cell(line.correction.rawFile);
      csv_.Cell(DateTimeText(line.time));
      csv_.Cell(line.known ? KindText(line.correction.kind) : QString());
      csv_.Plain() += line.known ? NumberText(line.correction.rawCm).toLatin1() : QByteArray();
      csv_.Plain() += NumberText(line.levelCm).toLatin1();
      csv_.Cell(line.discharge);
      const Authorship& by = line.correction.by;
      csv_.Cell(by.why.reason);
      csv_.Cell(by.why.operation);
      Who(by);
      csv_.EndLine();
    }
  }

  void Findings(const ReviewDecisions& decisions) {
    for (const AcceptedFinding& finding : decisions.accepted) {
      Accepted(finding);
      csv_.Cell(QStringLiteral("accepted"));
      Who({});
      csv_.EndLine();
    }
    for (const WithdrawnAcceptance& taken : decisions.withdrawn) {
      Accepted(taken.finding);
      csv_.Cell(QStringLiteral("withdrawn"));
      Who(taken.by);
      csv_.EndLine();
    }
  }

  void Approvals(const std::vector<Approval>& approvals) {
    for (const Approval& approval : approvals) {
      Begin();
      csv_.Cell(approval.withdrawn ? QStringLiteral("withdrawn") : QStringLiteral("approved"));
      csv_.Plain() += QByteArray::number(approval.readings);
      csv_.Plain() += QByteArray::number(approval.corrections);
      csv_.Plain() += QByteArray::number(approval.openFindings);
      csv_.Plain() += QByteArray::number(static_cast<qint64>(approval.rawFiles.size()));
      csv_.Cell(QString::fromLatin1(approval.logHash));
      csv_.Cell(approval.by.why.reason);
      Who(approval.by);
      csv_.Cell(approval.curve.path);
      csv_.Cell(QString::fromLatin1(approval.curve.sha256));
      csv_.EndLine();
    }
  }

 private:
  void Accepted(const AcceptedFinding& finding) {
    Begin();
    csv_.Cell(finding.rule);
    csv_.Cell(DateTimeText(finding.from));
    csv_.Cell(DateTimeText(finding.to));
    csv_.Cell(finding.rawFile);
    csv_.Plain() += NumberText(finding.value).toLatin1();
    csv_.Cell(finding.by.why.reason);
    Who(finding.by);
  }
  void Begin() {
    csv_.Cell(choice_.station.Number());
    csv_.Cell(QString::number(choice_.year.number));
  }
  void Who(const Authorship& by) {
    csv_.Cell(by.login);
    csv_.Cell(by.name);
    csv_.Cell(by.at);
  }

  const StationYear& choice_;
  CsvLines csv_;
};

Result<QByteArray> HistoryText(const QCommandLineParser& parser, const StationYear& choice,
                               const QString& logPath) {
  QByteArray text;
  HistoryWriter writer(choice, text);
  if (parser.isSet(QStringLiteral("findings")) || parser.isSet(QStringLiteral("approvals"))) {
    const auto decisions = ReadReviewDecisions(logPath);
    if (!decisions) return decisions.Failure();
    if (parser.isSet(QStringLiteral("findings"))) {
      text =
          "station,water_year,rule,from,to,file,value,reason,login,name,at,state,withdrawn_login,"
          "withdrawn_name,withdrawn_at\n";
      writer.Findings(*decisions);
    } else {
      text =
          "station,water_year,state,readings,corrections,open_findings,raw_files,change_log,remark,login,"
          "name,at,curve,curve_sha256\n";
      writer.Approvals(decisions->approvals);
    }
    return text;
  }
  const auto log =
      ReadWholeFile(logPath, Wording{u"Değişiklik dosyası okunamadı", u"The change log could not be read"});
  if (!log) return log.Failure();
  const auto record = ReadReviewRecord(logPath);
  if (!record) Complain(record.Failure().English());
  text = "station,water_year,file,time,kind,raw_cm,level_cm,discharge,reason,operation,login,name,at\n";
  writer.Corrections(LinesOf(*log, record ? *record : ReviewRecord(), Complain));
  return text;
}

}  // namespace

int RunHistoryVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Tells what was corrected in a water year, by whom, when and why (CSV)."));
  AddStationOptions(parser, false);
  parser.addOption({QStringLiteral("findings"), QStringLiteral("The findings that were accepted instead.")});
  parser.addOption({QStringLiteral("approvals"), QStringLiteral("Approvals of the year instead.")});
  parser.addOption({QStringLiteral("out"), QStringLiteral("Writes to this file instead of standard output."),
                    QStringLiteral("FILE")});
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  QString wrong = WrongChoice(parser);
  if (parser.isSet(QStringLiteral("findings")) && parser.isSet(QStringLiteral("approvals")))
    wrong = QStringLiteral("give either --findings or --approvals");
  if (!wrong.isEmpty()) return WrongUse(QStringLiteral("history: ") + wrong);
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) return Fail(folder.Failure());
  const auto chosen = ChooseStationYears(parser, *folder);
  if (!chosen) return Fail(chosen.Failure());
  const StationYear& choice = chosen->years.front();
  const auto text =
      HistoryText(parser, choice, ChangeLogToRead(*folder, choice.station, StationWaterYear{choice.year}));
  if (!text) return Fail(text.Failure());
  Output output(parser.value(QStringLiteral("out")));
  output.Text() = *text;
  const Status written = output.Finish();
  return written ? kBatchDone : Fail(written.Failure());
}

}  // namespace vesk

#include "selection/review_bench.h"

#include <QApplication>

#include <algorithm>

#include "datafiles/dates.h"
#include "findings/proposed_limits.h"
#include "selection/findings_panel.h"
#include "selection/hydrograph_pane.h"
#include "selection/range_bar.h"
#include "selection/review_questions.h"
#include "selection/selection_summary.h"
#include "shell/language.h"
#include "stations/station_register.h"

namespace vesk {
namespace {

constexpr qsizetype kMostReasons = 12;

}  // namespace

ReviewBench::ReviewBench(EditSession& session, RowSelection& selection, const Parts& parts,
                         const Language& language, QString registerPath, ReviewQuestions& questions,
                         QWidget& window)
    : session_(session),
      selection_(selection),
      parts_(parts),
      language_(language),
      registerPath_(std::move(registerPath)),
      questions_(questions),
      window_(window) {
  soon_.setSingleShot(true);
  Connect();
}

void ReviewBench::Connect() {
  connect(&soon_, &QTimer::timeout, this, &ReviewBench::Refresh);
  // Rows come and go at once: what is drawn must not be of rows that are no more.
  connect(&session_, &EditSession::GridReplaced, this, [this] {
    if (load_) parts_.hydrograph->SeriesChanged();
    Follow();
  });
  connect(&session_, &EditSession::RowChanged, this, &ReviewBench::Follow);
  connect(&session_, &EditSession::AllRowsChanged, this, &ReviewBench::Follow);
  connect(&session_, &EditSession::StateChanged, this, &ReviewBench::Follow);
  connect(&selection_, &RowSelection::RangeChanged, this, [this] {
    TellSelection();
    ShowPreview();
  });
  connect(parts_.findings, &FindingsPanel::FindingChosen, this, &ReviewBench::GoTo);
  connect(parts_.findings, &FindingsPanel::LimitsAsked, this, &ReviewBench::EditLimits);
  connect(parts_.findings, &FindingsPanel::AcceptanceAsked, this, &ReviewBench::ChangeAcceptance);
  connect(parts_.findings, &FindingsPanel::ApprovalAsked, this, &ReviewBench::Approve);
  connect(parts_.range, &RangeBar::PreviewChanged, this, &ReviewBench::ShowPreview);
  connect(parts_.range, &RangeBar::ApplyAsked, this, &ReviewBench::Apply);
  connect(parts_.range, &RangeBar::ReasonChanged, this,
          [this](const QString& reason) { session_.SetReason(reason.trimmed()); });
}

void ReviewBench::Take(BenchLoad load) {
  load_ = std::move(load);
  const auto kept = LookupStationLimits(registerPath_, load_->request.station.Number());
  kept_ = kept ? *kept : std::nullopt;
  // Without a register every list of stations says so already; a damaged limit is this list's affair.
  proposed_ = ProposeLimits(session_.Series(), load_->readOuts);
  parts_.range->EndPreview();
  parts_.hydrograph->SetSeries(&session_.Series());
  ReadDecisions();
  Refresh();
}

void ReviewBench::Clear() {
  load_.reset();
  findings_.clear();
  decisions_.clear();
  parts_.hydrograph->SetSeries(nullptr);
  parts_.findings->Show({});
  parts_.findings->SetEnabledFor(false, false);
  parts_.findings->ShowLimits({});
  parts_.range->SetSelected(0);
}

void ReviewBench::Follow() {
  constexpr int kManyReadings = 100'000;
  constexpr int kPauseMilliseconds = 200;  // of many readings the findings wait for a pause in the typing
  if (load_) soon_.start(session_.Series().ReadingCount() > kManyReadings ? kPauseMilliseconds : 0);
}

void ReviewBench::Refresh() {
  if (!load_) return;
  parts_.hydrograph->SeriesChanged();
  FindAnew();
  ShowPreview();
  TellSelection();
}

void ReviewBench::FindAnew() {
  FindingInput input = InputOf(session_.Series(), load_->readOuts, load_->missedFiles, Limits());
  findings_ = FindAll(input);
  std::vector<ListedFinding> listed;
  listed.reserve(findings_.size());
  for (const Finding& finding : findings_) listed.push_back({finding, IsAccepted(finding)});
  parts_.findings->Show(std::move(listed));
  parts_.findings->SetEnabledFor(true, !session_.Holder());
  parts_.findings->ShowApproval(CanApprove(), IsApproved());
  ShowLimits();
  ShowMarks();
}

void ReviewBench::ShowLimits() {
  parts_.findings->ShowLimits(
      kept_ ? language_.Say(Wording{u"istasyon veri tabanından", u"from the register"})
            : language_.Say(Wording{u"kendi okumalarından önerilen", u"proposed by its readings"}));
}

void ReviewBench::ShowMarks() {
  std::vector<HydrographMark> marks;
  for (const ListedFinding& listed : parts_.findings->Findings()) {
    const Finding& finding = listed.finding;
    // What is said of a file as a whole is no place on the time axis.
    if (finding.rule == FindingRule::Header || finding.rule == FindingRule::Refused) continue;
    marks.push_back({.from = finding.from,
                     .to = finding.to,
                     .doubt = finding.severity == FindingSeverity::Doubt && !listed.accepted,
                     .gap = finding.rule == FindingRule::Gap});
  }
  parts_.hydrograph->SetMarks(std::move(marks));
}

void ReviewBench::GoTo(const Finding& finding) {
  if (finding.firstRow <= 0) {
    Q_EMIT Told(finding.file + QStringLiteral(": ") + language_.Say(finding.expected));
    return;
  }
  selection_.SetCurrent(finding.firstRow);
  selection_.SetRange(finding.firstRow, finding.lastRow);
  parts_.hydrograph->ShowRows(finding.firstRow, finding.lastRow);
}

bool ReviewBench::GoToFinding(bool next) {
  const bool there = next ? parts_.findings->GoToNext() : parts_.findings->GoToPrevious();
  if (!there) {
    Q_EMIT Told(next ? language_.Say(Wording{u"Bundan sonra bulgu yok.", u"No finding after this one."})
                     : language_.Say(Wording{u"Bundan önce bulgu yok.", u"No finding before this one."}));
  }
  return there;
}

void ReviewBench::TellSelection() {
  if (!load_) return;
  const auto summary = SummaryOf(session_.Series(), selection_.First(), selection_.Last(), findings_);
  parts_.range->SetSelected(summary ? summary->readings : 0);
  if (summary && selection_.Last() > selection_.First()) Q_EMIT Told(language_.Say(SummaryText(*summary)));
}

void ReviewBench::ShowPreview() {
  if (!load_) return;
  if (!parts_.range->Previews() || selection_.First() <= 0) {
    parts_.hydrograph->SetPreview({});
    return;
  }
  const auto changes = ProposeCorrection(session_.Series(), {selection_.First(), selection_.Last()},
                                         parts_.range->Correction());
  parts_.hydrograph->SetPreview(changes ? *changes : std::vector<LevelChange>());
  if (!changes) Q_EMIT Told(language_.Say(changes.Failure()));
}

void ReviewBench::Apply() {
  const RangeCorrection correction = parts_.range->Correction();
  auto changes = ProposeCorrection(session_.Series(), {selection_.First(), selection_.Last()}, correction);
  if (!changes) {
    QApplication::beep();
    Q_EMIT Told(language_.Say(changes.Failure()));
    return;
  }
  const auto readings = static_cast<int>(changes->size());
  if (!AddRecords(*changes)) return;
  const QString reason = parts_.range->Reason();
  const Result<int> done = session_.Correct(*changes, {OperationWord(correction.operation), reason});
  if (!done) {
    QApplication::beep();
    Q_EMIT Told(language_.Say(done.Failure()));
    return;
  }
  RememberReason(reason);
  parts_.range->EndPreview();
  Q_EMIT Told(
      readings == 0
          ? language_.Say(Wording{u"Değişecek bir seviye yok.", u"No level would change."})
          : language_.Say(Wording{u"%1 okuma düzeltildi (%2 satır); Ctrl+Z tek adımda geri alır.",
                                  u"%1 readings corrected (%2 rows); Ctrl+Z takes it back in one step."},
                          readings, *done));
}

bool ReviewBench::AddRecords(std::vector<LevelChange>& changes) {
  std::vector<LevelChange> records = RecordsConcerned(session_.Series(), changes);
  if (records.empty()) return true;
  const auto too = questions_.AskYesNoOrBackOut(
      &window_, language_.attentionTitle,
      language_.Say(
          Wording{u"İlgili günlerin %1 Max/Min kaydı düzeltilen okumalara uymayacak. Bunlar da "
                  u"okumalardan hesaplanan değerlere düzeltilsin mi?",
                  u"%1 Max/Min record(s) of these days would not fit the corrected readings. Correct "
                  u"them as well, to what the readings give?"},
          static_cast<int>(records.size())),
      {});
  if (!too) return false;
  if (*too) std::ranges::move(records, std::back_inserter(changes));
  return true;
}

void ReviewBench::RememberReason(const QString& reason) {
  if (reason.isEmpty()) return;
  reasons_.removeAll(reason);
  reasons_.prepend(reason);
  while (reasons_.size() > kMostReasons) reasons_.removeLast();
  parts_.range->OfferReasons(reasons_);
}

void ReviewBench::EditLimits() {
  if (!load_) return;
  const auto chosen = questions_.AskForLimits(&window_, load_->request.station.Number(), kept_, proposed_);
  if (!chosen) return;
  auto stations = StationRegister::Open(registerPath_);
  const Result<bool> set = stations ? stations->SetLimits(load_->request.station.Number(), kept_, *chosen)
                                    : Result<bool>(stations.Failure());
  if (!set) {
    questions_.Warn(&window_, language_.attentionTitle, language_.Say(set.Failure()));
    return;
  }
  if (!*set) {
    const auto others = stations->LimitsOf(load_->request.station.Number());
    kept_ = others ? *others : kept_;
    questions_.Warn(
        &window_, language_.attentionTitle,
        language_.Say(Wording{u"Bu sınırları bu sırada başkası değiştirdi; şimdi onunkiler geçerli.",
                              u"Somebody else has changed these limits meanwhile; theirs hold now."}));
  } else {
    kept_ = *chosen;
  }
  FindAnew();
}

}  // namespace vesk

// What the operator decides at the bench: findings that are accepted, and the year's approval.
#include <algorithm>

#include "datafiles/dates.h"
#include "selection/findings_panel.h"
#include "selection/review_bench.h"
#include "selection/review_questions.h"
#include "shell/busy_cursor.h"
#include "shell/language.h"

namespace vesk {

void ReviewBench::ReadDecisions() {
  decisions_.clear();
  for (const QString& log : load_->logs) {
    auto read = ReadReviewDecisions(log);
    // A record that cannot be read was told of when its change log was laid.
    decisions_.push_back(read ? std::move(*read) : ReviewDecisions());
    for (const AcceptedFinding& accepted : decisions_.back().accepted) {
      if (!accepted.by.why.reason.isEmpty() && !reasons_.contains(accepted.by.why.reason))
        reasons_.append(accepted.by.why.reason);
    }
  }
}

AcceptedFinding ReviewBench::AcceptanceOf(const Finding& finding) const {
  return {.rule = RuleWord(finding.rule),
          .rawFile = finding.file,
          .from = finding.from,
          .to = finding.to,
          .value = finding.value,
          .by = {}};
}

bool ReviewBench::IsAccepted(const Finding& finding) const {
  const AcceptedFinding acceptance = AcceptanceOf(finding);
  return std::ranges::any_of(decisions_, [&](const ReviewDecisions& decisions) {
    return std::ranges::any_of(decisions.accepted,
                               [&](const AcceptedFinding& known) { return known.IsOf(acceptance); });
  });
}

/// The log of the water year in which it begins.
QString ReviewBench::LogOf(const Finding& finding) const {
  const std::vector<StationWaterYear> years = YearsOf(session_.Series().Chosen());
  const int year = WaterYearOf(std::chrono::floor<std::chrono::days>(finding.from));
  for (std::size_t i = 0; i < years.size() && i < load_->logs.size(); ++i) {
    if (years[i].year.number == year) return load_->logs[i];
  }
  return load_->logs.front();
}

void ReviewBench::ChangeAcceptance(const ListedFinding& listed) {
  if (!load_ || load_->logs.empty()) return;
  AcceptedFinding acceptance = AcceptanceOf(listed.finding);
  const QString log = LogOf(listed.finding);
  Status done;
  if (listed.accepted) {
    done = WithdrawAcceptance(log, acceptance);
  } else {
    const QString what = language_.Say(RuleName(listed.finding.rule)) + QStringLiteral(", ") +
                         DateTimeText(listed.finding.from) + QStringLiteral(": ") +
                         language_.Say(ValueText(listed.finding));
    const auto reason = questions_.AskForReason(
        &window_, language_.Say(Wording{u"Bulguyu kabul et", u"Accept the finding"}),
        what + QLatin1Char('\n') +
            language_.Say(Wording{u"Neden olduğu gibi kalıyor?", u"Why does it stay as it is?"}),
        reasons_);
    if (!reason) return;
    acceptance.by = PresentAuthor();
    acceptance.by.why.reason = *reason;
    RememberReason(*reason);
    done = AcceptFinding(log, acceptance);
  }
  if (!done) questions_.Warn(&window_, language_.attentionTitle, language_.Say(done.Failure()));
  ReadDecisions();
  FindAnew();
}

bool ReviewBench::CanApprove() const {
  return load_ && load_->whole && load_->logs.size() == 1 && !IsSingleFile(session_.Series().Chosen()) &&
         !session_.Holder() && !session_.HasUnsavedChanges();
}

bool ReviewBench::IsApproved() const {
  return load_ && decisions_.size() == 1 && decisions_.front().InForce() != nullptr;
}

/// What is approved must be what was looked at: files and corrections may have changed since they were read.
Status ReviewBench::StillAsLoaded() const {
  const auto now = LoadReadings(load_->request);
  if (!now) return now.Failure();
  const StationSeries& shown = session_.Series();
  bool same = now->series.ReadingCount() == shown.ReadingCount();
  for (int row = 1; same && row <= shown.ReadingCount(); ++row) {
    const Reading one = now->series.At(row);
    const Reading other = shown.At(row);
    same = one.Time() == other.Time() && one.kind == other.kind && one.levelCm == other.levelCm &&
           now->series.RawLevel(row) == shown.RawLevel(row);
  }
  if (same) return {};
  return Error{Wording{u"Su yılı onaylanmadı", u"The water year was not approved"},
               {},
               Wording{u"dosyalar veya düzeltmeler yüklendikten sonra değişti; yeniden yükleyin",
                       u"files or corrections have changed since they were loaded; load them again"}};
}

void ReviewBench::Approve() {
  if (!CanApprove()) return;
  const bool withdraws = IsApproved();
  const auto open = std::ranges::count_if(parts_.findings->Findings(), [](const ListedFinding& listed) {
    return !listed.accepted && listed.finding.severity == FindingSeverity::Doubt;
  });
  const auto remark = questions_.AskForReason(
      &window_,
      withdraws ? language_.Say(Wording{u"Onayı geri al", u"Withdraw the approval"})
                : language_.Say(Wording{u"Su yılını onayla", u"Approve the water year"}),
      withdraws ? language_.Say(Wording{u"Neden?", u"Why?"})
                : language_.Say(Wording{u"%1 açık bulgu var. Açıklama:", u"Open findings: %1. Remark:"},
                                static_cast<int>(open)),
      reasons_);
  if (!remark) return;
  const BusyCursor busy;
  if (const Status same = StillAsLoaded(); !same && !withdraws)
    return questions_.Warn(&window_, language_.attentionTitle, language_.Say(same.Failure()));
  auto state =
      PresentState(load_->request.dataDirectory, load_->readOuts, load_->logs.front(), session_.Series());
  Status done = state ? Status() : Status(state.Failure());
  if (done) {
    state->withdrawn = withdraws;
    state->by = PresentAuthor();
    state->by.why.reason = *remark;
    state->openFindings = static_cast<int>(open);
    done = AddApproval(load_->logs.front(), *state);
  }
  if (!done) questions_.Warn(&window_, language_.attentionTitle, language_.Say(done.Failure()));
  RememberReason(*remark);
  ReadDecisions();
  FindAnew();
  if (done)
    Q_EMIT Told(withdraws ? language_.Say(Wording{u"Onay geri alındı.", u"The approval is withdrawn."})
                          : language_.Say(Wording{u"Su yılı onaylandı.", u"The water year is approved."}));
}

}  // namespace vesk

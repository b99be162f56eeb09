// Saving of corrections, and whose they are to save.
#include <algorithm>

#include "review/editing.h"
#include "review/review_decisions.h"

namespace vesk {
namespace {

QString LockOwner() {
  return QStringLiteral("Vesk4");
}

Error NotSaved(const QString& path, const Message& reason) {
  return {Wording{u"Değişiklik dosyası kaydedilemedi", u"The change log could not be saved"}, path, reason};
}

Message ChangedElsewhere() {
  return Wording{u"düzeltmeler yüklendikten sonra başkası tarafından değiştirildi",
                 u"somebody else has changed the corrections since they were loaded"};
}

}  // namespace

// Where no lock file can be made nothing can be saved either, so there is nobody to be kept out.
void EditSession::TryLocks() {
  holder_.reset();
  locksFailed_ = false;
  locks_.clear();
  for (const QString& path : lockPaths_) {
    Result<LockAttempt> attempt = TryLock(path, LockOwner());
    if (!attempt) {
      locksFailed_ = true;
    } else if (auto* lock = std::get_if<FileLock>(&*attempt)) {
      locks_.push_back(std::move(*lock));
    } else {
      holder_ = std::get<LockHolder>(*attempt);
    }
  }
  if (holder_) locks_.clear();  // all or none: a save goes into every log
  CheckWhetherOutdated();
}

Result<bool> EditSession::TakeOver() {
  if (!holder_) return true;
  for (const QString& path : lockPaths_) {
    const std::optional<LockHolder> seen = LockHolderOf(path);
    if (!seen || seen->token != holder_->token) continue;
    if (Result<LockAttempt> taken = TakeOverLock(path, LockOwner(), *seen); !taken) return taken.Failure();
  }
  TryLocks();
  Q_EMIT StateChanged();
  return !holder_;
}

// Between the reading and the lock, or while another held it, somebody may have saved.
void EditSession::CheckWhetherOutdated() {
  if (holder_) return;
  outdated_ = std::ranges::any_of(logs_, [](const LoadedChangeLog& log) {
    const Result<bool> changed = HasChangedSince(log.overlay);
    return changed && *changed;
  });
}

Status EditSession::MayEdit() {
  if (holder_) TryLocks();
  const Message what = Wording{u"Seviye değiştirilmedi", u"The level was not changed"};
  if (holder_)
    return Error{
        what,
        {},
        Wording{u"bu düzeltmeler üzerinde başkası çalışıyor", u"somebody else works on these corrections"}};
  if (outdated_) return Error{what, {}, ChangedElsewhere()};
  return {};
}

void EditSession::KeepForLater() {
  journals_.Leave();
  ResetSteps();
  Q_EMIT StateChanged();
}

Status EditSession::CheckBeforeSave() {
  const bool lost = std::ranges::any_of(locks_, [](const FileLock& lock) { return !lock.StillOurs(); });
  if (holder_ || lost) TryLocks();
  if (holder_)
    return NotSaved(lockPaths_.front(), Wording{u"bu düzeltmeler üzerinde başkası çalışıyor",
                                                u"somebody else works on these corrections"});
  for (const LoadedChangeLog& log : logs_) {
    const Result<bool> changed = HasChangedSince(log.overlay);
    if (!changed) return changed.Failure();
    if (!*changed) continue;
    outdated_ = true;
    return NotSaved(log.overlay.path, ChangedElsewhere());
  }
  return {};
}

Status EditSession::Save() {
  Status saved = CheckBeforeSave();
  // Each year goes into its own log, where the next load of that year alone finds it.
  for (std::size_t i = 0; saved && i < logs_.size(); ++i) saved = SaveLog(logs_[i]);
  if (saved) {
    ResetSteps();
    FinishJournals();
  }
  Q_EMIT AllRowsChanged();  // also behind a failure: an earlier log of this load may have been saved
  Q_EMIT StateChanged();
  return saved;
}

// A change log with corrected times fits re-timed readings only, so the correction goes first, as a plan that
// counts from the moment when the change log is in its place.
Status EditSession::SaveLog(LoadedChangeLog& log) {
  SavedCorrection& correction = log.overlay.correction;
  const ChangeLogToSave next = FormChangeLog(series_, log.overlay, PresentAuthor(),
                                             OfSingleFile() ? RowRange{} : log.rows, Purposes());
  if (OfSingleFile() && HasUnsavedCorrection()) {
    const PlannedTarget plan{.target = series_.Target(), .logHash = next.state.logHash};
    if (Status planned = WriteSavedCorrection(log.saveTo, correction, plan); !planned) return planned;
  } else if (OfSingleFile()) {
    if (Status settled = WriteSavedCorrection(log.saveTo, correction); !settled) return settled;
  }
  if (Status saved = SaveChangeLog(log.saveTo, next, log.overlay); !saved) return saved;
  MarkSaved(series_, next.authors);
  if (!OfSingleFile() || !HasUnsavedCorrection()) return {};
  correction.target = series_.Target();
  // From here on the plan counts. Where the disk cannot keep it plain it is said, and saving again does it.
  return WriteSavedCorrection(log.saveTo, correction);
}

}  // namespace vesk

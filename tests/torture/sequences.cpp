// Random work at the desk. Nothing here knows how corrections are stored: a screen before and a screen after
// are compared row by row.
#include "torture/desk.h"
#include "torture/parts.h"
#include "torture/world.h"

namespace vesk::torture {
namespace {

constexpr int kMostDeeds = 18;
constexpr int kMostSittings = 3;

/// One sequence: what was done so far goes into a failure's text.
class Sequence {
 public:
  Sequence(Run& run, std::uint64_t seed) : run_(run), seed_(seed), random_(seed) {}

  void Play() {
    const QString folder = NewFolder(run_.Scratch());
    choice_ =
        WriteWorld(MakeWorld(random_, random_.OneIn(2) ? WorldKind::SingleFile : WorldKind::Years), folder);
    const int sittings = 1 + random_.Below(kMostSittings);
    for (int i = 0; i < sittings && !broken_; ++i) Sit();
    RemoveFolder(folder);
  }

 private:
  void Break(const std::string& rule, const QByteArray& detail) {
    broken_ = true;
    run_.Fail(seed_, rule, detail + " after: " + story_);
  }

  void Sit() {
    Desk desk;
    if (const QString why = desk.Open(choice_); !why.isEmpty())
      return Break("a folder no longer loads", why.toUtf8());
    story_ += "load";
    shown_ = {desk.Shown()};
    at_ = 0;
    const int deeds = 2 + random_.Below(kMostDeeds);
    for (int i = 0; i < deeds && !broken_; ++i) {
      Step(desk);
      if (random_.OneIn(12) && !broken_) SaveAndReload(desk);
    }
    if (!broken_) SaveAndReload(desk);
  }

  void Step(Desk& desk) {
    EditSession& session = desk.Session();
    Deed deed = NextDeed(random_, desk, session);
    if (deed.kind == Deed::Kind::Save) return SaveAndReload(desk);
    const Screen before = desk.Shown();
    const bool retimed = session.IsCorrected();
    Do(deed, session);
    story_ += ", " + deed.Text();
    run_.Count("deeds");
    const Screen after = desk.Shown();
    if (deed.kind == Deed::Kind::Edit) CheckEdit(deed, before, after, retimed);
    if (deed.kind == Deed::Kind::Undo || deed.kind == Deed::Kind::Redo) CheckStep(deed, after);
    if (deed.kind == Deed::Kind::UndoAll || (deed.kind == Deed::Kind::Save && deed.done)) {
      shown_ = {after};
      at_ = 0;
    } else if (deed.kind == Deed::Kind::CorrectDates || deed.kind == Deed::Kind::Edit ||
               deed.kind == Deed::Kind::Range) {
      if (LineOf(before) == LineOf(after)) return;  // nothing was to be done
      shown_.resize(at_ + 1);
      shown_.push_back(after);
      ++at_;
    }
  }

  /// An edit sets its row and leaves every other one alone; in a re-timed file the day's computed extremes
  /// may follow.
  void CheckEdit(const Deed& deed, const Screen& before, const Screen& after, bool retimed) {
    if (!deed.done) return;
    if (before.size() != after.size() && !retimed) return Break("an edit adds or takes rows", deed.Text());
    const auto edited = static_cast<std::size_t>(deed.row - 1);
    QString typed = deed.typed;
    if (after.size() == before.size() &&
        after[edited].level != typed.replace(QLatin1Char(','), QLatin1Char('.')).toUtf8()) {
      return Break("an edit does not show the level typed", deed.Text() + " shows " + after[edited].Text());
    }
    for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
      if (i == edited || before[i].Text() == after[i].Text() || (retimed && !before[i].IsOrdinary()))
        continue;
      return Break("an edit changes another row",
                   deed.Text() + ": " + before[i].Text() + " -> " + after[i].Text());
    }
  }

  /// A step back or forth shows the screen that stood there.
  void CheckStep(const Deed& deed, const Screen& after) {
    if (!deed.done) return;
    if (deed.kind == Deed::Kind::Undo && at_ == 0)
      return Break("an undo goes behind the load or save", deed.Text());
    at_ = deed.kind == Deed::Kind::Undo ? at_ - 1 : at_ + 1;
    if (at_ >= shown_.size()) return Break("a redo of what was not undone", deed.Text());
    if (LineOf(shown_[at_]) == LineOf(after)) return;
    Break("undo or redo does not show the screen that was",
          deed.Text() + ": " + DifferenceOf(LineOf(shown_[at_]), LineOf(after)));
  }

  void SaveAndReload(Desk& desk) {
    const Status saved = desk.Session().Save();
    story_ += ", save";
    if (!saved) return Break("a save fails without a reason", saved.Failure().English().toUtf8());
    run_.Count("saves compared with the next load");
    const Screen screen = desk.Shown();
    shown_ = {screen};
    at_ = 0;
    Desk next;
    if (const QString why = next.Open(choice_, false); !why.isEmpty())
      return Break("a folder no longer loads", why.toUtf8());
    Compare(screen, next);
  }

  void Compare(const Screen& saved, const Desk& next) {
    const Screen shown = next.Shown();
    run_.Count("rows compared", static_cast<long>(saved.size()));
    if (saved.size() != shown.size()) {
      return Break("another number of rows after save and load", DifferenceOf(LineOf(saved), LineOf(shown)));
    }
    for (std::size_t i = 0; i < saved.size(); ++i) {
      if (saved[i].FullText() == shown[i].FullText()) continue;
      if (Names(next.Messages(), saved[i])) {
        run_.Count("differing rows that a message names");
        continue;
      }
      const bool code = saved[i].Text() == shown[i].Text();
      return Break(code ? "another edit state after save and load" : "another row after save and load",
                   "saved \"" + saved[i].FullText() + "\", shown \"" + shown[i].FullText() + '"');
    }
  }

  static bool Names(const QStringList& messages, const ScreenRow& row) {
    return std::any_of(messages.begin(), messages.end(), [&](const QString& message) {
      return message.contains(QString::fromLatin1(row.date)) &&
             message.contains(QString::fromLatin1(row.time));
    });
  }

  Run& run_;
  std::uint64_t seed_;
  Random random_;
  Choice choice_;
  QByteArray story_;
  std::vector<Screen> shown_;  // screens that undo and redo step through
  std::size_t at_ = 0;
  bool broken_ = false;
};

}  // namespace

void Sequences(Run& run) {
  for (int round = 0; round < run.Rounds(); ++round) Sequence(run, run.SeedOf(round)).Play();
}

}  // namespace vesk::torture

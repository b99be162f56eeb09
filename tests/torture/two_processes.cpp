// Two operators on one folder, each with rows of their own, killed now and then. Whatever a process was told
// is done is there in the end; what is refused was said to be refused.
#include "torture/desk.h"
#include "torture/parts.h"
#include "torture/world.h"

#include <QDir>

#include <map>

#include <unistd.h>

#include <csignal>
#include <ctime>

namespace vesk::torture {
namespace {

constexpr int kSittings = 6;
constexpr int kDeeds = 8;
constexpr int kNever = 10'000'000;

/// What is known of one row: the level acknowledged last, and one that was tried behind it.
struct Known {
  QByteArray level, tried;
};
using Rows = std::map<int, Known>;

QByteArray Number(int n) {
  return QByteArray::number(n);
}

/// The kernel ends this process then, whatever it is doing.
void DieIn(int microseconds) {
  sigevent event{};
  event.sigev_notify = SIGEV_SIGNAL;
  event.sigev_signo = SIGKILL;
  timer_t timer{};
  ::timer_create(CLOCK_MONOTONIC, &event, &timer);
  itimerspec when{};
  when.it_value = {microseconds / 1'000'000, microseconds % 1'000'000 * 1000L + 1};
  ::timer_settime(timer, 0, &when, nullptr);
}

/// An operator's sitting; lines "try <row> <level>", "done <row> <level>", "saved", "refused <why>".
void Sit(const Choice& choice, std::uint64_t seed, int parity, const Child::Say& say) {
  Random random(seed);
  Desk desk;
  if (const QString why = desk.Open(choice); !why.isEmpty()) return say("refused " + why.toUtf8());
  for (int i = 0; i < kDeeds; ++i) {
    ::usleep(static_cast<unsigned>(random.Below(600)));
    if (random.OneIn(4)) {
      const Status saved = desk.Session().Save();
      say(saved ? QByteArray("saved") : "refused " + saved.Failure().English().toUtf8());
      if (!saved && !desk.Open(choice).isEmpty()) return;
      continue;
    }
    const int row = 2 * (1 + random.Below(desk.Rows() / 2 - 1)) + parity;
    const QByteArray level = Number(200 + random.Below(5000));
    say("try " + Number(row) + ' ' + level);
    const auto edited = desk.Session().EditLevel(row, QString::fromLatin1(level));
    if (edited && !desk.JournalFailed()) {
      say("done " + Number(row) + ' ' + level);
    } else {
      say("refused " + (edited ? QByteArray("the journal fails") : edited.Failure().English().toUtf8()));
      if (!desk.Open(choice).isEmpty()) return;  // somebody else works on it: look again
    }
  }
  if (random.OneIn(2)) say(desk.Session().Save() ? "saved" : "refused at the end");
}

/// One of the two, sitting after sitting.
class Operator {
 public:
  Operator(Choice choice, int parity) : choice_(std::move(choice)), parity_(parity) {}

  void Start(Random& random) {
    const std::uint64_t seed = random.Next();
    const int killAfter = random.OneIn(2) ? random.Below(9000) : kNever;
    child_ = std::make_unique<Child>([&](const Child::Say& say) {
      DieIn(killAfter);
      Sit(choice_, seed, parity_, say);
    });
  }

  void End(Run& run) {
    story_ += "; sitting:";
    for (const QByteArray& line : child_->Lines()) {
      if (!line.startsWith("try ")) story_ += ' ' + line + ',';
      const QByteArrayList words = line.split(' ');
      if (words[0] == "try") rows_[words[1].toInt()].tried = words[2];
      if (words[0] == "done") {
        Known& known = rows_[words[1].toInt()];
        known.level = std::exchange(known.tried, QByteArray());
        run.Count("edits acknowledged");
      }
      if (words[0] == "saved") run.Count("saves acknowledged");
      if (words[0] == "refused") run.Count("refused with a reason");
    }
    if (child_->WasKilled()) story_ += " killed";
    run.Count(child_->WasKilled() ? "sittings killed" : "sittings ended");
    if (!child_->WasKilled() && !child_->EndedWell()) run.Count("sittings crashed");
    child_.reset();
  }

  /// Everything that it was told, for a failure's text.
  [[nodiscard]] const QByteArray& Story() const { return story_; }
  [[nodiscard]] const Choice& What() const { return choice_; }
  [[nodiscard]] const Rows& Edited() const { return rows_; }

 private:
  Choice choice_;
  int parity_;
  Rows rows_;
  QByteArray story_;
  std::unique_ptr<Child> child_;
};

/// Work that was set aside while other work went on comes back once that is saved.
void TakeUpWhatWaits(const Choice& choice) {
  constexpr int kMostJournals = 4;
  Child child([&](const Child::Say& /*say*/) {
    for (int i = 0; i < kMostJournals; ++i) {
      Desk desk;
      if (!desk.Open(choice).isEmpty() || !desk.Session().Save()) return;
    }
  });
  (void)child.Lines();
}

void Check(Run& run, std::uint64_t seed, const Operator& one, const char* how) {
  Child child([&](const Child::Say& say) {
    Desk desk;
    const QString why = desk.Open(one.What());
    if (!why.isEmpty()) return say("refused " + why.toUtf8());
    for (const ScreenRow& row : desk.Shown()) say(row.level);
  });
  const QByteArrayList levels = child.Lines();
  for (const auto& [row, known] : one.Edited()) {
    if (known.level.isEmpty()) continue;
    run.Count("rows compared");
    const QByteArray shown = levels.value(row - 1);
    if (shown == known.level || shown == known.tried) continue;
    run.Fail(seed, std::string("an acknowledged edit is lost, ") + how,
             "row " + Number(row) + " acknowledged " + known.level + ", shown " + shown + "; left behind: " +
                 QDir(one.What().folder).entryList(QDir::Files).join(QLatin1Char(' ')).toUtf8() +
                 one.Story());
    return;
  }
}

void PlayFolder(Run& run, std::uint64_t seed) {
  static constexpr const char* kHow[] = {"same year", "different years", "same single file"};
  Random random(seed);
  const int how = random.Below(3);
  const QString folder = NewFolder(run.Scratch());
  World world = MakeWorld(random, how == 2 ? WorldKind::SingleFile : WorldKind::Years);
  if (how == 1) {
    world.plans.resize(1);
    world.plans[0].first = sample::At(2024, 9, 29, 1);
    world.plans[0].intervalMinutes = 60;
    world.plans[0].count = 96;
    world.plans[0].dayCount = CountedNameOf(world.plans[0]).mid(17, 4).toInt();
  }
  if (how != 2) world.choice.years = {2024};
  const Choice choice = WriteWorld(world, folder);
  Choice second = choice;
  if (how == 1) second.years = {2025};
  Operator one(choice, 0);
  Operator two(second, 1);
  for (int sitting = 0; sitting < kSittings; ++sitting) {
    one.Start(random);
    two.Start(random);
    one.End(run);
    two.End(run);
  }
  run.Count(kHow[how]);
  TakeUpWhatWaits(one.What());
  TakeUpWhatWaits(two.What());
  Check(run, seed, one, kHow[how]);
  Check(run, seed, two, kHow[how]);
  RemoveFolder(folder);
}

}  // namespace

void TwoProcesses(Run& run) {
  for (int round = 0; round < run.Rounds(); ++round) PlayFolder(run, run.SeedOf(round));
}

}  // namespace vesk::torture

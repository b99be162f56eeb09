// Two processes get the same folder and do the same deeds; one is left alone and writes down its screen after
// each deed, the other one is killed. What a third one then finds must be the screen after the last deed that
// the killed one was told is done, or after the one under way.
#include "torture/desk.h"
#include "torture/fault_shim.h"
#include "torture/parts.h"
#include "torture/world.h"

namespace vesk::torture {
namespace {

constexpr int kDeeds = 14;
constexpr int kKillsAFolder = 4;

/// Lines: "screen <rows>" after opening and after each deed when screens are asked for, "done <deed>" when
/// not.
void Work(const Choice& choice, std::uint64_t seed, bool screens, const Child::Say& say) {
  Random random(seed);
  Desk desk;
  if (const QString why = desk.Open(choice); !why.isEmpty()) return say("refused " + why.toUtf8());
  say(screens ? "screen " + LineOf(desk.Shown()) : QByteArray("done open"));
  for (int i = 0; i < kDeeds; ++i) {
    Deed deed = NextDeed(random, desk, desk.Session());
    Do(deed, desk.Session());
    say(screens ? "screen " + LineOf(desk.Shown()) : "done " + deed.Text());
  }
  say("calls " + QByteArray::number(static_cast<qlonglong>(FaultsSeen())));
}

struct Twin {
  QByteArrayList screens;
  long calls = 0;
  std::chrono::microseconds taken{};
};

Twin RunTwin(Choice choice, std::uint64_t seed, const Run& run) {
  const QString folder = NewFolder(run.Scratch());
  CopyFolder(choice.folder, folder);
  choice.folder = folder;
  Twin twin;
  const auto begin = std::chrono::steady_clock::now();
  Child child([&](const Child::Say& say) {
    FaultsWatch(qPrintable(choice.folder));
    Work(choice, seed, true, say);
  });
  for (const QByteArray& line : child.Lines()) {
    if (line.startsWith("screen ")) twin.screens << line.mid(7);
    if (line.startsWith("calls ")) twin.calls = line.mid(6).toLong();
  }
  twin.taken =
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
  RemoveFolder(folder);
  return twin;
}

/// Deeds that the killed process was told are done, the opening included.
QByteArrayList RunVictim(Run& run, const Choice& choice, std::uint64_t seed, const Twin& twin,
                         Random& random) {
  const bool atCall = random.OneIn(2) && twin.calls > 0;
  const long call = atCall ? 1 + random.Below(static_cast<int>(twin.calls)) : 0;
  const int action = random.OneIn(2) ? kFaultTear : kFaultKill;
  Child child([&](const Child::Say& say) {
    FaultsWatch(qPrintable(choice.folder));
    FaultsArm(call, action, false);
    Work(choice, seed, false, say);
  });
  const auto span = static_cast<int>(twin.taken.count() * 7 / 10) + 1;  // the twin writes more
  QByteArrayList deeds =
      atCall ? child.Lines() : child.LinesUntil(std::chrono::microseconds(random.Below(span)));
  run.Count(child.WasKilled() ? (atCall ? "killed at a system call" : "killed at a moment")
                              : "ended before the kill");
  deeds.removeIf([](const QByteArray& line) { return !line.startsWith("done "); });
  run.Count("deeds acknowledged", deeds.size());
  return deeds;
}

void Compare(Run& run, std::uint64_t seed, const Choice& choice, const Twin& twin,
             const QByteArrayList& deeds) {
  Child child([&](const Child::Say& say) {
    Desk desk;
    const QString why = desk.Open(choice);
    say(QByteArray::number(desk.Unfit()) + ' ' + why.toUtf8());
    if (why.isEmpty()) say(LineOf(desk.Shown()));
  });
  const QByteArrayList found = child.Lines();
  if (found.size() != 2) return run.Fail(seed, "the folder no longer loads", found.join(' '));
  const qsizetype last = std::max<qsizetype>(deeds.size() - 1, 0);
  const QByteArray story = " after: " + deeds.join(", ");
  if (!found[0].startsWith("0 ")) run.Fail(seed, "restored work does not fit its readings", found[0] + story);
  if (found[1] == twin.screens.value(last) || found[1] == twin.screens.value(last + 1)) return;
  run.Fail(seed, "the restored screen is not what was acknowledged",
           DifferenceOf(twin.screens.value(last), found[1]) + story);
}

/// One folder that lives through several kills, one behind the other.
void PlayFolder(Run& run, std::uint64_t seed) {
  Random random(seed);
  const QString folder = NewFolder(run.Scratch());
  const auto kind = random.OneIn(2) ? WorldKind::SingleFile : WorldKind::Years;
  const Choice choice = WriteWorld(MakeWorld(random, kind), folder);
  for (int kill = 0; kill < kKillsAFolder; ++kill) {
    const std::uint64_t deedsSeed = random.Next();
    const Twin twin = RunTwin(choice, deedsSeed, run);
    if (twin.screens.size() != kDeeds + 1) {
      run.Fail(seed, "the folder no longer loads", "the process that was left alone could not work");
      break;
    }
    const QByteArrayList deeds = RunVictim(run, choice, deedsSeed, twin, random);
    Compare(run, seed, choice, twin, deeds);
  }
  RemoveFolder(folder);
}

}  // namespace

void KillRounds(Run& run) {
  for (int round = 0; round < run.Rounds(); ++round) PlayFolder(run, run.SeedOf(round));
}

}  // namespace vesk::torture

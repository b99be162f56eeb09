#include "torture/theatre.h"
#include "datafiles/dates.h"

#include <QDirIterator>

#include "shell/settings.h"
#include "torture/fault_shim.h"

namespace vesk::torture {
namespace {

constexpr char kSettingsName[] = "vesk4.ini";
constexpr qsizetype kMarkerBytes = 10;

QString TextOf(const Status& status) {
  return status ? QString() : status.Failure().English();
}

/// A step at the desk that the journal must have before it counts.
template <class Step>
QString Journaled(Desk& desk, const Step& step) {
  step();
  return desk.JournalFailed() ? QStringLiteral("the journal fails") : QString();
}

QString Edit(Desk& desk, const Choice& /*choice*/) {
  return Journaled(desk, [&] { (void)desk.Session().EditLevel(5, QStringLiteral("4711")); });
}
QString Undo(Desk& desk, const Choice& /*choice*/) {
  return Journaled(desk, [&] { (void)desk.Session().UndoStep(); });
}
QString UndoAll(Desk& desk, const Choice& /*choice*/) {
  return Journaled(desk, [&] { desk.Session().UndoAll(); });
}
QString Correct(Desk& desk, const Choice& /*choice*/) {
  const StationSeries& grid = desk.Session().Series();
  const DateTime target = grid.At(grid.ReadingCount()).Time() + std::chrono::hours(3);
  const auto done = desk.Session().CorrectDates(DateTimeText(target));
  if (!done) return done.Failure().English();
  return desk.JournalFailed() ? QStringLiteral("the journal fails") : QString();
}
QString Save(Desk& desk, const Choice& /*choice*/) {
  return TextOf(desk.Session().Save());
}
/// What a load says of itself; remarks on the figures of a day begin with its date.
QString Complaints(const QStringList& messages) {
  QStringList complaints = messages;
  complaints.removeIf([](const QString& message) { return ReadDate(message.left(10)).has_value(); });
  return complaints.join(QLatin1String(" | "));
}

QString Load(Desk& /*desk*/, const Choice& choice) {
  Desk another;
  const QString why = another.Open(choice);
  if (!why.isEmpty()) return why;
  if (another.JournalFailed()) return QStringLiteral("the journal fails");
  if (another.Unfit() > 0) return QStringLiteral("work that does not fit");
  return another.Whole() ? Complaints(another.Messages()) : QStringLiteral("not whole");
}
QString TidyAndLoad(Desk& desk, const Choice& choice) {
  const QStringList failures = Desk::Tidy(choice.folder);
  const QString why = Load(desk, choice);
  return failures.isEmpty() ? why : failures.join(QLatin1String(" | "));
}
QString WriteSettings(Desk& /*desk*/, const Choice& choice) {
  Settings settings(choice.folder + QLatin1String(kSettingsName), choice.folder);
  return TextOf(
      settings.WriteSetting(QStringLiteral("Options"), QStringLiteral("21"), QStringLiteral("ENGLISH")));
}

constexpr Operation kOperations[] = {
    {"load", WorldKind::Years, false, false, Load},
    {"tidy and load", WorldKind::Years, true, false, TidyAndLoad},
    {"edit", WorldKind::Years, false, true, Edit},
    {"undo", WorldKind::Years, false, true, Undo},
    {"undo all", WorldKind::Years, false, true, UndoAll},
    {"save", WorldKind::Years, false, true, Save},
    {"save of a file", WorldKind::SingleFile, false, true, Save},
    {"date correction", WorldKind::SingleFile, false, true, Correct},
    {"settings write", WorldKind::Years, false, false, WriteSettings},
};

/// True when it is that read-out: a fresh marker may be stamped over, byte by byte.
bool IsReadOut(const QByteArray& content, const QByteArray& original) {
  static const QByteArray kStamp = "        \r\n";
  if (content.size() != original.size() || content.mid(kMarkerBytes) != original.mid(kMarkerBytes))
    return false;
  for (qsizetype i = 0; i < kMarkerBytes; ++i) {
    if (content[i] != original[i] && content[i] != kStamp[i]) return false;
  }
  return true;
}

/// What could be raw files, wherever they stand.
QByteArrayList RawContents(const QString& folder) {
  QByteArrayList contents;
  QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    if (path.endsWith(QLatin1String(".txt")) && !path.contains(QLatin1String("Degisiklikler")))
      contents << Content(path);
  }
  return contents;
}

}  // namespace

std::span<const Operation> Operations() {
  return kOperations;
}

Found Look(const Choice& choice) {
  Child child([&](const Child::Say& say) {
    Desk desk;
    const QString why = desk.Open(choice);
    if (!why.isEmpty() || desk.Unfit() > 0) return say("refused " + why.toUtf8());
    const QByteArray settings = Content(choice.folder + QLatin1String(kSettingsName));
    say("state " + LineOf(desk.Shown()) + settings.toHex());
  });
  const QByteArrayList lines = child.Lines();
  if (lines.size() == 1 && lines[0].startsWith("state ")) return {lines[0].mid(6), {}};
  return {{}, lines.join(' ')};
}

void Fault::Arm() const {
  if (bytes >= 0) return FaultsDiskFull(bytes);
  FaultsArm(nth, action, stays);
}

QByteArray Fault::Text() const {
  if (bytes >= 0) return "full after " + QByteArray::number(static_cast<qlonglong>(bytes)) + " bytes";
  const QByteArray what = action == kFaultKill   ? "kill"
                          : action == kFaultTear ? "torn write and kill"
                                                 : QByteArray("errno ") + QByteArray::number(action);
  return what + " at call " + QByteArray::number(static_cast<qlonglong>(nth)) +
         (stays ? " and behind it" : "");
}

Theatre::Theatre(Run& run, std::uint64_t seed, const Operation& operation)
    : run_(run), seed_(seed), operation_(operation) {
  Random random(seed);
  World world = MakeWorld(random, operation.kind, !operation.fresh);
  if (operation.fresh) AddOlderReadOut(world);
  template_ = NewFolder(run.Scratch());
  choice_ = WriteWorld(world, template_);
  Put(template_ + QLatin1String(kSettingsName), "[Options]\r\n21=TURKCE\r\n22=1\r\n");
  if (!operation.fresh) LeaveWork(random);
  raw_ = RawContents(template_);
  std::sort(raw_.begin(), raw_.end());
}

void Theatre::Rehearse() {
  const Choice choice = Copy();
  before_ = RehearseState(choice, false);
  RemoveFolder(choice.folder);
  const Choice again = Copy();
  after_ = RehearseState(again, true);
  RemoveFolder(again.folder);
}

void Theatre::Play(const Fault& fault, bool goesOn) {
  const Choice choice = Copy();
  Child child([&](const Child::Say& say) { Act(choice, fault, goesOn, say); });
  const QByteArrayList lines = child.Lines();
  QByteArray said, met;
  path_.clear();
  for (const QByteArray& line : lines) {
    if (line.startsWith("met ")) met = line.mid(4);
    if (line.startsWith("path ")) path_ = line.mid(5);
    if (line.startsWith("result ")) said = line.mid(7);
    if (line.startsWith("broken "))
      Break("it cannot be done again once the fault is gone", fault, met, line.mid(7));
  }
  run_.Count(child.WasKilled() ? "processes ended at a call" : "faults injected");
  if (!child.WasKilled() && !child.EndedWell()) Break("the process crashes", fault, met, {});
  Check(choice, fault, child.WasKilled() ? "killed" : said, met, goesOn && !child.WasKilled());
  RemoveFolder(choice.folder);
}

void Theatre::AddOlderReadOut(World& world) {
  sample::RawFilePlan older = world.plans.front();
  older.count -= 10;
  older.dayCount = 1;
  world.plans.push_back(older);
}

Choice Theatre::Copy() {
  Choice choice = choice_;
  choice.folder = NewFolder(run_.Scratch());
  CopyFolder(template_, choice.folder);
  return choice;
}

void Theatre::LeaveWork(Random& random) {
  const std::uint64_t seed = random.Next();
  Child child([&](const Child::Say& /*say*/) {
    Random deeds(seed);
    Desk desk;
    if (!desk.Open(choice_).isEmpty()) return;
    for (int i = 0; i < 8; ++i) {
      Deed deed = NextDeed(deeds, desk, desk.Session());
      if (i == 4) deed.kind = Deed::Kind::Save;
      Do(deed, desk.Session());
    }
    (void)desk.Session().EditLevel(3, QStringLiteral("321"));
  });
  (void)child.Lines();
}

QString Theatre::Prepare(const Operation& operation, Desk& desk, const Choice& choice) {
  if (!operation.opens) return {};
  const QString why = desk.Open(choice);
  if (!why.isEmpty()) return why;
  const auto edited = desk.Session().EditLevel(7, QStringLiteral("1234"));
  return edited ? QString() : edited.Failure().English();
}

QByteArray Theatre::RehearseState(const Choice& choice, bool acts) {
  Child child([&](const Child::Say& say) {
    FaultsWatch(qPrintable(choice.folder));
    Desk desk;
    if (!Prepare(operation_, desk, choice).isEmpty()) return say("failed");
    const long before = FaultsSeen();
    const QString why = acts ? operation_.act(desk, choice) : QString();
    if (!why.isEmpty()) return say("failed " + why.toUtf8());
    say("calls " + QByteArray::number(static_cast<qlonglong>(FaultsSeen() - before)));
  });
  const QByteArrayList lines = child.Lines();
  if (lines.size() != 1 || !lines[0].startsWith("calls ")) {
    run_.Fail(seed_, std::string(operation_.name) + ": fails without a fault", lines.join(' '));
  } else if (acts) {
    calls_ = lines[0].mid(6).toLong();
  }
  return Look(choice).state;
}

void Theatre::Act(const Choice& choice, const Fault& fault, bool goesOn, const Child::Say& say) {
  FaultsWatch(qPrintable(choice.folder));  // from the start: files that are open already count, too
  Desk desk;
  (void)Prepare(operation_, desk, choice);
  fault.Arm();
  const QString why = operation_.act(desk, choice);
  const QByteArray met = FaultsMet() > 0 ? FaultsMetName() : "none";
  const QByteArray path = FaultsMetPath();
  FaultsWatch(nullptr);
  say("met " + met);
  say("path " + path.mid(path.lastIndexOf('/') + 1));
  say("result " + (why.isEmpty() ? QByteArray("done") : why.toUtf8()));
  if (!goesOn) return;
  // The fault is gone: what the screen holds can be saved, what failed can be done again.
  const QString saved = operation_.opens ? TextOf(desk.Session().Save()) : operation_.act(desk, choice);
  if (!saved.isEmpty()) say("broken " + saved.toUtf8());
}

void Theatre::Check(const Choice& choice, const Fault& fault, const QByteArray& said, const QByteArray& met,
                    bool wentOn) {
  CheckRawFiles(choice, fault, met);
  if (operation_.fresh)
    (void)Desk::Tidy(choice.folder);  // what was left half done is taken up by the next one
  const Found found = Look(choice);
  if (found.state.isEmpty()) return Break("the folder no longer loads", fault, met, found.why);
  const bool done = said == "done" || wentOn;
  const bool isLock = path_.endsWith(".lock");  // holds no work
  if (said == "done" && (met == "fsync" || met == "fdatasync") && !isLock) {
    Break("said done, though the disk did not take it", fault, met, {});
  }
  run_.Count(said == "done"     ? "operations that said done"
             : said == "killed" ? "states after a kill checked"
                                : "operations that said why not");
  if (found.state == after_ || (!done && found.state == before_)) return;
  const bool old = found.state == before_;
  Break(old ? (wentOn ? "done again, and the old state is there" : "said done, and the old state is there")
            : "neither the old nor the new state",
        fault, met, DifferenceOf(after_, found.state) + " said: " + said);
}

void Theatre::CheckRawFiles(const Choice& choice, const Fault& fault, const QByteArray& met) {
  const QByteArrayList now = RawContents(choice.folder);
  for (const QByteArray& content : raw_) {
    const auto isIt = [&content](const QByteArray& one) { return IsReadOut(one, content); };
    if (std::none_of(now.begin(), now.end(), isIt))
      return Break("a raw file is gone or changed", fault, met, {});
  }
  run_.Count("raw files compared", raw_.size());
}

void Theatre::Break(const std::string& rule, const Fault& fault, const QByteArray& met,
                    const QByteArray& detail) {
  std::string what = std::string(operation_.name) + ": " + rule;
  if (!met.isEmpty()) what += " (" + met.toStdString() + ')';
  run_.Fail(seed_, what, fault.Text() + " on \"" + path_ + "\": " + detail);
}

}  // namespace vesk::torture

// Between a save and the next load the raw files, the log or what stands beside it change. The folder is then
// loaded twice: as it is, and without any correction. A row that differs must have a correction of its own,
// made on that very reading; a correction that is on no row must be named.
#include "datafiles/dates.h"
#include "torture/desk.h"
#include "torture/parts.h"
#include "torture/world.h"

#include <QDir>

#include <set>

namespace vesk::torture {
namespace {

/// A correction as it was saved, known by its reading: raw file, kind and raw time.
struct Correction {
  QByteArray stem, minute, kind, level;
  QByteArray rawMinute;  ///< of an ordinary reading
  bool seen = false;
};

QStringList LogsIn(const QString& folder) {
  return QDir(folder).entryList({QStringLiteral("*-Degisiklikler*.txt")}, QDir::Files, QDir::Name);
}

/// What stands beside the logs and belongs to them.
QStringList RecordsIn(const QString& folder) {
  QStringList names = QDir(folder).entryList({QStringLiteral("*-Degisiklikler*")}, QDir::Files, QDir::Name);
  names.removeIf([](const QString& name) {
    return name.endsWith(QLatin1String(".txt")) || name.contains(QLatin1String(".journal")) ||
           name.endsWith(QLatin1String(".lock"));
  });
  return names;
}

class Round {
 public:
  Round(Run& run, std::uint64_t seed) : run_(run), seed_(seed), random_(seed) {}

  void Play() {
    folder_ = NewFolder(run_.Scratch());
    const bool single = random_.OneIn(3);
    world_ = MakeWorld(random_, single ? WorldKind::SingleFile : WorldKind::Years);
    choice_ = WriteWorld(world_, folder_);
    if (Work(3 + random_.Below(8)) && Keep() && Work(2 + random_.Below(4))) {
      Mutate();
      Check();
    }
    RemoveFolder(folder_);
  }

 private:
  /// Edits and a save; the corrections are what the screen then shows as changed.
  bool Work(int deeds) {
    Desk desk;
    if (!desk.Open(choice_).isEmpty() || desk.Rows() == 0) return false;
    for (int i = 0; i < deeds; ++i) {
      Deed deed = NextDeed(random_, desk, desk.Session());
      if (deed.kind != Deed::Kind::Edit && deed.kind != Deed::Kind::CorrectDates) continue;
      if (deed.kind == Deed::Kind::CorrectDates && !random_.OneIn(2)) continue;
      const Screen before = desk.Shown();
      const bool raw = !desk.Session().IsCorrected();
      Do(deed, desk.Session());
      story_ += deed.Text() + ", ";
      if (deed.kind == Deed::Kind::Edit && raw) KeepHidden(before, deed);
    }
    if (!desk.Session().Save()) return false;
    story_ += "save, ";
    retimed_ = desk.Session().IsCorrected();
    corrections_.clear();
    const Screen bare = Bare();
    for (const ScreenRow& row : desk.Shown()) {
      if (!row.changed) continue;
      const ScreenRow* raw = RawOf(row, bare);
      corrections_.push_back(
          {row.stem, row.Minute(), row.Kind(), row.level, raw != nullptr ? raw->Minute() : QByteArray()});
    }
    return true;
  }

  /// A logger's record that was corrected and then left the screen for computed extremes comes back with its
  /// correction when the dates are no longer corrected.
  void KeepHidden(const Screen& before, const Deed& deed) {
    const ScreenRow& row = before[static_cast<std::size_t>(deed.row - 1)];
    if (row.IsOrdinary()) return;
    QByteArray level = deed.typed.toLatin1();
    hidden_.insert(row.Minute() + row.Kind() + level.replace(',', '.'));
  }

  /// The folder as it is, loaded without any correction; empty when it does not load.
  Screen Bare() {
    const QString folder = NewFolder(run_.Scratch());
    CopyFolder(folder_, folder);
    for (const QString& name : LogsIn(folder) + RecordsIn(folder)) QFile::remove(folder + name);
    Choice choice = choice_;
    choice.folder = folder;
    Desk desk;
    const QString why = desk.Open(choice, false);
    RemoveFolder(folder);
    return why.isEmpty() ? desk.Shown() : Screen();
  }

  /// Remembers today's records: a later step may bring them back beside a newer log.
  bool Keep() {
    for (const QString& name : RecordsIn(folder_)) older_.push_back({name, Content(folder_ + name)});
    return true;
  }

  void Mutate() {
    static constexpr const char* kNames[] = {
        "longer file",        "moved extreme", "changed reading", "other day count", "older file in front",
        "log edited by hand", "stale record",  "missing record",  "cut record",      "damaged record"};
    const int which = random_.Below(10);
    mutation_ = kNames[which];
    story_ += mutation_;
    run_.Count(mutation_);
    const bool rawFile = which <= 4;
    const std::size_t plan = static_cast<std::size_t>(random_.Below(static_cast<int>(world_.plans.size())));
    if (rawFile) return MutateRaw(which, world_.plans[plan]);
    if (which == 5) return EditLog();
    fallback_ = true;
    for (const QString& name : RecordsIn(folder_)) MutateRecord(which, folder_ + name);
  }

  void MutateRaw(int which, sample::RawFilePlan& plan) {
    const QString name = sample::RawFileName(plan);
    QByteArray bytes = Content(folder_ + name);
    if (which == 0) {
      plan.count += 24 + random_.Below(48);
      plan.dayCount = CountedNameOf(plan).mid(17, 4).toInt();
      QFile::remove(folder_ + name);
      return Put(folder_ + sample::RawFileName(plan), sample::RawFileBytes(plan));
    }
    if (which == 3) {
      plan.dayCount = *plan.dayCount + 1;
      QFile::rename(folder_ + name, folder_ + sample::RawFileName(plan));
      return;
    }
    if (which == 4) {
      sample::RawFilePlan older = plan;
      older.stem = "221001";
      older.first -= std::chrono::hours(24 * (1 + random_.Below(3)) - 5);
      older.dayCount = CountedNameOf(older).mid(17, 4).toInt();
      return Put(folder_ + sample::RawFileName(older), sample::RawFileBytes(older));
    }
    QByteArrayList lines = bytes.split('\n');
    std::vector<qsizetype> fit;
    for (qsizetype i = 15; i < lines.size(); ++i) {
      const bool extreme = lines[i].startsWith("Max") || lines[i].startsWith("Min");
      if (lines[i].size() >= 27 && extreme == (which == 1)) fit.push_back(i);
    }
    if (fit.empty()) return;
    QByteArray& line = lines[fit[static_cast<std::size_t>(random_.Below(static_cast<int>(fit.size())))]];
    if (which == 1) {
      line.replace(15, 5, ClockText(60 + random_.Below(1300)).toLatin1());
    } else {
      line.replace(22, 5, QByteArray::number(1 + random_.Below(800) / 100.0, 'f', 2).rightJustified(5));
    }
    Put(folder_ + name, lines.join('\n'));
  }

  void MutateRecord(int which, const QString& path) {
    const QByteArray bytes = Content(path);
    if (which == 6) {
      for (const auto& [name, content] : older_) Put(folder_ + name, content);
    } else if (which == 7) {
      QFile::remove(path);
    } else if (which == 8) {
      Put(path, bytes.left(random_.Below(static_cast<int>(bytes.size()) + 1)));
    } else {
      QByteArray damaged = bytes;
      for (int i = 0; i < 3 && !damaged.isEmpty(); ++i)
        damaged[random_.Below(static_cast<int>(damaged.size()))] = static_cast<char>(random_.Below(256));
      Put(path, damaged);
    }
  }

  /// One line goes, gets another level, or stands twice.
  void EditLog() {
    fallback_ = true;
    const QStringList logs = LogsIn(folder_);
    if (logs.isEmpty()) return;
    const QString path = folder_ + logs[random_.Below(static_cast<int>(logs.size()))];
    QByteArrayList lines = Content(path).split('\n');
    lines.removeLast();
    if (lines.isEmpty()) return;
    const qsizetype n = random_.Below(static_cast<int>(lines.size()));
    const QByteArrayList cells = lines[n].trimmed().split('\t');
    const auto same = [&](const Correction& correction) {
      return correction.minute == cells.value(0) + ' ' + cells.value(1) && correction.level == cells.value(2);
    };
    const auto found = std::find_if(corrections_.begin(), corrections_.end(), same);
    if (found == corrections_.end()) return;
    switch (random_.Below(3)) {
      case 0:
        corrections_.erase(found);
        lines.removeAt(n);
        break;
      case 1:
        found->level = "777";
        lines[n].replace("\t" + cells.value(2) + "\t", "\t777\t");
        break;
      default:
        corrections_.push_back(*found);
        corrections_.back().kind = "any";
        lines.insert(n, lines[n]);
    }
    Put(path, lines.join('\n') + '\n');
  }

  void Check() {
    Desk desk;
    const QString why = desk.Open(choice_, false);
    const Screen bare = Bare();
    if (!why.isEmpty() || bare.empty()) {
      run_.Count("loads refused with a reason");
      return;
    }
    messages_ = desk.Messages();
    CheckRows(desk.Shown(), bare, desk.Session().IsCorrected());
    CheckNamed();
  }

  void CheckRows(const Screen& shown, const Screen& bare, bool shownRetimed) {
    run_.Count("rows checked", static_cast<long>(shown.size()));
    if (!shownRetimed && shown.size() != bare.size())
      return Break("rows come or go without a date correction", {});
    for (std::size_t i = 0; i < shown.size(); ++i) {
      const ScreenRow* raw = shownRetimed ? RawOf(shown[i], bare) : &bare[i];
      if (shownRetimed && !shown[i].IsOrdinary()) {
        if (shown[i].changed) (void)Take(shown[i], {});  // computed afresh: its level proves nothing
        continue;
      }
      if (raw == nullptr) return Break("a row without a raw reading", shown[i].FullText());
      if (raw->level == shown[i].level && !shown[i].changed) continue;
      if (Take(shown[i], raw->Minute())) continue;
      if (retimed_ && hidden_.contains(shown[i].Minute() + shown[i].Kind() + shown[i].level)) continue;
      if (Named(shown[i].Minute())) {
        run_.Count("doubtful corrections named");
        continue;
      }
      return Break(Rule(shown[i]), "raw \"" + raw->Text() + "\" shown \"" + shown[i].FullText() + '"');
    }
  }

  static const ScreenRow* RawOf(const ScreenRow& row, const Screen& bare) {
    const auto found = std::find_if(bare.begin(), bare.end(), [&](const ScreenRow& raw) {
      return raw.levelByte == row.levelByte && raw.IsOrdinary() && row.IsOrdinary();
    });
    return found == bare.end() ? nullptr : &*found;
  }

  /// Takes the correction that explains a row, each once.
  bool Take(const ScreenRow& row, const QByteArray& rawMinute) {
    for (Correction& correction : corrections_) {
      if (correction.seen || correction.level != row.level) continue;
      const bool kind = correction.kind == row.Kind() || correction.kind == "any";
      const bool place = retimed_ ? (correction.rawMinute == rawMinute || correction.kind != "ort")
                                  : correction.minute == row.Minute();
      // Where the log alone is left it knows neither file nor place.
      const bool file = fallback_ || correction.stem == row.stem;
      const bool byLog = fallback_ && correction.minute == row.Minute();
      if (!kind || !file || !(place || byLog)) continue;
      correction.seen = true;
      return true;
    }
    return false;
  }

  [[nodiscard]] std::string Rule(const ScreenRow& row) const {
    for (const Correction& correction : corrections_) {
      if (correction.level != row.level) continue;
      if (row.IsOrdinary() && correction.kind != "ort" && correction.minute == row.Minute())
        return std::string("an ordinary reading takes an extreme's level, ") + mutation_;
      if (correction.minute == row.Minute() && correction.stem != row.stem)
        return std::string("a correction is on another file's reading, ") + mutation_;
      if (correction.seen && correction.minute == row.Minute())
        return std::string("two rows take one line, ") + mutation_;
    }
    return std::string("a row is changed that nobody corrected, ") + mutation_;
  }

  [[nodiscard]] bool Named(const QByteArray& minute) const {
    const QString date = QString::fromLatin1(minute.left(10));
    const QString time = QString::fromLatin1(minute.mid(11));
    return std::any_of(messages_.begin(), messages_.end(), [&](const QString& message) {
      return message.contains(date) && message.contains(time);
    });
  }

  void CheckNamed() {
    if (broken_) return;
    for (const Correction& correction : corrections_) {
      if (correction.seen) {
        run_.Count("corrections found again");
        continue;
      }
      const bool named = Named(correction.minute);
      const bool counted = std::any_of(messages_.begin(), messages_.end(), [&](const QString& message) {
        return message.contains(QLatin1String("Degisiklikler"));
      });
      if (named || counted) {
        run_.Count(named ? "corrections named" : "corrections only counted");
        continue;
      }
      return Break(
          std::string("a correction is gone without a word, ") + mutation_,
          correction.stem + ' ' + correction.minute + ' ' + correction.kind + ' ' + correction.level);
    }
  }

  void Break(const std::string& rule, const QByteArray& detail) {
    broken_ = true;
    run_.Fail(seed_, rule,
              detail + " after: " + story_ + (retimed_ ? " (re-timed)" : "") +
                  "; messages: " + messages_.join(QLatin1String(" | ")).toUtf8());
  }

  Run& run_;
  std::uint64_t seed_;
  Random random_;
  QString folder_;
  World world_;
  Choice choice_;
  QByteArray story_;
  const char* mutation_ = "";
  QStringList messages_;
  std::set<QByteArray> hidden_;
  std::vector<Correction> corrections_;
  std::vector<std::pair<QString, QByteArray>> older_;
  bool retimed_ = false, fallback_ = false, broken_ = false;
};

}  // namespace

void ChangedInputs(Run& run) {
  for (int round = 0; round < run.Rounds(); ++round) Round(run, run.SeedOf(round)).Play();
}

}  // namespace vesk::torture

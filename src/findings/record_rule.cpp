// The logger's own daily records against the readings of their day.
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "datafiles/record_label.h"
#include "findings/samples.h"

namespace vesk {
namespace {

struct Record {
  int row = 0;
  Reading reading{};
};

/// The ordinary readings of a day in one file, and the records that stand behind them.
struct FileDay {
  int firstRow = 0, lastRow = 0;
  double highestCm = 0, lowestCm = 0;
  std::vector<Record> maxima, minima;

  void Take(int row, double levelCm) {
    if (firstRow == 0) {
      firstRow = row;
      highestCm = lowestCm = levelCm;
    }
    lastRow = row;
    highestCm = std::max(highestCm, levelCm);
    lowestCm = std::min(lowestCm, levelCm);
  }
};

/// A record belongs to the day of the reading that it stands behind, whatever its own date says.
using FileDays = std::map<std::pair<int, Day>, FileDay>;

FileDays DaysOf(const StationSeries& series) {
  FileDays days;
  const FileNumbers numbers(series);
  FileDay* current = nullptr;
  std::pair<int, Day> key;
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    const Reading reading = series.At(row);
    const int file = numbers.Of(row);
    if (reading.kind == ReadingKind::Ordinary) {
      const std::pair<int, Day> own(file, reading.day);
      if (current == nullptr || own != key) {
        current = &days[own];
        key = own;
      }
      current->Take(row, reading.levelCm);
    } else if (current != nullptr && key.first == file) {
      (reading.kind == ReadingKind::Maximum ? current->maxima : current->minima).push_back({row, reading});
    }
  }
  return days;
}

/// A logger without daily records has none to be missed.
std::set<int> FilesWithRecords(const FileDays& days) {
  std::set<int> files;
  for (const auto& [key, day] : days) {
    if (!day.maxima.empty() || !day.minima.empty()) files.insert(key.first);
  }
  return files;
}

class RecordRule {
 public:
  RecordRule(const FindingInput& input, std::vector<Finding>& found) : input_(input), found_(found) {}

  void LookAt(const FileDay& day, Day date, ReadingKind kind) {
    const std::vector<Record>& records = kind == ReadingKind::Maximum ? day.maxima : day.minima;
    if (records.empty()) TellMissing(day, date, kind);
    if (records.size() > 1) {
      Tell(records.front(), records.back(), static_cast<double>(records.size()), FindingUnit::Readings,
           Message(Wording{u"günde tek %1 kaydı", u"one %1 record a day"}, KindText(kind)));
    }
    for (const Record& record : records) LookAt(record, day, date, kind);
  }

 private:
  void LookAt(const Record& record, const FileDay& day, Day date, ReadingKind kind) {
    const double level = record.reading.levelCm;
    if (record.reading.day != date) {
      Tell(record, record,
           std::abs(static_cast<double>((record.reading.day - date).count())) * kMinutesPerDay,
           FindingUnit::Minutes,
           Message(Wording{u"%1 gününün %2 kaydı", u"a %2 record of %1"}, DateText(date), KindText(kind)));
      return;
    }
    const bool maximum = kind == ReadingKind::Maximum;
    const double beyond = maximum ? level - day.highestCm : day.lowestCm - level;
    if (beyond < -kSameCm) {
      const Message words = maximum ? Message(Wording{u"en az %1 cm: günün en yüksek okuması",
                                                      u"at least %1 cm, the day's highest reading"},
                                              NumberText(day.highestCm))
                                    : Message(Wording{u"en çok %1 cm: günün en düşük okuması",
                                                      u"at most %1 cm, the day's lowest reading"},
                                              NumberText(day.lowestCm));
      Tell(record, record, level, FindingUnit::Cm, words);
      return;
    }
    const std::optional<double>& most = input_.limits.spikeCm;
    if (most && beyond > *most + kSameCm) {
      const Message words = Message(Wording{u"günün okumalarından en çok %1 cm ötede (%2 cm)",
                                            u"at most %1 cm beyond the day's readings (%2 cm)"},
                                    NumberText(*most), NumberText(maximum ? day.highestCm : day.lowestCm));
      Tell(record, record, level, FindingUnit::Cm, words);
      return;
    }
    CompareAtItsMinute(record, day);
  }

  /// A record whose minute is that of a reading has its level.
  void CompareAtItsMinute(const Record& record, const FileDay& day) {
    for (int row = day.firstRow; row <= day.lastRow; ++row) {
      const Reading reading = input_.series.At(row);
      if (reading.kind != ReadingKind::Ordinary || reading.Time() != record.reading.Time()) continue;
      if (std::abs(reading.levelCm - record.reading.levelCm) <= kSameCm) return;
      Tell(record, record, record.reading.levelCm, FindingUnit::Cm,
           Message(Wording{u"%1 cm: aynı dakikanın okuması", u"%1 cm, the reading of the same minute"},
                   NumberText(reading.levelCm)));
      return;
    }
  }

  void TellMissing(const FileDay& day, Day date, ReadingKind kind) {
    Finding missing = Over(day.firstRow, day.lastRow);
    missing.value = 0;
    missing.expected =
        Message(Wording{u"%1 gününün %2 kaydı", u"a %2 record of %1"}, DateText(date), KindText(kind));
    found_.push_back(std::move(missing));
  }

  void Tell(const Record& first, const Record& last, double value, FindingUnit unit, Message expected) {
    Finding finding = Over(first.row, last.row);
    finding.value = value;
    finding.unit = unit;
    finding.expected = std::move(expected);
    found_.push_back(std::move(finding));
  }

  [[nodiscard]] Finding Over(int firstRow, int lastRow) const {
    const StationSeries& series = input_.series;
    const DateTime one = series.At(firstRow).Time();
    const DateTime other = series.At(lastRow).Time();
    return {.rule = FindingRule::Extreme,
            .firstRow = firstRow,
            .lastRow = lastRow,
            .from = std::min(one, other),
            .to = std::max(one, other),
            .file = series.FileOf(series.RefOf(firstRow).rawRow)};
  }

  const FindingInput& input_;
  std::vector<Finding>& found_;
};

}  // namespace

void FindInRecords(const FindingInput& input, std::vector<Finding>& found) {
  if (input.series.Target()) return;
  const FileDays days = DaysOf(input.series);
  RecordRule rule(input, found);
  const std::set<int> keeping = FilesWithRecords(days);
  for (const auto& [key, day] : days) {
    if (!keeping.contains(key.first)) continue;
    rule.LookAt(day, key.second, ReadingKind::Maximum);
    rule.LookAt(day, key.second, ReadingKind::Minimum);
  }
}

}  // namespace vesk

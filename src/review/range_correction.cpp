#include "review/range_correction.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "datafiles/numbers.h"

namespace vesk {
namespace {

constexpr double kFieldLowestCm = -999;  // a raw line's level field holds -9.99 to 99.99 m
constexpr double kFieldHighestCm = 9999;
constexpr double kExactStepsPerCm =
    1000;  // what is not rounded to the logger's resolution still reads as a level

struct Ordinary {
  int row = 0;
  DateTime time{};
  double levelCm = 0;
};

std::optional<Ordinary> OrdinaryAt(const StationSeries& series, int row) {
  const Reading reading = series.At(row);
  if (reading.kind != ReadingKind::Ordinary) return std::nullopt;
  return Ordinary{row, reading.Time(), reading.levelCm};
}

std::vector<Ordinary> OrdinaryReadings(const StationSeries& series, const ShownRange& range) {
  std::vector<Ordinary> readings;
  const int last = std::min(range.last, series.ReadingCount());
  for (int row = std::max(range.first, 1); row <= last; ++row) {
    if (const auto reading = OrdinaryAt(series, row)) readings.push_back(*reading);
  }
  return readings;
}

/// The next ordinary reading in a direction, -1 or 1.
std::optional<Ordinary> Neighbour(const StationSeries& series, int row, int direction) {
  for (row += direction; series.IsReading(row); row += direction) {
    if (const auto reading = OrdinaryAt(series, row)) return reading;
  }
  return std::nullopt;
}

Message NotCorrected() {
  return Wording{u"Aralık düzeltilmedi", u"The range was not corrected"};
}

/// Amounts or levels that run straight from one time to another.
struct Straight {
  DateTime from{}, to{};
  double fromCm = 0, toCm = 0;

  [[nodiscard]] double At(DateTime time) const {
    if (from == to) return fromCm;
    const double share =
        static_cast<double>((time - from).count()) / static_cast<double>((to - from).count());
    return fromCm + (toCm - fromCm) * std::clamp(share, 0.0, 1.0);
  }
};

Straight DriftOver(const std::vector<Ordinary>& readings, const RangeCorrection& correction) {
  const auto [first, last] = std::ranges::minmax(readings, {}, &Ordinary::time);
  return {first.time, last.time, correction.firstCm, correction.lastCm};
}

Result<Straight> LineBeside(const StationSeries& series, const std::vector<Ordinary>& readings) {
  const auto before = Neighbour(series, readings.front().row, -1);
  const auto behind = Neighbour(series, readings.back().row, 1);
  if (!before || !behind || before->time >= behind->time) {
    return Error{NotCorrected(),
                 {},
                 Wording{u"doğru çizgi için aralığın her iki yanında birer okuma olmalı",
                         u"a straight line needs a reading on either side of the range"}};
  }
  return Straight{before->time, behind->time, before->levelCm, behind->levelCm};
}

/// Levels of the other read-outs by their times. Where several have one, the last one counts.
class OtherLevels {
 public:
  OtherLevels(const StationSeries& series, const ShownRange& range) : series_(series) {
    for (int row = 1; row <= series.ReadingCount(); ++row) {
      if (row >= range.first && row <= range.last) continue;
      if (const auto reading = OrdinaryAt(series, row)) others_[reading->time] = *reading;
    }
  }
  /// Nothing when no other read-out has a reading of that time.
  [[nodiscard]] std::optional<double> For(const Ordinary& reading) const {
    const auto other = others_.find(reading.time);
    if (other == others_.end() || FileOf(other->second.row) == FileOf(reading.row)) return std::nullopt;
    return other->second.levelCm;
  }

 private:
  [[nodiscard]] QString FileOf(int row) const { return series_.FileOf(series_.RefOf(row).rawRow); }

  const StationSeries& series_;
  std::map<DateTime, Ordinary> others_;
};

class Proposal {
 public:
  explicit Proposal(bool exact) : exact_(exact) {}

  /// A level that was worked out.
  void Add(const Ordinary& reading, double levelCm) {
    const double steps = exact_ ? kExactStepsPerCm : 1;
    Take(reading, std::round(levelCm * steps) / steps);
  }
  /// A level that a file has.
  void Take(const Ordinary& reading, double levelCm) {
    if (!outOfField_ && (levelCm < kFieldLowestCm || levelCm > kFieldHighestCm)) outOfField_ = levelCm;
    if (NumberText(levelCm) != NumberText(reading.levelCm)) changes_.push_back({reading.row, levelCm});
  }
  Result<std::vector<LevelChange>> Finish() {
    if (!outOfField_) return std::move(changes_);
    return Error{NotCorrected(),
                 {},
                 Message(Wording{u"seviye %1 cm olurdu; -999 ile 9999 cm arasında olmalı",
                                 u"a level would be %1 cm; expected one from -999 to 9999 cm"},
                         NumberText(*outOfField_))};
  }

 private:
  bool exact_;
  std::vector<LevelChange> changes_;
  std::optional<double> outOfField_;
};

Result<std::vector<LevelChange>> ProposeOtherLevels(const StationSeries& series, const ShownRange& range,
                                                    const std::vector<Ordinary>& readings) {
  const OtherLevels others(series, range);
  Proposal proposal(true);
  bool any = false;
  for (const Ordinary& reading : readings) {
    const auto level = others.For(reading);
    if (level) proposal.Take(reading, *level);
    any = any || level;
  }
  if (any) return proposal.Finish();
  return Error{NotCorrected(),
               {},
               Wording{u"bu zamanların başka bir dosyada okuması yok",
                       u"no other read-out has readings of these times"}};
}

Result<std::vector<LevelChange>> ProposeLine(const StationSeries& series,
                                             const std::vector<Ordinary>& readings, bool exact) {
  const auto line = LineBeside(series, readings);
  if (!line) return line.Failure();
  Proposal proposal(exact);
  for (const Ordinary& reading : readings) proposal.Add(reading, line->At(reading.time));
  return proposal.Finish();
}

struct DayLevels {
  bool concerned = false;
  std::optional<double> highestCm, lowestCm;
  std::vector<int> records;

  void Take(double levelCm) {
    highestCm = std::max(highestCm.value_or(levelCm), levelCm);
    lowestCm = std::min(lowestCm.value_or(levelCm), levelCm);
  }
};

/// Days of one raw file each.
using FileDays = std::map<std::pair<QString, Day>, DayLevels>;

/// Levels of every day as they will be.
FileDays DaysWith(const StationSeries& series, const std::vector<LevelChange>& changes) {
  std::vector<const LevelChange*> changed(static_cast<std::size_t>(series.RowCount()));
  for (const LevelChange& change : changes) changed[static_cast<std::size_t>(change.row)] = &change;
  FileDays days;
  const std::vector<RawFileRows>& files = series.Files();
  std::size_t file = 0;
  std::pair<std::size_t, Day> key;  // of the row before: most rows are of the same day
  DayLevels* day = nullptr;
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    const Reading reading = series.At(row);
    while (file + 1 < files.size() && row > files[file].last) ++file;
    if (day == nullptr || key != std::pair(file, reading.day)) {
      key = {file, reading.day};
      day = &days[{files.empty() ? QString() : files[file].rawFile, reading.day}];
    }
    if (reading.kind != ReadingKind::Ordinary) {
      day->records.push_back(row);
      continue;
    }
    const LevelChange* change = changed[static_cast<std::size_t>(row)];
    day->concerned = day->concerned || change != nullptr;
    day->Take(change == nullptr ? reading.levelCm : change->levelCm);
  }
  return days;
}

}  // namespace

QString OperationWord(RangeOperation operation) {
  switch (operation) {
    case RangeOperation::Shift:
      return QStringLiteral("shift");
    case RangeOperation::Drift:
      return QStringLiteral("drift");
    case RangeOperation::Line:
      return QStringLiteral("line");
    case RangeOperation::Set:
      return QStringLiteral("set");
    case RangeOperation::Raw:
      return QStringLiteral("raw");
    case RangeOperation::OtherReadOut:
      return QStringLiteral("other");
  }
  return {};
}

Result<std::vector<LevelChange>> ProposeCorrection(const StationSeries& series, const ShownRange& range,
                                                   const RangeCorrection& correction) {
  const std::vector<Ordinary> readings = OrdinaryReadings(series, range);
  if (readings.empty())
    return Error{NotCorrected(), {}, Wording{u"aralıkta okuma yok", u"the range holds no reading"}};
  if (correction.operation == RangeOperation::Line) return ProposeLine(series, readings, correction.exact);
  if (correction.operation == RangeOperation::OtherReadOut)
    return ProposeOtherLevels(series, range, readings);
  const Straight drift = DriftOver(readings, correction);
  Proposal proposal(correction.exact);
  for (const Ordinary& reading : readings) {
    switch (correction.operation) {
      case RangeOperation::Shift:
        proposal.Add(reading, reading.levelCm + correction.firstCm);
        break;
      case RangeOperation::Drift:
        proposal.Add(reading, reading.levelCm + drift.At(reading.time));
        break;
      case RangeOperation::Set:
        proposal.Add(reading, correction.firstCm);
        break;
      default:
        proposal.Take(reading, series.RawLevel(reading.row));
    }
  }
  return proposal.Finish();
}

std::vector<LevelChange> RecordsConcerned(const StationSeries& series,
                                          const std::vector<LevelChange>& changes) {
  if (series.Target() || changes.empty()) return {};
  std::vector<LevelChange> records;
  for (const auto& [key, day] : DaysWith(series, changes)) {
    if (!day.concerned) continue;
    for (const int row : day.records) {
      const Reading record = series.At(row);
      const double level = record.kind == ReadingKind::Maximum ? *day.highestCm : *day.lowestCm;
      if (NumberText(level) != NumberText(record.levelCm)) records.push_back({row, level});
    }
  }
  std::ranges::sort(records, {}, &LevelChange::row);
  return records;
}

}  // namespace vesk

#include "review/change_log_rows.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace vesk {
namespace {

bool IsReadingOf(const StationSeries& series, int rawRow, const Correction& correction) {
  return series.Raw().At(rawRow).kind == correction.kind &&
         series.FileOf(rawRow).compare(correction.rawFile, Qt::CaseInsensitive) == 0;
}

/// Which of the readings of its file, time and kind a raw row is, counted from 1.
int OccurrenceOf(const StationSeries& series, int rawRow) {
  const RawRows& raw = series.Raw();
  const Reading reading = raw.At(rawRow);
  int occurrence = 1;
  // They stand close to each other: a file's days follow one another.
  for (int row = rawRow - 1; row >= 1 && raw.At(row).sourceFile == reading.sourceFile; --row) {
    const Reading other = raw.At(row);
    if (other.Time() == reading.Time() && other.kind == reading.kind) ++occurrence;
    if (other.day + std::chrono::days(2) < reading.day) break;
  }
  return occurrence;
}

}  // namespace

bool IsSameLevel(double aCm, double bCm) {
  constexpr double kSameLevelCm = 1e-6;  // levels are texts of a few digits; metres times 100 are not
  return std::abs(aCm - bCm) <= kSameLevelCm;
}

template <class Rows>
RowIndex::RowIndex(const Rows& rows, const RowRange& within) {
  const int last = std::min(within.last, rows.ReadingCount());
  entries_.reserve(static_cast<std::size_t>(std::max(last - within.first + 1, 0)));
  for (int row = within.first; row <= last; ++row) entries_.emplace_back(rows.At(row).Time(), row);
  if (!std::is_sorted(entries_.begin(), entries_.end())) std::sort(entries_.begin(), entries_.end());
}

int RowIndex::Find(DateTime time, int startRow) const {
  const auto found = std::lower_bound(entries_.begin(), entries_.end(), Entry{time, startRow});
  return found != entries_.end() && found->first == time ? found->second : 0;
}

int RowIndex::FindBefore(DateTime time, int endRow) const {
  const auto behind = std::lower_bound(entries_.begin(), entries_.end(), Entry{time, endRow});
  return behind != entries_.begin() && std::prev(behind)->first == time ? std::prev(behind)->second : 0;
}

Correction CorrectionOf(const StationSeries& series, const RowRef& row, const Authorship& author) {
  const RowState state = series.StateOf(row).value_or(RowState{});
  Correction correction{.rawFile = series.Files().empty() ? QString() : series.Files().front().rawFile,
                        .rawCm = state.mark.rawCm,
                        .levelCm = state.levelCm,
                        .discharge = state.discharge.text,
                        .by = author};
  if (row.rawRow > 0) {
    const Reading reading = series.Raw().At(row.rawRow);
    correction.rawFile = series.FileOf(row.rawRow);
    correction.time = reading.Time();
    correction.kind = reading.kind;
    correction.occurrence = OccurrenceOf(series, row.rawRow);
    return correction;
  }
  correction.computed = true;
  correction.kind = row.extreme.kind;
  const auto edit = series.EditedExtremes().find(row.extreme);
  const int minute = edit == series.EditedExtremes().end() ? 0 : edit->second.minuteOfDay;
  correction.time = DateTime(row.extreme.day) + std::chrono::minutes(minute);
  return correction;
}

RowFinder::RowFinder(const StationSeries& series, const RowRange& within)
    : series_(series), within_(within) {}

const RowIndex& RowFinder::RawIndex() {
  if (!raw_) raw_.emplace(series_.Raw(), within_);
  return *raw_;
}

std::optional<RowRef> RowFinder::TakeRaw(int rawRow) {
  const RowRef row{.rawRow = rawRow};
  if (rawRow == 0 || !taken_.insert(row).second) return std::nullopt;
  return row;
}

std::optional<RowRef> RowFinder::Take(const Correction& correction) {
  int occurrence = 0;
  int row = RawIndex().Find(correction.time, within_.first);
  for (; row > 0; row = raw_->Find(correction.time, row + 1)) {
    if (IsReadingOf(series_, row, correction) && ++occurrence == correction.occurrence) break;
  }
  return TakeRaw(row);
}

std::optional<RowRef> RowFinder::TakeEqual(const Correction& correction) {
  int found = 0;
  int row = RawIndex().Find(correction.time, within_.first);
  for (; row > 0; row = raw_->Find(correction.time, row + 1)) {
    if (series_.Raw().At(row).kind != correction.kind) continue;
    if (!IsSameLevel(series_.Raw().RawLevel(row), correction.rawCm)) continue;
    if (found > 0) return std::nullopt;
    found = row;
  }
  return TakeRaw(found);
}

bool RowFinder::IsFree(int shownRow) const {
  return !taken_.contains(series_.RefOf(shownRow));
}

/// Each line on the first free row of its time behind the row of the line before; 0 for none.
std::vector<int> RowFinder::EarliestRows(const std::vector<DateTime>& times) const {
  std::vector<int> rows;
  int from = within_.first;
  for (const DateTime time : times) {
    int row = shown_->Find(time, from);
    while (row > 0 && !IsFree(row)) row = shown_->Find(time, row + 1);
    if (row > 0) from = row + 1;
    rows.push_back(row);
  }
  return rows;
}

/// The same from the last line back: each on the last free row before that of the line behind it.
std::vector<int> RowFinder::LatestRows(const std::vector<DateTime>& times) const {
  std::vector<int> rows(times.size());
  int end = std::numeric_limits<int>::max();
  for (std::size_t i = times.size(); i-- > 0;) {
    int row = shown_->FindBefore(times[i], end);
    while (row > 0 && !IsFree(row)) row = shown_->FindBefore(times[i], row);
    if (row > 0) end = row;
    rows[i] = row;
  }
  return rows;
}

// A log can have been saved for several years in one: lines that fit none of its own rows go to rows of the
// other years, but to none that has a line already.
int RowFinder::RowOfOtherYears(DateTime time) {
  const int last = series_.ReadingCount();
  if (within_.first > within_.last || (within_.first == 1 && within_.last >= last)) return 0;
  if (!all_) all_.emplace(series_, RowRange{});
  int row = all_->Find(time, 1);
  while (row > 0 && (!IsFree(row) || series_.Mark(row).editCode == kSavedCode)) {
    row = all_->Find(time, row + 1);
  }
  const bool alone = row == 0 || all_->Find(time, row + 1) == 0;
  return alone ? row : 0;
}

/// True when the free rows of that time from first to last are all readings, or all of one kind of record.
bool RowFinder::AreOfOneKind(DateTime time, int first, int last) const {
  for (int row = first; row > 0 && row <= last; row = shown_->Find(time, row + 1)) {
    if (IsFree(row) && series_.At(row).kind != series_.At(first).kind) return false;
  }
  return true;
}

// The lines stand in the order of the rows, which tells an extreme record, behind its day, from the reading
// of its minute wherever another line lies between. Where the order leaves both open, neither is taken: the
// reading must not get a level that was meant for the record.
std::vector<RowByTime> RowFinder::TakeByTime(const std::vector<DateTime>& times) {
  if (times.empty()) return {};
  if (!shown_) shown_.emplace(series_, within_);
  const std::vector<int> earliest = EarliestRows(times);
  const std::vector<int> latest = LatestRows(times);
  std::vector<RowByTime> rows(times.size());
  for (std::size_t i = 0; i < times.size(); ++i) {
    int row = earliest[i];
    rows[i].open = row > 0 && !AreOfOneKind(times[i], row, std::max(row, latest[i]));
    if (row == 0) row = RowOfOtherYears(times[i]);
    if (row == 0 || rows[i].open) continue;
    rows[i].row = series_.RefOf(row);
    taken_.insert(*rows[i].row);
  }
  return rows;
}

}  // namespace vesk

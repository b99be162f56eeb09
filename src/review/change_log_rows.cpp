#include "review/change_log_rows.h"

#include <algorithm>
#include <cmath>

namespace vesk {
namespace {

bool IsReadingOf(const StationSeries& series, int rawRow, const Correction& correction) {
  return series.Raw().At(rawRow).kind == correction.kind &&
         series.FileOf(rawRow).compare(correction.rawFile, Qt::CaseInsensitive) == 0;
}

/// Which of the readings of its file, time and kind a raw row is, counted from 1.
int OccurrenceOf(const StationSeries& series, int rawRow) {
  const ReviewGrid& raw = series.Raw();
  const Reading& reading = raw.At(rawRow);
  int occurrence = 1;
  // They stand close to each other: a file's days follow one another.
  for (int row = rawRow - 1; row >= 1 && raw.At(row).sourceFile == reading.sourceFile; --row) {
    const Reading& other = raw.At(row);
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

RowIndex::RowIndex(const ReviewGrid& grid, const RowRange& within) {
  const int last = std::min(within.last, grid.ReadingCount());
  entries_.reserve(static_cast<std::size_t>(std::max(last - within.first + 1, 0)));
  for (int row = within.first; row <= last; ++row) entries_.emplace_back(grid.At(row).Time(), row);
  if (!std::is_sorted(entries_.begin(), entries_.end())) std::sort(entries_.begin(), entries_.end());
}

int RowIndex::Find(DateTime time, int startRow) const {
  const auto found = std::lower_bound(entries_.begin(), entries_.end(), Entry{time, startRow});
  return found != entries_.end() && found->first == time ? found->second : 0;
}

Correction CorrectionOf(const StationSeries& series, const RowRef& row, const Authorship& author) {
  const RowState state = series.StateOf(row).value_or(RowState{});
  Correction correction{.rawFile = series.Files().empty() ? QString() : series.Files().front().rawFile,
                        .rawCm = state.mark.rawCm,
                        .levelCm = state.levelCm,
                        .discharge = state.discharge,
                        .by = author};
  if (row.rawRow > 0) {
    const Reading& reading = series.Raw().At(row.rawRow);
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
    : series_(series), within_(within), raw_(series.Raw(), within) {
  ownSearch_.from = within.first;
}

std::optional<RowRef> RowFinder::TakeRaw(int rawRow) {
  const RowRef row{.rawRow = rawRow};
  if (rawRow == 0 || !taken_.insert(row).second) return std::nullopt;
  return row;
}

std::optional<RowRef> RowFinder::Take(const Correction& correction) {
  int occurrence = 0;
  int row = raw_.Find(correction.time, within_.first);
  for (; row > 0; row = raw_.Find(correction.time, row + 1)) {
    if (IsReadingOf(series_, row, correction) && ++occurrence == correction.occurrence) break;
  }
  return TakeRaw(row);
}

std::optional<RowRef> RowFinder::TakeEqual(const Correction& correction) {
  int found = 0;
  int row = raw_.Find(correction.time, within_.first);
  for (; row > 0; row = raw_.Find(correction.time, row + 1)) {
    if (series_.Raw().At(row).kind != correction.kind) continue;
    if (!IsSameLevel(series_.Raw().RawLevel(row), correction.rawCm)) continue;
    if (found > 0) return std::nullopt;
    found = row;
  }
  return TakeRaw(found);
}

int RowFinder::NextFree(const RowIndex& index, Search& search, DateTime time) const {
  int row = index.Find(time, search.from);
  while (row > 0 && taken_.contains(series_.RefOf(row))) row = index.Find(time, row + 1);
  if (row > 0) search.from = row;
  return row;
}

// A log can have been saved for several years in one: lines that fit none of its own rows go to rows of the
// other years, but to none that has a line already.
std::optional<RowRef> RowFinder::TakeNext(DateTime time) {
  if (!shown_) shown_.emplace(series_.Shown(), within_);
  int row = NextFree(*shown_, ownSearch_, time);
  const int last = series_.Shown().ReadingCount();
  const bool hasOthers = within_.first <= within_.last && (within_.first > 1 || within_.last < last);
  if (row == 0 && hasOthers) {
    if (!all_) all_.emplace(series_.Shown(), RowRange{});
    row = NextFree(*all_, allSearch_, time);
    if (row > 0 && series_.Shown().Mark(row).editCode == kSavedCode) row = 0;
  }
  if (row == 0) return std::nullopt;
  const RowRef ref = series_.RefOf(row);
  taken_.insert(ref);
  return ref;
}

}  // namespace vesk

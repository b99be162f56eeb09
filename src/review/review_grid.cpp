#include "review/review_grid.h"

#include <algorithm>
#include <array>

#include "platform/code_page.h"

namespace vesk {
namespace {

constexpr std::array<const char*, 3> kKindTexts = {"ort", "Max", "Min"};

QString FlagText(char flag) {
  return flag == ' ' || flag == '\0' ? QString() : DecodeWindows1254(QByteArrayView(&flag, 1));
}

/// Of a row that nobody touched.
RowMark UntouchedMark(const Reading& reading) {
  return {.rawCm = reading.levelCm, .baselineCm = reading.levelCm};
}

QString Title(GridColumn column) {
  switch (column) {
    case GridColumn::Date:
      return QStringLiteral("Tarih");
    case GridColumn::Time:
      return QStringLiteral("Zaman");
    case GridColumn::Level:
      return QStringLiteral("Seviye");
    case GridColumn::Discharge:
      return QStringLiteral("Debi");
    case GridColumn::Label:
      return QStringLiteral("Ozel");
    case GridColumn::Code:
      return QStringLiteral("Kod");
    case GridColumn::Baseline:
      return QStringLiteral("Byte No.");
  }
  return {};
}

}  // namespace

void ReviewGrid::Clear() {
  readings_.clear();
  marks_.clear();
  discharges_.clear();
}

void ReviewGrid::Append(const Reading& reading) {
  readings_.push_back(reading);
  if (!marks_.empty()) marks_.push_back(UntouchedMark(reading));
}

void ReviewGrid::Assign(std::vector<Reading> readings) {
  Clear();
  readings_ = std::move(readings);
}

void ReviewGrid::EnsureMarks() {
  if (!marks_.empty()) return;
  marks_.resize(readings_.size());
  for (std::size_t i = 0; i < readings_.size(); ++i) marks_[i] = UntouchedMark(readings_[i]);
}

void ReviewGrid::SetLevel(int row, double levelCm) {
  EnsureMarks();  // the baseline is the level before the first change
  readings_[static_cast<std::size_t>(row - 1)].levelCm = levelCm;
}

void ReviewGrid::SetDischarge(int row, const QString& text) {
  if (text.isEmpty()) {
    discharges_.erase(row);
  } else {
    discharges_[row] = text;
  }
}

QString ReviewGrid::Discharge(int row) const {
  if (discharges_.empty()) return {};
  const auto found = discharges_.find(row);
  return found == discharges_.end() ? QString() : found->second;
}

RowMark ReviewGrid::Mark(int row) const {
  if (marks_.empty()) return UntouchedMark(At(row));
  return marks_[static_cast<std::size_t>(row - 1)];
}

void ReviewGrid::SetMark(int row, const RowMark& mark) {
  EnsureMarks();
  marks_[static_cast<std::size_t>(row - 1)] = mark;
}

int ReviewGrid::CodeValue(int row) const {
  const int code = marks_.empty() ? RowMark::kFlagCode : marks_[static_cast<std::size_t>(row - 1)].editCode;
  if (code != RowMark::kFlagCode) return code;
  const char flag = At(row).flag;
  return flag >= '0' && flag <= '9' ? flag - '0' : 0;
}

void ReviewGrid::TakeBaseline() {
  for (std::size_t i = 0; i < marks_.size(); ++i) marks_[i].baselineCm = readings_[i].levelCm;
}

QString ReviewGrid::Text(int row, GridColumn column) const {
  if (row == 0) return Title(column);
  if (!IsReading(row)) return {};
  const Reading& reading = At(row);
  switch (column) {
    case GridColumn::Date:
      return DateText(reading.day);
    case GridColumn::Time:
      return ClockText(reading.minuteOfDay);
    case GridColumn::Level:
      return NumberText(reading.levelCm);
    case GridColumn::Discharge:
      return Discharge(row);
    case GridColumn::Label:
      return RecordLabel(reading);
    case GridColumn::Code: {
      const int code = Mark(row).editCode;
      return code == RowMark::kFlagCode ? FlagText(reading.flag) : QString::number(code);
    }
    case GridColumn::Baseline:
      return NumberText(Mark(row).baselineCm);
  }
  return {};
}

int ReviewGrid::FindRow(Day day, int minuteOfDay, int startRow) const {
  for (int row = std::max(startRow, 1); row <= ReadingCount(); ++row) {
    const Reading& reading = At(row);
    if (reading.day == day && reading.minuteOfDay == minuteOfDay) return row;
  }
  return RowCount();
}

std::optional<double> ReadLevel(QStringView text) {
  const std::optional<double> level = ReadWholeNumber(text);
  return level && ReadWholeNumber(NumberText(*level)) ? level : std::nullopt;
}

QString KindText(ReadingKind kind) {
  return QLatin1String(kKindTexts[static_cast<std::size_t>(kind)]);
}

std::optional<ReadingKind> ReadKind(const QString& text) {
  const auto found =
      std::ranges::find_if(kKindTexts, [&](const char* kind) { return text == QLatin1String(kind); });
  if (found == kKindTexts.end()) return std::nullopt;
  return static_cast<ReadingKind>(found - kKindTexts.begin());
}

QString RecordLabel(const Reading& reading) {
  return QString::number(reading.sourceFile).rightJustified(2, QLatin1Char('0')) + QLatin1Char('-') +
         KindText(reading.kind);
}

void LevelRange(const ReviewGrid& grid, LevelExtent& extent) {
  for (const Reading& reading : grid.Readings()) {
    extent.lowestCm = std::min(extent.lowestCm, reading.levelCm);
    extent.highestCm = std::max(extent.highestCm, reading.levelCm);
  }
}

}  // namespace vesk

#include "review/review_grid.h"

#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "datafiles/record_label.h"
#include "platform/code_page.h"

namespace vesk {
namespace {

QString FlagText(char flag) {
  return flag == ' ' || flag == '\0' ? QString() : DecodeWindows1254(QByteArrayView(&flag, 1));
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

QString CellText(const StationSeries& series, int row, GridColumn column) {
  if (row == 0) return Title(column);
  if (!series.IsReading(row)) return {};
  const Reading reading = series.At(row);
  switch (column) {
    case GridColumn::Date:
      return DateText(reading.day);
    case GridColumn::Time:
      return ClockText(reading.minuteOfDay);
    case GridColumn::Level:
      return NumberText(reading.levelCm);
    case GridColumn::Discharge:
      return series.DischargeOf(row).text;
    case GridColumn::Label:
      return RecordLabel(reading);
    case GridColumn::Code: {
      const int code = series.Mark(row).editCode;
      return code == RowMark::kFlagCode ? FlagText(reading.flag) : QString::number(code);
    }
    case GridColumn::Baseline:
      return NumberText(series.Mark(row).baselineCm);
  }
  return {};
}

std::optional<double> ReadLevel(QStringView text) {
  const std::optional<double> level = ReadWholeNumber(text);
  return level && ReadWholeNumber(NumberText(*level)) ? level : std::nullopt;
}

void LevelRange(const StationSeries& series, LevelExtent& extent) {
  for (int row = 1; row <= series.ReadingCount(); ++row) extent.Widen(series.At(row).levelCm);
}

}  // namespace vesk

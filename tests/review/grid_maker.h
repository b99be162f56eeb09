// Review grids made up for a test.
#pragma once

#include <QFile>
#include <QString>

#include "datafiles/dates.h"
#include "datafiles/water_year.h"
#include "review/load_readings.h"
#include "review/review_grid.h"

namespace vesk::test {

/// A reading at "dd/mm/yyyy hh:mm".
inline Reading ReadingAt(const char* time, double levelCm, ReadingKind kind = ReadingKind::Ordinary,
                         char flag = ' ') {
  const DateTime at = ReadDateTime(QString::fromLatin1(time)).value();
  Reading reading;
  reading.day = std::chrono::floor<std::chrono::days>(at);
  reading.minuteOfDay = static_cast<std::int16_t>((at - reading.day).count());
  reading.levelCm = levelCm;
  reading.kind = kind;
  reading.flag = flag;
  return reading;
}

inline StationSeries GridOf(std::vector<Reading> readings) {
  return StationSeries(std::move(readings));
}

/// Hourly readings from a start on: 100, 101, 102 ... cm.
inline StationSeries HourlyGrid(const char* start, int count) {
  std::vector<Reading> readings;
  const DateTime first = ReadDateTime(QString::fromLatin1(start)).value();
  for (int i = 0; i < count; ++i) {
    const QByteArray time = DateTimeText(first + std::chrono::hours(i)).toLatin1();
    readings.push_back(ReadingAt(time.constData(), 100 + i));
  }
  return GridOf(std::move(readings));
}

/// The same rows, corrections included, as they came from those files.
inline StationSeries WithFiles(const StationSeries& grid, std::vector<RawFileRows> files,
                               Choice chosen = {}) {
  StationSeries series(grid.Raw().Readings(), std::move(files), StationId(QStringLiteral("001-12345")),
                       std::move(chosen));
  for (int row = 1; row <= grid.Raw().ReadingCount(); ++row) {
    if (grid.Raw().IsChanged(row)) series.SetState({.rawRow = row}, grid.Raw().StateOf(row));
  }
  return series;
}

inline void SetDischarge(StationSeries& grid, int row, const QString& text) {
  RowState state = *grid.StateOf(grid.RefOf(row));
  state.discharge = DischargeOfLog(text);
  grid.SetState(grid.RefOf(row), state);
}

/// A load as the loader hands it over: the change logs of the water years, or of a single file, laid over it.
/// A year's rows end before the first one of a later year.
/// files: which raw file the rows came from; one when nothing is said.
inline LoadedReadings LoadOf(const StationSeries& grid, const QString& folder,
                             const std::vector<int>& waterYears, std::vector<RawFileRows> files = {}) {
  if (files.empty()) files = {{QStringLiteral("001-12345-010203"), 1, grid.ReadingCount()}};
  LoadedReadings loaded;
  loaded.files = {QStringLiteral("001-12345-010203=0001.txt")};
  WaterYears chosen;
  for (const int year : waterYears) chosen.years.push_back({{year}});
  StationSeries series = WithFiles(grid, std::move(files), waterYears.empty() ? Choice() : Choice(chosen));
  const int count = series.Raw().ReadingCount();
  int next = 1;
  for (const int year : waterYears.empty() ? std::vector<int>{0} : waterYears) {
    LoadedChangeLog log;
    if (year != 0) log.rows = {next, year == waterYears.back() ? count : next - 1};
    while (log.rows.last < count && WaterYearOf(series.Raw().At(log.rows.last + 1).day) <= year) {
      ++log.rows.last;
    }
    if (year != 0) next = log.rows.last + 1;
    const auto ofYear = year == 0 ? std::nullopt : std::optional(StationWaterYear{{year}});
    log.saveTo = ChangeLogPath(folder, StationId(QStringLiteral("001-12345")), ofYear);
    auto overlay = LoadChangeLog(log.saveTo, series, year == 0, log.rows);
    if (overlay) log.overlay = std::move(*overlay);
    loaded.changeLogs.push_back(std::move(log));
  }
  series.TakeBaseline();
  loaded.series = std::move(series);
  return loaded;
}

inline QByteArray ContentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool WriteContent(const QString& path, const QByteArray& content) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

/// "level/code" of a row and "*" where its level is shaded as changed: what editing changes.
inline std::string LevelAndCode(const StationSeries& grid, int row) {
  const QString shade = grid.Mark(row).shade == RowShade::Changed ? QStringLiteral("*") : QString();
  return (CellText(grid, row, GridColumn::Level) + QLatin1Char('/') + CellText(grid, row, GridColumn::Code) +
          shade)
      .toStdString();
}

/// The cells of every row, up to a column.
inline QString TextOf(const StationSeries& grid, GridColumn last = GridColumn::Baseline) {
  QString text;
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    for (int column = 0; column <= static_cast<int>(last); ++column)
      text += CellText(grid, row, GridColumn(column)) + QLatin1Char(' ');
    text += QLatin1Char('\n');
  }
  return text;
}

/// A row as an operator's edit leaves it.
inline void Change(StationSeries& grid, int row, double levelCm, int editCode = 1) {
  RowState state = *grid.StateOf(grid.RefOf(row));
  state.levelCm = levelCm;
  state.mark.editCode = editCode;
  state.mark.shade = RowShade::Changed;
  grid.SetState(grid.RefOf(row), state);
}

}  // namespace vesk::test

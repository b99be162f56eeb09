#include "ratings/recorded_levels.h"

#include "datafiles/water_year.h"
#include "ratings/discharge_days.h"
#include "review/browser.h"
#include "review/load_readings.h"
#include "review/raw_files.h"
#include "review/station_series.h"

namespace vesk {

std::optional<double> LevelAt(const StationSeries& series, DateTime time) {
  std::optional<Reading> before, behind;
  for (int row = 1; row <= series.ReadingCount(); ++row) {
    const Reading reading = series.At(row);
    if (reading.kind != ReadingKind::Ordinary) continue;
    if (reading.Time() == time) return reading.levelCm;
    if (reading.Time() < time && (!before || before->Time() <= reading.Time())) before = reading;
    if (reading.Time() > time && (!behind || behind->Time() > reading.Time())) behind = reading;
  }
  if (!before || !behind) return std::nullopt;
  const auto span = behind->Time() - before->Time();
  if (span > 2 * std::chrono::minutes(CommonInterval(series))) return std::nullopt;
  const double share =
      static_cast<double>((time - before->Time()).count()) / static_cast<double>(span.count());
  return before->levelCm + share * (behind->levelCm - before->levelCm);
}

RecordedLevels::RecordedLevels(QString dataDirectory, QString stationNumber)
    : folder_(std::move(dataDirectory)), station_(std::move(stationNumber)) {}
RecordedLevels::~RecordedLevels() = default;

void RecordedLevels::Forget() {
  years_.clear();
}

const std::vector<StationSeries>& RecordedLevels::YearOf(int waterYear) {
  const auto [place, isNew] = years_.try_emplace(waterYear);
  if (!isNew) return place->second;
  for (const StationId& station : ListStations(folder_)) {
    if (station.Number().compare(station_, Qt::CaseInsensitive) != 0) continue;
    auto loaded = LoadReadings(WaterYearRequest(folder_, station, WaterYear{waterYear}, {}));
    if (loaded) place->second.push_back(std::move(loaded->series));
  }
  return place->second;
}

std::optional<double> RecordedLevels::At(DateTime time) {
  for (const StationSeries& series : YearOf(WaterYearOf(std::chrono::floor<std::chrono::days>(time)))) {
    if (const auto level = LevelAt(series, time)) return level;
  }
  return std::nullopt;
}

void PutRecordedLevel(Gauging& gauging, double levelCm, LanguageChoice language) {
  static constexpr Wording kSaid{u"[seviye kayıttan]", u"[level of the recording]"};
  gauging.levelCm = levelCm;
  gauging.remark = QStringLiteral("%1 %2").arg(gauging.remark, Message(kSaid).In(language)).trimmed();
}

std::vector<std::size_t> TakeRecordedLevels(std::vector<Gauging>& gaugings, RecordedLevels& levels,
                                            LanguageChoice language) {
  std::vector<std::size_t> given;
  for (std::size_t i = 0; i < gaugings.size(); ++i) {
    Gauging& gauging = gaugings[i];
    const auto level = gauging.time && !gauging.levelCm ? levels.At(*gauging.time) : std::nullopt;
    if (!level) continue;
    PutRecordedLevel(gauging, *level, language);
    given.push_back(i);
  }
  return given;
}

}  // namespace vesk

// Levels of a station's recording at the time of a gauging.
#pragma once

#include <QString>

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "datafiles/gauging.h"
#include "datafiles/reading.h"
#include "platform/wording.h"

namespace vesk {

class StationSeries;

/// The corrected level at a time, cm: of the reading then, else linear between the readings around it.
/// Nothing where those lie further apart than twice the series' common interval, or one of them is missing.
std::optional<double> LevelAt(const StationSeries& series, DateTime time);

/// Loads what it is asked for, water year by water year, with the corrections saved for it; every logger of
/// the station is looked at, in list order.
class RecordedLevels {
 public:
  /// dataDirectory: with its trailing separator. stationNumber: five characters.
  RecordedLevels(QString dataDirectory, QString stationNumber);
  ~RecordedLevels();
  Q_DISABLE_COPY_MOVE(RecordedLevels)

  /// cm; nothing without a recording of that time.
  [[nodiscard]] std::optional<double> At(DateTime time);
  /// Loads anew from here on: corrections may have been saved.
  void Forget();

 private:
  const std::vector<StationSeries>& YearOf(int waterYear);

  QString folder_;
  QString station_;
  std::map<int, std::vector<StationSeries>> years_;
};

/// Gives a gauging a level of the recording, and its remark says so: it goes wherever the gauging goes.
void PutRecordedLevel(Gauging& gauging, double levelCm, LanguageChoice language);

/// Gives one to every gauging that has a time and no level; the places of those that got one.
std::vector<std::size_t> TakeRecordedLevels(std::vector<Gauging>& gaugings, RecordedLevels& levels,
                                            LanguageChoice language);

}  // namespace vesk

#include "graphs/graph_sheet.h"

#include <algorithm>

#include "datafiles/graph_file.h"
#include "datafiles/numbers.h"
#include "datafiles/water_year.h"
#include "platform/colour_numbers.h"
#include "review/review_grid.h"

namespace vesk {
namespace {

constexpr int kFirstColourSlot = 2;  // background, station 1, scale, stations 2 to 4

QString YearText(int waterYear) {
  return PaddedNumber(waterYear, 4);
}

GraphTexts AxisTexts(const Language& language) {
  return {{}, language.Text(Caption::TimeAxis), language.Text(Caption::LevelAxis), {}};
}

std::vector<GraphPoint> PointsOfGrid(const StationSeries& series, Day firstDay) {
  std::vector<GraphPoint> points;
  points.reserve(static_cast<std::size_t>(series.ReadingCount()));
  for (int row = 1;; ++row) {
    const auto point = LoadGridPoint(series, row, firstDay);
    if (!point) return points;
    points.push_back(*point);
  }
}

struct FilePoints {
  std::vector<GraphPoint> points;
  qint64 damagedRecord = 0;  // number of the first record that cannot be read; 0 when all can
};

FilePoints PointsOfFile(const QByteArray& content, Day firstDay) {
  FilePoints result;
  result.points.reserve(static_cast<std::size_t>(GraphRecordCount(content)));
  ReadingKind kind = ReadingKind::Ordinary;
  for (qint64 n = 1;; ++n) {
    const FilePoint record = LoadFilePoint(content, n, firstDay, kind);
    if (record.state == FilePointState::Unreadable) result.damagedRecord = n;
    if (record.state != FilePointState::Point) return result;
    kind = record.point.Kind();
    result.points.push_back(record.point);
  }
}

// The water years of all stations, from the earliest start to the latest end.
void SetYears(GraphSheet& sheet, int firstYear, int earliest, int latest) {
  sheet.waterYear = firstYear;
  sheet.firstDay = WaterYearFirstDay(firstYear);
  sheet.start = WaterYearFirstDay(earliest);
  sheet.end = WaterYearLastDay(latest);
}

GraphSheet EmptySheet(const Options& options, const Language& language, const QStringList& notes) {
  GraphSheet sheet;
  sheet.style = StyleOf(options);
  sheet.texts = AxisTexts(language);
  sheet.notes = notes;
  sheet.language = language;
  return sheet;
}

template <class Sources>
GraphSheet EmptyMultipleSheet(const Sources& sources, const Options& options, const Language& language,
                              const QStringList& notes) {
  GraphSheet sheet = EmptySheet(options, language, notes);
  if (sources.empty()) return sheet;
  const auto byYear = [](const auto& a, const auto& b) { return a.waterYear < b.waterYear; };
  const auto [earliest, latest] = std::minmax_element(sources.begin(), sources.end(), byYear);
  SetYears(sheet, sources.front().waterYear, earliest->waterYear, latest->waterYear);
  QStringList years;
  for (const auto& source : sources) years.append(YearText(source.waterYear));
  years.removeDuplicates();
  sheet.years = years.join(QStringLiteral(", "));
  sheet.texts.title = language.Text(Caption::WaterYearTitle) + QLatin1Char(':') + sheet.years;
  return sheet;
}

// Where the years differ, the legend tells each station's.
void AddStation(GraphSheet& sheet, const QString& station, int waterYear, std::vector<GraphPoint> points) {
  sheet.series.emplace_back(std::move(points), sheet.style.withExtremes);
  sheet.stationNames.append(station);
  QString entry = station + QLatin1Char(' ') + sheet.language.Text(Caption::GaugingStation);
  if (sheet.years != YearText(waterYear)) entry += QLatin1Char(' ') + YearText(waterYear);
  sheet.texts.legend.append(entry);
}

QString DamageText(const QString& path, qint64 record, const Language& language) {
  return path + QStringLiteral(": ") +
         language.Say(Wording{u"%1. kayıttan sonrası okunamadı", u"unreadable from record %1 on"}, record);
}

}  // namespace

QColor ColourOf(qint32 number) {
  const auto system = SystemColourOf(number);
  if (!system) return QColor(RgbOf(number));
  // Classic system colours that a colour choice can hold; paper stays paper whatever the desktop's theme.
  switch (*system) {
    case 5:
      return Qt::white;  // window background
    case 15:
      return QColor(0xF0, 0xF0, 0xF0);  // button face
    case 6:
    case 7:
    case 8:
    case 18:
      return Qt::black;  // frames and texts
    default:
      return Qt::white;
  }
}

GraphStyle StyleOf(const Options& options) {
  const auto swatch = [&options](int index) {
    return ColourOf(ColourNumber(options.Slot(kFirstColourSlot + index)));
  };
  GraphStyle style;
  style.background = swatch(0);
  style.scale = swatch(2);
  style.stations = {swatch(1), swatch(3), swatch(4), swatch(5)};
  style.withExtremes = options.Slot(1) != QLatin1String("0");
  return style;
}

GraphSheet MakeSingleSheet(const StationSeries& series, const GraphStation& station, const Options& options,
                           const Language& language, const QStringList& notes) {
  GraphSheet sheet = EmptySheet(options, language, notes);
  const bool yearFromReadings = !station.waterYear && series.ReadingCount() > 0;
  const int year = yearFromReadings ? WaterYearOf(series.At(1).day) : station.waterYear.value_or(0);
  const int lastYear = yearFromReadings ? WaterYearOf(series.At(series.ReadingCount()).day) : year;
  SetYears(sheet, year, year, std::max(year, lastYear));
  sheet.years = YearText(year);
  if (lastYear > year) sheet.years += QLatin1Char('-') + YearText(lastYear);
  sheet.texts.title = station.number + QLatin1Char(' ') + station.name + QStringLiteral(" AGI  (") +
                      language.Text(Caption::WaterYearTitle) + QLatin1Char(':') + sheet.years +
                      QLatin1Char(')');
  LevelRange(series, sheet.levels);
  sheet.series.emplace_back(PointsOfGrid(series, sheet.firstDay), sheet.style.withExtremes);
  sheet.stationNames.append(station.number);
  return sheet;
}

GraphSheet MakeMultipleSheet(const std::vector<GraphSource>& sources, const Options& options,
                             const Language& language, const QStringList& notes) {
  GraphSheet sheet = EmptyMultipleSheet(sources, options, language, notes);
  for (const GraphSource& source : sources) {
    LevelRange(source.series, sheet.levels);
    AddStation(sheet, source.station, source.waterYear, PointsOfGrid(source.series, sheet.firstDay));
  }
  return sheet;
}

GraphSheet ReadMultipleSheet(const std::vector<GraphFileEntry>& files, const Options& options,
                             const Language& language, const QStringList& notes) {
  GraphSheet sheet = EmptyMultipleSheet(files, options, language, notes);
  for (const GraphFileEntry& file : files) {
    const auto content = ReadGraphFile(file.path);
    if (!content) {
      sheet.notes.append(language.Say(content.Failure()));
      continue;
    }
    FilePoints read = PointsOfFile(*content, sheet.firstDay);
    if (read.damagedRecord > 0) sheet.notes.append(DamageText(file.path, read.damagedRecord, language));
    for (const GraphPoint& point : read.points) sheet.levels.Widen(point.levelCm);
    AddStation(sheet, file.station, file.waterYear, std::move(read.points));
  }
  return sheet;
}

}  // namespace vesk

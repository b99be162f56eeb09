#include "programs/batch_graph.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

#include "graphs/graph_output.h"
#include "graphs/graph_sheet.h"
#include "programs/batch.h"
#include "programs/batch_support.h"

namespace vesk {
namespace {

constexpr QSize kPictureSize(1600, 900);
constexpr QSize kPaperSize(1123, 794);  // A4 landscape
constexpr int kLeastSide = 160;
constexpr int kMostSide = 20000;

struct GraphRequest {
  QString folder, outPath, registerPath;
  QStringList stations;
  int waterYear = 0;
  std::optional<Day> from, to;
  QSize size;
  Language language;
};

void AddGraphOptions(QCommandLineParser& parser) {
  const auto add = [&parser](const char* name, const char* text, const char* value) {
    parser.addOption({QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value)});
  };
  add("station", "Station: five-character number or nine-character entry; up to four times.", "S");
  add("water-year", "Water year: the year in which it ends.", "Y");
  add("from", "First day drawn, day and month (1.10).", "d.m");
  add("to", "Last day drawn, day and month (30.9).", "d.m");
  add("size", "Size of the page, 1/96 inch (1600x900 for .png, A4 landscape for .pdf and .svg).", "WxH");
  add("language", "Language of the texts (TURKCE).", "TURKCE|ENGLISH");
  add("register", "Station register for the station's name.", "FILE");
  add("out", "File to write: .png, .pdf or .svg; .csv writes the readings that are drawn.", "FILE");
}

Error Wrong(const QString& option, const QString& reason) {
  return {QStringLiteral("graph: --") + option, {}, reason + QStringLiteral(" (see --help)")};
}

Result<QSize> ReadSize(const QString& text, const QString& ending) {
  if (text.isEmpty()) return ending == QLatin1String("png") ? kPictureSize : kPaperSize;
  static const QRegularExpression pattern(QStringLiteral("^(\\d{1,5})[xX](\\d{1,5})$"));
  const auto match = pattern.match(text);
  const QSize size(match.capturedView(1).toInt(), match.capturedView(2).toInt());
  const auto fits = [](int side) { return side >= kLeastSide && side <= kMostSide; };
  if (fits(size.width()) && fits(size.height())) return size;
  return Wrong(QStringLiteral("size"),
               QStringLiteral("expected WxH, each %1 to %2").arg(kLeastSide).arg(kMostSide));
}

Status ReadRange(const QCommandLineParser& parser, GraphRequest& request) {
  const auto read = [&](const QString& name, std::optional<Day>& day) {
    if (!parser.isSet(name)) return true;
    day = ReadDayOfWaterYear(parser.value(name), request.waterYear);
    return day.has_value();
  };
  for (const auto& [name, day] :
       {std::pair(QStringLiteral("from"), &request.from), std::pair(QStringLiteral("to"), &request.to)}) {
    if (!read(name, *day)) return Wrong(name, QStringLiteral("no day and month of the water year"));
  }
  const Day first = request.from.value_or(WaterYearFirstDay(request.waterYear));
  if (request.to.value_or(WaterYearLastDay(request.waterYear)) < first) {
    return Wrong(QStringLiteral("to"), QStringLiteral("the end lies before the start"));
  }
  return {};
}

/// Everything but the data directory; whatever is wrong here is wrong use.
Result<GraphRequest> ReadRequest(const QCommandLineParser& parser) {
  GraphRequest request;
  request.stations = parser.values(QStringLiteral("station"));
  if (request.stations.isEmpty()) return Wrong(QStringLiteral("station"), QStringLiteral("missing"));
  if (request.stations.size() > kMostGraphStations) {
    return Wrong(QStringLiteral("station"), QStringLiteral("at most %1").arg(kMostGraphStations));
  }
  request.waterYear = parser.value(QStringLiteral("water-year")).toInt();
  if (request.waterYear < 1000 || request.waterYear > 9999) {
    return Wrong(QStringLiteral("water-year"), QStringLiteral("expected a year in four digits"));
  }
  if (const Status range = ReadRange(parser, request); !range) return range.Failure();
  request.outPath = parser.value(QStringLiteral("out"));
  const QString ending = QFileInfo(request.outPath).suffix().toLower();
  if (!IsGraphFormat(ending)) {
    return Wrong(QStringLiteral("out"), QStringLiteral("expected a file ending in .png, .pdf, .svg or .csv"));
  }
  const auto size = ReadSize(parser.value(QStringLiteral("size")), ending);
  if (!size) return size.Failure();
  request.size = *size;
  const QString language = parser.value(QStringLiteral("language"));
  if (language == QLatin1String("ENGLISH")) {
    request.language.FillEnglish();
  } else if (language.isEmpty() || language == QLatin1String("TURKCE")) {
    request.language.FillTurkish();
  } else {
    return Wrong(QStringLiteral("language"), QStringLiteral("expected TURKCE or ENGLISH"));
  }
  request.registerPath = parser.value(QStringLiteral("register"));
  return request;
}

struct LoadedSheet {
  GraphSheet sheet;
  int exit = kBatchDone;  // kBatchFailed when a refused file cut one of the loads short
};

Result<LoadedSheet> LoadSheet(const GraphRequest& request) {
  const std::vector<RawFile> inUse = FilesInUse(ListRawFiles(request.folder));
  std::vector<GraphSource> sources;
  int exit = kBatchDone;
  for (const QString& wanted : request.stations) {
    const auto choice = ChooseStationYear(request.folder, inUse, wanted, request.waterYear);
    if (!choice) return choice.Failure();
    auto loaded = LoadStationYear(request.folder, *choice);
    if (!loaded) return loaded.Failure();
    exit = std::max(exit, ExitOf(*loaded));
    sources.push_back({choice->station.mid(4), request.waterYear,
                       std::make_shared<const ReviewGrid>(std::move(loaded->grid))});
  }
  const Options colours = FirstRunOptions();
  if (sources.size() > 1) {
    return LoadedSheet{MakeMultipleSheet(sources, colours, request.language), exit};
  }
  const GraphSource& only = sources.front();
  const GraphStation station{only.station, StationNameFrom(request.registerPath, only.station),
                             request.waterYear};
  return LoadedSheet{MakeSingleSheet(*only.grid, station, colours, request.language), exit};
}

/// The exit code of a graph that has been drawn and saved.
Result<int> DrawGraph(const GraphRequest& request) {
  const auto loaded = LoadSheet(request);
  if (!loaded) return loaded.Failure();
  const GraphSheet& sheet = loaded->sheet;
  GraphPage page = WholePeriodPage(sheet);
  page = PageOfDates(request.from.value_or(sheet.start), request.to.value_or(sheet.end), page.maximumCm);
  const PageScale scale = ScaleOfPage(page, sheet, request.size);
  for (const QString& message : NegativeMessages(sheet, scale.startT, scale.endT, request.language)) {
    Complain(message);
  }
  const Status saved = SaveGraphPage(request.outPath, page, sheet, request.size);
  if (!saved) return saved.Failure();
  return loaded->exit;
}

}  // namespace

int RunGraphVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Draws the levels of one station, or of up to four together, over a water year or a part of it."));
  AddGraphOptions(parser);
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  auto request = ReadRequest(parser);
  if (!request) {
    Complain(request.Failure().Text());
    return kBatchWrongUse;
  }
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) {
    Complain(folder.Failure().Text());
    return kBatchFailed;
  }
  request->folder = *folder;
  const auto drawn = DrawGraph(*request);
  if (drawn) return *drawn;
  Complain(drawn.Failure().Text());
  return kBatchFailed;
}

}  // namespace vesk

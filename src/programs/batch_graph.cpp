#include "programs/batch_graph.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

#include "graphs/flow_plot.h"
#include "graphs/graph_notes.h"
#include "graphs/graph_output.h"
#include "graphs/graph_sheet.h"
#include "programs/batch.h"
#include "programs/batch_curve.h"
#include "programs/batch_support.h"
#include "shell/settings.h"
#include "tables/level_table.h"

namespace vesk {
namespace {

constexpr QSize kPictureSize(1600, 900);
constexpr QSize kPaperSize(1123, 794);  // A4 landscape
constexpr Wording kNothingToDraw{u"%1: çizilecek okuma yok", u"%1: there are no readings to draw"};
constexpr int kLeastSide = 160;
constexpr int kMostSide = 20000;

struct GraphRequest {
  QString folder, outPath, registerPath;
  QStringList stations;
  WaterYear year;
  std::optional<Day> from, to;
  QSize size;
  int dotsPerInch = kUnitsPerInch;
  Language language;
  Options options;  // colours, extremes
  FlowKind kind = FlowKind::Level;
  std::vector<WaterYear> years;  ///< over one another; empty: the one of --water-year
  bool logarithmic = false;
  CurveChoice curve;

  /// Drawn as levels have always been.
  [[nodiscard]] bool Plain() const { return kind == FlowKind::Level && years.empty() && !logarithmic; }
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
  add("dpi", "Pixels an inch of a .png (96).", "N");
  parser.addOption(
      {QStringLiteral("no-extremes"), QStringLiteral("Leaves out the logger's maxima and minima.")});
  add("settings", "Settings file: colours, extremes and language (those of a first run).", "FILE");
  add("language", "Language of the texts (that of the settings, TURKCE).", "TURKCE|ENGLISH");
  add("register", "Station register: the station's name and rating curve.", "FILE");
  add("quantity", "What is drawn of one station: level (default), discharge, both, duration.",
      "level|discharge|both|duration");
  add("years", "Several water years of one station over one another, instead of --water-year.", "Y,Y,...");
  parser.addOption(
      {QStringLiteral("log"), QStringLiteral("Logarithmic values (not of a plain level graph).")});
  parser.addOption(CurveOption());
  add("out", "File to write: .png, .pdf or .svg; .csv writes the readings that are drawn.", "FILE");
}

Error Wrong(const QString& option, const QString& reason) {
  return {Message::Verbatim(QStringLiteral("graph: --") + option),
          {},
          Message::Verbatim(reason + QStringLiteral(" (see --help)"))};
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
    day = ReadDayOfWaterYear(parser.value(name), request.year.number);
    return day.has_value();
  };
  for (const auto& [name, day] :
       {std::pair(QStringLiteral("from"), &request.from), std::pair(QStringLiteral("to"), &request.to)}) {
    if (!read(name, *day)) return Wrong(name, QStringLiteral("no day and month of the water year"));
  }
  const Day first = request.from.value_or(request.year.FirstDay());
  if (request.to.value_or(request.year.LastDay()) < first) {
    return Wrong(QStringLiteral("to"), QStringLiteral("the end lies before the start"));
  }
  return {};
}

Status ReadDotsPerInch(const QCommandLineParser& parser, const QString& ending, GraphRequest& request) {
  constexpr int kLeastDpi = 24;
  constexpr int kMostDpi = 1200;
  const QString option = QStringLiteral("dpi");
  if (!parser.isSet(option)) return {};
  if (ending != QLatin1String("png")) return Wrong(option, QStringLiteral("only a .png has pixels"));
  bool numeric = false;
  request.dotsPerInch = parser.value(option).toInt(&numeric);
  if (!numeric || request.dotsPerInch < kLeastDpi || request.dotsPerInch > kMostDpi) {
    return Wrong(option, QStringLiteral("expected %1 to %2").arg(kLeastDpi).arg(kMostDpi));
  }
  const QSizeF pixels = QSizeF(request.size) * request.dotsPerInch / kUnitsPerInch;
  if (std::max(pixels.width(), pixels.height()) <= kMostSide) return {};
  return Wrong(option, QStringLiteral("the picture would have more than %1 pixels on a side").arg(kMostSide));
}

/// Settings first, then what the command line says otherwise.
Status ReadLook(const QCommandLineParser& parser, GraphRequest& request) {
  request.options = FirstRunOptions();
  LanguageChoice choice = LanguageChoice::Turkish;
  if (const QString path = parser.value(QStringLiteral("settings")); !path.isEmpty()) {
    if (!QFileInfo(path).isFile())
      return Wrong(QStringLiteral("settings"), path + QStringLiteral(": there is no such file"));
    request.options = LoadOptions(Settings(path));
    if (LanguageChoiceOf(request.options.Slot(21)) == LanguageChoice::English)
      choice = LanguageChoice::English;
  }
  if (parser.isSet(QStringLiteral("no-extremes"))) request.options.Slot(1) = QStringLiteral("0");
  if (const QString language = parser.value(QStringLiteral("language")); !language.isEmpty()) {
    choice = LanguageChoiceOf(language);
    if (choice == LanguageChoice::Unknown)
      return Wrong(QStringLiteral("language"), QStringLiteral("expected TURKCE or ENGLISH"));
  }
  choice == LanguageChoice::English ? request.language.FillEnglish() : request.language.FillTurkish();
  return {};
}

/// --quantity, --years, --log.
Status ReadFlow(const QCommandLineParser& parser, GraphRequest& request) {
  const QString quantity = parser.value(QStringLiteral("quantity"));
  const auto kind = quantity.isEmpty() ? FlowKind::Level : ReadFlowKind(quantity);
  if (!kind)
    return Wrong(QStringLiteral("quantity"), QStringLiteral("expected level, discharge, both or duration"));
  request.kind = *kind;
  request.logarithmic = parser.isSet(QStringLiteral("log"));
  request.curve = CurveChoiceOf(parser);
  for (const QString& word :
       parser.value(QStringLiteral("years")).split(QLatin1Char(','), Qt::SkipEmptyParts)) {
    const auto year = ReadWaterYear(word.trimmed());
    if (!year)
      return Wrong(QStringLiteral("years"),
                   QStringLiteral("expected years in four digits, parted by commas"));
    if (std::ranges::find(request.years, *year) == request.years.end()) request.years.push_back(*year);
  }
  std::ranges::sort(request.years, {}, &WaterYear::number);
  if (!request.years.empty() && parser.isSet(QStringLiteral("water-year")))
    return Wrong(QStringLiteral("years"), QStringLiteral("goes without --water-year"));
  if (request.Plain() && request.curve.given && !request.curve.file.isEmpty())
    return Wrong(QStringLiteral("curve"), QStringLiteral("goes with --quantity discharge, both or duration"));
  if (request.Plain()) return {};
  if (request.stations.size() > 1)
    return Wrong(QStringLiteral("quantity"),
                 QStringLiteral("only levels of one year are drawn of several stations"));
  if (parser.isSet(QStringLiteral("from")) || parser.isSet(QStringLiteral("to")))
    return Wrong(QStringLiteral("from"), QStringLiteral("goes with levels of one year only"));
  const bool needsCurve = *kind == FlowKind::Discharge || *kind == FlowKind::Both;
  if (needsCurve && !request.curve.MayBe())
    return Wrong(QStringLiteral("quantity"), QStringLiteral("discharges need --curve or --register"));
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
  if (const Status flow = ReadFlow(parser, request); !flow) return flow.Failure();
  const auto waterYear = request.years.empty() ? ReadWaterYear(parser.value(QStringLiteral("water-year")))
                                               : std::optional(request.years.front());
  request.year = waterYear.value_or(WaterYear{});
  if (!waterYear) {
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
  if (const Status dpi = ReadDotsPerInch(parser, ending, request); !dpi) return dpi.Failure();
  if (const Status look = ReadLook(parser, request); !look) return look.Failure();
  request.registerPath = parser.value(QStringLiteral("register"));
  return request;
}

/// What could be loaded, and what the picture has to say of the rest.
struct LoadedStations {
  std::vector<GraphSource> sources;
  QStringList notes;
  int exit = kBatchDone;  // kBatchFailed when a load is not whole or a station is left out
};

/// Fails when no station can be loaded; one that cannot is named and left out.
Result<LoadedStations> LoadStations(const GraphRequest& request) {
  const std::vector<RawFile> inUse = FilesInUse(ListRawFiles(request.folder));
  LoadedStations all;
  std::optional<Error> failure;
  for (const QString& wanted : request.stations) {
    QString station = wanted;
    const auto load = [&]() -> Result<LoadedReadings> {
      const auto choice = ChooseStationYear(request.folder, inUse, wanted, request.year);
      if (!choice) return choice.Failure();
      station = choice->station.Number();
      return LoadStationYear(request.folder, *choice);
    };
    auto loaded = load();
    if (!loaded) {
      if (failure) Complain(failure->English());
      failure = loaded.Failure();
      all.exit = kBatchFailed;
      all.notes.append(request.language.Say(kNothingToDraw, station));
      continue;
    }
    all.exit = std::max(all.exit, ExitOf(*loaded));
    all.notes += NotesOfLoad(*loaded, station, request.language);
    all.sources.push_back({station, request.year.number, std::move(loaded->series)});
  }
  if (all.sources.empty()) return *failure;
  if (failure) Complain(failure->English());
  return all;
}

GraphSheet MakeSheet(const GraphRequest& request, const LoadedStations& loaded) {
  if (request.stations.size() > 1) {
    return MakeMultipleSheet(loaded.sources, request.options, request.language, loaded.notes);
  }
  const GraphSource& only = loaded.sources.front();
  const GraphStation station{only.station, StationNameFrom(request.registerPath, only.station),
                             request.year.number};
  return MakeSingleSheet(only.series, station, request.options, request.language, loaded.notes);
}

/// The exit code of a graph that has been drawn and saved.
Result<int> DrawGraph(const GraphRequest& request) {
  const auto loaded = LoadStations(request);
  if (!loaded) return loaded.Failure();
  const GraphSheet sheet = MakeSheet(request, *loaded);
  GraphPage page = WholePeriodPage(sheet);
  page = PageOfDates(request.from.value_or(sheet.start), request.to.value_or(sheet.end), page.maximumCm);
  const QStringList notes = AllNotes(NotesOfPage(page, sheet));
  for (const QString& note : notes) Complain(note);
  const Status saved = SaveGraphPage(request.outPath, page, sheet, request.size, request.dotsPerInch);
  if (!saved) return saved.Failure();
  return notes.isEmpty() ? loaded->exit : kBatchFailed;
}

/// The exit code of a graph of discharges, of daily means or of several years.
Result<int> DrawFlow(const GraphRequest& request) {
  const std::vector<RawFile> inUse = FilesInUse(ListRawFiles(request.folder));
  const std::vector<WaterYear> wanted = request.years.empty() ? std::vector{request.year} : request.years;
  std::vector<FlowYear> years;
  std::optional<Error> failure;
  int exit = kBatchDone;
  QString number = request.stations.front();
  for (const WaterYear year : wanted) {
    const auto choice = ChooseStationYear(request.folder, inUse, request.stations.front(), year);
    auto loaded = choice ? LoadStationYear(request.folder, *choice) : choice.Failure();
    if (!loaded) {
      exit = Fail(loaded.Failure());
      failure = loaded.Failure();
      continue;
    }
    number = choice->station.Number();
    exit = std::max(exit, ExitOf(*loaded));
    const auto curve = CurveFor(request.curve, choice->station);
    if (!curve) return curve.Failure();
    const bool needs = request.kind == FlowKind::Discharge || request.kind == FlowKind::Both;
    if (needs && *curve == nullptr)
      return Error{Wording{u"İstasyonun anahtar eğrisi yok", u"The station has no rating curve"},
                   request.registerPath, Message::Verbatim(number)};
    loaded->series.SetCurve(*curve);
    auto days =
        DailyMeansOf(ComputeLevelTable(loaded->series, year.number, ExtremeMode::Recorded, {}, false));
    years.push_back({year.number, std::move(loaded->series), std::move(days)});
  }
  if (years.empty()) return kBatchFailed;
  const FlowRequest wantedPlot{request.kind, number, StationNameFrom(request.registerPath, number),
                               request.logarithmic};
  const FlowPlot plot = MakeFlowPlot(wantedPlot, years, request.language);
  for (const QString& note : plot.notes) Complain(note);
  if (plot.Empty()) return Error{Message(kNothingToDraw, number), {}, {}};
  const Status saved = WriteFlowPlot(request.outPath, plot, request.size, request.dotsPerInch);
  if (!saved) return saved.Failure();
  return exit;
}

}  // namespace

int RunGraphVerb(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Draws the levels of one station, or of up to four together, over a water year or a part of it; or the "
      "discharges, the duration curve or several years of one."));
  AddGraphOptions(parser);
  if (const auto exit = ParseVerb(parser, arguments, {QStringLiteral("DIR")})) return *exit;
  auto request = ReadRequest(parser);
  if (!request) {
    Complain(request.Failure().English());
    return kBatchWrongUse;
  }
  const auto folder = DataFolder(parser.positionalArguments().front());
  if (!folder) {
    return Fail(folder.Failure());
  }
  request->folder = *folder;
  const auto drawn = request->Plain() ? DrawGraph(*request) : DrawFlow(*request);
  if (drawn) return *drawn;
  return Fail(drawn.Failure());
}

}  // namespace vesk

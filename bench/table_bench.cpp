// The table of a water year of 15-minute readings, hourly sheet included, with the office already running:
// the program's build against two bare ways of writing the same cells over the same interface, in ranges and
// cell by cell. All three start from the template and end with the saved file; the cells are compared before
// times are told.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <limits>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/BorderLine2.hpp>

#include "datafiles/water_year.h"
#include "platform/libreoffice/office_workbook.h"
#include "tables/build_level_table.h"

namespace vesk {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;
using Cells = Sequence<Sequence<Any>>;

constexpr int kDays = 365;
constexpr int kReadingsADay = 96;
constexpr int kReadings = kDays * kReadingsADay;
constexpr int kMonths = 12;
constexpr int kRuns = 10;

[[noreturn]] void Give(const Error& error) {
  std::fprintf(stderr, "%s\n", error.English().toUtf8().constData());
  std::exit(1);
}

void Must(const Status& status) {
  if (!status) Give(status.Failure());
}

StationSeries WholeYear() {
  std::vector<Reading> readings;
  for (int day = 0; day < kDays; ++day) {
    Reading reading;
    reading.day = WaterYearFirstDay(2011) + std::chrono::days(day);
    for (int i = 1; i <= kReadingsADay; ++i) {
      reading.kind = ReadingKind::Ordinary;
      reading.minuteOfDay = static_cast<std::int16_t>(std::min(i * 15, 1439));
      reading.levelCm = 100 + (day * 7 + i * 3) % 250;
      readings.push_back(reading);
    }
    reading.kind = ReadingKind::Maximum;
    reading.levelCm = 360;
    readings.push_back(reading);
    reading.kind = ReadingKind::Minimum;
    reading.levelCm = 99;
    readings.push_back(reading);
  }
  return StationSeries(std::move(readings));
}

class SilentQuestions : public BuildQuestions {
 public:
  void TellWorkbooksAreOpen(const BuildMessage& /*message*/) override {}
  bool AskDespiteNotes(const std::vector<QString>& /*notes*/) override { return true; }
  bool AskToReplace(const QString& /*path*/, TableOrigin /*origin*/) override { return true; }
  HourlyAnswer AskForHourlyValues(const BuildMessage& /*message*/) override { return HourlyAnswer::Yes; }
  bool WarnNotToSwitchSheets(const BuildMessage& /*message*/) override { return true; }
  bool ShowProgress(BuildStep /*step*/, int /*percent*/) override { return true; }
};

/// The office that all three ways share.
class SharedOffice : public Spreadsheet {
 public:
  explicit SharedOffice(std::shared_ptr<OfficeSession> session) : session_(std::move(session)) {}
  bool HasOpenWindow() override { return false; }
  Result<std::unique_ptr<Workbook>> Open(const QString& path, Macros macros) override {
    auto workbook = OfficeWorkbook::Load(session_, path, macros);
    if (!workbook) return workbook.Failure();
    return std::unique_ptr<Workbook>(std::move(*workbook));
  }
  Status Show() override { return {}; }
  Status Recalculate() override { return {}; }
  Status Quit() override { return {}; }

 private:
  std::shared_ptr<OfficeSession> session_;
};

/// A block of the daily or hourly sheet, as the office keeps it; column and row counted from 0.
struct Block {
  const char* sheet;
  int column, row, columns, rows;
  Cells cells;
};

std::vector<Block> BlocksToWrite() {
  std::vector<Block> blocks{{"Saatlik", 2, 0, 1, 2, {}},
                            {"Saatlik", 0, 4, 9, kReadings, {}},
                            {"Gunluk", 3, 0, 1, 1, {}},
                            {"Gunluk", 0, 0, 1, 1, {}}};
  for (int month = 0; month < kMonths; ++month) blocks.push_back({"Gunluk", 1, 4 + 35 * month, 8, 31, {}});
  return blocks;
}

Reference<css::sheet::XSpreadsheet> SheetOf(OfficeWorkbook& book, const char* name) {
  return Reference<css::sheet::XSpreadsheet>(book.Document()->getSheets()->getByName(ToOffice(name)),
                                             UNO_QUERY_THROW);
}

Reference<css::sheet::XCellRangeData> RangeOf(OfficeWorkbook& book, const Block& block) {
  const auto range = SheetOf(book, block.sheet)
                         ->getCellRangeByPosition(block.column, block.row, block.column + block.columns - 1,
                                                  block.row + block.rows - 1);
  return Reference<css::sheet::XCellRangeData>(range, UNO_QUERY_THROW);
}

std::vector<Block> ReadBack(const std::shared_ptr<OfficeSession>& session, const QString& path) {
  auto book = OfficeWorkbook::Load(session, path, Macros::AsTheOfficeSays);
  if (!book) Give(book.Failure());
  std::vector<Block> blocks = BlocksToWrite();
  for (Block& block : blocks) block.cells = RangeOf(**book, block)->getDataArray();
  Must((*book)->Close());
  return blocks;
}

bool SameCells(const std::vector<Block>& a, const std::vector<Block>& b) {
  return std::ranges::equal(a, b, [](const Block& x, const Block& y) { return x.cells == y.cells; });
}

void WriteRanges(OfficeWorkbook& book, const std::vector<Block>& blocks) {
  for (const Block& block : blocks) RangeOf(book, block)->setDataArray(block.cells);
}

void WriteCellByCell(OfficeWorkbook& book, const std::vector<Block>& blocks) {
  for (const Block& block : blocks) {
    const Reference<css::sheet::XSpreadsheet> sheet = SheetOf(book, block.sheet);
    for (int row = 0; row < block.rows; ++row) {
      for (int column = 0; column < block.columns; ++column) {
        const Any& value = block.cells[row][column];
        rtl::OUString text;
        double number = 0;
        if (value >>= number) {
          sheet->getCellByPosition(block.column + column, block.row + row)->setValue(number);
        } else if ((value >>= text) && !text.isEmpty()) {
          // The apostrophe keeps a time a text, as it is typed.
          sheet->getCellByPosition(block.column + column, block.row + row)->setFormula(ToOffice("'") + text);
        }
      }
    }
  }
}

css::table::BorderLine2 MediumLine() {
  css::table::BorderLine2 line;
  line.OuterLineWidth = 63;
  line.LineWidth = 63;
  return line;
}

/// Sheet rows, from 0, of the days' last readings: minima stand there, maxima a row above.
std::vector<css::table::CellRangeAddress> DayEnds(int firstColumn, int above) {
  std::vector<css::table::CellRangeAddress> ranges;
  for (int day = 1; day <= kDays; ++day) {
    const sal_Int32 row = 3 + day * kReadingsADay - above;
    ranges.emplace_back(sal_Int16(0), firstColumn, row, 8, row);
  }
  return ranges;
}

void FormatTogether(OfficeWorkbook& book, const std::vector<css::table::CellRangeAddress>& ranges,
                    const char* property, const Any& value) {
  const Reference<css::lang::XMultiServiceFactory> factory(book.Document(), UNO_QUERY_THROW);
  const Reference<css::sheet::XSheetCellRangeContainer> together(
      factory->createInstance(ToOffice("com.sun.star.sheet.SheetCellRanges")), UNO_QUERY_THROW);
  together->addRangeAddresses({ranges.data(), static_cast<sal_Int32>(ranges.size())}, false);
  Reference<css::beans::XPropertySet>(together, UNO_QUERY_THROW)->setPropertyValue(ToOffice(property), value);
}

void FormatOneByOne(OfficeWorkbook& book, const std::vector<css::table::CellRangeAddress>& ranges,
                    const char* property, const Any& value) {
  const Reference<css::sheet::XSpreadsheet> sheet = SheetOf(book, "Saatlik");
  for (const css::table::CellRangeAddress& range : ranges) {
    const Reference<css::beans::XPropertySet> cells(
        sheet->getCellRangeByPosition(range.StartColumn, range.StartRow, range.EndColumn, range.EndRow),
        UNO_QUERY_THROW);
    cells->setPropertyValue(ToOffice(property), value);
  }
}

using WriteWay = void (*)(OfficeWorkbook&, const std::vector<Block>&);
using FormatWay = void (*)(OfficeWorkbook&, const std::vector<css::table::CellRangeAddress>&, const char*,
                           const Any&);

/// The bare way: no checks, no computing, everything at hand.
void WriteBare(const std::shared_ptr<OfficeSession>& session, const QString& path,
               const std::vector<Block>& blocks, WriteWay write, FormatWay format) {
  QFile::remove(path);
  if (!QFile::copy(QStringLiteral(VESK_RESOURCES "/Sablon.xls"), path))
    Give({Message::Verbatim(QStringLiteral("no copy")), path, {}});
  auto book = OfficeWorkbook::Load(session, path, Macros::AsTheOfficeSays);
  if (!book) Give(book.Failure());
  write(**book, blocks);
  format(**book, DayEnds(5, 1), "CharColor", Any(sal_Int32(0xFF0000)));
  format(**book, DayEnds(5, 0), "CharColor", Any(sal_Int32(0x3366FF)));
  format(**book, DayEnds(0, 0), "BottomBorder", Any(MediumLine()));
  Must((*book)->RunMacro(QStringLiteral("BosHucreleriSil")));
  Must((*book)->Save());
  Must((*book)->Close());
}

template <class Action>
double Seconds(Action action) {
  QElapsedTimer timer;
  timer.start();
  action();
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

int Run() {
  auto office = PrivateOffice::Start();
  if (!office) Give(office.Failure());
  auto connected = OfficeSession::Own(std::move(*office), {});
  if (!connected) Give(connected.Failure());
  const std::shared_ptr<OfficeSession> session = *connected;
  const QTemporaryDir folder;
  const StationSeries grid = WholeYear();
  SharedOffice shared(session);
  SilentQuestions questions;
  const BuildInput input{grid,
                         QStringLiteral("12345"),
                         QStringLiteral("Bench"),
                         2011,
                         ExtremeMode::Recorded,
                         folder.path(),
                         QStringLiteral(VESK_RESOURCES),
                         QStringLiteral("Sablon.xls"),
                         AfterSave::Close};
  const auto build = [&] {
    const auto report = BuildLevelTable(input, shared, questions);
    if (!report) Give(report.Failure());
    for (const Error& warning : report->warnings) Give(warning);
  };
  build();
  const std::vector<Block> blocks =
      ReadBack(session, folder.filePath(TableFileName(input.stationNumber, 2011)));
  const QString bare = folder.filePath(QStringLiteral("bare.xls"));
  const auto inRanges = [&] { WriteBare(session, bare, blocks, WriteRanges, FormatTogether); };

  const double cellByCell =
      Seconds([&] { WriteBare(session, bare, blocks, WriteCellByCell, FormatOneByOne); });
  if (!SameCells(ReadBack(session, bare), blocks))
    Give({Message::Verbatim(QStringLiteral("cell by cell: other cells")), bare, {}});
  inRanges();
  if (!SameCells(ReadBack(session, bare), blocks))
    Give({Message::Verbatim(QStringLiteral("in ranges: other cells")), bare, {}});
  std::printf("equal cells: %d hourly rows, %d days\n", kReadings, kDays);

  double ours = std::numeric_limits<double>::max();
  double ranges = ours;
  for (int run = 0; run < kRuns; ++run) {
    ours = std::min(ours, Seconds(build));
    ranges = std::min(ranges, Seconds(inRanges));
  }
  std::printf("table --hourly       %7.2f s\n", ours);
  std::printf("bare, in ranges      %7.2f s   ours takes %.2f times as long (goal: at most 1.2)\n", ranges,
              ours / ranges);
  std::printf("bare, cell by cell   %7.2f s   %.1f times ours (goal: at least 10)\n", cellByCell,
              cellByCell / ours);
  return 0;
}

}  // namespace
}  // namespace vesk

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  return vesk::Run();
}

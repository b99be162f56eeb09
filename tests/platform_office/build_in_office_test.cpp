#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "platform/libreoffice/office_workbook.h"
#include "tables/grid_rows.h"
#include "tables/plain_answers.h"
#include "tables/written_cells.h"

namespace vesk::test {
namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

/// Two whole days, a day without extremes, a leap day.
StationSeries SmallGrid() {
  return GridOf(
      "01/10/2011 06:00 100 12.5; 12:00 110 yok; 23:59 120; 18:30 131.5 Max 20; 03:15 90 Min\n"
      "02/10/2011 12:00 150; 23:59 160\n"
      "03/10/2011 12:00 140; 23:59 141; 20:00 142 Max; 01:00 139 Min\n"
      "29/02/2012 12:00 80; 23:59 70; 11:00 81 Max; 23:00 69 Min");
}

Reference<css::sheet::XSpreadsheet> SheetOf(const OfficeWorkbook& book, QLatin1String name) {
  return {book.Document()->getSheets()->getByName(ToOffice(name)), UNO_QUERY_THROW};
}

Reference<css::sheet::XSpreadsheetView> ViewOf(const OfficeWorkbook& book) {
  const Reference<css::frame::XModel> model(book.Document(), UNO_QUERY_THROW);
  return {model->getCurrentController(), UNO_QUERY_THROW};
}

CellValue At(OfficeWorkbook& book, QLatin1String sheet, int row, int column) {
  return (*book.Sheet(sheet))->ReadBlock({row, column, row, column})->front().front();
}

bool IsEmpty(const OfficeWorkbook& book, QLatin1String sheet, int row, int column) {
  const auto type = SheetOf(book, sheet)->getCellByPosition(column - 1, row - 1)->getType();
  return type == css::table::CellContentType_EMPTY;
}

/// Turns formulas of a range into what they show: the one way to a cell that holds an empty text.
void MakeEmptyTexts(const OfficeWorkbook& book, QLatin1String sheet, const char* range) {
  const Reference<css::table::XCellRange> cells = SheetOf(book, sheet)->getCellRangeByName(ToOffice(range));
  const Reference<css::sheet::XCellRangeFormula> formulas(cells, UNO_QUERY_THROW);
  auto emptyTexts = formulas->getFormulaArray();
  for (auto& row : emptyTexts) {
    for (rtl::OUString& formula : row) formula = ToOffice("=\"\"");
  }
  formulas->setFormulaArray(emptyTexts);
  const Reference<css::sheet::XSpreadsheetView> view = ViewOf(book);
  view->setActiveSheet(SheetOf(book, sheet));
  Reference<css::view::XSelectionSupplier>(view, UNO_QUERY_THROW)->select(css::uno::Any(cells));
  const Reference<css::frame::XDispatchProvider> frame(
      Reference<css::frame::XController>(view, UNO_QUERY_THROW)->getFrame(), UNO_QUERY_THROW);
  css::util::URL command;
  command.Complete = command.Main = ToOffice(".uno:ConvertFormulaToValue");
  command.Protocol = ToOffice(".uno:");
  command.Path = ToOffice("ConvertFormulaToValue");
  frame->queryDispatch(command, rtl::OUString(), 0)->dispatch(command, {});
}

class OfficeTable : public testing::Test {
 protected:
  [[nodiscard]] BuildInput Input(const QString& templateName) const {
    return {.series = grid_,
            .stationNumber = QStringLiteral("12345"),
            .stationName = QStringLiteral("Çamlıdere"),
            .waterYear = 2012,
            .tableDirectory = folder_.path(),
            .templateDirectory = QStringLiteral(VESK_RESOURCES),
            .templateName = templateName,
            .afterSave = AfterSave::Close,
            .notes = notes_};
  }
  void Build(const QString& templateName) {
    PlainAnswers questions;
    const auto report = BuildLevelTable(Input(templateName), *MakeUnattendedSpreadsheet(), questions);
    ASSERT_TRUE(report.Ok()) << report.Failure().English().toStdString();
    for (const Error& warning : report->warnings) ADD_FAILURE() << warning.English().toStdString();
    const auto files = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    EXPECT_EQ(QDir(folder_.path()).entryList(files),
              QStringList({QStringLiteral(".Tablo-12345(2012).xls.sha256"),
                           QStringLiteral("Tablo-12345(2012).xls")}));
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("Tablo-12345(2012).xls"));
  StationSeries grid_ = SmallGrid();
  std::vector<QString> notes_;
};

TEST_F(OfficeTable, ReadsBackAsItsCellsAndItsMacroStillEmptiesEmptyTexts) {
  notes_ = {QStringLiteral("Eksik: 010204")};
  Build(QStringLiteral("Sablon.xls"));
  auto office = PrivateOffice::Start();
  ASSERT_TRUE(office.Ok());
  auto session = OfficeSession::Own(std::move(*office), {});
  ASSERT_TRUE(session.Ok());
  const auto loaded = OfficeWorkbook::Load(*session, path_, Macros::MayRun);
  ASSERT_TRUE(loaded.Ok()) << loaded.Failure().English().toStdString();
  OfficeWorkbook& book = **loaded;
  const Reference<css::container::XNamed> active(ViewOf(book)->getActiveSheet(), UNO_QUERY_THROW);
  EXPECT_EQ(FromOffice(active->getName()), kDailySheet);
  ExpectHolds(book, CellsOf(TableOf(Input({}), true)));
  const struct {
    QLatin1String sheet;
    int row, column;
    CellValue value;
  } kCells[] = {{kHourlySheet, 5, 1, 40'817.0},  // 1 October 2011
                {kDailySheet, 5, 9, 112.0},
                {kDailySheet, 36, 3, QStringLiteral("20:00")},
                {kDailySheet, 38, 9, 126.0},
                {kMonthlySheet, 1, 1, QStringLiteral("12345 - Çamlıdere")},
                {kMonthlySheet, 7, 2, {}},
                {kMonthlySheet, 18, 12, 363.0},
                {kMonthlySheet, 19, 1, notes_.front()},
                {kMonthlySheet, 21, 4, {}}};
  for (const auto& [sheet, row, column, value] : kCells) {
    EXPECT_TRUE(At(book, sheet, row, column) == value) << sheet.data() << ' ' << row << ',' << column;
  }
  SheetOf(book, kMonthlySheet)->getCellByPosition(3, 20)->setFormula(ToOffice("=1/0"));
  EXPECT_TRUE(At(book, kMonthlySheet, 21, 4) == CellValue(QStringLiteral("#")));

  MakeEmptyTexts(book, kHourlySheet, "D7:D9");
  MakeEmptyTexts(book, kDailySheet, "H6:H7");
  ASSERT_FALSE(IsEmpty(book, kHourlySheet, 8, 4) || IsEmpty(book, kDailySheet, 6, 8));
  const Status ran = book.RunMacro(QStringLiteral("BosHucreleriSil"));
  ASSERT_TRUE(ran.Ok()) << ran.Failure().English().toStdString();
  EXPECT_TRUE(IsEmpty(book, kHourlySheet, 8, 4) && IsEmpty(book, kDailySheet, 6, 8));
  EXPECT_FALSE(IsEmpty(book, kDailySheet, 36, 5)) << "a formula is left alone";
}

std::string RunPython(const QStringList& arguments, int& exitCode) {
  QProcess python;
  python.start(QStringLiteral("/usr/bin/python3"), arguments);
  exitCode = python.waitForFinished(60'000) ? python.exitCode() : -1;
  return (python.readAllStandardOutput() + python.readAllStandardError()).toStdString();
}

/// The reader checks colours, lines, the macro's work and what each formula has stored as well; most months
/// of this table have no readings.
TEST_F(OfficeTable, UnrelatedReaderFindsTheSameFigures) {
  int exitCode = 0;
  (void)RunPython({QStringLiteral("-c"), QStringLiteral("import xlrd")}, exitCode);
  if (exitCode != 0) GTEST_SKIP() << "python3-xlrd is not installed";
  const QString checker = QStringLiteral(VESK_TOOLS "/check_table.py");
  for (const char* templateName : {"Sablon.xls", "SABLON_E.XLS"}) {
    Build(QLatin1String(templateName));
    EXPECT_EQ(RunPython({checker, path_}, exitCode),
              "01/10/2011,18:30,131.5,20,03:15,90,,112\n"
              "03/10/2011,20:00,142,,01:00,139,,140\n"
              "29/02/2012,11:00,81,,23:00,69,,75\n");
    EXPECT_EQ(exitCode, 0) << templateName;
  }
  const std::string hourly = RunPython({checker, QStringLiteral("--hourly"), path_}, exitCode);
  EXPECT_EQ(exitCode, 0) << hourly;
  EXPECT_TRUE(
      hourly.starts_with("01/10/2011,06:00,100,12.5,,,,,\n"
                         "01/10/2011,12:00,110,yok,,Maksimum,18:30,131.5,20\n"
                         "01/10/2011,23:59,120,,,Minimum,03:15,90,\n"))
      << hourly;
}

/// 2 m3/s a centimetre.
class TwoToOne : public DischargeSource {
 public:
  [[nodiscard]] DischargeValue At(DateTime, double levelCm) const override {
    return {2 * levelCm, DischargeFlag::None};
  }
  [[nodiscard]] Message Explain(DateTime, DischargeFlag) const override { return {}; }
  [[nodiscard]] Message Describe(Day, Day) const override {
    return Message::Verbatim(QStringLiteral("E12345.dat"));
  }
};

TEST_F(OfficeTable, TheMonthlySheetSaysWhatItsDischargesComeTo) {
  grid_.SetCurve(std::make_shared<TwoToOne>());
  for (const char* name : {"Sablon.xls", "Sablon_E.xls"}) {
    PlainAnswers questions;
    BuildInput input = Input(QString::fromLatin1(name));
    input.catchmentKm2 = 50;
    const auto report = BuildLevelTable(input, *MakeUnattendedSpreadsheet(), questions);
    ASSERT_TRUE(report.Ok() && report->warnings.empty());
    auto office = PrivateOffice::Start();
    ASSERT_TRUE(office.Ok());
    auto session = OfficeSession::Own(std::move(*office), {});
    ASSERT_TRUE(session.Ok());
    const auto loaded = OfficeWorkbook::Load(*session, path_, Macros::MayRun);
    ASSERT_TRUE(loaded.Ok());
    OfficeWorkbook& book = **loaded;
    const auto number = [&book](int row, int column) {
      const CellValue value = At(book, kMonthlySheet, row, column);
      return std::holds_alternative<double>(value) ? std::get<double>(value) : -1;
    };
    // October: 1 and 3 October have a mean. 100 for 6 h, 110 for 6 h, 120 for 11:59 h: 112.5 cm, 225 m3/s;
    // then 140 for 12 h and 141 for 11:59 h: 281 m3/s.
    EXPECT_EQ(At(book, kDailySheet, 5, 10), CellValue(225.0)) << name;
    EXPECT_EQ(number(59, 2), 253);
    EXPECT_EQ(number(59, 3), 281);
    EXPECT_EQ(number(59, 6), 225);
    EXPECT_EQ(number(59, 4), 40'819) << "3 October 2011";
    EXPECT_NEAR(number(59, 9), 506 * 86400e-6, 1e-9);
    EXPECT_NEAR(number(59, 10), 506 * 86400e-6 / 50 * 1000, 1e-6);
    EXPECT_NEAR(number(59, 11), 253 * 1000.0 / 50, 1e-9);
    EXPECT_EQ(number(59, 12), 2);
    EXPECT_EQ(number(60, 12), 0);
    EXPECT_EQ(number(60, 2), -1) << "November has none, and no fault in its cell";
    EXPECT_EQ(number(71, 12), 3);
    EXPECT_EQ(At(book, kMonthlySheet, 56, 1), CellValue(QStringLiteral("E12345.dat")));
  }
}

}  // namespace
}  // namespace vesk::test

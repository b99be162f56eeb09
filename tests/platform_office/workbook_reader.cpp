#include "platform_office/workbook_reader.h"

#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

namespace vesk::test {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;

Content ContentOf(const Reference<css::table::XCell>& cell) {
  switch (cell->getType()) {
    case css::table::CellContentType_VALUE:
      return Content::Number;
    case css::table::CellContentType_TEXT:
      return Content::Text;
    case css::table::CellContentType_FORMULA:
      return Content::Formula;
    default:
      return Content::Empty;
  }
}

Reference<css::sheet::XSpreadsheet> SheetOf(OfficeWorkbook& workbook, const char* name) {
  return Reference<css::sheet::XSpreadsheet>(workbook.Document()->getSheets()->getByName(ToOffice(name)),
                                             UNO_QUERY_THROW);
}

Reference<css::sheet::XSpreadsheetView> ViewOf(OfficeWorkbook& workbook) {
  const Reference<css::frame::XModel> model(workbook.Document(), UNO_QUERY_THROW);
  return Reference<css::sheet::XSpreadsheetView>(model->getCurrentController(), UNO_QUERY_THROW);
}

}  // namespace

WorkbookReader::WorkbookReader(const QString& path) {
  auto office = PrivateOffice::Start();
  if (!office) {
    failure_ = office.Failure().Text();
    return;
  }
  auto session = OfficeSession::Own(std::move(*office), {});
  if (!session) {
    failure_ = session.Failure().Text();
    return;
  }
  session_ = *session;
  auto workbook = OfficeWorkbook::Load(session_, path);
  if (workbook) {
    workbook_ = std::move(*workbook);
  } else {
    failure_ = workbook.Failure().Text();
  }
}

Cell WorkbookReader::At(const char* sheet, int row, int column) const {
  const Reference<css::table::XCell> source =
      SheetOf(*workbook_, sheet)->getCellByPosition(column - 1, row - 1);
  return {ContentOf(source),
          FromOffice(Reference<css::text::XTextRange>(source, UNO_QUERY_THROW)->getString())};
}

QString WorkbookReader::ActiveSheet() const {
  const Reference<css::container::XNamed> sheet(ViewOf(*workbook_)->getActiveSheet(), UNO_QUERY_THROW);
  return FromOffice(sheet->getName());
}

void WorkbookReader::MakeEmptyTexts(const char* sheet, const char* range) {
  const Reference<css::sheet::XSpreadsheet> page = SheetOf(*workbook_, sheet);
  const Reference<css::table::XCellRange> cells = page->getCellRangeByName(ToOffice(range));
  const Reference<css::sheet::XCellRangeFormula> formulas(cells, UNO_QUERY_THROW);
  Sequence<Sequence<rtl::OUString>> emptyTexts = formulas->getFormulaArray();
  for (Sequence<rtl::OUString>& row : emptyTexts) {
    for (rtl::OUString& formula : row) formula = ToOffice("=\"\"");
  }
  formulas->setFormulaArray(emptyTexts);
  const Reference<css::sheet::XSpreadsheetView> view = ViewOf(*workbook_);
  view->setActiveSheet(page);
  Reference<css::view::XSelectionSupplier>(view, UNO_QUERY_THROW)->select(Any(cells));
  const Reference<css::frame::XDispatchProvider> frame(
      Reference<css::frame::XController>(view, UNO_QUERY_THROW)->getFrame(), UNO_QUERY_THROW);
  css::util::URL command;
  command.Complete = command.Main = ToOffice(".uno:ConvertFormulaToValue");
  command.Protocol = ToOffice(".uno:");
  command.Path = ToOffice("ConvertFormulaToValue");
  frame->queryDispatch(command, rtl::OUString(), 0)->dispatch(command, {});
}

}  // namespace vesk::test

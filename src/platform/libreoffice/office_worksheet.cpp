#include "platform/libreoffice/office_worksheet.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XMergeable.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <com/sun/star/util/XReplaceable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

namespace vesk {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;

constexpr sal_Int16 kMediumLine = 63;  // width, 1/100 mm, that the file format keeps as a medium line

constexpr sal_Int32 kGeneralFormat = 0;

Reference<css::sheet::XSheetCellRanges> FormulasOf(const Reference<css::sheet::XCellRangesQuery>& cells) {
  return cells->queryContentCells(static_cast<sal_Int16>(css::sheet::CellFlags::FORMULA));
}

void SetNumberFormat(const Reference<css::sheet::XSheetCellRanges>& cells, const Any& format) {
  Reference<css::beans::XPropertySet>(cells, UNO_QUERY_THROW)
      ->setPropertyValue(ToOffice("NumberFormat"), format);
}

/// 0xRRGGBB
sal_Int32 ColourOf(FontColour colour) {
  switch (colour) {
    case FontColour::LightBlue:
      return 0x3366FF;
    case FontColour::Red:
      break;
  }
  return 0xFF0000;
}

Any ToAny(const CellValue& value) {
  if (const auto* number = std::get_if<double>(&value)) return Any(*number);
  if (const auto* text = std::get_if<QString>(&value)) return Any(ToOffice(*text));
  if (const auto* day = std::get_if<std::chrono::sys_days>(&value)) return Any(SerialOf(*day));
  return Any(
      rtl::OUString());  // an empty text leaves the cell empty; no value at all would mark it as an error
}

Sequence<Sequence<Any>> ToSequence(const CellBlock& block) {
  Sequence<Sequence<Any>> rows(static_cast<sal_Int32>(block.size()));
  Sequence<Any>* row = rows.getArray();
  for (const auto& source : block) {
    row->realloc(static_cast<sal_Int32>(source.size()));
    std::transform(source.begin(), source.end(), row->getArray(), ToAny);
    ++row;
  }
  return rows;
}

/// No value at all stands for a formula in error.
CellValue FromAny(const Any& value) {
  double number = 0;
  if (value >>= number) return number;
  rtl::OUString text;
  if (!(value >>= text)) return QStringLiteral("#");
  return text.isEmpty() ? CellValue() : CellValue(FromOffice(text));
}

Reference<css::sheet::XSpreadsheetView> ViewOf(const Reference<css::sheet::XSpreadsheetDocument>& document) {
  const Reference<css::frame::XModel> model(document, UNO_QUERY_THROW);
  return Reference<css::sheet::XSpreadsheetView>(model->getCurrentController(), UNO_QUERY_THROW);
}

}  // namespace

OfficeWorksheet::OfficeWorksheet(std::shared_ptr<OfficeSession> session,
                                 const Reference<css::sheet::XSpreadsheetDocument>& document,
                                 const Reference<css::sheet::XSpreadsheet>& sheet, QString path)
    : session_(std::move(session)), document_(document), sheet_(sheet), path_(std::move(path)) {}

Status OfficeWorksheet::Select() {
  return session_->Ask(Wording{u"Sayfa seçilemedi", u"The sheet could not be selected"}, path_,
                       [&] { ViewOf(document_)->setActiveSheet(sheet_); });
}

Status OfficeWorksheet::SelectCell(int row, int column) {
  return session_->Ask(Wording{u"Hücre seçilemedi", u"The cell could not be selected"}, path_, [&] {
    const Reference<css::view::XSelectionSupplier> view(ViewOf(document_), UNO_QUERY_THROW);
    view->select(Any(sheet_->getCellByPosition(column - 1, row - 1)));
  });
}

Reference<css::table::XCellRange> OfficeWorksheet::Cells(const CellRange& range) const {
  return {sheet_->getCellRangeByPosition(range.firstColumn - 1, range.firstRow - 1, range.lastColumn - 1,
                                         range.lastRow - 1),
          css::uno::UNO_SET_THROW};
}

Status OfficeWorksheet::PutBlock(int row, int column, const CellBlock& block) {
  if (block.empty() || block.front().empty()) return {};
  return session_->Ask(Wording{u"Hücreler yazılamadı", u"The cells could not be written"}, path_, [&] {
    const auto rows = static_cast<int>(block.size());
    const auto columns = static_cast<int>(block.front().size());
    const Reference<css::sheet::XCellRangeData> range(
        Cells({row, column, row + rows - 1, column + columns - 1}), UNO_QUERY_THROW);
    range->setDataArray(ToSequence(block));
    ShowDatesAsDates(row, column, block);
  });
}

Result<CellBlock> OfficeWorksheet::ReadBlock(const CellRange& range) {
  CellBlock block;
  const Status read =
      session_->Ask(Wording{u"Hücreler okunamadı", u"The cells could not be read"}, path_, [&] {
        const Reference<css::sheet::XCellRangeData> data(Cells(range), UNO_QUERY_THROW);
        for (const Sequence<Any>& row : data->getDataArray()) {
          std::transform(row.begin(), row.end(), std::back_inserter(block.emplace_back()), FromAny);
        }
      });
  if (!read) return read.Failure();
  return block;
}

/// Gives columns of dates a date format where the workbook has none for them.
void OfficeWorksheet::ShowDatesAsDates(int row, int column, const CellBlock& block) {
  for (std::size_t i = 0; i < block.front().size(); ++i) {
    if (!std::holds_alternative<std::chrono::sys_days>(block.front()[i])) continue;
    const int at = column + static_cast<int>(i);
    const Reference<css::beans::XPropertySet> cells(
        Cells({row, at, row - 1 + static_cast<int>(block.size()), at}), UNO_QUERY_THROW);
    const Reference<css::util::XNumberFormatsSupplier> supplier(document_, UNO_QUERY_THROW);
    const Reference<css::util::XNumberFormats> formats = supplier->getNumberFormats();
    sal_Int32 key = 0;
    sal_Int16 type = 0;
    if (cells->getPropertyValue(ToOffice("NumberFormat")) >>= key) {
      formats->getByKey(key)->getPropertyValue(ToOffice("Type")) >>= type;
    }
    if ((type & css::util::NumberFormat::DATE) != 0) continue;
    const Reference<css::util::XNumberFormatTypes> types(formats, UNO_QUERY_THROW);
    cells->setPropertyValue(ToOffice("NumberFormat"),
                            Any(types->getStandardFormat(css::util::NumberFormat::DATE, {})));
  }
}

Status OfficeWorksheet::SetProperty(const std::vector<CellRange>& ranges, const char* property,
                                    const Any& value, const Message& what) {
  if (ranges.empty()) return {};
  return session_->Ask(what, path_, [&] {
    const Reference<css::sheet::XCellRangeAddressable> addressable(sheet_, UNO_QUERY_THROW);
    const sal_Int16 sheetNumber = addressable->getRangeAddress().Sheet;
    Sequence<css::table::CellRangeAddress> addresses(static_cast<sal_Int32>(ranges.size()));
    std::transform(ranges.begin(), ranges.end(), addresses.getArray(), [sheetNumber](const CellRange& range) {
      return css::table::CellRangeAddress(sheetNumber, range.firstColumn - 1, range.firstRow - 1,
                                          range.lastColumn - 1, range.lastRow - 1);
    });
    const Reference<css::lang::XMultiServiceFactory> factory(document_, UNO_QUERY_THROW);
    const Reference<css::sheet::XSheetCellRangeContainer> together(
        factory->createInstance(ToOffice("com.sun.star.sheet.SheetCellRanges")), UNO_QUERY_THROW);
    together->addRangeAddresses(addresses, false);
    Reference<css::beans::XPropertySet>(together, UNO_QUERY_THROW)
        ->setPropertyValue(ToOffice(property), value);
  });
}

Status OfficeWorksheet::SetFontColour(const std::vector<CellRange>& ranges, FontColour colour) {
  return SetProperty(ranges, "CharColor", Any(ColourOf(colour)),
                     Wording{u"Yazı rengi verilemedi", u"The font colour could not be set"});
}

Status OfficeWorksheet::SetLineBelow(const std::vector<CellRange>& ranges) {
  css::table::BorderLine2 line;
  line.OuterLineWidth = kMediumLine;
  line.LineWidth = kMediumLine;
  line.LineStyle = css::table::BorderLineStyle::SOLID;
  return SetProperty(ranges, "BottomBorder", Any(line),
                     Wording{u"Kenarlık çizilemedi", u"The border could not be drawn"});
}

Status OfficeWorksheet::MakeTextBlock(const CellRange& range, double heightCm, double points) {
  return session_->Ask(
      Wording{u"Not hücresi biçimlendirilemedi", u"The note's cell could not be laid out"}, path_, [&] {
        const Reference<css::table::XCellRange> cells = Cells(range);
        Reference<css::util::XMergeable>(cells, UNO_QUERY_THROW)->merge(true);
        const Reference<css::beans::XPropertySet> looks(cells, UNO_QUERY_THROW);
        looks->setPropertyValue(ToOffice("IsTextWrapped"), Any(true));
        looks->setPropertyValue(ToOffice("CharHeight"), Any(static_cast<float>(points)));
        const Reference<css::table::XColumnRowRange> lines(cells, UNO_QUERY_THROW);
        const Reference<css::beans::XPropertySet> row(lines->getRows()->getByIndex(0), UNO_QUERY_THROW);
        row->setPropertyValue(ToOffice("Height"), Any(static_cast<sal_Int32>(std::lround(heightCm * 1000))));
      });
}

Status OfficeWorksheet::EmptyFormula(int row, int column) {
  return session_->Ask(Wording{u"Hücre boşaltılamadı", u"The cell could not be emptied"}, path_,
                       [&] { sheet_->getCellByPosition(column - 1, row - 1)->setFormula({}); });
}

Status OfficeWorksheet::ReenterFormulas() {
  return session_->Ask(
      Wording{u"Formüller yeniden girilemedi", u"The formulas could not be entered again"}, path_, [&] {
        const Reference<css::sheet::XCellRangesQuery> query(sheet_, UNO_QUERY_THROW);
        const Reference<css::sheet::XSheetCellRanges> formulas = FormulasOf(query);
        if (!formulas->getRangeAddresses().hasElements()) return;
        const Reference<css::sheet::XCalculatable> calculation(document_, UNO_QUERY_THROW);
        const bool automatic = calculation->isAutomaticCalculationEnabled();
        calculation->enableAutomaticCalculation(false);  // once at the end, not once a formula
        const std::vector<FormattedCells> formatted = FormattedFormulas();
        for (const FormattedCells& cells : formatted) SetNumberFormat(cells.cells, Any(kGeneralFormat));
        // Replacing each equals sign by itself enters every formula anew, all in one call.
        const Reference<css::util::XReplaceable> cells(formulas, UNO_QUERY_THROW);
        const Reference<css::util::XReplaceDescriptor> same(cells->createReplaceDescriptor(),
                                                            css::uno::UNO_SET_THROW);
        same->setSearchString(ToOffice("="));
        same->setReplaceString(ToOffice("="));
        (void)cells->replaceAll(Reference<css::util::XSearchDescriptor>(same, UNO_QUERY_THROW));
        calculation->calculate();  // now, while the formats are away
        for (const FormattedCells& each : formatted) SetNumberFormat(each.cells, each.format);
        calculation->enableAutomaticCalculation(automatic);
      });
}

/// Formulas whose cells have a number format of their own. Such a cell stores its result as a number,
/// whatever the result is, if it had the format when the formula was entered; so the format is taken away
/// meanwhile.
std::vector<OfficeWorksheet::FormattedCells> OfficeWorksheet::FormattedFormulas() const {
  std::vector<FormattedCells> found;
  const Reference<css::container::XIndexAccess> groups(
      Reference<css::sheet::XUniqueCellFormatRangesSupplier>(sheet_, UNO_QUERY_THROW)
          ->getUniqueCellFormatRanges(),
      css::uno::UNO_SET_THROW);
  for (sal_Int32 i = 0; i < groups->getCount(); ++i) {
    const Reference<css::beans::XPropertySet> group(groups->getByIndex(i), UNO_QUERY_THROW);
    const Any format = group->getPropertyValue(ToOffice("NumberFormat"));
    if (format == Any(kGeneralFormat)) continue;
    const auto cells = FormulasOf(Reference<css::sheet::XCellRangesQuery>(group, UNO_QUERY_THROW));
    if (cells->getRangeAddresses().hasElements()) found.push_back({cells, format});
  }
  return found;
}

}  // namespace vesk

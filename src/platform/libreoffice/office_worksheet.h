// A worksheet of a workbook in an office. Ranges go over in one call, formats over one multi-range object.
#pragma once

#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

#include "platform/libreoffice/office_session.h"
#include "platform/spreadsheet.h"

namespace vesk {

class OfficeWorksheet : public Worksheet {
 public:
  OfficeWorksheet(std::shared_ptr<OfficeSession> session,
                  const css::uno::Reference<css::sheet::XSpreadsheetDocument>& document,
                  const css::uno::Reference<css::sheet::XSpreadsheet>& sheet, QString path);

  Status Select() override;
  Status SelectCell(int row, int column) override;
  Status PutBlock(int row, int column, const CellBlock& block) override;
  Result<CellBlock> ReadBlock(const CellRange& range) override;
  Status SetFontColour(const std::vector<CellRange>& ranges, FontColour colour) override;
  Status SetLineBelow(const std::vector<CellRange>& ranges) override;
  Status MakeTextBlock(const CellRange& range, double heightCm, double points) override;
  Status EmptyFormula(int row, int column) override;
  Status ReenterFormulas() override;
  [[nodiscard]] int RowLimit() const override { return 65'536; }

 private:
  Status SetProperty(const std::vector<CellRange>& ranges, const char* property, const css::uno::Any& value,
                     const Message& what);
  [[nodiscard]] css::uno::Reference<css::table::XCellRange> Cells(const CellRange& range) const;
  struct FormattedCells {
    css::uno::Reference<css::sheet::XSheetCellRanges> cells;
    css::uno::Any format;
  };
  [[nodiscard]] std::vector<FormattedCells> FormattedFormulas() const;
  void ShowDatesAsDates(int row, int column, const CellBlock& block);

  std::shared_ptr<OfficeSession> session_;
  css::uno::Reference<css::sheet::XSpreadsheetDocument> document_;
  css::uno::Reference<css::sheet::XSpreadsheet> sheet_;
  QString path_;
};

}  // namespace vesk

// Reads workbooks back through an office of its own, cell by cell, with their colours and borders.
#pragma once

#include <QString>

#include <memory>

#include "platform/libreoffice/office_workbook.h"

namespace vesk::test {

enum class Content { Empty, Number, Text, Formula };

struct Cell {
  Content content = Content::Empty;
  double number = 0;
  QString text;       ///< as the sheet shows it
  int colour = -1;    ///< of the font, 0xRRGGBB
  int lineBelow = 0;  ///< 1/100 mm
};

class WorkbookReader {
 public:
  explicit WorkbookReader(const QString& path);
  [[nodiscard]] bool IsOpen() const { return workbook_ != nullptr; }
  [[nodiscard]] QString Failure() const { return failure_; }

  /// row and column are counted from 1.
  [[nodiscard]] Cell At(const char* sheet, int row, int column) const;
  [[nodiscard]] QString ActiveSheet() const;
  OfficeWorkbook& Book() { return *workbook_; }
  /// Turns the formulas of a range into what they show: the one way to a cell that holds an empty text.
  void MakeEmptyTexts(const char* sheet, const char* range);

 private:
  std::shared_ptr<OfficeSession> session_;
  std::unique_ptr<OfficeWorkbook> workbook_;
  QString failure_;
};

}  // namespace vesk::test

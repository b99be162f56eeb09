// Reads workbooks back through an office of its own, cell by cell.
#pragma once

#include <QString>

#include <memory>

#include "platform/libreoffice/office_workbook.h"

namespace vesk::test {

enum class Content { Empty, Number, Text, Formula };

struct Cell {
  Content content = Content::Empty;
  QString text;  ///< as the sheet shows it
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

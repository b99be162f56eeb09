// A workbook in an office.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

#include "platform/libreoffice/office_session.h"
#include "platform/spreadsheet.h"

namespace vesk {

class OfficeWorkbook : public Workbook {
 public:
  static Result<std::unique_ptr<OfficeWorkbook>> Load(std::shared_ptr<OfficeSession> session,
                                                      const QString& path, Macros macros);
  ~OfficeWorkbook() override;
  OfficeWorkbook(const OfficeWorkbook&) = delete;
  OfficeWorkbook& operator=(const OfficeWorkbook&) = delete;

  Result<std::unique_ptr<Worksheet>> Sheet(const QString& name) override;
  Status ShowWindow() override;
  Status RunMacro(const QString& name) override;
  Status Save() override;
  Status Close() override;

  [[nodiscard]] const css::uno::Reference<css::sheet::XSpreadsheetDocument>& Document() const {
    return document_;
  }

 private:
  OfficeWorkbook(std::shared_ptr<OfficeSession> session, const QString& path);

  std::shared_ptr<OfficeSession> session_;
  QString path_;
  css::uno::Reference<css::sheet::XSpreadsheetDocument> document_;
};

}  // namespace vesk

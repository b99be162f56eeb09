// An office that writes down what it is asked to do, and fails where a test wants it to.
#pragma once

#include <QStringList>

#include "platform/spreadsheet.h"

namespace vesk::test {

class SpreadsheetSteps : public Spreadsheet {
 public:
  QStringList steps;
  QStringList failing;  ///< steps that fail, in the words of steps

  bool HasOpenWindow() override { return false; }
  Result<std::unique_ptr<Workbook>> Open(const QString& path) override {
    if (const Status done = Do(QStringLiteral("open ") + path); !done) return done.Failure();
    return std::unique_ptr<Workbook>(new Book(*this));
  }
  Status Show() override { return Do(QStringLiteral("show")); }
  Status Recalculate() override { return Do(QStringLiteral("recalculate")); }
  Status Quit() override { return Do(QStringLiteral("quit")); }

 private:
  class Page : public Worksheet {
   public:
    Page(SpreadsheetSteps& office, QString name) : office_(office), name_(std::move(name)) {}
    Status Select() override { return office_.Do(QStringLiteral("select ") + name_); }
    Status SelectCell(int, int) override { return {}; }
    Status PutValue(int, int, const CellValue&) override { return {}; }
    Status PutBlock(int, int, const CellBlock&) override { return {}; }
    Status SetFontColourIndex(const std::vector<CellRange>&, int) override { return {}; }
    Status SetBorder(const std::vector<CellRange>&, Border, BorderWeight) override { return {}; }
    Status SetFormulaR1C1(int, int, const QString&) override { return {}; }
    [[nodiscard]] int RowLimit() const override { return 65536; }

   private:
    SpreadsheetSteps& office_;
    QString name_;
  };

  class Book : public Workbook {
   public:
    explicit Book(SpreadsheetSteps& office) : office_(office) {}
    Result<std::unique_ptr<Worksheet>> Sheet(const QString& name) override {
      if (const Status done = office_.Do(QStringLiteral("sheet ") + name); !done) return done.Failure();
      return std::unique_ptr<Worksheet>(new Page(office_, name));
    }
    Status ShowWindow() override { return office_.Do(QStringLiteral("window")); }
    Status RunMacro(const QString& name) override { return office_.Do(QStringLiteral("macro ") + name); }
    Status Save() override { return office_.Do(QStringLiteral("save")); }
    Status Close() override { return office_.Do(QStringLiteral("close")); }

   private:
    SpreadsheetSteps& office_;
  };

  Status Do(const QString& step) {
    steps += step;
    if (failing.contains(step))
      return Error{QStringLiteral("Refused"), step.section(QLatin1Char(' '), 1), {}};
    return {};
  }
};

}  // namespace vesk::test

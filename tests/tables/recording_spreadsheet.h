// A spreadsheet application that keeps what is written into it, and refuses the steps that a test names.
#pragma once

#include <QFile>
#include <QStringList>

#include <map>
#include <utility>

#include "platform/spreadsheet.h"

namespace vesk::test {

struct RecordedSheet {
  std::map<std::pair<int, int>, CellValue> cells;  ///< (row, column); only what is not empty
  std::vector<CellRange> formatted;
  int calls = 0;
};

class RecordingSpreadsheet : public Spreadsheet {
 public:
  std::map<QString, RecordedSheet> sheets{
      {QStringLiteral("Saatlik"), {}}, {QStringLiteral("Gunluk"), {}}, {QStringLiteral("Aylik"), {}}};
  QStringList steps;
  QStringList failing;  ///< beginnings of steps that fail
  bool windowIsOpen = false;
  int rowLimit = 65'536;

  bool HasOpenWindow() override { return windowIsOpen; }
  Result<std::unique_ptr<Workbook>> Open(const QString& path, Macros macros) override {
    const QString step = QLatin1String(macros == Macros::MayRun ? "openMacros " : "open ");
    if (const Status done = Do(step + path); !done) return done.Failure();
    return std::unique_ptr<Workbook>(new Book(*this, path));
  }
  Status Show() override { return Do(QStringLiteral("show")); }
  Status Recalculate() override { return Do(QStringLiteral("recalculate")); }
  Status Quit() override { return Do(QStringLiteral("quit")); }

 private:
  class Page : public Worksheet {
   public:
    Page(RecordingSpreadsheet& office, QString name) : office_(office), name_(std::move(name)) {}
    Status Select() override { return office_.Do(QStringLiteral("select ") + name_); }
    Status SelectCell(int, int) override { return {}; }
    Status PutBlock(int row, int column, const CellBlock& block) override {
      if (const Status done = office_.Do(QStringLiteral("put ") + name_); !done) return done;
      ++Mine().calls;
      for (std::size_t i = 0; i < block.size(); ++i) {
        for (std::size_t j = 0; j < block[i].size(); ++j) {
          const std::pair at{row + static_cast<int>(i), column + static_cast<int>(j)};
          Mine().cells.erase(at);
          if (block[i][j] != CellValue()) Mine().cells[at] = block[i][j];
        }
      }
      return {};
    }
    Result<CellBlock> ReadBlock(const CellRange& range) override {
      CellBlock block;
      for (int row = range.firstRow; row <= range.lastRow; ++row) {
        block.emplace_back();
        for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
          const auto found = Mine().cells.find({row, column});
          const CellValue value = found == Mine().cells.end() ? CellValue() : found->second;
          const auto* day = std::get_if<std::chrono::sys_days>(&value);
          block.back().push_back(day == nullptr ? value : SerialOf(*day));
        }
      }
      return block;
    }
    Status SetFontColour(const std::vector<CellRange>& ranges, FontColour /*colour*/) override {
      return Format(ranges);
    }
    Status SetLineBelow(const std::vector<CellRange>& ranges) override { return Format(ranges); }
    Status MakeTextBlock(const CellRange& range, double, double) override { return Format({range}); }
    Status EmptyFormula(int row, int column) override {
      return office_.Do(QStringLiteral("empty %1 %2,%3").arg(name_).arg(row).arg(column));
    }
    Status ReenterFormulas() override { return office_.Do(QStringLiteral("reenter ") + name_); }
    [[nodiscard]] int RowLimit() const override { return office_.rowLimit; }

   private:
    RecordedSheet& Mine() { return office_.sheets[name_]; }
    Status Format(const std::vector<CellRange>& ranges) {
      Mine().formatted.insert(Mine().formatted.end(), ranges.begin(), ranges.end());
      return office_.Do(QStringLiteral("format ") + name_);
    }
    RecordingSpreadsheet& office_;
    QString name_;
  };

  class Book : public Workbook {
   public:
    Book(RecordingSpreadsheet& office, QString path) : office_(office), path_(std::move(path)) {}
    Result<std::unique_ptr<Worksheet>> Sheet(const QString& name) override {
      if (!office_.sheets.contains(name))
        return Error{Message::Verbatim(QStringLiteral("No sheet")), path_, Message::Verbatim(name)};
      return std::unique_ptr<Worksheet>(new Page(office_, name));
    }
    Status ShowWindow() override { return office_.Do(QStringLiteral("window")); }
    Status RunMacro(const QString& name) override { return office_.Do(QStringLiteral("macro ") + name); }
    Status Save() override {
      if (const Status done = office_.Do(QStringLiteral("save ") + path_); !done) return done;
      QFile file(path_);
      if (!file.open(QIODevice::WriteOnly) || file.write("saved") != 5)
        return Error{{}, path_, Message::Verbatim(file.errorString())};
      return {};
    }
    Status Close() override { return office_.Do(QStringLiteral("close ") + path_); }

   private:
    RecordingSpreadsheet& office_;
    QString path_;
  };

  Status Do(const QString& step) {
    steps += step;
    for (const QString& refused : std::as_const(failing)) {
      if (!step.startsWith(refused)) continue;
      const QString path = step.section(QLatin1Char(' '), 1);
      return Error{Message::Verbatim(QStringLiteral("Refused")),
                   path.startsWith(QLatin1Char('/')) ? path : QString(), Message::Verbatim(refused)};
    }
    return {};
  }
};

}  // namespace vesk::test

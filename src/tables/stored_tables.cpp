#include "tables/stored_tables.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vesk {

std::vector<QString> ListStoredTables(const QString& directory) {
  if (directory.isEmpty()) return {};
  const QStringList names =
      QDir(directory).entryList({QStringLiteral("*.xls")}, QDir::Files, QDir::Name | QDir::IgnoreCase);
  return {names.begin(), names.end()};
}

bool MoveToDesktopTrash(const QString& path) {
  return QFile::moveToTrash(path);
}

Result<Removal> RemoveStoredTable(const QString& path, const TrashFunction& trash) {
  if (trash(path)) return Removal::Trashed;
  QFile file(path);
  if (file.remove()) return Removal::Deleted;
  return Error{QStringLiteral("The workbook could not be deleted"), path, file.errorString()};
}

Status OpenStoredTable(Spreadsheet& office, const QString& path) {
  if (!QFileInfo(path).isFile()) {
    return Error{QStringLiteral("The workbook could not be opened"), path, QStringLiteral("No such file")};
  }
  Result<std::unique_ptr<Workbook>> workbook = office.Open(path, Macros::AsTheOfficeSays);
  if (!workbook) return workbook.Failure();
  static_cast<void>(office.Show());  // a step that fails here leaves the workbook open all the same
  static_cast<void>(workbook.Value()->ShowWindow());
  Result<std::unique_ptr<Worksheet>> daily = workbook.Value()->Sheet(QStringLiteral("Gunluk"));
  if (daily) static_cast<void>(daily.Value()->Select());
  return {};
}

}  // namespace vesk

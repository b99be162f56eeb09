#include "tables/stored_tables.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <cerrno>

#include "platform/system_reason.h"
#include "tables/table_cells.h"

namespace vesk {
namespace {

/// Trash folders: "Trash" of the home, ".Trash-<user>" or ".Trash/<user>" of another volume.
bool LiesInTrash(const QString& path) {
  static const QRegularExpression kTrash(
      QStringLiteral("^/(.*/)?(Trash|\\.Trash-\\d+|\\.Trash/\\d+)/files/[^/]+$"));
  return kTrash.match(path).hasMatch() && QFileInfo::exists(path);
}

}  // namespace

std::vector<QString> ListStoredTables(const QString& directory) {
  if (directory.isEmpty()) return {};
  const QStringList names =
      QDir(directory).entryList({QStringLiteral("*.xls")}, QDir::Files, QDir::Name | QDir::IgnoreCase);
  return {names.begin(), names.end()};
}

bool MoveToDesktopTrash(const QString& path) {
  // A home without the folder that holds the trash would make the current folder take its place.
  if (!QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))) return false;
  QString where;
  if (!QFile::moveToTrash(path, &where)) return false;
  if (LiesInTrash(where)) return true;
  (void)QFile::rename(where, path);  // the caller sees whether it is back
  return false;
}

Result<Removal> RemoveStoredTable(const QString& path, const TrashFunction& trash) {
  if (trash(path)) return Removal::Trashed;
  QFile file(path);
  if (file.remove()) return Removal::Deleted;
  return Error{Wording{u"Tablo dosyası silinemedi", u"The workbook could not be deleted"}, path,
               SystemReason(file.errorString())};
}

Status OpenStoredTable(Spreadsheet& office, const QString& path) {
  if (!QFileInfo(path).isFile()) {
    return Error{Wording{u"Tablo dosyası açılamadı", u"The workbook could not be opened"}, path,
                 SystemReason(ENOENT)};
  }
  Result<std::unique_ptr<Workbook>> workbook = office.Open(path, Macros::AsTheOfficeSays);
  if (!workbook) return workbook.Failure();
  static_cast<void>(office.Show());  // a step that fails here leaves the workbook open all the same
  static_cast<void>(workbook.Value()->ShowWindow());
  Result<std::unique_ptr<Worksheet>> daily = workbook.Value()->Sheet(kDailySheet);
  if (daily) static_cast<void>(daily.Value()->Select());
  return {};
}

}  // namespace vesk

// Makes the empty station register that a first start copies: make_station_template FILE
#include <QCoreApplication>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <cstdio>

namespace {

/// The table as every register has it. Empty text on success, else the reason.
QString MakeTable(const QString& path) {
  QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
  database.setDatabaseName(path);
  if (!database.open()) return database.lastError().text();
  QSqlQuery query(database);
  // Pages of 4096 bytes and UTF-8, named so that the file is the same wherever it is made.
  for (const QString& sql :
       {QStringLiteral("PRAGMA page_size = 4096"), QStringLiteral("PRAGMA encoding = 'UTF-8'"),
        QStringLiteral("CREATE TABLE IstNoAd (No TEXT, Ad TEXT)")}) {
    if (!query.exec(sql)) return query.lastError().text();
  }
  return {};
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 2) {
    std::fputs("usage: make_station_template FILE\n", stderr);
    return 2;
  }
  const QString& path = arguments[1];
  if (QFile::exists(path) && !QFile::remove(path)) {
    std::fprintf(stderr, "%s cannot be replaced\n", qUtf8Printable(path));
    return 1;
  }
  const QString reason = MakeTable(path);
  if (reason.isEmpty()) return 0;
  std::fprintf(stderr, "%s: %s\n", qUtf8Printable(path), qUtf8Printable(reason));
  return 1;
}

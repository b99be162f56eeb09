#include "stations/register_connection.h"

#include <QUuid>

namespace vesk {
namespace {

constexpr int kBusyMilliseconds = 1000;

/// What the database engine says, in the operators' languages where it is one of its usual reasons.
Message SqlReason(const QString& words) {
  static constexpr Wording kReasons[] = {
      {u"dosya salt okunur", u"attempt to write a readonly database"},
      {u"dosya bozuk", u"database disk image is malformed"},
      {u"dosya başka bir program tarafından kullanılıyor", u"database is locked"},
      {u"disk dolu", u"database or disk is full"},
      {u"disk okuma/yazma hatası", u"disk I/O error"},
      {u"dosya bozuk", u"file is not a database"},
      {u"IstNoAd tablosu yok", u"no such table: IstNoAd"},
      {u"dosya açılamıyor", u"unable to open database file"},
  };
  for (const Wording& reason : kReasons) {
    if (words == QStringView(reason.In(LanguageChoice::English))) return reason;
  }
  return Message::Verbatim(words);
}

}  // namespace

Station StationOf(const QSqlQuery& query) {
  const QVariant number = query.value(1);
  const QVariant name = query.value(2);
  return {query.value(0).toLongLong(), number.toString(), name.toString(), number, name};
}

Result<std::optional<double>> NumberIn(const QSqlQuery& query, int field, const char* table, const char* name,
                                       const QString& path) {
  const QVariant value = query.value(field);
  if (value.isNull()) return std::optional<double>();
  const bool number = value.typeId() == QMetaType::Double || value.typeId() == QMetaType::LongLong;
  if (number) return std::optional(value.toDouble());
  return Error{kReadFailed, path,
               Message(Wording{u"%1 tablosunun %2 alanında \"%3\" var; beklenen bir sayı",
                               u"field %2 of table %1 holds \"%3\"; expected a number"},
                       QString::fromLatin1(table), QString::fromLatin1(name), value.toString())};
}

StationRegister::Connection::Connection(QString path, Access access)
    : path_(std::move(path)), name_(QUuid::createUuid().toString()) {
  QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
  database.setDatabaseName(path_);
  QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(kBusyMilliseconds);
  if (access == Access::ReadOnly) options += QStringLiteral(";QSQLITE_OPEN_READONLY");
  database.setConnectOptions(options);
}

StationRegister::Connection::~Connection() {
  Database().close();
  QSqlDatabase::removeDatabase(name_);
}

StationRegister::Connection::Transaction::~Transaction() {
  QSqlQuery query(connection_.Database());
  if (open_) query.exec(QStringLiteral("ROLLBACK"));
}

Status StationRegister::Connection::Transaction::Begin() {
  QSqlQuery query(connection_.Database());
  Status begun = connection_.Run(query, QStringLiteral("BEGIN IMMEDIATE"), {}, kWriteFailed);
  open_ = begun.Ok();
  return begun;
}

Status StationRegister::Connection::Transaction::Commit() {
  QSqlQuery query(connection_.Database());
  Status committed = connection_.Run(query, QStringLiteral("COMMIT"), {}, kWriteFailed);
  open_ = !committed.Ok();
  return committed;
}

Status StationRegister::Connection::Open() {
  QSqlDatabase database = Database();
  if (!database.open()) return Failure(kOpenFailed, database.lastError());
  QSqlQuery query(database);
  // Naming the columns also proves that the table is there and the file is sound where it matters.
  return Run(query, QStringLiteral("SELECT rowid, No, Ad FROM IstNoAd LIMIT 1"), {}, kOpenFailed);
}

Status StationRegister::Connection::Run(QSqlQuery& query, const QString& sql, const QVariantList& values,
                                        const Wording& what) const {
  query.setForwardOnly(true);
  bool ok = query.prepare(sql);
  for (const QVariant& value : values) query.addBindValue(value);
  ok = ok && query.exec();
  if (!ok) return Failure(what, query.lastError());
  return {};
}

Result<bool> StationRegister::Connection::HasTable(const char* name) const {
  QSqlQuery query(Database());
  const Status run =
      Run(query, QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?"),
          {QString::fromLatin1(name)}, kReadFailed);
  if (!run) return run.Failure();
  return query.next();
}

Result<std::optional<Station>> StationRegister::Connection::RowOf(qint64 key) const {
  QSqlQuery query(Database());
  const Status run =
      Run(query, QStringLiteral("SELECT rowid, No, Ad FROM IstNoAd WHERE rowid = ?"), {key}, kReadFailed);
  if (!run) return run.Failure();
  if (query.next()) return std::optional<Station>(StationOf(query));
  if (query.lastError().isValid()) return Failure(kReadFailed, query.lastError());
  return std::optional<Station>();
}

Error StationRegister::Connection::Failure(const Wording& what, const QSqlError& error) const {
  QString reason = error.databaseText().trimmed();
  if (reason.isEmpty()) reason = error.text().trimmed();
  return {what, path_, SqlReason(reason)};
}

}  // namespace vesk

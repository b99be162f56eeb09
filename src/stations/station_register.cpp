#include "stations/station_register.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

#include <optional>

#include "datafiles/numbers.h"
#include "platform/system_reason.h"
#include "stations/register_connection.h"

namespace vesk {
namespace {

constexpr char kSqliteStart[] = "SQLite format 3";      // the NUL behind it belongs to it
constexpr char kOldEngineStart[] = "\x00\x01\x00\x00";  // a desktop database of the old engine
/// The row of a key that still holds what was read; keys of deleted rows are given out again.
constexpr char kWhereAsRead[] = " WHERE rowid = ? AND No IS ? COLLATE BINARY AND Ad IS ? COLLATE BINARY";
constexpr Wording kOpenFailed{u"İstasyon veri tabanı açılamadı", u"The station register could not be opened"};

/// Why a file is no register, by its first bytes; empty when it may be one.
Message ForeignFormat(QByteArrayView start) {
  if (start.isEmpty()) return Wording{u"dosya boş", u"the file is empty"};
  if (start.startsWith(QByteArrayView(kSqliteStart, sizeof kSqliteStart))) return {};
  if (start.startsWith(QByteArrayView(kOldEngineStart, 4))) {
    return Wording{u"dosya eski masaüstü veri tabanı biçiminde; olduğu gibi bırakıldı",
                   u"the file is a database of the old desktop engine; it is left as it is"};
  }
  return Wording{u"dosya bir SQLite veri tabanı değil; olduğu gibi bırakıldı",
                 u"the file is no SQLite database; it is left as it is"};
}

/// A name of the file's own, as a statement takes it.
QString Quoted(QString name) {
  name.replace(QLatin1Char('"'), QLatin1String("\"\""));
  return QLatin1Char('"') + name + QLatin1Char('"');
}

Status CheckFile(const QString& path) {
  const Message what = kOpenFailed;
  const QFileInfo info(path);
  if (!info.exists()) return Error{what, path, Wording{u"böyle bir dosya yok", u"there is no such file"}};
  if (!info.isFile()) return Error{what, path, Wording{u"bu bir dosya değil", u"it is no file"}};
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return Error{what, path, SystemReason(file.errorString())};
  const Message foreign = ForeignFormat(file.read(sizeof kSqliteStart));
  if (!foreign.IsEmpty()) return Error{what, path, foreign};
  return {};
}

}  // namespace

StationRegister::StationRegister(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)) {}
StationRegister::StationRegister(StationRegister&&) noexcept = default;
StationRegister& StationRegister::operator=(StationRegister&&) noexcept = default;
StationRegister::~StationRegister() = default;

const QString& StationRegister::Path() const {
  return connection_->Path();
}

Result<StationRegister> StationRegister::Open(const QString& path, Access access) {
  if (const Status checked = CheckFile(path); !checked) return checked.Failure();
  auto connection = std::make_unique<Connection>(path, access);
  Status opened = connection->Open();
  // What a killed writer left half done is taken back by the next one that may write, and until then nobody
  // can read: so a reader lets one look at the file first.
  if (!opened && access == Access::ReadOnly && QFile::exists(path + QStringLiteral("-journal"))) {
    if (Connection(path, Access::ReadWrite).Open()) opened = connection->Open();
  }
  if (!opened) return opened.Failure();
  return StationRegister(std::move(connection));
}

Result<std::vector<Station>> StationRegister::Stations() const {
  QSqlQuery query(connection_->Database());
  const Status run = connection_->Run(
      query, QStringLiteral("SELECT rowid, No, Ad FROM IstNoAd ORDER BY rowid"), {}, kReadFailed);
  if (!run) return run.Failure();
  std::vector<Station> stations;
  while (query.next()) {
    stations.push_back(StationOf(query));
  }
  // Stepping can fail half way, for example on a damaged page: a shorter list must not pass for the whole
  // one.
  if (query.lastError().isValid()) return connection_->Failure(kReadFailed, query.lastError());
  return stations;
}

Result<Station> StationRegister::Add(const QString& number, const QString& name) {
  DeletedStation row;
  row.fields = {QStringLiteral("No"), QStringLiteral("Ad")};
  row.values = {number, name};
  return Restore(row);
}

Result<std::optional<Station>> StationRegister::Change(const Station& read, StationField field,
                                                       const QString& text) {
  Connection::Transaction transaction(*connection_);
  if (const Status begun = transaction.Begin(); !begun) return begun.Failure();
  const QString sql = field == StationField::Number ? QStringLiteral("UPDATE IstNoAd SET No = ?")
                                                    : QStringLiteral("UPDATE IstNoAd SET Ad = ?");
  QSqlQuery query(connection_->Database());
  const Status run = connection_->Run(query, sql + QLatin1String(kWhereAsRead),
                                      {text, read.key, read.storedNumber, read.storedName}, kWriteFailed);
  if (!run) return run.Failure();
  if (query.numRowsAffected() != 1) return std::optional<Station>();
  if (field == StationField::Number) {
    if (const Status moved = MoveBelongings(read.number, text); !moved) return moved.Failure();
  }
  Result<std::optional<Station>> written = connection_->RowOf(read.key);
  if (!written) return written;
  if (const Status committed = transaction.Commit(); !committed) return committed.Failure();
  return written;
}

Result<std::optional<DeletedStation>> StationRegister::Delete(const Station& read) {
  Connection::Transaction transaction(*connection_);
  if (const Status begun = transaction.Begin(); !begun) return begun.Failure();
  const QVariantList asRead{read.key, read.storedNumber, read.storedName};
  DeletedStation deleted{read, {}, {}};
  {
    QSqlQuery row(connection_->Database());
    const Status found = connection_->Run(
        row, QLatin1String("SELECT * FROM IstNoAd") + QLatin1String(kWhereAsRead), asRead, kReadFailed);
    if (!found) return found.Failure();
    if (!row.next()) return std::optional<DeletedStation>();
    const QSqlRecord record = row.record();
    for (int i = 0; i < record.count(); ++i) {
      deleted.fields += record.fieldName(i);
      deleted.values += record.value(i);
    }
  }
  QSqlQuery query(connection_->Database());
  const Status run = connection_->Run(
      query, QLatin1String("DELETE FROM IstNoAd") + QLatin1String(kWhereAsRead), asRead, kWriteFailed);
  if (!run) return run.Failure();
  if (const Status committed = transaction.Commit(); !committed) return committed.Failure();
  return std::optional<DeletedStation>(std::move(deleted));
}

Result<Station> StationRegister::Restore(const DeletedStation& deleted) {
  Connection::Transaction transaction(*connection_);
  if (const Status begun = transaction.Begin(); !begun) return begun.Failure();
  QStringList fields;
  for (const QString& field : deleted.fields) fields += Quoted(field);
  QVariantList values = deleted.values;
  if (deleted.station.key != 0) {
    const Result<std::optional<Station>> other = connection_->RowOf(deleted.station.key);
    if (!other) return other.Failure();
    if (!*other) {
      fields += QStringLiteral("rowid");
      values += deleted.station.key;
    }
  }
  const QStringList places(fields.size(), QStringLiteral("?"));
  QSqlQuery query(connection_->Database());
  const Status run = connection_->Run(query,
                                      QStringLiteral("INSERT INTO IstNoAd (%1) VALUES (%2)")
                                          .arg(fields.join(QLatin1Char(',')), places.join(QLatin1Char(','))),
                                      values, kWriteFailed);
  if (!run) return run.Failure();
  const Result<std::optional<Station>> written = connection_->RowOf(query.lastInsertId().toLongLong());
  if (!written) return written.Failure();
  if (const Status committed = transaction.Commit(); !committed) return committed.Failure();
  return written->value_or(Station());
}

Status StationRegister::SetPatience(std::chrono::milliseconds patience) {
  QSqlQuery query(connection_->Database());
  return connection_->Run(query, QStringLiteral("PRAGMA busy_timeout = %1").arg(patience.count()), {},
                          kReadFailed);
}

Result<qint64> StationRegister::Version() const {
  QSqlQuery query(connection_->Database());
  const Status run = connection_->Run(query, QStringLiteral("PRAGMA data_version"), {}, kReadFailed);
  if (!run) return run.Failure();
  if (!query.next()) return connection_->Failure(kReadFailed, query.lastError());
  return query.value(0).toLongLong();
}

Result<QString> StationRegister::LookupStationName(const QString& number) const {
  QSqlQuery query(connection_->Database());
  // A number field of another maker's register may be numeric; then the given text is compared by its value.
  const std::optional<double> value = ReadWholeNumber(number);
  const Status run = connection_->Run(
      query,
      QStringLiteral("SELECT Ad FROM IstNoAd WHERE No = ? OR (typeof(No) IN ('integer', 'real') AND No = ?) "
                     "ORDER BY rowid LIMIT 1"),
      {number, value ? QVariant(*value) : QVariant(QMetaType::fromType<double>())}, kReadFailed);
  if (!run) return run.Failure();
  if (query.next()) return query.value(0).toString();
  if (query.lastError().isValid()) return connection_->Failure(kReadFailed, query.lastError());

  QSqlQuery any(connection_->Database());
  const Status counted =
      connection_->Run(any, QStringLiteral("SELECT 1 FROM IstNoAd LIMIT 1"), {}, kReadFailed);
  if (!counted) return counted.Failure();
  return any.next() ? QString() : QStringLiteral("-");
}

Result<StationRegister> OpenStationDatabase(const QString& path) {
  return StationRegister::Open(path);
}

Result<std::vector<Station>> OpenStationTable(const StationRegister& stations) {
  return stations.Stations();
}

Result<QString> LookupStationName(const QString& path, const QString& number) {
  const auto stations = StationRegister::Open(path, StationRegister::Access::ReadOnly);
  if (!stations) return stations.Failure();
  return stations->LookupStationName(number);
}

}  // namespace vesk

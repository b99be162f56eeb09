// Gaugings of stations, their catchments and rating curves in the register: tables of their own, so that
// programs that know only numbers and names go on with the file as before.
#include <QSqlRecord>

#include "datafiles/dates.h"
#include "datafiles/gauging_fields.h"
#include "stations/register_connection.h"

namespace vesk {
namespace {

constexpr char kMakeFacts[] =
    "CREATE TABLE IF NOT EXISTS IstDebi (No TEXT COLLATE NOCASE PRIMARY KEY, HavzaKm2 REAL, Egri TEXT)";
// AUTOINCREMENT: the key of a deleted gauging goes to no other, so that a change never meets a stranger.
constexpr char kMakeGaugings[] =
    "CREATE TABLE IF NOT EXISTS IstOlcum (Sira INTEGER PRIMARY KEY AUTOINCREMENT, No TEXT COLLATE NOCASE NOT "
    "NULL, Zaman TEXT, SeviyeCm REAL, DebiM3s REAL NOT NULL, BelirsizlikYuzde REAL, Yontem TEXT, Ekip TEXT, "
    "Aciklama TEXT, Kullan INTEGER NOT NULL)";
constexpr char kFields[] = "Sira, Zaman, SeviyeCm, DebiM3s, BelirsizlikYuzde, Yontem, Ekip, Aciklama, Kullan";

constexpr Wording kFactsFault{u"havza alanı: beklenen 0'dan büyük, en çok 10000000 olan bir sayı (km2)",
                              u"catchment area: expected a number above 0, at most 10000000 (km2)"};

/// "2023-10-05 14:30": sorts as text, and reads so in any program.
QString TimeText(DateTime time) {
  const QString shown = DateTimeText(time);
  return QStringLiteral("%1-%2-%3%4").arg(shown.mid(6, 4), shown.mid(3, 2), shown.left(2), shown.mid(10));
}

QVariant StoredTime(const Gauging& gauging) {
  return gauging.time ? QVariant(TimeText(*gauging.time)) : QVariant(QMetaType::fromType<QString>());
}

/// In the order of kFields, the key left out.
QVariantList ValuesOf(const Gauging& gauging) {
  return {
      StoredTime(gauging), Stored(gauging.levelCm), gauging.dischargeM3s, Stored(gauging.uncertaintyPercent),
      gauging.method,      gauging.party,           gauging.remark,       gauging.used ? 1 : 0};
}

/// What is wrong in a row; empty when the gauging was taken.
Result<StoredGauging> GaugingIn(const QSqlQuery& query, const QString& path) {
  StoredGauging stored{query.value(0).toLongLong(), {}};
  Gauging& gauging = stored.gauging;
  const auto at = [&](const Message& what) {
    return Error{
        kReadFailed, path,
        Message(Wording{u"IstOlcum tablosu, satır %1: %2", u"table IstOlcum, row %1: %2"}, stored.key, what)};
  };
  const auto level = NumberIn(query, 2, "IstOlcum", "SeviyeCm", path);
  const auto discharge = NumberIn(query, 3, "IstOlcum", "DebiM3s", path);
  const auto uncertainty = NumberIn(query, 4, "IstOlcum", "BelirsizlikYuzde", path);
  for (const auto* number : {&level, &discharge, &uncertainty}) {
    if (!*number) return at(number->Failure().reason);
  }
  const QString time = query.value(1).toString();
  if (const Message fault = TakeField(gauging, GaugingField::Time, time); !fault.IsEmpty())
    return at(Message(Wording{u"Zaman: \"%1\"; %2", u"Zaman: \"%1\"; %2"}, time, fault));
  gauging.levelCm = *level;
  gauging.dischargeM3s = discharge->value_or(0);
  gauging.uncertaintyPercent = *uncertainty;
  gauging.method = query.value(5).toString();
  gauging.party = query.value(6).toString();
  gauging.remark = query.value(7).toString();
  gauging.used = query.value(8).toInt() != 0;
  if (const Message fault = GaugingFault(gauging); !fault.IsEmpty()) return at(fault);
  return stored;
}

}  // namespace

Result<StationFacts> StationRegister::FactsOf(const QString& number) const {
  const auto present = connection_->HasTable("IstDebi");
  if (!present) return present.Failure();
  StationFacts facts;
  if (!*present) return facts;
  QSqlQuery query(connection_->Database());
  const Status run = connection_->Run(
      query, QStringLiteral("SELECT HavzaKm2, Egri FROM IstDebi WHERE No = ?"), {number}, kReadFailed);
  if (!run) return run.Failure();
  if (query.next()) {
    const auto area = NumberIn(query, 0, "IstDebi", "HavzaKm2", Path());
    if (!area) return area.Failure();
    if (*area && !(**area > 0 && **area <= kMostCatchmentKm2)) return Error{kReadFailed, Path(), kFactsFault};
    facts = {*area, query.value(1).toString()};
  }
  if (query.lastError().isValid()) return connection_->Failure(kReadFailed, query.lastError());
  return facts;
}

Result<bool> StationRegister::SetFacts(const QString& number, const StationFacts& read,
                                       const StationFacts& facts) {
  if (facts.catchmentKm2 && !(*facts.catchmentKm2 > 0 && *facts.catchmentKm2 <= kMostCatchmentKm2))
    return Error{kWriteFailed, Path(), kFactsFault};
  Connection::Transaction transaction(*connection_);
  if (const Status begun = transaction.Begin(); !begun) return begun.Failure();
  const auto present = FactsOf(number);
  if (!present) return present.Failure();
  if (*present != read) return false;
  QSqlQuery query(connection_->Database());
  Status written = connection_->Run(query, QLatin1String(kMakeFacts), {}, kWriteFailed);
  if (written) {
    written = connection_->Run(
        query, QStringLiteral("INSERT OR REPLACE INTO IstDebi (No, HavzaKm2, Egri) VALUES (?, ?, ?)"),
        {number, Stored(facts.catchmentKm2), facts.curve}, kWriteFailed);
  }
  if (!written) return written.Failure();
  if (const Status committed = transaction.Commit(); !committed) return committed.Failure();
  return true;
}

Result<std::vector<StoredGauging>> StationRegister::GaugingsOf(const QString& number) const {
  const auto present = connection_->HasTable("IstOlcum");
  if (!present) return present.Failure();
  std::vector<StoredGauging> gaugings;
  if (!*present) return gaugings;
  QSqlQuery query(connection_->Database());
  const Status run = connection_->Run(
      query,
      QStringLiteral("SELECT %1 FROM IstOlcum WHERE No = ? ORDER BY Zaman IS NULL, Zaman, Sira")
          .arg(QLatin1String(kFields)),
      {number}, kReadFailed);
  if (!run) return run.Failure();
  while (query.next()) {
    auto gauging = GaugingIn(query, Path());
    if (!gauging) return gauging.Failure();
    gaugings.push_back(*std::move(gauging));
  }
  if (query.lastError().isValid()) return connection_->Failure(kReadFailed, query.lastError());
  return gaugings;
}

/// Within a transaction. False when the row is not as it was read.
Result<bool> StationRegister::MakeGaugingChange(const QString& number, GaugingChange& change) {
  QSqlQuery query(connection_->Database());
  if (change.before) {
    const Status found = connection_->Run(
        query,
        QStringLiteral("SELECT %1 FROM IstOlcum WHERE Sira = ? AND No = ?").arg(QLatin1String(kFields)),
        {change.before->key, number}, kReadFailed);
    if (!found) return found.Failure();
    if (!query.next()) return false;
    const auto present = GaugingIn(query, Path());
    if (!present) return present.Failure();
    if (*present != *change.before) return false;
    query.finish();
    const Status deleted = connection_->Run(query, QStringLiteral("DELETE FROM IstOlcum WHERE Sira = ?"),
                                            {change.before->key}, kWriteFailed);
    if (!deleted) return deleted.Failure();
  }
  if (!change.after) return true;
  if (change.before) change.after->key = change.before->key;
  qint64& key = change.after->key;
  QVariantList values{key == 0 ? QVariant(QMetaType::fromType<qint64>()) : QVariant(key)};
  values += ValuesOf(change.after->gauging);
  values += number;
  const Status added =
      connection_->Run(query,
                       QStringLiteral("INSERT INTO IstOlcum (%1, No) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                           .arg(QLatin1String(kFields)),
                       values, kWriteFailed);
  if (!added) return added.Failure();
  key = query.lastInsertId().toLongLong();
  return true;
}

/// Within a transaction, behind a change of a station's number.
Status StationRegister::MoveBelongings(const QString& from, const QString& to) {
  const auto has = [this](const QString& table, const QString& number) -> Result<bool> {
    QSqlQuery query(connection_->Database());
    const Status run = connection_->Run(
        query, QStringLiteral("SELECT 1 FROM %1 WHERE No = ? COLLATE NOCASE LIMIT 1").arg(table), {number},
        kReadFailed);
    if (!run) return run.Failure();
    return query.next();
  };
  const auto other = has(QStringLiteral("IstNoAd"), from);
  if (!other) return other.Failure();
  if (from.isEmpty() || to.isEmpty() || *other) return {};
  for (const char* table : {"IstSinir", "IstDebi", "IstOlcum"}) {
    const auto present = connection_->HasTable(table);
    if (!present) return present.Failure();
    if (!*present) continue;
    const auto taken = has(QLatin1String(table), to);
    if (!taken) return taken.Failure();
    if (*taken) continue;
    QSqlQuery query(connection_->Database());
    const Status moved =
        connection_->Run(query, QStringLiteral("UPDATE %1 SET No = ? WHERE No = ?").arg(QLatin1String(table)),
                         {to, from}, kWriteFailed);
    if (!moved) return moved;
  }
  return {};
}

Result<std::optional<std::vector<GaugingChange>>> StationRegister::ChangeGaugings(
    const QString& number, std::vector<GaugingChange> changes) {
  for (const GaugingChange& change : changes) {
    const Message fault = change.after ? GaugingFault(change.after->gauging) : Message();
    if (!fault.IsEmpty()) return Error{kWriteFailed, Path(), fault};
  }
  Connection::Transaction transaction(*connection_);
  if (const Status begun = transaction.Begin(); !begun) return begun.Failure();
  {
    QSqlQuery query(connection_->Database());
    const Status made = connection_->Run(query, QLatin1String(kMakeGaugings), {}, kWriteFailed);
    if (!made) return made.Failure();
  }
  for (GaugingChange& change : changes) {
    const auto done = MakeGaugingChange(number, change);
    if (!done) return done.Failure();
    if (!*done) return std::optional<std::vector<GaugingChange>>();
  }
  if (const Status committed = transaction.Commit(); !committed) return committed.Failure();
  return std::optional(std::move(changes));
}

Result<StationFacts> LookupStationFacts(const QString& path, const QString& number) {
  const auto stations = StationRegister::Open(path, StationRegister::Access::ReadOnly);
  if (!stations) return stations.Failure();
  return stations->FactsOf(number);
}

}  // namespace vesk

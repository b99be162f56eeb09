// Limits of stations in the register: a table of their own, so that programs that know only numbers and names
// go on with the file as before.
#include <array>

#include "datafiles/numbers.h"
#include "stations/register_connection.h"

namespace vesk {
namespace {

constexpr char kMakeTable[] =
    "CREATE TABLE IF NOT EXISTS IstSinir (No TEXT COLLATE NOCASE PRIMARY KEY, SicramaCm REAL, HizCmSaat "
    "REAL, "
    "DuzSaat REAL, DuzCm REAL, EnDusukCm REAL, EnYuksekCm REAL)";
constexpr char kFields[] = "SicramaCm, HizCmSaat, DuzSaat, DuzCm, EnDusukCm, EnYuksekCm";
constexpr std::array<const char*, 6> kFieldNames = {"SicramaCm", "HizCmSaat", "DuzSaat",
                                                    "DuzCm",     "EnDusukCm", "EnYuksekCm"};

Result<std::optional<StationLimits>> LimitsIn(const QSqlQuery& query, const QString& path) {
  std::array<std::optional<double>, kFieldNames.size()> fields;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto field = NumberIn(query, static_cast<int>(i), "IstSinir", kFieldNames[i], path);
    if (!field) return field.Failure();
    fields[i] = *field;
  }
  return std::optional(StationLimits{.spikeCm = fields[0],
                                     .rateCmPerHour = fields[1],
                                     .flatHours = fields[2],
                                     .flatCm = fields[3].value_or(0),
                                     .lowestCm = fields[4],
                                     .highestCm = fields[5]});
}

}  // namespace

Result<std::optional<StationLimits>> StationRegister::LimitsOf(const QString& number) const {
  const auto present = connection_->HasTable("IstSinir");
  if (!present) return present.Failure();
  if (!*present) return std::optional<StationLimits>();
  QSqlQuery query(connection_->Database());
  const Status run = connection_->Run(
      query, QStringLiteral("SELECT %1 FROM IstSinir WHERE No = ?").arg(QLatin1String(kFields)), {number},
      kReadFailed);
  if (!run) return run.Failure();
  if (query.next()) return LimitsIn(query, Path());
  if (query.lastError().isValid()) return connection_->Failure(kReadFailed, query.lastError());
  return std::optional<StationLimits>();
}

Result<bool> StationRegister::SetLimits(const QString& number, const std::optional<StationLimits>& read,
                                        const std::optional<StationLimits>& limits) {
  Connection::Transaction transaction(*connection_);
  if (const Status begun = transaction.Begin(); !begun) return begun.Failure();
  const auto present = LimitsOf(number);
  if (!present) return present.Failure();
  if (*present != read) return false;
  QSqlQuery query(connection_->Database());
  Status written = connection_->Run(query, QLatin1String(kMakeTable), {}, kWriteFailed);
  if (written)
    written =
        connection_->Run(query, QStringLiteral("DELETE FROM IstSinir WHERE No = ?"), {number}, kWriteFailed);
  if (written && limits) {
    const QVariantList values{
        number,         Stored(limits->spikeCm),  Stored(limits->rateCmPerHour), Stored(limits->flatHours),
        limits->flatCm, Stored(limits->lowestCm), Stored(limits->highestCm)};
    written = connection_->Run(query,
                               QStringLiteral("INSERT INTO IstSinir (No, %1) VALUES (?, ?, ?, ?, ?, ?, ?)")
                                   .arg(QLatin1String(kFields)),
                               values, kWriteFailed);
  }
  if (!written) return written.Failure();
  if (const Status committed = transaction.Commit(); !committed) return committed.Failure();
  return true;
}

Result<std::optional<StationLimits>> LookupStationLimits(const QString& path, const QString& number) {
  const auto stations = StationRegister::Open(path, StationRegister::Access::ReadOnly);
  if (!stations) return stations.Failure();
  return stations->LimitsOf(number);
}

}  // namespace vesk

// The station register: a small SQLite database of station numbers and names.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "datafiles/gauging.h"
#include "datafiles/station_limits.h"
#include "platform/result.h"

namespace vesk {

/// One row of table IstNoAd. A name that is null reads as empty.
struct Station {
  qint64 key = 0;  ///< identifies the row for changes and deletion; grows in stored order; given out again
  QString number;
  QString name;
  QVariant storedNumber;  ///< the fields as they were read: what a change or deletion takes for granted
  QVariant storedName;
};

/// A row that was deleted, with every field of its own, so that it can come back.
struct DeletedStation {
  Station station;
  QStringList fields;
  QVariantList values;
};

enum class StationField { Number, Name };

/// What discharges of a station take beside its gaugings.
struct StationFacts {
  std::optional<double> catchmentKm2 = {};  ///< area of the catchment, above 0
  QString curve = {};                       ///< path of its rating curve as it was given; empty: none

  bool operator==(const StationFacts&) const = default;
};
inline constexpr double kMostCatchmentKm2 = 1e7;  ///< the largest river's is 7e6

/// A gauging in its row of the register.
struct StoredGauging {
  qint64 key = 0;  ///< 0: not stored yet
  Gauging gauging;

  bool operator==(const StoredGauging&) const = default;
};

/// What is to become of a gauging. Nothing before: it is added. Nothing after: it is deleted. Turned round
/// it takes itself back.
struct GaugingChange {
  std::optional<StoredGauging> before = {}, after = {};
};

/// An open register. Rows come and go in stored order; two rows may have the same number. Others may work on
/// the same file: a change is made only to a row that still holds what was read.
class StationRegister {
 public:
  enum class Access { ReadOnly, ReadWrite };

  /// Fails for a file that is missing, no SQLite database (named as one of the old desktop engine when it is
  /// one, and left alone), corrupt, locked, or without table IstNoAd. Never creates a file.
  static Result<StationRegister> Open(const QString& path, Access access = Access::ReadWrite);

  StationRegister(StationRegister&&) noexcept;
  StationRegister& operator=(StationRegister&&) noexcept;
  ~StationRegister();

  [[nodiscard]] const QString& Path() const;
  [[nodiscard]] Result<std::vector<Station>> Stations() const;
  /// Appends behind the last row; the new row as it is stored.
  Result<Station> Add(const QString& number, const QString& name);
  /// Writes one field and no other; with a number that no other row has, its limits, gaugings, catchment and
  /// curve go along, unless the new number has some already. The row as it is stored then; nothing, and no
  /// change, when the row is gone or no longer holds what was read.
  Result<std::optional<Station>> Change(const Station& read, StationField field, const QString& text);
  /// Nothing, and no deletion, when the row is gone or no longer holds what was read.
  Result<std::optional<DeletedStation>> Delete(const Station& read);
  /// Puts a deleted row back, in its place unless another row has taken that.
  Result<Station> Restore(const DeletedStation& deleted);

  /// What an office takes for ordinary at the station of that number; nothing when nobody has said. An error
  /// names a field that holds something else than a number.
  [[nodiscard]] Result<std::optional<StationLimits>> LimitsOf(const QString& number) const;
  /// Keeps them, in a table of their own that is made when it is not there; no limits: forgets them. read:
  /// what was read before. False, and no change, when the register holds others by now.
  Result<bool> SetLimits(const QString& number, const std::optional<StationLimits>& read,
                         const std::optional<StationLimits>& limits);

  /// Area of the catchment and rating curve of the station of that number; empty ones when nobody has said.
  [[nodiscard]] Result<StationFacts> FactsOf(const QString& number) const;
  /// Keeps them, in a table of their own as the limits are. False, and no change, when the register holds
  /// others than `read` by now. Fails for an area that is not above 0 and at most kMostCatchmentKm2.
  Result<bool> SetFacts(const QString& number, const StationFacts& read, const StationFacts& facts);

  /// Gaugings of the station of that number, in order of time, those without one last. Fails, naming row and
  /// field, for one that holds what a gauging cannot: a shorter list must not pass for the whole.
  [[nodiscard]] Result<std::vector<StoredGauging>> GaugingsOf(const QString& number) const;
  /// Makes all changes or none. The changes as they were made, with the keys of what was added; nothing, and
  /// no change, when a gauging that is to be changed or deleted no longer holds what was read. A deleted one
  /// gets its own key again when no other has taken it. Fails for a gauging with a fault.
  Result<std::optional<std::vector<GaugingChange>>> ChangeGaugings(const QString& number,
                                                                   std::vector<GaugingChange> changes);

  /// How long a change waits for others who are writing.
  Status SetPatience(std::chrono::milliseconds patience);
  /// A number that is another one after others have changed the file.
  [[nodiscard]] Result<qint64> Version() const;
  /// Name of the first row with that number, text or numeric; "-" when the table is empty; empty when the
  /// number is not there or its name is null.
  [[nodiscard]] Result<QString> LookupStationName(const QString& number) const;

 private:
  class Connection;
  Status MoveBelongings(const QString& from, const QString& to);
  Result<bool> MakeGaugingChange(const QString& number, GaugingChange& change);
  explicit StationRegister(std::unique_ptr<Connection> connection);
  std::unique_ptr<Connection> connection_;
};

/// Opens the register for reading and writing.
Result<StationRegister> OpenStationDatabase(const QString& path);
/// All rows, in stored order.
Result<std::vector<Station>> OpenStationTable(const StationRegister& stations);
/// Opens the register anew, read-only, and looks one number up; cheap enough for every click on a station.
Result<QString> LookupStationName(const QString& path, const QString& number);

/// The same for what discharges take.
Result<StationFacts> LookupStationFacts(const QString& path, const QString& number);

/// The same for a station's limits.
Result<std::optional<StationLimits>> LookupStationLimits(const QString& path, const QString& number);

}  // namespace vesk

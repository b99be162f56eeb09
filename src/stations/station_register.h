// The station register: a small SQLite database of station numbers and names.
#pragma once

#include <QString>

#include <memory>
#include <vector>

#include "platform/result.h"

namespace vesk {

/// One row of table IstNoAd. A name that is null reads as empty.
struct Station {
  qint64 key = 0;  ///< identifies the row for changes and deletion; grows in stored order
  QString number;
  QString name;
};

/// An open register. Rows come and go in stored order; two rows may have the same number.
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
  /// Appends behind the last row; the key of the new row.
  Result<qint64> Add(const QString& number, const QString& name);
  Status Change(const Station& station);
  Status Delete(qint64 key);
  /// Name of the first row with that number, text or numeric; "-" when the table is empty; empty when the
  /// number is not there or its name is null.
  [[nodiscard]] Result<QString> LookupStationName(const QString& number) const;

 private:
  class Connection;
  explicit StationRegister(std::unique_ptr<Connection> connection);
  std::unique_ptr<Connection> connection_;
};

/// Opens the register for reading and writing.
Result<StationRegister> OpenStationDatabase(const QString& path);
/// All rows, in stored order.
Result<std::vector<Station>> OpenStationTable(const StationRegister& stations);
/// Opens the register anew, read-only, and looks one number up; cheap enough for every click on a station.
Result<QString> LookupStationName(const QString& path, const QString& number);

}  // namespace vesk

// What makes discharges of levels: a rating curve.
#pragma once

#include <QByteArray>
#include <QString>

#include "datafiles/discharge.h"
#include "datafiles/reading.h"
#include "platform/wording.h"

namespace vesk {

class DischargeSource {
 public:
  DischargeSource() = default;
  virtual ~DischargeSource() = default;
  DischargeSource(const DischargeSource&) = delete;
  DischargeSource& operator=(const DischargeSource&) = delete;

  /// levelCm: as corrected, at that time.
  [[nodiscard]] virtual DischargeValue At(DateTime time, double levelCm) const = 0;
  /// What the flag of a discharge means here, with its limits; empty without a flag.
  [[nodiscard]] virtual Message Explain(DateTime time, DischargeFlag flag) const = 0;

  /// The file it was read from, and its SHA-256 (lower hexadecimal); empty when it came from none.
  [[nodiscard]] virtual QString Path() const { return {}; }
  [[nodiscard]] virtual QByteArray Sha256() const { return {}; }
  /// For whoever publishes its discharges: file, state, gauged levels of a time.
  [[nodiscard]] virtual Message Describe(Day /*first*/, Day /*last*/) const { return {}; }
};

}  // namespace vesk

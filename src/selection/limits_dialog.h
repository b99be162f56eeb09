// Limits of a station: what its findings are measured against.
#pragma once

#include <QDialog>

#include <array>
#include <optional>

#include "datafiles/station_limits.h"

class QLabel;
class QLineEdit;

namespace vesk {

class Language;

class LimitsDialog : public QDialog {
  Q_OBJECT

 public:
  /// kept: those of the register, nothing when it has none; proposed: by the station's own readings.
  LimitsDialog(const Language& language, const QString& station, const std::optional<StationLimits>& kept,
               const StationLimits& proposed, QWidget* parent);

  /// What is to be kept once the dialog was accepted; nothing: the register is to forget the station's.
  [[nodiscard]] const std::optional<StationLimits>& Chosen() const { return chosen_; }

 private:
  enum Field { Spike, Rate, FlatHours, FlatCm, Lowest, Highest, kFields };

  void Fill(const StationLimits& limits);
  void Take();
  void Forget();
  [[nodiscard]] std::optional<StationLimits> Typed();
  bool Read(Field field, bool mayBeNegative, std::optional<double>& into);
  void Refuse(Field field, const QString& reason);

  const Language& language_;
  std::array<QLineEdit*, kFields> fields_{};
  QLabel* message_ = nullptr;
  std::optional<StationLimits> chosen_;
};

}  // namespace vesk

// What is known of a logger's clock: times that it showed, and the true ones.
#pragma once

#include <QDialog>

#include "review/date_correction.h"

class QLabel;
class QTableWidget;

namespace vesk {

class Language;

class ClockPairsDialog : public QDialog {
  Q_OBJECT

 public:
  /// raw: the readings with the logger's times; present: what holds now.
  ClockPairsDialog(const Language& language, const RawRows& raw, const TrueTimes& present, QWidget* parent);

  /// Once the dialog was accepted.
  [[nodiscard]] const TrueTimes& Chosen() const { return chosen_; }

 private:
  void AddRow(DateTime logger, DateTime truth);
  void AddEmptyRow();
  void RemoveRow();
  void Take();
  /// Nothing, and told, when a cell is no time.
  std::optional<std::vector<ClockPair>> Typed();

  const Language& language_;
  const RawRows& raw_;
  ReadingSpan span_;
  QTableWidget* table_ = nullptr;
  QLabel* message_ = nullptr;
  TrueTimes chosen_;
};

}  // namespace vesk

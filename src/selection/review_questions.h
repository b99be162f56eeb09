// What the selection window asks its operator. A test answers in the operator's place.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

#include "datafiles/station_limits.h"
#include "review/date_correction.h"

class QWidget;

namespace vesk {

class Language;

enum class UnsavedAnswer { Save, Discard, Stay };
enum class RecoverAnswer { Restore, Discard, Later };

class ReviewQuestions {
 public:
  virtual ~ReviewQuestions() = default;
  /// Corrections would be lost by what the operator is about to do.
  virtual UnsavedAnswer AskAboutUnsavedChanges(QWidget* parent) = 0;
  /// Corrections of an earlier run were never saved. edits: how many.
  virtual RecoverAnswer AskToRecover(QWidget* parent, int edits) = 0;
  /// Somebody elsewhere holds the corrections. text says who. The answer that changes nothing is the default.
  virtual bool AskToTakeOver(QWidget* parent, const QString& text) = 0;
  /// A corrected reading leaves a record of its day wrong. text says which and what the readings give.
  virtual bool AskToCorrectRecord(QWidget* parent, const QString& text) = 0;
  /// Why something is done; nothing when the operator backs out. earlier: reasons to choose from, the last
  /// one first.
  virtual std::optional<QString> AskForReason(QWidget* parent, const QString& title, const QString& text,
                                              const QStringList& earlier) = 0;
  /// Limits to be kept of a station. The inner one nothing: its limits are to be forgotten; the outer one:
  /// all stays as it is.
  virtual std::optional<std::optional<StationLimits>> AskForLimits(QWidget* parent, const QString& station,
                                                                   const std::optional<StationLimits>& kept,
                                                                   const StationLimits& proposed) = 0;
  /// Pairs of a logger's and a true time; nothing when the operator backs out.
  virtual std::optional<TrueTimes> AskForClockPairs(QWidget* parent, const RawRows& raw,
                                                    const TrueTimes& present) = 0;
  /// An empty title means the program's own.
  virtual bool AskYesNo(QWidget* parent, const QString& title, const QString& text) = 0;
  /// Yes or No; nothing when the operator backs out. more: small print below the text; may be empty.
  virtual std::optional<bool> AskYesNoOrBackOut(QWidget* parent, const QString& title, const QString& text,
                                                const QString& more) = 0;
  /// True when the operator goes on at his own risk. goOn: what the button to do so says.
  virtual bool AskToGoOn(QWidget* parent, const QString& title, const QString& text, const QString& goOn) = 0;
  /// As Warn, with a way out; false when it is taken.
  virtual bool WarnOrBackOut(QWidget* parent, const QString& title, const QString& text) = 0;
  virtual void Tell(QWidget* parent, const QString& title, const QString& text) = 0;
  /// As Tell, with the critical icon.
  virtual void Warn(QWidget* parent, const QString& title, const QString& text) = 0;
};

/// Asks in message boxes, in the language at the time of asking.
class ReviewMessageBoxes : public ReviewQuestions {
 public:
  explicit ReviewMessageBoxes(const Language& language) : language_(language) {}
  UnsavedAnswer AskAboutUnsavedChanges(QWidget* parent) override;
  RecoverAnswer AskToRecover(QWidget* parent, int edits) override;
  bool AskToTakeOver(QWidget* parent, const QString& text) override;
  bool AskToCorrectRecord(QWidget* parent, const QString& text) override;
  std::optional<QString> AskForReason(QWidget* parent, const QString& title, const QString& text,
                                      const QStringList& earlier) override;
  std::optional<std::optional<StationLimits>> AskForLimits(QWidget* parent, const QString& station,
                                                           const std::optional<StationLimits>& kept,
                                                           const StationLimits& proposed) override;
  std::optional<TrueTimes> AskForClockPairs(QWidget* parent, const RawRows& raw,
                                            const TrueTimes& present) override;
  bool AskYesNo(QWidget* parent, const QString& title, const QString& text) override;
  std::optional<bool> AskYesNoOrBackOut(QWidget* parent, const QString& title, const QString& text,
                                        const QString& more) override;
  bool AskToGoOn(QWidget* parent, const QString& title, const QString& text, const QString& goOn) override;
  bool WarnOrBackOut(QWidget* parent, const QString& title, const QString& text) override;
  void Tell(QWidget* parent, const QString& title, const QString& text) override;
  void Warn(QWidget* parent, const QString& title, const QString& text) override;

 private:
  const Language& language_;
};

}  // namespace vesk

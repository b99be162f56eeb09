// An operator at the desk, through the program's own operations: tidies a folder, loads, edits, saves. What
// the screen shows can be written down and compared.
#pragma once

#include <QByteArrayList>
#include <QString>

#include <memory>
#include <vector>

#include "review/editing.h"
#include "torture/rig.h"

namespace vesk::torture {

/// What is loaded: a station's water years, or one file of it.
struct Choice {
  QString folder;          ///< with its trailing separator
  QString station;         ///< nine-character entry
  std::vector<int> years;  ///< none: a single file
  QString stem;            ///< single file: first 16 characters of its name
};

/// One row as the screen shows it.
struct ScreenRow {
  QByteArray date, time, level, label;
  QByteArray code;       ///< edit code
  bool changed = false;  ///< carries a correction
  QByteArray stem;       ///< of its raw file, 16 characters; empty where the program computed it
  long levelByte = 0;    ///< position of its level in the raw file

  [[nodiscard]] QByteArray Minute() const { return date + ' ' + time; }
  [[nodiscard]] QByteArray Kind() const { return label.mid(3); }
  [[nodiscard]] bool IsOrdinary() const { return Kind() == "ort"; }
  /// "date time label level".
  [[nodiscard]] QByteArray Text() const { return Minute() + ' ' + label + ' ' + level; }
  /// The same with the edit state; no edits is no code.
  [[nodiscard]] QByteArray FullText() const {
    return Text() + " code " + (code == "0" ? QByteArray() : code);
  }
};
using Screen = std::vector<ScreenRow>;

/// One line for a whole screen, levels and times only.
QByteArray LineOf(const Screen& screen);
/// The first rows in which two such lines differ, for a failure's text.
QByteArray DifferenceOf(const QByteArray& expected, const QByteArray& shown);

class Desk {
 public:
  /// Stamps, renames and archives as the window does on opening a folder.
  static QStringList Tidy(const QString& folder);

  /// Loads, and takes up what an earlier run left unsaved. An error's text; empty when fine.
  QString Open(const Choice& choice, bool restore = true);
  [[nodiscard]] EditSession& Session() { return *session_; }
  [[nodiscard]] Screen Shown() const;
  [[nodiscard]] int Rows() const { return session_->Series().ReadingCount(); }
  [[nodiscard]] const QStringList& Messages() const { return messages_; }
  [[nodiscard]] bool Whole() const { return whole_; }
  /// Records of pending work that did not fit.
  [[nodiscard]] int Unfit() const { return unfit_; }
  [[nodiscard]] bool JournalFailed() const { return journalFailed_; }

 private:
  std::unique_ptr<EditSession> session_;
  QStringList messages_;
  QStringList stems_;
  bool whole_ = false, journalFailed_ = false;
  int unfit_ = 0;
};

/// What an operator did, in a few words, and whether the call said that it was done.
struct Deed {
  enum class Kind { Edit, Undo, Redo, UndoAll, Save, CorrectDates, Range };
  Kind kind = Kind::Edit;
  int row = 0, lastRow = 0;  ///< the last one: of a range
  RangeCorrection range{};
  QString typed;
  bool done = false;  ///< the call reported success
  QString why;        ///< what it reported otherwise
  [[nodiscard]] QByteArray Text() const;
};

/// Decides what to do next; the same for the same numbers and screen.
Deed NextDeed(Random& random, const Desk& desk, EditSession& session);
/// Does it.
void Do(Deed& deed, EditSession& session);

}  // namespace vesk::torture

// The review record: what stands beside a change log and says of each of its lines which reading it corrects,
// from which level, by whom and when. A line of the log has only date, time, level and discharge; that does
// not tell an extreme record from the reading of its minute, nor one raw file from another.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

#include "datafiles/reading.h"
#include "platform/result.h"

namespace vesk {

/// What was done and why, in the operator's words.
struct Purpose {
  QString operation{};  ///< "edit", "shift", "drift" ...; empty: not known
  QString reason{};     ///< may be empty

  bool operator==(const Purpose&) const = default;
};

/// Who corrected a reading, when and why.
struct Authorship {
  QString login;
  QString name;  ///< full name; may be empty
  QString at;    ///< UTC, yyyy-mm-ddThh:mm:ssZ
  Purpose why{};

  bool operator==(const Authorship&) const = default;
};

/// One corrected reading.
struct Correction {
  QString rawFile;  ///< first 16 characters of the raw file's name
  DateTime time{};  ///< in the raw file, 00:00 and 24:00 as 23:59; of a computed extreme, as shown
  ReadingKind kind = ReadingKind::Ordinary;
  bool computed = false;  ///< a daily extreme that a clock correction computed, told by day and kind
  int occurrence = 1;     ///< among the readings of that file, time and kind, counted from 1
  double rawCm = 0;       ///< level in the raw file (of a computed extreme: as computed), cm
  double levelCm = 0;     ///< level in its place, cm
  QString discharge;
  Authorship by;

  bool operator==(const Correction&) const = default;
};

/// A line of a change log, and what is known of it.
struct RecordedLine {
  QByteArray text;                       ///< as in the log, without its end
  std::optional<Correction> correction;  ///< nothing: the line found no reading, or was never laid

  bool operator==(const RecordedLine&) const = default;
};

/// What belongs to one content of the change log.
struct RecordState {
  QByteArray logHash;               ///< SHA-256 of the log's bytes, hexadecimal
  std::vector<RecordedLine> lines;  ///< of the log, in its order
  std::vector<Correction> hidden;   ///< of logger's records that a clock correction takes off the screen

  bool operator==(const RecordState&) const = default;
};

/// The file. A save writes the record ahead of the log, with the state of the log that is about to come and
/// that of the log that is there: wherever the save is cut, one of the two is the log's.
struct ReviewRecord {
  std::vector<RecordState> states;  ///< newest first
  QJsonObject other;                ///< members that this version does not know; written back

  /// The state of a log with that content; null when there is none.
  [[nodiscard]] const RecordState* StateOf(const QByteArray& logHash) const;
};

/// changeLogPath + ".review.json".
QString ReviewRecordPath(const QString& changeLogPath);

/// SHA-256, hexadecimal.
QByteArray HashOf(const QByteArray& content);

/// Fails with what was expected where the bytes are no review record; no bytes are an empty one. path: for
/// the error.
Result<ReviewRecord> DecodeReviewRecord(const QByteArray& content, const QString& path);
QByteArray EncodeReviewRecord(const ReviewRecord& record);

/// A missing file is an empty record.
Result<ReviewRecord> ReadReviewRecord(const QString& changeLogPath);

/// Reads the record, lets it be changed and writes it whole or not at all, while no other session does the
/// same. A file of that name that is no review record is kept under its name + ".damaged" (".damaged2", ...)
/// first, and the change begins with an empty record.
Status UpdateReviewRecord(const QString& changeLogPath, const std::function<void(ReviewRecord&)>& change);

}  // namespace vesk

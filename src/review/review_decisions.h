// What people have decided about a water year: findings that they accept, and that the year is approved. It
// stands in the review record beside the change log and holds whatever the log's content.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

#include "datafiles/reading.h"
#include "platform/result.h"
#include "review/read_out.h"
#include "review/review_record.h"
#include "review/station_series.h"

namespace vesk {

/// A finding that somebody has looked at and leaves as it is. It is told by rule, file, times and value: a
/// finding that comes to another value is another one.
struct AcceptedFinding {
  QString rule;     ///< "gap", "spike" ...
  QString rawFile;  ///< first 16 characters of its name; empty when it is not known
  DateTime from{}, to{};
  double value = 0;
  Authorship by;  ///< by.why.reason: why it is accepted

  [[nodiscard]] bool IsOf(const AcceptedFinding& other) const;
};

/// A raw file as it was approved.
struct ApprovedFile {
  QString name;       ///< on the disk
  QByteArray sha256;  ///< of its bytes, hexadecimal

  bool operator==(const ApprovedFile&) const = default;
};

/// A rating curve as it was when it was chosen, or when what it makes was approved.
struct UsedCurve {
  QString path;       ///< where the file lay; empty: no curve
  QByteArray sha256;  ///< of its bytes, hexadecimal

  bool operator==(const UsedCurve&) const = default;
};

/// An acceptance that was taken back.
struct WithdrawnAcceptance {
  AcceptedFinding finding;  ///< with who accepted it
  Authorship by;            ///< who took it back, and when
};

/// A water year, approved or withdrawn.
struct Approval {
  bool withdrawn = false;  ///< an approval before this is taken back
  Authorship by{};         ///< by.why.reason: a remark
  std::vector<ApprovedFile> rawFiles{};
  QByteArray logHash{};  ///< SHA-256 of the change log, hexadecimal
  int readings = 0;
  int corrections = 0;
  int openFindings = 0;
  UsedCurve curve{};  ///< that made the discharges
};

/// What the review record of a change log has of them.
struct ReviewDecisions {
  std::vector<AcceptedFinding> accepted;
  std::vector<WithdrawnAcceptance> withdrawn;  ///< oldest first
  std::vector<Approval> approvals;             ///< oldest first
  UsedCurve curve;                             ///< that was chosen last for the water year; no path: none was

  /// The approval in force; null when there is none.
  [[nodiscard]] const Approval* InForce() const;
};

/// A missing record has none.
Result<ReviewDecisions> ReadReviewDecisions(const QString& changeLogPath);

/// Each is merged into the record as it is at that moment.
Status AcceptFinding(const QString& changeLogPath, const AcceptedFinding& finding);
/// The acceptance stays on record as one that was taken back.
Status WithdrawAcceptance(const QString& changeLogPath, const AcceptedFinding& finding);
/// The curve that was chosen last; no path: none is proposed any more.
Status KeepCurveChoice(const QString& changeLogPath, const UsedCurve& curve);
/// Approvals are added, never replaced; a withdrawal is one with `withdrawn`.
Status AddApproval(const QString& changeLogPath, const Approval& approval);

/// What an approval of these readings would hold, but for author and open findings. readOuts: the files of
/// the load; dataDirectory with its trailing separator. Reads the raw files and the log.
Result<Approval> PresentState(const QString& dataDirectory, const std::vector<ReadOut>& readOuts,
                              const QString& changeLogPath, const StationSeries& series);

/// What is no longer as it was approved; empty when the approval holds. Looks at the approved curve's file.
std::vector<Message> ApprovalDifferences(const Approval& approved, const Approval& present);

/// What there is to say of the approval of a water year when it is loaded: that it holds and whose it is, or
/// what is no longer as it was approved. None when it is not approved.
std::vector<Message> ApprovalNotes(const QString& dataDirectory, const std::vector<ReadOut>& readOuts,
                                   const QString& changeLogPath, const StationSeries& series);

/// Who is logged in, and now.
Authorship PresentAuthor();

}  // namespace vesk

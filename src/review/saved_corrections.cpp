#include "review/saved_corrections.h"

#include <QCryptographicHash>
#include <QList>
#include <QStringList>

#include <algorithm>

#include "platform/whole_file.h"
#include "review/date_correction.h"

namespace vesk {
namespace {

constexpr QLatin1Char kTab('\t');
constexpr QLatin1Char kPlanMark('?');

/// One line of the file.
struct Entry {
  SavedCorrection saved;
  QString planHash;
  std::vector<DateTime> planned;
};

QByteArray Line(const Entry& entry) {
  QString text = DateTimeText(entry.saved.first) + kTab + DateTimeText(entry.saved.last);
  for (const DateTime target : entry.saved.targets) text += kTab + DateTimeText(target);
  if (!entry.planned.empty()) text += QString(kTab) + kPlanMark + entry.planHash;
  for (const DateTime target : entry.planned) text += kTab + DateTimeText(target);
  return text.toLatin1();
}

std::optional<Entry> ReadLine(const QByteArray& bytes) {
  const QStringList fields = QString::fromLatin1(bytes).split(kTab);
  if (fields.size() < 3) return std::nullopt;
  const auto first = ReadDateTime(fields[0]);
  const auto last = ReadDateTime(fields[1]);
  if (!first || !last) return std::nullopt;
  Entry entry{.saved = {.first = *first, .last = *last, .targets = {}}, .planHash = {}, .planned = {}};
  for (const QString& field : fields.mid(2)) {
    if (entry.planHash.isEmpty() && field.startsWith(kPlanMark)) {
      entry.planHash = field.mid(1);
      continue;
    }
    const auto time = ReadDateTime(field);
    if (!time) return std::nullopt;
    (entry.planHash.isEmpty() ? entry.saved.targets : entry.planned).push_back(*time);
  }
  return entry;
}

QString HashOf(const QByteArray& changeLog) {
  return QString::fromLatin1(QCryptographicHash::hash(changeLog, QCryptographicHash::Sha256).toHex());
}

/// A plan counts for good when its change log is the one in place, and is dropped otherwise.
Status Settle(Entry& entry, const QString& changeLogPath) {
  if (entry.planned.empty()) return {};
  const auto changeLog = ReadWholeFile(changeLogPath, QStringLiteral("The change log could not be read"));
  if (!changeLog) return changeLog.Failure();
  if (HashOf(*changeLog) == entry.planHash) {
    entry.saved.targets.insert(entry.saved.targets.end(), entry.planned.begin(), entry.planned.end());
  }
  entry.planned.clear();
  return {};
}

bool SameFile(const SavedCorrection& a, const SavedCorrection& b) {
  return a.first == b.first && a.last == b.last;
}

Result<QList<QByteArray>> Lines(const QString& path) {
  const auto content = ReadWholeFile(path, QStringLiteral("The saved date corrections could not be read"));
  if (!content) return content.Failure();
  QList<QByteArray> lines;
  for (const QByteArray& line : content->split('\n')) {
    if (!line.trimmed().isEmpty()) lines.push_back(line.trimmed());
  }
  return lines;
}

/// Rows of the ordinary readings in the order of their times, which re-timing keeps.
std::vector<int> OrdinaryRows(const ReviewGrid& grid) {
  std::vector<int> rows;
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    if (grid.At(row).kind == ReadingKind::Ordinary) rows.push_back(row);
  }
  std::stable_sort(rows.begin(), rows.end(),
                   [&grid](int a, int b) { return grid.At(a).Time() < grid.At(b).Time(); });
  return rows;
}

}  // namespace

QString SavedCorrectionPath(const QString& changeLogPath) {
  return changeLogPath + QStringLiteral(".dates");
}

Result<SavedCorrection> ReadSavedCorrection(const QString& changeLogPath, const ReviewGrid& grid) {
  SavedCorrection wanted;
  const auto span = SpanOf(grid);
  if (!span) return wanted;
  wanted.first = span->first;
  wanted.last = span->last;
  const auto lines = Lines(SavedCorrectionPath(changeLogPath));
  if (!lines) return lines.Failure();
  for (const QByteArray& bytes : *lines) {
    auto entry = ReadLine(bytes);
    if (!entry || !SameFile(entry->saved, wanted)) continue;
    if (Status settled = Settle(*entry, changeLogPath); !settled) return settled.Failure();
    return entry->saved;
  }
  return wanted;
}

Status WriteSavedCorrection(const QString& changeLogPath, const SavedCorrection& correction,
                            const PlannedTargets& planned) {
  const QString path = SavedCorrectionPath(changeLogPath);
  const auto lines = Lines(path);
  if (!lines) return lines.Failure();
  QList<QByteArray> kept;
  for (const QByteArray& bytes : *lines) {
    auto entry = ReadLine(bytes);
    if (entry && SameFile(entry->saved, correction)) continue;
    const bool plan = entry && !entry->planned.empty();
    if (plan) {
      if (Status settled = Settle(*entry, changeLogPath); !settled) return settled;
    }
    kept.push_back(plan ? Line(*entry) : bytes);
  }
  if (!correction.targets.empty() || !planned.targets.empty()) {
    kept.push_back(
        Line({.saved = correction, .planHash = HashOf(planned.changeLog), .planned = planned.targets}));
  }
  if (kept == *lines) return {};
  QByteArray content;
  for (const QByteArray& line : kept) content += line + "\r\n";
  return WriteWholeFile(path, content, QStringLiteral("The date correction could not be saved"));
}

bool ApplySavedCorrection(const SavedCorrection& correction, ReviewGrid& grid) {
  for (const DateTime target : correction.targets) {
    if (!ReadCorrectionTarget(DateTimeText(target), grid)) return false;
    CorrectDates(grid, target);
  }
  return true;
}

void TakeLevels(const ReviewGrid& corrected, ReviewGrid& raw) {
  const std::vector<int> from = OrdinaryRows(corrected);
  const std::vector<int> to = OrdinaryRows(raw);
  if (from.size() != to.size()) return;
  for (std::size_t i = 0; i < to.size(); ++i) {
    const double levelCm = corrected.At(from[i]).levelCm;
    if (levelCm != raw.At(to[i]).levelCm) raw.SetLevel(to[i], levelCm);
  }
}

}  // namespace vesk

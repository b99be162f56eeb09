#include "review/saved_corrections.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>

#include "review/date_correction.h"

namespace vesk {
namespace {

constexpr qint64 kLargestFile = qint64{16} << 20;

QByteArray Line(const SavedCorrection& correction) {
  QString text = DateTimeText(correction.first) + QLatin1Char('\t') + DateTimeText(correction.last);
  for (const DateTime target : correction.targets) text += QLatin1Char('\t') + DateTimeText(target);
  return text.toLatin1();
}

std::optional<SavedCorrection> ReadLine(const QByteArray& bytes) {
  SavedCorrection correction;
  const QStringList fields = QString::fromLatin1(bytes).split(QLatin1Char('\t'));
  if (fields.size() < 3) return std::nullopt;
  for (qsizetype i = 0; i < fields.size(); ++i) {
    const auto time = ReadDateTime(fields[i]);
    if (!time) return std::nullopt;
    if (i == 0) {
      correction.first = *time;
    } else if (i == 1) {
      correction.last = *time;
    } else {
      correction.targets.push_back(*time);
    }
  }
  return correction;
}

bool SameFile(const SavedCorrection& a, const SavedCorrection& b) {
  return a.first == b.first && a.last == b.last;
}

Result<QList<QByteArray>> Lines(const QString& path) {
  const QString what = QStringLiteral("The saved date corrections could not be read");
  QFile file(path);
  if (!file.exists()) return QList<QByteArray>{};
  if (file.size() > kLargestFile) return Error{what, path, QStringLiteral("it is too large")};
  if (!file.open(QIODevice::ReadOnly)) return Error{what, path, file.errorString()};
  const QByteArray content = file.readAll();
  if (file.error() != QFileDevice::NoError) return Error{what, path, file.errorString()};
  QList<QByteArray> lines;
  for (const QByteArray& line : content.split('\n')) {
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
    const auto correction = ReadLine(bytes);
    if (correction && SameFile(*correction, wanted)) return *correction;
  }
  return wanted;
}

Status WriteSavedCorrection(const QString& changeLogPath, const SavedCorrection& correction) {
  const QString path = SavedCorrectionPath(changeLogPath);
  const auto lines = Lines(path);
  if (!lines) return lines.Failure();
  QByteArray content;
  for (const QByteArray& bytes : *lines) {
    const auto other = ReadLine(bytes);
    if (!other || !SameFile(*other, correction)) content += bytes + "\r\n";
  }
  content += Line(correction) + "\r\n";
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit()) return {};
  return Error{QStringLiteral("The date correction could not be saved"), path, file.errorString()};
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

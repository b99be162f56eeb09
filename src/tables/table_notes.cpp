#include "tables/table_notes.h"

#include <QStringList>

#include "review/contradictions.h"

namespace vesk {
namespace {

constexpr qsizetype kMostDays = 20;  ///< named one by one; a cell is no report

QString Contradictions(const ReviewGrid& grid, bool turkish) {
  QStringList days;
  qsizetype count = 0;
  for (const RecordContradiction& found : FindContradictions(grid)) {
    if (++count > kMostDays) continue;
    days += QStringLiteral("%1 %2 %3 → %4")
                .arg(DateText(found.day), KindText(found.kind), NumberText(found.recordedCm),
                     NumberText(found.readingsCm));
  }
  if (count == 0) return {};
  if (count > kMostDays) days += QStringLiteral("+%1").arg(count - kMostDays);
  const QString sentence = turkish ? QStringLiteral(
                                         "Cihazın uç değer kayıtları düzeltilen seviyelerle çelişiyor "
                                         "(kayıt → düzeltilen, cm): %1")
                                   : QStringLiteral(
                                         "The logger's extreme records contradict corrected levels "
                                         "(record → corrected, cm): %1");
  return sentence.arg(days.join(QStringLiteral("; ")));
}

}  // namespace

std::vector<QString> NotesOfTable(const TwoTexts& notWhole, const ReviewGrid& grid, ExtremeMode mode,
                                  bool turkish) {
  std::vector<QString> notes;
  const QString missing = turkish ? notWhole.turkish : notWhole.english;
  if (!missing.isEmpty()) notes.push_back(missing);
  const QString contradictions = mode == ExtremeMode::Recorded ? Contradictions(grid, turkish) : QString();
  if (!contradictions.isEmpty()) notes.push_back(contradictions);
  return notes;
}

}  // namespace vesk

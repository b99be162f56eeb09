#include "tables/table_notes.h"

#include <QStringList>

#include "review/contradictions.h"
#include "review/review_grid.h"

namespace vesk {
namespace {

constexpr qsizetype kMostDays = 20;  ///< named one by one; a cell is no report

Message Contradictions(const StationSeries& series) {
  QStringList days;
  qsizetype count = 0;
  for (const RecordContradiction& found : FindContradictions(series)) {
    if (++count > kMostDays) continue;
    days += QStringLiteral("%1 %2 %3 → %4")
                .arg(DateText(found.day), KindText(found.kind), NumberText(found.recordedCm),
                     NumberText(found.readingsCm));
  }
  if (count == 0) return {};
  if (count > kMostDays) days += QStringLiteral("+%1").arg(count - kMostDays);
  return {Wording{u"Cihazın uç değer kayıtları düzeltilen seviyelerle çelişiyor (kayıt → düzeltilen, cm): %1",
                  u"The logger's extreme records contradict corrected levels (record → corrected, cm): %1"},
          days.join(QStringLiteral("; "))};
}

}  // namespace

std::vector<QString> NotesOfTable(const Message& notWhole, const StationSeries& series, ExtremeMode mode,
                                  bool turkish) {
  std::vector<QString> notes;
  const LanguageChoice language = turkish ? LanguageChoice::Turkish : LanguageChoice::English;
  const QString missing = notWhole.In(language);
  if (!missing.isEmpty()) notes.push_back(missing);
  const QString contradictions =
      mode == ExtremeMode::Recorded ? Contradictions(series).In(language) : QString();
  if (!contradictions.isEmpty()) notes.push_back(contradictions);
  return notes;
}

}  // namespace vesk

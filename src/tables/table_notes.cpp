#include "tables/table_notes.h"

#include <QStringList>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "datafiles/record_label.h"
#include "datafiles/water_year.h"
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

/// What the star behind a discharge means, where one stands.
Message Discharges(const StationSeries& series, int waterYear) {
  int flagged = 0;
  int missing = 0;
  for (int row = 1; series.Curve() && row <= series.ReadingCount(); ++row) {
    if (WaterYearOf(series.At(row).day) != waterYear) continue;
    const DischargeFlag flag = series.CurveDischargeOf(row)->flag;
    flagged += HasDischarge(flag) && flag != DischargeFlag::None ? 1 : 0;
    missing += HasDischarge(flag) ? 0 : 1;
  }
  if (flagged == 0 && missing == 0) return {};
  return {
      Wording{
          u"* işaretli debiler ölçülen seviyelerin dışındadır (%1 kayıt); yalnız * olan %2 kayıtta debi yok",
          u"Discharges with * lie outside the gauged levels (%1 records); %2 records with * alone have none"},
      flagged, missing};
}

}  // namespace

std::vector<QString> NotesOfTable(const Message& notWhole, const StationSeries& series, ExtremeMode mode,
                                  LanguageChoice language, int waterYear) {
  std::vector<QString> notes;
  const Message contradictions = mode == ExtremeMode::Recorded ? Contradictions(series) : Message();
  for (const Message& note : {notWhole, contradictions, Discharges(series, waterYear)}) {
    if (!note.IsEmpty()) notes.push_back(note.In(language));
  }
  return notes;
}

}  // namespace vesk

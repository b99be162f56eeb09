#include "review/load_gaps.h"

#include "datafiles/dates.h"
#include "datafiles/numbers.h"

namespace vesk {
namespace {

Message WithPromise(const Message& message, const RawHeader& header) {
  return {Wording{u"%1; başlığa göre %3 tarihine kadar %2 örnek olmalı",
                  u"%1; the header promises %2 samples up to %3"},
          message, NumberText(header.SampleCount), DateTimeText(header.LastRecordTime)};
}

void AddRefused(const QString& name, const DataLineTally& tally, FileGaps& gaps) {
  for (const LineFault& fault : tally.faults) {
    gaps.messages.emplace_back(
        Wording{u"%1, %2. satır yüklenmedi; beklenen: %3", u"%1, line %2: not loaded; expected %3"}, name,
        fault.line, fault.expected);
  }
  if (tally.refused > static_cast<qint64>(tally.faults.size())) {
    gaps.messages.emplace_back(
        Wording{u"%1: toplam %2 satır yüklenmedi", u"%1: %2 lines were not loaded in all"}, name,
        tally.refused);
  }
  if (tally.refused > 0) gaps.whole = false;
}

void AddUnread(const QString& name, const RawHeader& header, const DataLineTally& tally, FileGaps& gaps) {
  const bool endMark = tally.end == DataEnd::EndMark;
  if (tally.unreadInside > 0) gaps.whole = false;
  if (endMark ? tally.unread == 0 : tally.unreadInside == 0) return;
  // Both have the same places.
  const Wording why =
      endMark ? Wording{u"%1, %2. satır: bitiş işareti; ardındaki %3 satır okunmadı, bunların %4 tanesi buraya ait "
                        u"kayıt",
                        u"%1, line %2: the end mark; %3 lines behind it were left unread, %4 of them readings that "
                        u"belong here"}
              : Wording{u"%1, %2. satır: su yılından sonraki bir kayıt okumayı bitirdi; ardındaki %3 satır okunmadı, "
                        u"bunların %4 tanesi o yıla ait",
                        u"%1, line %2: a reading behind the water year ends the file; %3 lines behind it were left "
                        u"unread, %4 of them of that year"};
  gaps.messages.push_back(
      WithPromise(Message(why, name, tally.endLine, tally.unread, tally.unreadInside), header));
}

void AddStray(const QString& name, const RawHeader& header, const DataLineTally& tally, FileGaps& gaps) {
  if (tally.stray == 0) return;
  gaps.whole = false;
  gaps.messages.push_back(WithPromise(
      Message(
          Wording{
              u"%1, %2. satır: tarihi su yılından önce, ama o yılın kayıtları arasında; böyle %3 satır "
              u"alınmadı",
              u"%1, line %2: dated before the water year among readings of it; %3 such lines were left out"},
          name, tally.firstStrayLine, tally.stray),
      header));
}

/// True when days between the last reading and the last one promised are among those asked for.
bool LostDaysAskedFor(const RawHeader& header, const DataLineTally& tally,
                      const std::optional<DayWindow>& window) {
  if (!window) return true;
  const Day promised = std::chrono::floor<std::chrono::days>(header.LastRecordTime);
  const DateTime from = tally.lastReading.value_or(header.FirstRecordTime);
  return promised >= window->first && std::chrono::floor<std::chrono::days>(from) <= window->last;
}

/// True when the file was cut. Its own end mark is to be believed, as the last record of the header may be
/// the true time of a read-out whose clock was wrong; but not when a day and more is missing and samples,
/// too.
bool IsCut(const RawHeader& header, const DataLineTally& tally) {
  if (tally.end == DataEnd::BehindWindow) return false;
  const DateTime last = tally.lastReading.value_or(header.FirstRecordTime - std::chrono::minutes(1));
  if (tally.end == DataEnd::EndOfFile) return last < header.LastRecordTime;
  const bool samplesMissing = static_cast<double>(tally.ordinary + tally.refused) < header.SampleCount;
  return samplesMissing && header.LastRecordTime - last > std::chrono::days(1);
}

void AddCut(const QString& name, const RawHeader& header, const DataLineTally& tally,
            const std::optional<DayWindow>& window, FileGaps& gaps) {
  if (!IsCut(header, tally) || !LostDaysAskedFor(header, tally, window)) return;
  gaps.whole = false;
  const Message end = tally.lastReading
                          ? Message(Wording{u"%1, %2. satır: okunan son kayıt %3",
                                            u"%1, line %2: the last reading read is that of %3"},
                                    name, tally.endLine, DateTimeText(*tally.lastReading))
                          : Message(Wording{u"%1, %2. satır: dosyanın sonuna kadar kayıt yok",
                                            u"%1, line %2: no reading up to the end of the file"},
                                    name, tally.endLine);
  gaps.messages.push_back(WithPromise(end, header));
}

void AddJoined(const QString& name, const DataLineTally& tally, FileGaps& gaps) {
  if (tally.joined == 0) return;
  gaps.whole = false;
  gaps.messages.emplace_back(
      Wording{u"%1, %2. satır: 27. sütunun ardında başka bir kayıt var; böyle %3 satır kısmen okundu",
              u"%1, line %2: another reading stands behind column 27; %3 such lines are read in part"},
      name, tally.firstJoinedLine, tally.joined);
}

/// A logger closes every day with its records and the file with an end mark. Where both are missing, the file
/// was cut, be it behind the last reading that the header names.
void AddMissingRecords(const QString& name, const DataLineTally& tally, FileGaps& gaps) {
  if (tally.end != DataEnd::EndOfFile || !tally.lacksLastRecords || !gaps.whole) return;
  gaps.whole = false;
  gaps.messages.emplace_back(Wording{u"%1, %2. satır: dosya son günün Max ve Min kayıtları ve bitiş "
                                     u"işareti olmadan bitiyor; kesilmiş olabilir",
                                     u"%1, line %2: the file ends without the last day's Max and Min "
                                     u"records and without an end mark; it may be cut"},
                             name, tally.endLine);
}

/// A wrong year in the first or the last reading leaves no line on its other side that would show the
/// mistake.
void AddBeyondHeader(const QString& name, const RawHeader& header, const DataLineTally& tally,
                     FileGaps& gaps) {
  if (tally.firstReading && *tally.firstReading < header.FirstRecordTime - std::chrono::days(1)) {
    gaps.whole = false;
    gaps.messages.emplace_back(
        Wording{u"%1: ilk kaydın tarihi %2, başlıktaki ilk kayıttan önce",
                u"%1: its first reading is dated %2, before the first record that the header names"},
        name, DateTimeText(*tally.firstReading));
  }
  if (!tally.lastReading || *tally.lastReading <= header.LastRecordTime + std::chrono::days(1)) return;
  gaps.whole = false;
  gaps.messages.push_back(
      WithPromise(Message(Wording{u"%1, %2. satır: tarihi %3, başlıktaki son kayıttan sonra",
                                  u"%1, line %2: dated %3, behind the last record that the header names"},
                          name, tally.endLine, DateTimeText(*tally.lastReading)),
                  header));
}

}  // namespace

FileGaps GapsOf(const QString& name, const RawHeader& header, const DataLineTally& tally,
                const std::optional<DayWindow>& window) {
  FileGaps gaps;
  AddRefused(name, tally, gaps);
  AddUnread(name, header, tally, gaps);
  AddStray(name, header, tally, gaps);
  AddCut(name, header, tally, window, gaps);
  AddMissingRecords(name, tally, gaps);
  AddJoined(name, tally, gaps);
  AddBeyondHeader(name, header, tally, gaps);
  return gaps;
}

}  // namespace vesk

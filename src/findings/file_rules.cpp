// What the headers of the read-outs promise against what their lines gave.
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "findings/samples.h"

namespace vesk {
namespace {

/// Rows and times that a read-out has in the series.
struct FileSpan {
  int firstRow = 0, lastRow = 0;
  DateTime from{}, to{};
  StepCounts steps;  ///< of the logger's own times
};

using FileSpans = std::map<int, FileSpan>;

FileSpans SpansOf(const StationSeries& series) {
  FileSpans spans;
  const FileNumbers numbers(series);
  const Reading* before = nullptr;
  int fileBefore = 0;
  FileSpan* span = nullptr;
  const std::vector<Reading>& readings = series.Raw().Readings();
  for (std::size_t i = 0; i < readings.size(); ++i) {
    const Reading& reading = readings[i];
    if (reading.kind != ReadingKind::Ordinary) continue;
    const int row = static_cast<int>(i) + 1;
    const int file = numbers.Of(row);
    if (file != fileBefore || span == nullptr) span = &spans[file];
    if (span->firstRow == 0) {
      span->firstRow = row;
      span->from = reading.Time();
    }
    span->lastRow = row;
    span->to = std::max(span->to, reading.Time());
    if (before != nullptr && fileBefore == file) {
      span->steps.Add(SampleMinute(reading) - SampleMinute(*before));
    }
    before = &reading;
    fileBefore = file;
  }
  return spans;
}

/// Looks at one read-out. Its rows are those of the raw order; shown ones where a clock is corrected.
class FileRule {
 public:
  FileRule(const FindingInput& input, const ReadOut& readOut, FileSpan span, std::vector<Finding>& found)
      : input_(input), readOut_(readOut), span_(std::move(span)), found_(found) {}

  void LookAtHeader() {
    const RawHeader& header = readOut_.header;
    const DataLineTally& tally = readOut_.tally;
    const bool readToEnd = tally.end != DataEnd::BehindWindow;
    if (readToEnd && static_cast<double>(tally.ordinary) != header.SampleCount) {
      Tell(FindingRule::Header, FindingSeverity::Doubt, static_cast<double>(tally.ordinary),
           FindingUnit::Readings,
           {Wording{u"başlığa göre %1 örnek", u"%1 samples, as the header says"},
            NumberText(header.SampleCount)});
    }
    if (tally.firstReading) {
      CompareTimes(*tally.firstReading, header.FirstRecordTime, FindingSeverity::Doubt,
                   Wording{u"ilk kayıt %1 (başlık)", u"first record %1 (header)"});
    }
    if (readToEnd && tally.lastReading) {
      // Its own end mark tells that nothing is cut off; the header may then have the true time.
      const bool ended = tally.end == DataEnd::EndMark;
      CompareTimes(*tally.lastReading, header.LastRecordTime,
                   ended ? FindingSeverity::Note : FindingSeverity::Doubt,
                   Wording{u"son kayıt %1 (başlık)", u"last record %1 (header)"});
    }
    LookAtInterval();
    LookAtSetup();
  }

  void LookAtLines() {
    const DataLineTally& tally = readOut_.tally;
    if (tally.refused > 0) {
      const Message first = tally.faults.empty()
                                ? Message()
                                : Message(Wording{u"%1. satır: beklenen %2", u"line %1: expected %2"},
                                          tally.faults.front().line, tally.faults.front().expected);
      TellLines(tally.refused, first);
    }
    const bool endMark = tally.end == DataEnd::EndMark;
    if (endMark && tally.unread > 0) {
      TellLines(tally.unread, {Wording{u"%1. satırdaki bitiş işaretinin ardında satır olmaması",
                                       u"no lines behind the end mark in line %1"},
                               tally.endLine});
    }
    if (!endMark && tally.unreadInside > 0) {
      TellLines(tally.unreadInside, {Wording{u"%1. satırdan (su yılından sonrası) geriye dönmeyen zaman",
                                             u"no reading of the year behind line %1, which is behind it"},
                                     tally.endLine});
    }
    if (tally.stray > 0) {
      TellLines(tally.stray, {Wording{u"%1. satırda su yılından önceye dönmeyen zaman",
                                      u"no reading before the year among its readings (line %1)"},
                              tally.firstStrayLine});
    }
    if (tally.joined > 0) {
      TellLines(tally.joined, {Wording{u"satırda tek kayıt (%1. satır)", u"one reading a line (line %1)"},
                               tally.firstJoinedLine});
    }
    if (tally.end == DataEnd::EndOfFile && tally.lacksLastRecords) {
      TellLines(tally.endLine, {Wording{u"son günün Max ve Min kayıtları ve bitiş işareti",
                                        u"the last day's Max and Min records and an end mark"}});
    }
    if (readOut_.readingsInHeader)
      TellLines(1, {Wording{u"içinde kayıt olmayan bir başlık", u"a header that holds no readings"}});
  }

 private:
  void CompareTimes(DateTime seen, DateTime promised, FindingSeverity severity, const Wording& words) {
    const std::int64_t off = SampleMinute(seen) - SampleMinute(promised);
    if (off == 0) return;
    Tell(FindingRule::Header, severity, static_cast<double>(off), FindingUnit::Minutes,
         {words, DateTimeText(promised)});
  }

  void LookAtInterval() {
    const auto step = static_cast<double>(span_.steps.MostCommon());
    if (step == 0) return;
    if (step == readOut_.header.RecordInterval) return;
    Tell(FindingRule::Header, FindingSeverity::Doubt, step, FindingUnit::Minutes,
         {Wording{u"başlığa göre %1 dakikalık aralık", u"an interval of %1 minutes, as the header says"},
          NumberText(readOut_.header.RecordInterval)});
  }

  void LookAtSetup() {
    const auto& first = readOut_.tally.firstReading;
    const DateTime setup = readOut_.header.SetupTime;
    if (!first || SampleMinute(setup) <= SampleMinute(*first)) return;
    Tell(FindingRule::Header, FindingSeverity::Doubt,
         static_cast<double>(SampleMinute(setup) - SampleMinute(*first)), FindingUnit::Minutes,
         {Wording{u"%1 kurulumundan sonraki bir ilk kayıt", u"a first reading behind the setup of %1"},
          DateTimeText(setup)});
  }

  void TellLines(qint64 lines, const Message& expected) {
    Tell(FindingRule::Refused, FindingSeverity::Doubt, static_cast<double>(lines), FindingUnit::Lines,
         expected);
  }

  void Tell(FindingRule rule, FindingSeverity severity, double value, FindingUnit unit,
            const Message& expected) {
    const Finding finding{.rule = rule,
                          .severity = severity,
                          .firstRow = Shown(span_.firstRow),
                          .lastRow = Shown(span_.lastRow),
                          .from = FromTime(),
                          .to = std::max(FromTime(), ToTime()),
                          .file = readOut_.file,
                          .value = value,
                          .unit = unit,
                          .expected = expected};
    if (std::ranges::find(found_, finding) == found_.end()) found_.push_back(finding);
  }

  [[nodiscard]] int Shown(int rawRow) const {
    return rawRow == 0 ? 0 : input_.series.ShownRowOf({.rawRow = rawRow});
  }
  [[nodiscard]] DateTime FromTime() const {
    return span_.firstRow == 0 ? readOut_.header.FirstRecordTime : span_.from;
  }
  [[nodiscard]] DateTime ToTime() const {
    return span_.firstRow == 0 ? readOut_.header.LastRecordTime : span_.to;
  }

  const FindingInput& input_;
  const ReadOut& readOut_;
  FileSpan span_;
  std::vector<Finding>& found_;
};

DateTime StartOf(const FindingInput& input) {
  if (!input.windows.empty()) return DateTime(input.windows.front().first);
  const std::vector<Reading>& readings = input.series.Raw().Readings();
  return readings.empty() ? DateTime{} : readings.front().Time();
}

}  // namespace

void FindInFiles(const FindingInput& input, std::vector<Finding>& found) {
  const FileSpans spans = SpansOf(input.series);
  const FileNumbers numbers(input.series);
  for (const ReadOut& readOut : input.readOuts) {
    const auto number = numbers.Of(readOut.file);
    const auto span = number ? spans.find(*number) : spans.end();
    FileRule rule(input, readOut, span == spans.end() ? FileSpan() : span->second, found);
    rule.LookAtHeader();
    rule.LookAtLines();
  }
  for (const QString& missed : input.missedFiles) {
    Finding lacking{
        .rule = FindingRule::Refused, .from = StartOf(input), .to = StartOf(input), .file = missed};
    lacking.value = 1;
    lacking.unit = FindingUnit::Files;
    lacking.expected = Wording{u"okunabilen bir dosya", u"a file that can be read"};
    found.push_back(std::move(lacking));
  }
}

}  // namespace vesk

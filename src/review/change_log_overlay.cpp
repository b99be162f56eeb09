// Laying a saved change log over a load.
#include <QFileInfo>

#include <algorithm>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "platform/code_page.h"
#include "platform/whole_file.h"
#include "review/change_log.h"
#include "review/change_log_rows.h"

namespace vesk {
namespace {

constexpr std::size_t kMostMessages = 100;
constexpr int kMostReadings = 5;  ///< of files that somebody is saving at the same time

/// Takes the next line off the content, without its end.
QByteArrayView TakeLine(QByteArrayView& content) {
  const qsizetype end = content.indexOf('\n');
  QByteArrayView line = end < 0 ? content : content.first(end);
  content = end < 0 ? QByteArrayView() : content.sliced(end + 1);
  if (line.endsWith('\r')) line.chop(1);
  return line;
}

/// A line of the log on its way to its row.
struct LineUnderWay {
  qint64 number = 0;
  QByteArray text;
  std::optional<ChangeLogLine> line;     ///< nothing: it could not be read
  std::optional<Correction> correction;  ///< what the record knows of it
  bool placed = false;
  bool open = false;  ///< nobody can tell which reading is meant
};

/// What a record knows of the lines of a log. Where it is the record of another content, a line that is the
/// same in both keeps its reading, then one whose date and time are the same.
class RecordedLines {
 public:
  explicit RecordedLines(const RecordState* state) : state_(state) {
    if (state_) used_.resize(state_->lines.size());
  }

  void Match(std::vector<LineUnderWay>& lines) {
    if (!state_) return;
    MatchBy(lines, [](const QByteArray& text) { return text; });
    MatchBy(lines, [](const QByteArray& text) { return text.left(kDateAndTime); });
  }

 private:
  static constexpr qsizetype kDateAndTime = 16;  // dd/mm/yyyy, tab, hh:mm

  template <class KeyOf>
  void MatchBy(std::vector<LineUnderWay>& lines, KeyOf keyOf) {
    std::multimap<QByteArray, std::size_t> free;
    for (std::size_t i = 0; i < used_.size(); ++i) {
      if (!used_[i]) free.emplace(keyOf(state_->lines[i].text), i);
    }
    for (LineUnderWay& line : lines) {
      if (line.correction || !line.line) continue;
      const auto found = free.lower_bound(keyOf(line.text));
      if (found == free.end() || found->first != keyOf(line.text)) continue;
      used_[found->second] = true;
      line.correction = state_->lines[found->second].correction;
      free.erase(found);
    }
  }

  const RecordState* state_;
  std::vector<bool> used_;
};

class Overlay {
 public:
  Overlay(const QString& fileName, StationSeries& series, bool singleFile, const RowRange& within,
          bool timesAreKnown)
      : fileName_(fileName),
        series_(series),
        singleFile_(singleFile),
        timesAreKnown_(timesAreKnown),
        finder_(series, within) {}

  ChangeLogOverlay Lay(QByteArrayView content, const ReviewRecord& record) {
    const RecordState* state = record.StateOf(HashOf(content.toByteArray()));
    std::vector<LineUnderWay> lines = LinesOf(content);
    if (!state && !lines.empty() && !record.states.empty()) {
      Tell(Message(
          Wording{u"%1: kaydedildikten sonra başka bir programla değiştirilmiş; inceleme kaydı kısmen uyuyor",
                  u"%1: changed by another program since it was saved; its review record fits in part"},
          fileName_));
    }
    if (!state && !record.states.empty()) state = &record.states.front();
    RecordedLines(state).Match(lines);
    // The lines whose readings are known first: no other line may take their rows.
    for (LineUnderWay& line : lines) {
      if (line.correction && !line.correction->computed) PlaceReading(line);
    }
    if (state) LayHidden(state->hidden);
    for (LineUnderWay& line : lines) {
      if (line.correction && line.correction->computed) PlaceExtreme(line);
    }
    Flush();
    if (timesAreKnown_) PlaceByTime(lines);
    Flush();
    for (LineUnderWay& line : lines) Keep(line);
    TellElsewhere();
    return std::move(overlay_);
  }

 private:
  static std::vector<LineUnderWay> LinesOf(QByteArrayView content) {
    std::vector<LineUnderWay> lines;
    for (qint64 number = 1; !content.isEmpty(); ++number) {
      const QByteArrayView bytes = TakeLine(content);
      if (bytes.trimmed().isEmpty()) continue;
      Message expected;
      lines.push_back({.number = number,
                       .text = bytes.toByteArray(),
                       .line = ReadChangeLogLine(bytes, expected),
                       .correction = {}});
    }
    return lines;
  }

  [[nodiscard]] bool IsLoaded(const QString& rawFile) const {
    return std::ranges::any_of(series_.Files(), [&](const RawFileRows& rows) {
      return rows.rawFile.compare(rawFile, Qt::CaseInsensitive) == 0;
    });
  }

  /// Lays text and level of a line over a row. The rows change together when all lines have theirs: the
  /// finder looks at the rows as they are.
  void LayOver(const RowRef& row, const ChangeLogLine& line, const Authorship& by) {
    RowState state = series_.StateOf(row).value_or(RowState{});
    state.levelCm = line.levelCm;
    state.discharge = DischargeOfLog(line.discharge);
    state.mark.editCode = kSavedCode;
    state.mark.shade = RowShade::Changed;
    states_.emplace_back(row, std::move(state));
    overlay_.authors[row] = by;
    ++overlay_.applied;
  }

  void Flush() {
    series_.SetStates(states_);
    states_.clear();
  }

  void PlaceReading(LineUnderWay& line) {
    const Correction& correction = *line.correction;
    auto row = finder_.Take(correction);
    if (!row && !IsLoaded(correction.rawFile)) {
      if (singleFile_) return;
      row = finder_.TakeEqual(correction);
      if (row) ++elsewhere_[correction.rawFile];
    }
    if (!row) return;
    TellOtherLevel(line, *row);
    LayOver(*row, *line.line, correction.by);
    line.placed = true;
  }

  /// The raw file has come again with another level there.
  void TellOtherLevel(const LineUnderWay& line, const RowRef& row) {
    const double nowCm = series_.Raw().RawLevel(row.rawRow);
    if (IsSameLevel(nowCm, line.correction->rawCm)) return;
    Tell(Message(Wording{u"%1, %2. satır: ham seviye şimdi %3 cm; düzeltildiğinde %4 cm idi",
                         u"%1, line %2: the raw level is %3 cm now; it was %4 cm when it was corrected"},
                 fileName_, line.number, NumberText(nowCm), NumberText(line.correction->rawCm)));
  }

  void PlaceExtreme(LineUnderWay& line) {
    Flush();  // the extremes are computed from the readings as corrected
    const Correction& correction = *line.correction;
    const RowRef row{.extreme = {std::chrono::floor<std::chrono::days>(correction.time), correction.kind}};
    const bool isMine = IsLoaded(correction.rawFile);
    if (!isMine || series_.ShownRowOf(row) == 0 || overlay_.authors.contains(row)) return;
    PutExtreme(row, correction, line.line->levelCm, line.line->discharge);
    overlay_.authors[row] = correction.by;
    ++overlay_.applied;
    line.placed = true;
  }

  void PutExtreme(const RowRef& row, const Correction& correction, double levelCm, const QString& discharge) {
    const auto minute = correction.time - std::chrono::floor<std::chrono::days>(correction.time);
    const RowMark mark = {
        .rawCm = correction.rawCm, .baselineCm = levelCm, .editCode = kSavedCode, .shade = RowShade::Changed};
    series_.PutExtreme(row.extreme,
                       {.minuteOfDay = static_cast<int>(minute.count()),
                        .state = {.levelCm = levelCm, .mark = mark, .discharge = DischargeOfLog(discharge)}});
  }

  /// Corrections that the log's lines cannot hold, because their rows are not on the screen.
  void LayHidden(const std::vector<Correction>& hidden) {
    for (const Correction& correction : hidden) {
      if (!IsLoaded(correction.rawFile)) {
        overlay_.othersHidden.push_back(correction);
      } else if (correction.computed) {
        const RowRef row{
            .extreme = {std::chrono::floor<std::chrono::days>(correction.time), correction.kind}};
        PutExtreme(row, correction, correction.levelCm, correction.discharge);
        overlay_.authors[row] = correction.by;
      } else if (const auto row = finder_.Take(correction)) {
        LayOver(*row, {.levelCm = correction.levelCm, .discharge = correction.discharge}, correction.by);
        --overlay_.applied;  // no line of the log
      } else {
        overlay_.othersHidden.push_back(correction);
        Tell(Message(Wording{u"%1: düzeltilmiş %2 uç değeri artık %3 içinde yok; düzeltmesi saklandı",
                             u"%1: the corrected record of %2 is no longer in %3; its correction is kept"},
                     fileName_, DateTimeText(correction.time), correction.rawFile));
      }
    }
  }

  /// The lines whose readings nobody has recorded.
  void PlaceByTime(std::vector<LineUnderWay>& lines) {
    std::vector<LineUnderWay*> open;
    std::vector<DateTime> times;
    for (LineUnderWay& line : lines) {
      if (!line.line || line.correction) continue;
      open.push_back(&line);
      times.push_back(DateTime(line.line->day) + std::chrono::minutes(line.line->minuteOfDay));
    }
    const auto rows = finder_.TakeByTime(times);
    for (std::size_t i = 0; i < open.size(); ++i) {
      open[i]->open = rows[i].open;
      if (!rows[i].row) continue;
      LayOver(*rows[i].row, *open[i]->line, {});
      open[i]->placed = true;
    }
  }

  /// A line that was not placed goes back into the log with the next save.
  void Keep(LineUnderWay& line) {
    if (line.placed) return;
    RecordedLine kept{line.text, line.correction};
    if (singleFile_ && line.correction && !IsLoaded(line.correction->rawFile)) {
      overlay_.others.push_back(std::move(kept));
      return;
    }
    overlay_.orphans.push_back(std::move(kept));
    if (line.line) {
      const QString text = DecodeWindows1254(line.text).simplified();
      if (line.open) {
        Tell(Message(Wording{u"%1, %2. satır: %3 o dakikanın kaydı için de uç değeri için de olabilir; "
                             u"uygulanmadı, saklandı",
                             u"%1, line %2: %3 can be meant for the reading or for the extreme record of "
                             u"that minute; it is not applied, but kept"},
                     fileName_, line.number, text));
        return;
      }
      Tell(Message(
          Wording{u"%1, %2. satır: %3 yüklenen hiçbir kayda ait değil; bir sonraki kaydetme için saklandı",
                  u"%1, line %2: %3 belongs to no reading of this load; it is kept for the next save"},
          fileName_, line.number, text));
      return;
    }
    ++overlay_.unreadable;
    Message expected;
    static_cast<void>(ReadChangeLogLine(line.text, expected));
    Tell(Message(Wording{u"%1, %2. satır; beklenen: %3", u"%1, line %2: expected %3"}, fileName_, line.number,
                 expected));
  }

  void TellElsewhere() {
    for (const auto& [rawFile, count] : elsewhere_) {
      Tell(Message(
          Wording{
              u"%1: yüklenmemiş %3 dosyasının %2 düzeltmesi başka bir okumanın eşit kayıtlarına uygulandı",
              u"%1: %2 correction(s) of %3, which is not loaded, lie on equal readings of another read-out"},
          fileName_, count, rawFile));
    }
  }

  void Tell(const Message& message) {
    if (overlay_.messages.size() < kMostMessages) {
      overlay_.messages.push_back(message);
    } else if (overlay_.messages.size() == kMostMessages) {
      overlay_.messages.emplace_back(
          Wording{u"%1: öteki satırlar tek tek yazılmadı", u"%1: further lines are not named"}, fileName_);
    }
  }

  QString fileName_;
  StationSeries& series_;
  bool singleFile_;
  bool timesAreKnown_;
  RowFinder finder_;
  ChangeLogOverlay overlay_;
  std::vector<std::pair<RowRef, RowState>> states_;
  std::map<QString, int> elsewhere_;
};

/// Change log, review record and date correction as they stood at one moment.
struct Snapshot {
  QByteArray content;
  ReviewRecord record;
  CorrectionReading dates;
  std::vector<Message> problems;
};

Status ReadDates(const QString& path, const StationSeries& series, const QByteArray& hash,
                 Snapshot& snapshot) {
  const auto span = SpanOf(series.Raw());
  if (series.Files().empty() || !span) return {};
  auto dates = ReadSavedCorrection(path, series.Files().front().rawFile, *span, hash);
  if (!dates) return dates.Failure();
  snapshot.dates = std::move(*dates);
  return {};
}

Result<Snapshot> ReadOnce(const QString& path, const StationSeries& series, bool singleFile) {
  Snapshot snapshot;
  auto content =
      ReadWholeFile(path, Wording{u"Değişiklik dosyası okunamadı", u"The change log could not be read"});
  if (!content) return content.Failure();
  snapshot.content = std::move(*content);
  auto record = ReadReviewRecord(path);
  if (record) {
    snapshot.record = std::move(*record);
  } else {
    snapshot.problems.push_back(record.Failure().Said());
  }
  if (singleFile) {
    if (Status dates = ReadDates(path, series, HashOf(snapshot.content), snapshot); !dates) {
      return dates.Failure();
    }
  }
  return snapshot;
}

/// Whoever saves goes from file to file; the log's bytes, which the others are bound to, tell of it.
Result<Snapshot> ReadSnapshot(const QString& path, const StationSeries& series, bool singleFile) {
  for (int reading = 1;; ++reading) {
    Result<Snapshot> snapshot = ReadOnce(path, series, singleFile);
    if (!snapshot) return snapshot;
    const auto again =
        ReadWholeFile(path, Wording{u"Değişiklik dosyası okunamadı", u"The change log could not be read"});
    if (!again) return again.Failure();
    if (*again == snapshot->content || reading == kMostReadings) return snapshot;
  }
}

void TellDates(const QString& path, const CorrectionReading& dates, std::vector<Message>& messages) {
  const QString fileName = QFileInfo(SavedCorrectionPath(path)).fileName();
  if (dates.unreadable > 0) {
    messages.emplace_back(Wording{u"%1: %2 satır okunamadı; bunların dosyaları cihazın zamanlarını gösterir",
                                  u"%1: %2 line(s) could not be read; their files have the logger's times"},
                          fileName, dates.unreadable);
  }
  if (dates.misfit) {
    messages.emplace_back(Wording{u"%1: kaydedilmiş tarih düzeltmesi bu kayıtlara uymuyor",
                                  u"%1: the saved date correction does not fit these readings"},
                          fileName);
  }
  if (dates.correction.target) {
    messages.emplace_back(Wording{u"%1: kayıt zamanları kaydedildiği gibi düzeltildi; son kayıt %2",
                                  u"%1: the readings are re-timed as saved, the last one to %2"},
                          fileName, DateTimeText(dates.correction.target->last));
  }
}

}  // namespace

ChangeLogOverlay ApplyChangeLog(QByteArrayView content, const QString& fileName, const ReviewRecord& record,
                                StationSeries& series, bool singleFile, const RowRange& within,
                                bool timesAreKnown) {
  return Overlay(fileName, series, singleFile, within, timesAreKnown).Lay(content, record);
}

Result<ChangeLogOverlay> LoadChangeLog(const QString& path, StationSeries& series, bool singleFile,
                                       const RowRange& within) {
  const Result<Snapshot> snapshot = ReadSnapshot(path, series, singleFile);
  if (!snapshot) return snapshot.Failure();
  if (snapshot->dates.correction.target) series.SetTarget(snapshot->dates.correction.target);
  ChangeLogOverlay overlay = ApplyChangeLog(snapshot->content, QFileInfo(path).fileName(), snapshot->record,
                                            series, singleFile, within, snapshot->dates.unreadable == 0);
  overlay.messages.insert(overlay.messages.begin(), snapshot->problems.begin(), snapshot->problems.end());
  overlay.correction = snapshot->dates.correction;
  overlay.path = path;
  overlay.hash = HashOf(snapshot->content);
  TellDates(path, snapshot->dates, overlay.messages);
  return overlay;
}

}  // namespace vesk

#include "review/change_log.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <utility>

#include "datafiles/dates.h"
#include "platform/code_page.h"
#include "platform/whole_file.h"
#include "review/change_log_rows.h"
#include "review/review_grid.h"

namespace vesk {
namespace {

QString LineText(const StationSeries& series, int row) {
  const QLatin1Char tab('\t');
  return CellText(series, row, GridColumn::Date) + tab + CellText(series, row, GridColumn::Time) + tab +
         CellText(series, row, GridColumn::Level) + tab + series.LoggedDischargeOf(row).text.simplified();
}

bool ChangedSinceSave(const RowState& state) {
  return state.mark.editCode != kSavedCode || state.levelCm != state.mark.baselineCm;
}

/// Forms a log and its record row by row.
class LogFormer {
 public:
  LogFormer(const StationSeries& series, const ChangeLogOverlay& overlay, const Authorship& author,
            const std::map<RowRef, Purpose>& purposes)
      : series_(series), overlay_(overlay), author_(author), purposes_(purposes) {}

  void AddShown(int shownRow) {
    const RowRef row = series_.RefOf(shownRow);
    AddLine({EncodeWindows1254(LineText(series_, shownRow)), Recorded(row)});
  }
  void AddHidden(const RowRef& row) { log_.state.hidden.push_back(Recorded(row)); }
  void AddKept() {
    for (const RecordedLine& line : overlay_.others) AddLine(line);
    for (const RecordedLine& line : overlay_.orphans) AddLine(line);
    log_.state.hidden.insert(log_.state.hidden.end(), overlay_.othersHidden.begin(),
                             overlay_.othersHidden.end());
  }
  ChangeLogToSave Finish() {
    log_.state.logHash = HashOf(log_.content);
    return std::move(log_);
  }

 private:
  void AddLine(RecordedLine line) {
    log_.content += line.text + "\r\n";
    log_.state.lines.push_back(std::move(line));
  }
  Correction Recorded(const RowRef& row) {
    const auto known = overlay_.authors.find(row);
    const bool isOld =
        known != overlay_.authors.end() && !ChangedSinceSave(series_.StateOf(row).value_or(RowState{}));
    Authorship by = isOld ? known->second : author_;
    const auto purpose = purposes_.find(row);
    if (!isOld && purpose != purposes_.end()) by.why = purpose->second;
    log_.authors[row] = by;
    return CorrectionOf(series_, row, by);
  }

  const StationSeries& series_;
  const ChangeLogOverlay& overlay_;
  Authorship author_;
  const std::map<RowRef, Purpose>& purposes_;
  ChangeLogToSave log_;
};

/// Corrected rows that a clock correction takes off the screen, or that only one puts there.
std::vector<RowRef> HiddenChanges(const StationSeries& series) {
  std::vector<RowRef> rows;
  if (series.Target()) {
    for (int row = 1; row <= series.Raw().ReadingCount(); ++row) {
      const bool hidden = series.Raw().At(row).kind != ReadingKind::Ordinary;
      if (hidden && series.Raw().IsChanged(row)) rows.push_back({.rawRow = row});
    }
  }
  for (const auto& [key, edit] : series.EditedExtremes()) {
    const RowRef row{.extreme = key};
    if (series.ShownRowOf(row) == 0) rows.push_back(row);
  }
  return rows;
}

}  // namespace

QString ChangeLogPath(const QString& dataDirectory, const StationId& station,
                      const std::optional<StationWaterYear>& year) {
  const QString entry = year ? (year->year.Text() + QLatin1Char(' ') + year->mark).trimmed() : QString();
  return dataDirectory + station.Text() + QStringLiteral("-Degisiklikler") + entry + QStringLiteral(".txt");
}

QString ChangeLogToRead(const QString& dataDirectory, const StationId& station,
                        const std::optional<StationWaterYear>& year) {
  QString given = ChangeLogPath(dataDirectory, station, year);
  if (!year) return given;
  QString newest = given;
  QDateTime newestTime = QFileInfo(given).lastModified();  // invalid when it is not there
  for (const QString& mark : {QString(), QStringLiteral("Dönüşmüş"), QStringLiteral("Ok.")}) {
    const QString path = ChangeLogPath(dataDirectory, station, StationWaterYear{year->year, mark});
    const QDateTime time = QFileInfo(path).lastModified();
    if (!time.isValid() || (newestTime.isValid() && time <= newestTime)) continue;
    newest = path;
    newestTime = time;
  }
  return newest;
}

std::optional<ChangeLogLine> ReadChangeLogLine(QByteArrayView bytes, Message& expected) {
  const QStringList fields = DecodeWindows1254(bytes).split(QLatin1Char('\t'));
  const auto day = ReadDate(fields.value(0));
  const auto minute = ReadClock(fields.value(1));
  const auto level = ReadLevel(fields.value(2));
  if (!day) {
    expected = Wording{u"gg/aa/yyyy biçiminde tarih", u"a date dd/mm/yyyy"};
  } else if (!minute) {
    expected = Wording{u"ss:dd biçiminde saat", u"a time hh:mm"};
  } else if (!level) {
    expected = Wording{u"cm olarak seviye", u"a level in cm"};
  } else {
    return ChangeLogLine{*day, WithinDay(*minute), *level, fields.value(3).simplified()};
  }
  return std::nullopt;
}

ChangeLogToSave FormChangeLog(const StationSeries& series, const ChangeLogOverlay& overlay,
                              const Authorship& author, const RowRange& within,
                              const std::map<RowRef, Purpose>& purposes) {
  LogFormer former(series, overlay, author, purposes);
  const int last = std::min(within.last, series.ReadingCount());
  for (int row = within.first; row <= last; ++row) {
    if (series.IsChanged(row)) former.AddShown(row);
  }
  for (const RowRef& row : HiddenChanges(series)) former.AddHidden(row);
  former.AddKept();
  return former.Finish();
}

Status SaveChangeLog(const QString& path, const ChangeLogToSave& log, ChangeLogOverlay& overlay) {
  const Message what = Wording{u"Değişiklik dosyası kaydedilemedi", u"The change log could not be saved"};
  const auto present = ReadWholeFile(path, what);
  if (!present) return present.Failure();
  const QByteArray presentHash = HashOf(*present);
  const Status recorded = UpdateReviewRecord(path, [&](ReviewRecord& record) {
    const RecordState* presentState = record.StateOf(presentHash);
    std::vector<RecordState> states{log.state};
    if (presentState && presentHash != log.state.logHash) states.push_back(*presentState);
    record.states = std::move(states);
  });
  if (!recorded) return recorded;
  overlay.triedHash = log.state.logHash;
  if (Status written = WriteWholeFile(path, log.content, what); !written) return written;
  overlay.path = path;
  overlay.hash = log.state.logHash;
  overlay.authors = log.authors;
  return {};
}

Result<bool> HasChangedSince(const ChangeLogOverlay& overlay) {
  const auto present = ReadWholeFile(
      overlay.path, Wording{u"Değişiklik dosyası okunamadı", u"The change log could not be read"});
  if (!present) return present.Failure();
  const QByteArray hash = HashOf(*present);
  return hash != overlay.hash && hash != overlay.triedHash;
}

void MarkSaved(StationSeries& series, const std::map<RowRef, Authorship>& rows) {
  std::vector<std::pair<RowRef, RowState>> states;
  for (const auto& [row, by] : rows) {
    auto state = series.StateOf(row);
    if (!state) continue;
    state->mark.baselineCm = state->levelCm;
    state->mark.editCode = kSavedCode;
    state->mark.shade = RowShade::Changed;
    states.emplace_back(row, std::move(*state));
  }
  series.SetStates(states);
}

}  // namespace vesk

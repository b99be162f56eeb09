#include "review/change_log.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/code_page.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

constexpr int kLastMinute = 1439;
constexpr std::size_t kMostMessages = 100;

/// Rows by time, so that a line is found at once wherever it stands.
class RowIndex {
 public:
  RowIndex(const ReviewGrid& grid, const RowRange& within) {
    const int last = std::min(within.last, grid.ReadingCount());
    entries_.reserve(static_cast<std::size_t>(std::max(last - within.first + 1, 0)));
    for (int row = within.first; row <= last; ++row) entries_.emplace_back(grid.At(row).Time(), row);
    if (!std::is_sorted(entries_.begin(), entries_.end())) std::sort(entries_.begin(), entries_.end());
  }

  /// First row at or after startRow with that time; 0 when there is none.
  [[nodiscard]] int Find(DateTime time, int startRow) const {
    const auto found = std::lower_bound(entries_.begin(), entries_.end(), Entry{time, startRow});
    return found != entries_.end() && found->first == time ? found->second : 0;
  }

 private:
  using Entry = std::pair<DateTime, int>;
  std::vector<Entry> entries_;
};

/// Takes the next line off the content, without its end.
QByteArrayView TakeLine(QByteArrayView& content) {
  const qsizetype end = content.indexOf('\n');
  QByteArrayView line = end < 0 ? content : content.first(end);
  content = end < 0 ? QByteArrayView() : content.sliced(end + 1);
  if (line.endsWith('\r')) line.chop(1);
  return line;
}

/// Reads a line; on failure `expected` says what a field should have held.
std::optional<ChangeLogLine> ReadLine(QByteArrayView bytes, QString& expected) {
  const QStringList fields = DecodeWindows1254(bytes).split(QLatin1Char('\t'));
  const auto day = ReadDate(fields.value(0));
  const auto minute = ReadClock(fields.value(1));
  const auto level = ReadLevel(fields.value(2));
  if (!day) {
    expected = QStringLiteral("a date dd/mm/yyyy");
  } else if (!minute) {
    expected = QStringLiteral("a time hh:mm");
  } else if (!level) {
    expected = QStringLiteral("a level in cm");
  } else {
    return ChangeLogLine{*day, std::min(*minute, kLastMinute), *level, fields.value(3).simplified()};
  }
  return std::nullopt;
}

void LayOver(ReviewGrid& grid, int row, const ChangeLogLine& line) {
  grid.SetLevel(row, line.levelCm);
  grid.SetDischarge(row, line.discharge);
  RowMark mark = grid.Mark(row);
  mark.editCode = kSavedCode;
  mark.shade = RowShade::Changed;
  grid.SetMark(row, mark);
}

/// Where the search of a log stands.
struct Search {
  int previousRow = 0;
  DateTime previousTime{};

  /// Row of a line: from the previous hit on, then from row 1. A line with the time of the one before belongs
  /// to the next row of that time, where there is one: an extreme record often shares its reading's minute.
  int Next(const RowIndex& index, DateTime time) {
    int row = 0;
    if (previousRow > 0 && time == previousTime) row = index.Find(time, previousRow + 1);
    if (row == 0) row = index.Find(time, std::max(previousRow, 1));
    if (row == 0) row = index.Find(time, 1);
    if (row == 0) return 0;
    previousRow = row;
    previousTime = time;
    return row;
  }
};

/// Finds the rows of a log's lines among the rows that it is about. A log can have been saved for several
/// years in one: its other lines go to rows of the other years, but to none that has a line already.
class RowFinder {
 public:
  RowFinder(const ReviewGrid& grid, const RowRange& within)
      : grid_(grid),
        own_(grid, within),
        hasOthers_(within.first <= within.last && (within.first > 1 || within.last < grid.ReadingCount())) {}

  int Find(DateTime time) {
    const int row = ownSearch_.Next(own_, time);
    return row == 0 && hasOthers_ ? FindAmongOthers(time) : row;
  }

 private:
  int FindAmongOthers(DateTime time) {
    if (!all_) all_.emplace(grid_, RowRange{});
    const int row = allSearch_.Next(*all_, time);
    return row > 0 && grid_.Mark(row).editCode != kSavedCode ? row : 0;
  }

  const ReviewGrid& grid_;
  RowIndex own_;
  bool hasOthers_;
  Search ownSearch_;
  std::optional<RowIndex> all_;
  Search allSearch_;
};

void AddUnreadable(ChangeLogOverlay& overlay, const QString& fileName, qint64 lineNumber,
                   const QString& expected) {
  ++overlay.unreadable;
  if (overlay.messages.size() >= kMostMessages) return;
  overlay.messages.push_back(
      QStringLiteral("%1, line %2: expected %3").arg(fileName).arg(lineNumber).arg(expected));
}

QString LineText(const ReviewGrid& grid, int row) {
  const QLatin1Char tab('\t');
  return grid.Text(row, GridColumn::Date) + tab + grid.Text(row, GridColumn::Time) + tab +
         grid.Text(row, GridColumn::Level) + tab + grid.Text(row, GridColumn::Discharge).simplified();
}

/// The rows to write so that the next load finds the changed ones. A line names its row by date and time
/// only, and an extreme record often has the minute of an ordinary reading further up: that reading's line,
/// unchanged, goes first.
std::vector<int> WithAnchors(const ReviewGrid& grid, const std::vector<int>& changedRows,
                             const RowRange& within) {
  std::vector<int> rows;
  if (changedRows.empty()) return rows;
  const RowIndex index(grid, within);
  Search search;
  for (const int changed : changedRows) {
    const DateTime time = grid.At(changed).Time();
    int found = search.Next(index, time);
    for (; found != 0 && found < changed; found = search.Next(index, time)) rows.push_back(found);
    rows.push_back(changed);
  }
  return rows;
}

void AddOrphanCount(ChangeLogOverlay& overlay, const QString& fileName) {
  const int count = static_cast<int>(overlay.orphans.size()) - overlay.unreadable;
  if (count == 0) return;
  overlay.messages.push_back(
      QStringLiteral("%1: %2 line(s) belong to no reading of this load; they are kept for the next save")
          .arg(fileName)
          .arg(count));
}

QString DatesNote(const QString& path, const SavedCorrection& correction, bool applied) {
  const QString fileName = QFileInfo(SavedCorrectionPath(path)).fileName();
  if (!applied)
    return QStringLiteral("%1: the saved date correction does not fit these readings").arg(fileName);
  return QStringLiteral("%1: the readings are re-timed as saved, the last one to %2")
      .arg(fileName, DateTimeText(correction.targets.back()));
}

}  // namespace

QString ChangeLogPath(const QString& dataDirectory, const QString& station, const QString& waterYearEntry) {
  return dataDirectory + station + QStringLiteral("-Degisiklikler") + waterYearEntry.trimmed() +
         QStringLiteral(".txt");
}

QString ChangeLogToRead(const QString& dataDirectory, const QString& station, const QString& waterYearEntry) {
  QString given = ChangeLogPath(dataDirectory, station, waterYearEntry);
  const QString year = waterYearEntry.trimmed().left(4);
  if (year.isEmpty()) return given;
  QString newest = given;
  QDateTime newestTime = QFileInfo(given).lastModified();  // invalid when it is not there
  for (const QString& mark : {QString(), QStringLiteral(" Dönüşmüş"), QStringLiteral(" Ok.")}) {
    const QString path = ChangeLogPath(dataDirectory, station, year + mark);
    const QDateTime time = QFileInfo(path).lastModified();
    if (!time.isValid() || (newestTime.isValid() && time <= newestTime)) continue;
    newest = path;
    newestTime = time;
  }
  return newest;
}

ChangeLogOverlay ApplyChangeLog(QByteArrayView content, const QString& fileName, ReviewGrid& grid,
                                const RowRange& within) {
  ChangeLogOverlay overlay;
  if (content.isEmpty()) return overlay;
  RowFinder finder(grid, within);
  for (qint64 lineNumber = 1; !content.isEmpty(); ++lineNumber) {
    const QByteArrayView bytes = TakeLine(content);
    if (bytes.trimmed().isEmpty()) continue;
    QString expected;
    const auto line = ReadLine(bytes, expected);
    if (!line) AddUnreadable(overlay, fileName, lineNumber, expected);
    const int row = line ? finder.Find(DateTime(line->day) + std::chrono::minutes(line->minuteOfDay)) : 0;
    if (row == 0) {
      overlay.orphans.push_back(bytes.toByteArray());
      continue;
    }
    LayOver(grid, row, *line);
    ++overlay.applied;
  }
  return overlay;
}

Result<ChangeLogOverlay> LoadChangeLog(const QString& path, ReviewGrid& grid, const RowRange& within) {
  const Result<SavedCorrection> correction = ReadSavedCorrection(path, grid);
  if (!correction) return correction.Failure();
  const Result<QByteArray> content = ReadWholeFile(path, QStringLiteral("The change log could not be read"));
  if (!content) return content.Failure();
  const QString fileName = QFileInfo(path).fileName();
  if (!correction->targets.empty()) {
    // A first run finds the corrected levels, so that the second one computes the daily extremes from them.
    ReviewGrid trial = grid;
    ApplySavedCorrection(*correction, trial);
    ApplyChangeLog(*content, fileName, trial);
    TakeLevels(trial, grid);
  }
  const bool corrected = ApplySavedCorrection(*correction, grid);
  ChangeLogOverlay overlay = ApplyChangeLog(*content, fileName, grid, within);
  overlay.correction = *correction;
  AddOrphanCount(overlay, fileName);
  if (!correction->targets.empty()) {
    overlay.messages.push_back(DatesNote(path, *correction, corrected));
  }
  return overlay;
}

std::vector<int> RowsToSave(const ReviewGrid& grid) {
  std::vector<int> rows;
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    if (grid.IsChanged(row)) rows.push_back(row);
  }
  return rows;
}

QByteArray ChangeLogContent(const ReviewGrid& grid, const std::vector<int>& rows,
                            const std::vector<QByteArray>& orphans, const RowRange& within) {
  QByteArray content;
  for (const int row : WithAnchors(grid, rows, within)) {
    content += EncodeWindows1254(LineText(grid, row)) + "\r\n";
  }
  for (const QByteArray& orphan : orphans) content += orphan + "\r\n";
  return content;
}

Status SaveChangeLog(const QString& path, ReviewGrid& grid, const std::vector<int>& rows,
                     const std::vector<QByteArray>& orphans, const RowRange& within) {
  const QString what = QStringLiteral("The change log could not be saved");
  Status saved = WriteWholeFile(path, ChangeLogContent(grid, rows, orphans, within), what);
  if (!saved) return saved;
  for (const int row : rows) {
    RowMark mark = grid.Mark(row);
    mark.baselineCm = grid.At(row).levelCm;
    mark.editCode = kSavedCode;
    grid.SetMark(row, mark);
  }
  return saved;
}

}  // namespace vesk

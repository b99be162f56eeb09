#include "torture/desk.h"
#include "datafiles/dates.h"

#include "datafiles/archive.h"
#include "review/raw_files.h"

namespace vesk::torture {
namespace {

constexpr qsizetype kStemCharacters = 16;

std::vector<RawFile> FilesFor(const Choice& choice) {
  std::vector<RawFile> files = FilesInUse(ListRawFiles(choice.folder, StationId(choice.station)));
  if (choice.years.empty()) {
    std::erase_if(files,
                  [&](const RawFile& file) { return file.listName.left(kStemCharacters) != choice.stem; });
  }
  ReadHeaders(choice.folder, files);
  return files;
}

/// Any row: half of the time an extreme, where there are any.
int AnyRow(Random& random, const StationSeries& grid) {
  int row = 1 + random.Below(grid.ReadingCount());
  const bool extreme = random.OneIn(2);
  for (int tries = 0; tries < grid.ReadingCount(); ++tries) {
    if ((grid.At(row).kind != ReadingKind::Ordinary) == extreme) return row;
    row = row % grid.ReadingCount() + 1;
  }
  return row;
}

QString AnyLevel(Random& random, const StationSeries& grid, int row) {
  const int level = static_cast<int>(grid.At(row).levelCm);
  switch (random.Below(6)) {
    case 0:
      return QString::number(random.Below(9999));  // a spike
    case 1:
      return QString::number(-random.Below(300));  // dry
    case 2:
      return QString::number(level + random.Below(5) - 2);  // a touch
    case 3:
      return QStringLiteral("%1,%2").arg(level).arg(1 + random.Below(9));
    case 4:
      return QString::number(grid.At(1 + random.Below(grid.ReadingCount())).levelCm);
    default:
      return QString::number(100 + random.Below(400));
  }
}

QString AnyTarget(Random& random, const StationSeries& grid) {
  DateTime first = DateTime::max();
  DateTime last = DateTime::min();
  for (const Reading& reading : grid.ReadingsAsShown()) {
    if (reading.kind != ReadingKind::Ordinary) continue;
    first = std::min(first, reading.Time());
    last = std::max(last, reading.Time());
  }
  const DateTime target = last + std::chrono::minutes(random.Below(1200) - 500);
  return DateTimeText(std::max(target, first + std::chrono::minutes(30)));
}

}  // namespace

QByteArray LineOf(const Screen& screen) {
  QByteArray line;
  for (const ScreenRow& row : screen) line += row.Text() + ';';
  return line;
}

QByteArray DifferenceOf(const QByteArray& expected, const QByteArray& shown) {
  const QByteArrayList a = expected.split(';');
  const QByteArrayList b = shown.split(';');
  QByteArray text = QByteArray::number(a.size() - 1) + " and " + QByteArray::number(b.size() - 1) + " rows";
  int told = 0;
  for (qsizetype i = 0; i < std::max(a.size(), b.size()) && told < 4; ++i) {
    if (a.value(i) == b.value(i)) continue;
    ++told;
    text += "; row " + QByteArray::number(i + 1) + " expected \"" + a.value(i) + "\", shown \"" + b.value(i) +
            '"';
  }
  return text;
}

QStringList Desk::Tidy(const QString& folder) {
  QStringList failures;
  for (const Message& failure : RenameRawFiles(folder).failures) failures << failure.English();
  std::vector<QString> names;
  for (const RawFile& file : ListRawFiles(folder)) names.push_back(file.listName);
  for (const Error& failure : ArchiveDuplicateRawFiles(folder, names).failures) failures << failure.English();
  return failures;
}

QString Desk::Open(const Choice& choice, bool restore) {
  session_ = std::make_unique<EditSession>();
  messages_.clear();
  stems_.clear();
  whole_ = journalFailed_ = false;
  unfit_ = 0;
  LoadRequest request;
  request.dataDirectory = choice.folder;
  request.station = StationId(choice.station);
  request.files = FilesFor(choice);
  WaterYears years;
  for (const int year : choice.years) years.years.push_back({{year}});
  if (!choice.years.empty()) request.choice = years;
  for (const RawFile& file : request.files) stems_ << file.listName.left(kStemCharacters);
  auto loaded = LoadReadings(request);
  if (!loaded) return loaded.Failure().English();
  for (const auto& message : loaded->messages) messages_ << message.English();
  whole_ = loaded->whole;
  QObject::connect(session_.get(), &EditSession::JournalFailed, session_.get(),
                   [this](const Error&) { journalFailed_ = true; });
  session_->Begin(std::move(*loaded));
  if (!restore) return {};
  const auto pending = session_->Pending();
  if (!pending) return pending.Failure().English();
  if (!pending->Empty()) unfit_ = session_->Restore(*pending);
  return {};
}

Screen Desk::Shown() const {
  const StationSeries& grid = session_->Series();
  Screen screen;
  screen.reserve(static_cast<std::size_t>(grid.ReadingCount()));
  for (int row = 1; row <= grid.ReadingCount(); ++row) {
    const auto text = [&](GridColumn column) { return CellText(grid, row, column).toLatin1(); };
    const Reading& reading = grid.At(row);
    screen.push_back({text(GridColumn::Date), text(GridColumn::Time), text(GridColumn::Level),
                      text(GridColumn::Label), text(GridColumn::Code), grid.IsChanged(row),
                      stems_.value(reading.sourceFile - 1).toLatin1(), static_cast<long>(reading.levelByte)});
  }
  return screen;
}

QByteArray Deed::Text() const {
  static constexpr const char* kWords[] = {"edit", "undo",          "redo", "undo all",
                                           "save", "correct dates", "range"};
  QByteArray text = kWords[static_cast<int>(kind)];
  if (kind == Kind::Edit) text += " row " + QByteArray::number(row) + " to " + typed.toUtf8();
  if (kind == Kind::CorrectDates) text += " to " + typed.toUtf8();
  if (kind == Kind::Range)
    text += " rows " + QByteArray::number(row) + " to " + QByteArray::number(lastRow) + ' ' +
            OperationWord(range.operation).toLatin1() + ' ' + QByteArray::number(range.firstCm);
  if (!done) text += " (not done: " + why.toUtf8() + ')';
  return text;
}

Deed NextDeed(Random& random, const Desk& desk, EditSession& session) {
  const int dice = random.Below(100);
  Deed deed;
  deed.kind = dice < 45   ? Deed::Kind::Edit
              : dice < 60 ? Deed::Kind::Range
              : dice < 74 ? Deed::Kind::Undo
              : dice < 82 ? Deed::Kind::Redo
              : dice < 92 ? Deed::Kind::Save
              : dice < 93 ? Deed::Kind::UndoAll
                          : Deed::Kind::CorrectDates;
  if (deed.kind == Deed::Kind::CorrectDates && !session.CanCorrectDates()) deed.kind = Deed::Kind::Edit;
  if (desk.Rows() == 0) deed.kind = Deed::Kind::Save;
  if (deed.kind == Deed::Kind::Edit) {
    deed.row = AnyRow(random, session.Series());
    deed.typed = AnyLevel(random, session.Series(), deed.row);
  }
  if (deed.kind == Deed::Kind::CorrectDates) deed.typed = AnyTarget(random, session.Series());
  if (deed.kind == Deed::Kind::Range) {
    deed.row = AnyRow(random, session.Series());
    deed.lastRow = deed.row + random.Below(12);
    deed.range = {.operation = static_cast<RangeOperation>(random.Below(5)),
                  .firstCm = random.Below(40) - 20.0,
                  .lastCm = random.Below(40) - 20.0,
                  .exact = random.OneIn(3)};
  }
  return deed;
}

/// The records of the days go along, as operators mostly want it.
Result<int> CorrectRange(const Deed& deed, EditSession& session) {
  auto changes = ProposeCorrection(session.Series(), {deed.row, deed.lastRow}, deed.range);
  if (!changes) return changes.Failure();
  const std::vector<LevelChange> records = RecordsConcerned(session.Series(), *changes);
  changes->insert(changes->end(), records.begin(), records.end());
  return session.Correct(*changes, {OperationWord(deed.range.operation), QStringLiteral("a reason\t\n%")});
}

void Do(Deed& deed, EditSession& session) {
  const auto take = [&deed](const auto& result) {
    deed.done = static_cast<bool>(result);
    if (!result) deed.why = result.Failure().English();
  };
  switch (deed.kind) {
    case Deed::Kind::Edit:
      take(session.EditLevel(deed.row, deed.typed));
      break;
    case Deed::Kind::CorrectDates:
      take(session.CorrectDates(deed.typed));
      break;
    case Deed::Kind::Range:
      take(CorrectRange(deed, session));
      break;
    case Deed::Kind::Save:
      take(session.Save());
      break;
    case Deed::Kind::Undo:
      deed.done = session.UndoStep().has_value();
      break;
    case Deed::Kind::Redo:
      deed.done = session.RedoStep().has_value();
      break;
    case Deed::Kind::UndoAll:
      session.UndoAll();
      deed.done = true;
      break;
  }
}

}  // namespace vesk::torture

#include "ratings/gaugings_csv.h"

#include <QFileInfo>

#include <algorithm>

#include "platform/csv.h"
#include "platform/separated_text.h"
#include "platform/whole_file.h"
#include "ratings/gauging_columns.h"

namespace vesk {
namespace {

constexpr Wording kReadFailed{u"Debi ölçümleri okunamadı", u"The gaugings could not be read"};
/// As files have them. `used` is last: a line that was cut shows by its lack.
constexpr std::array kFileOrder = {GaugingField::Level,  GaugingField::Discharge, GaugingField::Uncertainty,
                                   GaugingField::Time,   GaugingField::Method,    GaugingField::Party,
                                   GaugingField::Remark, GaugingField::Used};

bool IsFigureField(GaugingField field) {
  return field == GaugingField::Level || field == GaugingField::Discharge ||
         field == GaugingField::Uncertainty;
}

/// A line that some spreadsheets write in front: "sep=;".
std::optional<QChar> TakeSeparatorLine(QStringView& text) {
  static constexpr QStringView kBegin = u"sep=";
  if (!text.startsWith(kBegin, Qt::CaseInsensitive) || text.size() <= kBegin.size()) return std::nullopt;
  const QStringView behind = text.mid(kBegin.size() + 1);
  if (!behind.startsWith(u'\n') && !behind.startsWith(u'\r')) return std::nullopt;
  const QChar separator = text[kBegin.size()];
  text = behind;  // its line end stays, so that lines count as in the file
  return separator;
}

/// What parts the cells: what the header shows, else the first of these that the first line has.
QChar SeparatorOf(QStringView text) {
  constexpr char16_t kSeparators[] = {u'\t', u';', u','};
  const auto firstLine = [&text](QChar separator) {
    const std::vector<CellLine> lines = TakeCellsApart(text, separator);
    return lines.empty() ? QStringList() : lines.front().cells;
  };
  qsizetype most = 0;
  QChar found = u',';
  for (const QChar separator : kSeparators) {
    const QStringList cells = firstLine(separator);
    const auto known =
        std::ranges::count_if(cells, [](const QString& cell) { return IsGaugingHeader({cell}); });
    if (known > most) found = separator;
    most = std::max<qsizetype>(most, known);
  }
  if (most > 0) return found;
  for (const QChar separator : kSeparators) {
    if (firstLine(separator).size() > 1) return separator;
  }
  return found;
}

/// Reads the lines of one table.
class TableReader {
 public:
  TableReader(GaugingColumns columns, const DecimalMarks& marks, const Message& name)
      : columns_(std::move(columns)), marks_(marks), name_(name) {}

  void Take(const CellLine& line) {
    Gauging gauging;
    const Message fault = FaultOf(line, gauging);
    if (fault.IsEmpty()) {
      read_.gaugings.push_back(gauging);
      read_.lines.push_back(line.number);
    } else {
      read_.refused.push_back(AtLine(line.number, fault));
    }
  }

  void Note(int line, const Message& note) { read_.notes.push_back(AtLine(line, note)); }
  GaugingsRead Finish() { return std::move(read_); }

 private:
  [[nodiscard]] Message AtLine(int line, const Message& what) const {
    return {Wording{u"%1, satır %2: %3", u"%1, line %2: %3"}, name_, line, what};
  }

  /// Puts the cells into the gauging; empty when all went well.
  Message FaultOf(const CellLine& line, Gauging& gauging) {
    if (!line.quotesOk)
      return Wording{u"tırnaklar eşleşmiyor; beklenen her tırnaklı hücrenin sonunda bir tırnak",
                     u"the quotes do not match; expected one at the end of each quoted cell"};
    if (IsGaugingHeader({CellOf(line, GaugingField::Discharge)}))
      return Wording{u"başlık bir kez daha; beklenen bir ölçüm", u"the header once more; expected a gauging"};
    const bool tooMany =
        std::any_of(line.cells.begin() + std::min<qsizetype>(columns_.count, line.cells.size()),
                    line.cells.end(), [](const QString& cell) { return !cell.trimmed().isEmpty(); });
    if (tooMany)
      return {Wording{u"beklenen %1 hücre; %2 var", u"expected %1 cells, found %2"}, columns_.count,
              line.cells.size()};
    if (IsCut(line))
      return Wording{u"dosya bu satırın ortasında bitiyor; beklenen tam bir satır",
                     u"the file ends in the middle of this line; expected a whole one"};
    for (const GaugingField field : kGaugingFields) {
      if (Message fault = TakeCell(line, field, gauging); !fault.IsEmpty()) return fault;
    }
    return LookAtClock(line, gauging);
  }

  /// Without a line end, and without the cells that a whole line has.
  [[nodiscard]] bool IsCut(const CellLine& line) const {
    if (line.ended || !columns_.header) return false;
    const int used = columns_.Of(GaugingField::Used);
    const bool usedIsLast = used == columns_.count - 1;
    return line.cells.size() < columns_.count || (usedIsLast && line.cells.value(used).trimmed().isEmpty());
  }

  [[nodiscard]] QString CellOf(const CellLine& line, GaugingField field) const {
    const QString cell = WithoutGuard(line.cells.value(columns_.Of(field)));
    if (field != GaugingField::Time || columns_.clock < 0) return cell;
    return (cell.trimmed() + u' ' + line.cells.value(columns_.clock).trimmed()).trimmed();
  }

  Message TakeCell(const CellLine& line, GaugingField field, Gauging& gauging) const {
    const QString cell = CellOf(line, field);
    Message expected;
    if (IsFigureField(field) && marks_.Ambiguous(cell)) {
      expected = Wording{
          u"beklenen binlik ayracı olmayan bir sayı; burada nokta veya virgülün hangisi olduğu belli değil",
          u"expected a number without marks of thousands; here a point or comma may be either"};
    } else if (columns_.Of(field) >= 0 || field == GaugingField::Discharge) {
      expected = TakeField(gauging, field, cell);
    }
    if (expected.IsEmpty()) return {};
    return {Wording{u"%1: “%2”; %3", u"%1: \"%2\"; %3"}, Message(TitleOf(field)), cell.trimmed(), expected};
  }

  /// A date alone tells no level of the recording.
  Message LookAtClock(const CellLine& line, const Gauging& gauging) {
    if (!gauging.time || HasClock(CellOf(line, GaugingField::Time))) return {};
    if (!gauging.levelCm)
      return Wording{u"seviye de saat de yok; beklenen bir seviye ya da saatiyle birlikte tarih",
                     u"neither a level nor a clock time; expected a level, or a date with its clock time"};
    if (!notedClock_)
      Note(line.number, Wording{u"saat yok; bu ve benzer satırlar 00:00 olarak alındı",
                                u"there is no clock time; this line and others like it are taken as 00:00"});
    notedClock_ = true;
    return {};
  }

  GaugingColumns columns_;
  const DecimalMarks& marks_;
  const Message& name_;
  GaugingsRead read_;
  bool notedClock_ = false;
};

/// Quoted for a spreadsheet's clipboard.
QString TabbedCell(const QString& text) {
  QString cell = HarmlessCell(WithGuard(text));
  const bool plain =
      std::ranges::none_of(cell, [](QChar c) { return c == u'\t' || c == u'"' || c == u'\n' || c == u'\r'; });
  if (plain) return cell;
  return u'"' + cell.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

/// "1.234" could be a thousand and more to whoever reads it; "1.2340" cannot.
QString ClearFigure(QString figure) {
  const auto point = figure.indexOf(u'.');
  constexpr int kThousand = 3;
  return point >= 0 && figure.size() - point - 1 == kThousand ? figure + u'0' : figure;
}

}  // namespace

Result<GaugingsRead> ReadGaugingsText(const QString& text, const Message& name) {
  QStringView rest = text;
  const std::optional<QChar> told = TakeSeparatorLine(rest);
  const QChar separator = told ? *told : SeparatorOf(rest);
  const std::vector<CellLine> lines = TakeCellsApart(rest, separator);
  const auto failure = [&name](const Message& reason) {
    return Error{kReadFailed, {}, Message::Joined({name, reason}, QStringLiteral(": "))};
  };
  if (lines.empty())
    return failure(
        Wording{u"boş; beklenen bir başlık ve ölçümler", u"empty; expected a header and gaugings"});
  const auto columns = FindGaugingColumns(lines);
  if (!columns) {
    return failure(
        Message(Wording{u"satır %1: %2", u"line %1: %2"}, lines.front().number, columns.Failure()));
  }
  const DecimalMarks marks(lines, *columns, separator);
  TableReader reader(*columns, marks, name);
  for (const Message& unknown : columns->unknown) reader.Note(lines.front().number, unknown);
  for (auto line = lines.begin() + (columns->header ? 1 : 0); line != lines.end(); ++line) reader.Take(*line);
  return reader.Finish();
}

Result<GaugingsRead> ReadGaugingsBytes(QByteArrayView bytes, const QString& name) {
  const auto text = DecodeText(bytes);
  if (!text)
    return Error{kReadFailed, name,
                 Wording{u"bu bir metin dosyası değil; beklenen CSV", u"it is no text; expected CSV"}};
  return ReadGaugingsText(*text, Message::Verbatim(name));
}

Result<GaugingsRead> ReadGaugingsCsv(const QString& path) {
  if (!QFileInfo::exists(path))
    return Error{kReadFailed, path, Wording{u"böyle bir dosya yok", u"there is no such file"}};
  const auto bytes = ReadWholeFile(path, kReadFailed);
  if (!bytes) return bytes.Failure();
  return ReadGaugingsBytes(*bytes, path);
}

QByteArray GaugingsCsv(const std::vector<Gauging>& gaugings) {
  QByteArray text;
  CsvLines csv(text);
  for (const GaugingField field : kFileOrder) csv.Plain() += NameOf(field).toLatin1();
  csv.EndLine();
  for (const Gauging& gauging : gaugings) {
    for (const GaugingField field : kFileOrder) csv.Cell(WithGuard(TextOf(gauging, field)));
    csv.EndLine();
  }
  return text;
}

QString GaugingsTabbed(const std::vector<Gauging>& gaugings, LanguageChoice language) {
  QStringList lines;
  QStringList cells;
  for (const GaugingField field : kGaugingFields) cells += Message(TitleOf(field)).In(language);
  lines += cells.join(u'\t');
  for (const Gauging& gauging : gaugings) {
    cells.clear();
    for (const GaugingField field : kGaugingFields) {
      const QString text = TextOf(gauging, field);
      cells += TabbedCell(IsFigureField(field) ? ClearFigure(text) : text);
    }
    lines += cells.join(u'\t');
  }
  return lines.join(u'\n') + u'\n';
}

}  // namespace vesk

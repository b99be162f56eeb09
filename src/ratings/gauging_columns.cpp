#include "ratings/gauging_columns.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace vesk {
namespace {

constexpr std::array kWithoutTime = {GaugingField::Level,  GaugingField::Discharge, GaugingField::Uncertainty,
                                     GaugingField::Time,   GaugingField::Method,    GaugingField::Party,
                                     GaugingField::Remark, GaugingField::Used};
constexpr int kClockColumn = -2;
constexpr int kUnknownColumn = -1;

/// Letters and digits alone, the letters i as one, so that "Debi (m³/s)" and "debi_m3s" are one name.
QString NameKey(QString name) {
  for (const char16_t letter : {u'I', u'\u0130', u'\u0131'}) name.replace(QChar(letter), u'i');
  name.replace(u'\u00b3', u'3');
  QString key;
  for (const QChar c : name.toLower()) {
    if (c.isLetterOrNumber() || c == u'%') key += c;
  }
  return key;
}

/// Place of the field; kClockColumn for a clock time beside a date, kUnknownColumn otherwise.
int FieldOf(const QString& name) {
  static constexpr std::pair<QStringView, GaugingField> kOthers[] = {
      {u"tarih", GaugingField::Time},       {u"zaman", GaugingField::Time},
      {u"date", GaugingField::Time},        {u"datetime", GaugingField::Time},
      {u"level [cm]", GaugingField::Level}, {u"kullanılır", GaugingField::Used}};
  const QString key = NameKey(name);
  if (key == u"saat" || key == u"clock") return kClockColumn;
  for (const GaugingField field : kGaugingFields) {
    const Message title = TitleOf(field);
    for (const QString& known : {NameOf(field), title.In(LanguageChoice::Turkish), title.English()}) {
      if (key == NameKey(known)) return static_cast<int>(field);
    }
  }
  for (const auto& [known, field] : kOthers) {
    if (key == NameKey(known.toString())) return static_cast<int>(field);
  }
  return kUnknownColumn;
}

/// A name that says what is measured and not in which unit.
bool LeavesUnitOpen(const QString& name) {
  static constexpr QStringView kBegins[] = {u"level", u"stage",    u"seviye",     u"discharge",
                                            u"debi",  u"belirsiz", u"uncertainty"};
  const QString key = NameKey(name);
  return std::ranges::any_of(kBegins, [&key](QStringView begin) { return key.startsWith(begin); });
}

QString KnownNames() {
  QStringList names;
  for (const GaugingField field : kWithoutTime) names += NameOf(field);
  return names.join(QStringLiteral(", "));
}

Message Expecting(const Wording& found, const QString& name) {
  return Message::Joined({Message(found, name),
                          Message(Wording{u"beklenen sütunlar: %1", u"expected columns: %1"}, KnownNames())},
                         QStringLiteral("; "));
}

Result<GaugingColumns, Message> ByHeader(const QStringList& names) {
  GaugingColumns columns{.count = static_cast<int>(names.size()), .header = true, .unknown = {}};
  for (int place = 0; place < columns.count; ++place) {
    const QString name = names[place].trimmed();
    const int field = FieldOf(name);
    if (name.isEmpty()) continue;
    if (field == kUnknownColumn && LeavesUnitOpen(name))
      return Expecting({u"“%1” sütununun birimi bilinmiyor", u"column \"%1\" does not tell its unit"}, name);
    if (field == kUnknownColumn) {
      columns.unknown.emplace_back(
          Wording{u"“%1” sütunu bilinmiyor; alınmadı", u"column \"%1\" is not known; it is left out"}, name);
      continue;
    }
    int& taken = field == kClockColumn ? columns.clock : columns.of[static_cast<std::size_t>(field)];
    if (taken >= 0) return Expecting({u"“%1” iki kez var", u"\"%1\" is there twice"}, name);
    taken = place;
  }
  const bool placed = columns.Of(GaugingField::Level) >= 0 || columns.Of(GaugingField::Time) >= 0;
  if (columns.Of(GaugingField::Discharge) >= 0 && placed) return columns;
  const GaugingField missing =
      columns.Of(GaugingField::Discharge) < 0 ? GaugingField::Discharge : GaugingField::Level;
  return Expecting({u"%1 sütunu yok", u"there is no column %1"}, NameOf(missing));
}

bool IsTime(const QString& text) {
  Gauging gauging;
  return TakeField(gauging, GaugingField::Time, text).IsEmpty() && gauging.time;
}

bool IsFigure(const QString& text) {
  Gauging gauging;
  return TakeField(gauging, GaugingField::Level, text).IsEmpty() && gauging.levelCm;
}

Result<GaugingColumns, Message> ByOrder(const std::vector<CellLine>& lines) {
  const auto tells = [](const QString& cell) { return IsTime(cell) || IsFigure(cell); };
  const auto first = [](const CellLine& line) { return line.cells.value(0).trimmed(); };
  const bool anyFirst =
      std::ranges::any_of(lines, [&](const CellLine& line) { return !first(line).isEmpty(); });
  if (!anyFirst || !std::ranges::any_of(lines.front().cells, tells)) {
    return Message::Joined(
        {Wording{u"bu satır ne başlık ne de ölçüm", u"this is neither a header nor a gauging"},
         Message(Wording{u"beklenen sütunlar: %1", u"expected columns: %1"}, KnownNames())},
        QStringLiteral("; "));
  }
  const bool timeFirst =
      std::ranges::any_of(lines, [&](const CellLine& line) { return IsTime(first(line)); });
  GaugingColumns columns{.count = static_cast<int>(kGaugingFields.size()), .unknown = {}};
  for (int place = 0; place < columns.count; ++place) {
    const auto at = static_cast<std::size_t>(place);
    const GaugingField field = timeFirst ? kGaugingFields[at] : kWithoutTime[at];
    columns.of[static_cast<std::size_t>(field)] = place;
  }
  return columns;
}

/// One mark with three digits behind it, as thousands are parted.
bool LooksLikeThousands(const QString& figure) {
  static const QRegularExpression shape(QStringLiteral("\\A[+-]?[1-9][0-9]{0,2}[.,][0-9]{3}\\z"));
  return shape.match(figure).hasMatch();
}

}  // namespace

bool IsGaugingHeader(const QStringList& cells) {
  const auto known = [](const QString& cell) {
    return !cell.trimmed().isEmpty() && FieldOf(cell) != kUnknownColumn;
  };
  return std::ranges::any_of(cells, known) && std::ranges::none_of(cells, IsFigure);
}

Result<GaugingColumns, Message> FindGaugingColumns(const std::vector<CellLine>& lines) {
  return IsGaugingHeader(lines.front().cells) ? ByHeader(lines.front().cells) : ByOrder(lines);
}

DecimalMarks::DecimalMarks(const std::vector<CellLine>& lines, const GaugingColumns& columns, QChar separator)
    : commasPartCells_(separator == u',') {
  for (const CellLine& line : lines) {
    for (const GaugingField field :
         {GaugingField::Level, GaugingField::Discharge, GaugingField::Uncertainty}) {
      const QString figure = line.cells.value(columns.Of(field)).trimmed();
      if (LooksLikeThousands(figure) || !IsFigure(figure)) continue;
      comma_ = comma_ || figure.contains(u',');
      point_ = point_ || figure.contains(u'.');
    }
  }
}

bool DecimalMarks::Ambiguous(const QString& figure) const {
  const QString trimmed = figure.trimmed();
  if (!LooksLikeThousands(trimmed)) return false;
  if (trimmed.contains(u',')) return !comma_ || point_;
  return comma_ || (!point_ && !commasPartCells_);
}

QString WithoutGuard(const QString& cell) {
  static const QRegularExpression guarded(QStringLiteral("\\A'+[=+\\-@\\t\\r]"));
  return guarded.match(cell).hasMatch() ? cell.mid(1) : cell;
}

QString WithGuard(const QString& text) {
  static const QRegularExpression looksGuarded(QStringLiteral("\\A'+[=+\\-@\\t\\r]"));
  return looksGuarded.match(text).hasMatch() ? u'\'' + text : text;
}

}  // namespace vesk

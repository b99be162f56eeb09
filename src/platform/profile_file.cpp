#include "platform/profile_file.h"

#include "platform/code_page.h"
#include "platform/whole_file.h"

namespace vesk {
namespace {

constexpr QByteArrayView kByteOrderMark("\xEF\xBB\xBF");  // editors put it in front of the first section

/// One line: the bytes [begin, end) without its line end, and where the next line begins.
struct Line {
  qsizetype begin = 0;
  qsizetype end = 0;
  qsizetype next = 0;
};

Line LineAt(QByteArrayView content, qsizetype begin) {
  qsizetype end = content.indexOf('\n', begin);
  const qsizetype next = end < 0 ? content.size() : end + 1;
  if (end < 0) end = content.size();
  if (end > begin && content[end - 1] == '\r') --end;
  return {begin, end, next};
}

bool IsBlank(char byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r') || byte == '\0';
}

QByteArrayView Trimmed(QByteArrayView text) {
  while (!text.isEmpty() && IsBlank(text.front())) text = text.sliced(1);
  while (!text.isEmpty() && IsBlank(text.back())) text.chop(1);
  return text;
}

bool SameName(QByteArrayView bytes, const QString& name) {
  return DecodeWindows1254(bytes).compare(name, Qt::CaseInsensitive) == 0;
}

/// Name of the section that a line begins; nothing for other lines. A header without its "]" still begins a
/// section, so that the keys below it are not taken for those of the section before.
std::optional<QByteArrayView> SectionName(QByteArrayView line) {
  if (line.startsWith(kByteOrderMark)) line = line.sliced(kByteOrderMark.size());
  line = Trimmed(line);
  if (!line.startsWith('[')) return std::nullopt;
  const qsizetype close = line.indexOf(']');
  return Trimmed(line.sliced(1, (close < 0 ? line.size() : close) - 1));
}

/// Where a section and a key stand.
struct Place {
  bool hasSection = false;
  bool hasKey = false;
  Line keyLine;
  qsizetype valueBegin = 0;  ///< first byte after "="; the line's end when there is none
  qsizetype insertAt = 0;    ///< behind the section's last line that is not blank
};

/// Notes the key line in the place when it is the one looked for.
void MatchKey(QByteArrayView content, const Line& line, const QString& key, Place& place) {
  const QByteArrayView text = content.sliced(line.begin, line.end - line.begin);
  const qsizetype equals = text.indexOf('=');
  const QByteArrayView name = Trimmed(equals < 0 ? text : text.first(equals));
  if (name.isEmpty() || !SameName(name, key)) return;
  place.hasKey = true;
  place.keyLine = line;
  place.valueBegin = equals < 0 ? line.end : line.begin + equals + 1;
}

Place FindPlace(QByteArrayView content, const QString& section, const QString& key) {
  Place place;
  for (qsizetype at = 0; at < content.size() && !place.hasKey;) {
    const Line line = LineAt(content, at);
    at = line.next;
    const QByteArrayView text = content.sliced(line.begin, line.end - line.begin);
    if (const auto name = SectionName(text)) {
      if (place.hasSection) break;
      place.hasSection = SameName(*name, section);
      place.insertAt = line.next;
    } else if (place.hasSection && !Trimmed(text).isEmpty()) {
      place.insertAt = line.next;
      MatchKey(content, line, key, place);
    }
  }
  return place;
}

QByteArrayView WithoutQuotes(QByteArrayView value) {
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return quoted ? value.sliced(1, value.size() - 2) : value;
}

/// The line end that the file uses; the classic one for a file without lines.
QByteArray LineEnd(QByteArrayView content) {
  const qsizetype at = content.indexOf('\n');
  const bool bare = at == 0 || (at > 0 && content[at - 1] != '\r');
  return bare ? QByteArrayLiteral("\n") : QByteArrayLiteral("\r\n");
}

QByteArray ValueBytes(const QString& value) {
  QByteArray bytes = EncodeWindows1254(value);
  for (char& byte : bytes) {
    if (byte == '\r' || byte == '\n' || byte == '\0') byte = ' ';
  }
  return bytes;
}

}  // namespace

Result<ProfileText> ProfileText::Load(const QString& path) {
  Result<QByteArray> content = ReadWholeFile(path, QStringLiteral("The settings file could not be read"));
  if (!content) return content.Failure();
  return ProfileText(std::move(*content));
}

Status ProfileText::Save(const QString& path) const {
  return WriteWholeFile(path, content_, QStringLiteral("The settings file could not be written"));
}

std::optional<QString> ProfileText::Value(const QString& section, const QString& key) const {
  const Place place = FindPlace(content_, section, key);
  if (!place.hasKey) return std::nullopt;
  const auto bytes = QByteArrayView(content_).sliced(place.valueBegin, place.keyLine.end - place.valueBegin);
  const QByteArrayView value = WithoutQuotes(Trimmed(bytes));
  return DecodeWindows1254(value.first(std::min<qsizetype>(value.size(), kProfileValueLength)));
}

void ProfileText::SetValue(const QString& section, const QString& key, const QString& value) {
  const Place place = FindPlace(content_, section, key);
  const QByteArray bytes = ValueBytes(value);
  if (place.hasKey) {
    const bool withEquals = place.valueBegin > place.keyLine.begin && content_[place.valueBegin - 1] == '=';
    content_.replace(place.valueBegin, place.keyLine.end - place.valueBegin,
                     withEquals ? bytes : '=' + bytes);
    return;
  }
  const QByteArray lineEnd = LineEnd(content_);
  const qsizetype at = place.hasSection ? place.insertAt : content_.size();
  QByteArray added;
  if (at > 0 && content_[at - 1] != '\n') added += lineEnd;
  if (!place.hasSection) added += '[' + EncodeWindows1254(section) + ']' + lineEnd;
  added += EncodeWindows1254(key) + '=' + bytes + lineEnd;
  content_.insert(at, added);
}

Status WriteProfileValues(const QString& path, const QString& section,
                          const std::vector<ProfileEntry>& entries) {
  Result<ProfileText> loaded = ProfileText::Load(path);
  if (!loaded) return loaded.Failure();
  const QByteArray before = loaded->Content();
  for (const auto& [key, value] : entries) {
    if (!FitsWindows1254(value)) {
      return Error{QStringLiteral("The setting could not be stored"),
                   QStringLiteral("%1 [%2] %3").arg(path, section, key),
                   QStringLiteral("it has letters that the settings file cannot hold")};
    }
    loaded->SetValue(section, key, value);
  }
  if (loaded->Content() == before) return {};
  return loaded->Save(path);
}

}  // namespace vesk

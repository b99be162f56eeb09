#include "platform/profile_file.h"

#include <QStringDecoder>

#include "platform/code_page.h"

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

/// The text of UTF-8 bytes; nothing when they are none.
std::optional<QString> FromUtf8(QByteArrayView bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = decoder(bytes);
  if (decoder.hasError()) return std::nullopt;
  return text;
}

/// Text of bytes; what is no UTF-8 in a file of that encoding is a line from an older hand.
QString Decode(QByteArrayView bytes, ProfileEncoding encoding) {
  if (encoding == ProfileEncoding::Utf8) {
    if (std::optional<QString> text = FromUtf8(bytes)) return *std::move(text);
  }
  return DecodeWindows1254(bytes);
}

QByteArray Encode(const QString& text, ProfileEncoding encoding) {
  return encoding == ProfileEncoding::Utf8 ? text.toUtf8() : EncodeWindows1254(text);
}

/// Bytes of valid UTF-8 at a place that read as well in Windows-1254: one of Ç Ğ Ö Ü İ Ş by itself, and a
/// sign.
bool ReadsAsTurkishCapital(QByteArrayView content, qsizetype at, qsizetype length) {
  constexpr QByteArrayView kCapitals("\xC7\xD0\xD6\xDC\xDD\xDE");
  const auto isAscii = [&](qsizetype i) {
    return i < 0 || i >= content.size() || static_cast<unsigned char>(content[i]) < 0x80;
  };
  return length == 2 && kCapitals.contains(content[at]) && isAscii(at - 1) && isAscii(at + length);
}

bool SameName(QByteArrayView bytes, const QString& name, ProfileEncoding encoding) {
  return Decode(bytes, encoding).compare(name, Qt::CaseInsensitive) == 0;
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
void MatchKey(QByteArrayView content, const Line& line, const QString& key, ProfileEncoding encoding,
              Place& place) {
  const QByteArrayView text = content.sliced(line.begin, line.end - line.begin);
  const qsizetype equals = text.indexOf('=');
  const QByteArrayView name = Trimmed(equals < 0 ? text : text.first(equals));
  if (name.isEmpty() || !SameName(name, key, encoding)) return;
  place.hasKey = true;
  place.keyLine = line;
  place.valueBegin = equals < 0 ? line.end : line.begin + equals + 1;
}

Place FindPlace(QByteArrayView content, const QString& section, const QString& key,
                ProfileEncoding encoding) {
  Place place;
  for (qsizetype at = 0; at < content.size() && !place.hasKey;) {
    const Line line = LineAt(content, at);
    at = line.next;
    const QByteArrayView text = content.sliced(line.begin, line.end - line.begin);
    if (const auto name = SectionName(text)) {
      if (place.hasSection) break;
      place.hasSection = SameName(*name, section, encoding);
      place.insertAt = line.next;
    } else if (place.hasSection && !Trimmed(text).isEmpty()) {
      place.insertAt = line.next;
      MatchKey(content, line, key, encoding, place);
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

QByteArray ValueBytes(const QString& value, ProfileEncoding encoding) {
  QByteArray bytes = Encode(value, encoding);
  for (char& byte : bytes) {
    if (byte == '\r' || byte == '\n' || byte == '\0') byte = ' ';
  }
  return bytes;
}

}  // namespace

ProfileEncoding EncodingOf(QByteArrayView content) {
  if (content.startsWith(kByteOrderMark)) return ProfileEncoding::Utf8;
  if (!FromUtf8(content)) return ProfileEncoding::Windows1254;
  for (qsizetype at = 0; at < content.size();) {
    const auto byte = static_cast<unsigned char>(content[at]);
    const qsizetype length = byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    if (length > 1 && !ReadsAsTurkishCapital(content, at, length)) return ProfileEncoding::Utf8;
    at += length;
  }
  return ProfileEncoding::Windows1254;
}

std::optional<QString> ProfileText::Value(const QString& section, const QString& key) const {
  const Place place = FindPlace(content_, section, key, encoding_);
  if (!place.hasKey) return std::nullopt;
  const auto bytes = QByteArrayView(content_).sliced(place.valueBegin, place.keyLine.end - place.valueBegin);
  return Decode(WithoutQuotes(Trimmed(bytes)), encoding_).left(kProfileValueLength);
}

void ProfileText::SetValue(const QString& section, const QString& key, const QString& value) {
  for (const QString& text : {section, key, value}) {
    if (!FitsWindows1254(text)) MakeUtf8();
  }
  PutValue(section, key, value);
  // What was written must not be read in the other encoding the next time.
  if (EncodingOf(content_) == encoding_) return;
  if (FromUtf8(content_) && DecodeWindows1254(content_) == FromUtf8(content_)) {
    encoding_ = ProfileEncoding::Windows1254;  // nothing beyond ASCII is left
  } else {
    MakeUtf8();
  }
}

void ProfileText::MakeUtf8() {
  if (content_.startsWith(kByteOrderMark)) return;
  if (encoding_ == ProfileEncoding::Windows1254) content_ = DecodeWindows1254(content_).toUtf8();
  content_.prepend(kByteOrderMark.data(), kByteOrderMark.size());
  encoding_ = ProfileEncoding::Utf8;
}

void ProfileText::PutValue(const QString& section, const QString& key, const QString& value) {
  const Place place = FindPlace(content_, section, key, encoding_);
  const QByteArray bytes = ValueBytes(value, encoding_);
  if (place.hasKey) {
    const bool withEquals = place.valueBegin > place.keyLine.begin && content_[place.valueBegin - 1] == '=';
    content_.replace(place.valueBegin, place.keyLine.end - place.valueBegin,
                     withEquals ? bytes : '=' + bytes);
    return;
  }
  const QByteArray lineEnd = LineEnd(content_);
  const qsizetype at = place.hasSection ? place.insertAt : content_.size();
  QByteArray added;
  if (at > 0 && content_ != kByteOrderMark && content_[at - 1] != '\n') added += lineEnd;
  if (!place.hasSection) added += '[' + Encode(section, encoding_) + ']' + lineEnd;
  added += Encode(key, encoding_) + '=' + bytes + lineEnd;
  content_.insert(at, added);
}

}  // namespace vesk

#include "platform/code_page.h"

#include <array>

namespace vesk {
namespace {

/// Characters of the bytes 0x80 to 0x9F; the rest of the page is Latin-1 apart from six letters.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x008E, 0x008F,  //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x009E, 0x0178};

constexpr std::array<char16_t, 256> MakeTable() {
  std::array<char16_t, 256> table{};
  for (std::size_t byte = 0; byte < table.size(); ++byte) table[byte] = static_cast<char16_t>(byte);
  for (std::size_t i = 0; i < kUpperControls.size(); ++i) table[0x80 + i] = kUpperControls[i];
  table[0xD0] = 0x011E;  // G with breve
  table[0xDD] = 0x0130;  // I with dot
  table[0xDE] = 0x015E;  // S with cedilla
  table[0xF0] = 0x011F;  // g with breve
  table[0xFD] = 0x0131;  // dotless i
  table[0xFE] = 0x015F;  // s with cedilla
  return table;
}

constexpr std::array<char16_t, 256> kTable = MakeTable();
constexpr int kNoByte = -1;

/// Byte of a character of the basic plane, or kNoByte.
int ByteOf(char16_t character) {
  if (character < 0x80) return character;
  if (character < 0x100 && kTable[character] == character) return character;
  for (std::size_t byte = 0x80; byte < kTable.size(); ++byte) {
    if (kTable[byte] == character) return static_cast<int>(byte);
  }
  return kNoByte;
}

}  // namespace

QString DecodeWindows1254(QByteArrayView bytes) {
  QString text(bytes.size(), Qt::Uninitialized);
  QChar* out = text.data();
  for (const char byte : bytes) *out++ = QChar(kTable[static_cast<unsigned char>(byte)]);
  return text;
}

QByteArray EncodeWindows1254(QStringView text) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (qsizetype i = 0; i < text.size(); ++i) {
    const int byte = ByteOf(text[i].unicode());
    bytes += byte == kNoByte ? '?' : static_cast<char>(byte);
    const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
    if (pair) ++i;
  }
  return bytes;
}

bool FitsWindows1254(QStringView text) {
  for (const QChar character : text) {
    if (ByteOf(character.unicode()) == kNoByte) return false;
  }
  return true;
}

}  // namespace vesk

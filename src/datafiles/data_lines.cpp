#include "datafiles/data_lines.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "datafiles/numbers.h"

namespace vesk {
namespace {

constexpr std::ptrdiff_t kLevelColumn = 22;  // 0-based
constexpr std::ptrdiff_t kLevelWidth = 5;
constexpr std::ptrdiff_t kFieldsEnd = kLevelColumn + kLevelWidth;
constexpr std::ptrdiff_t kLeastTail = 6;  // a shorter tail is never read
constexpr Day kNoDay = Day::min();
constexpr std::string_view kEndMark = "********************";

constexpr std::array<double, 6> kPowersOfTen = {1, 10, 100, 1000, 10000, 100000};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// What is expected of a line.
constexpr Wording kColumns{u"en az 23 sütunluk satır", u"a line of at least 23 columns"};
constexpr Wording kWholeLine{u"tam satır; dosya bu satırın ortasında bitiyor",
                             u"a whole line; the file ends in the middle of this one"};
constexpr Wording kDate{u"1-10. sütunlarda gg/aa/yyyy biçiminde tarih", u"a date dd/mm/yyyy in columns 1-10"};
constexpr Wording kExtremeDate{u"5-14. sütunlarda gg/aa/yyyy biçiminde tarih",
                               u"a date dd/mm/yyyy in columns 5-14"};
constexpr Wording kTime{u"13-17. sütunlarda ss:dd biçiminde saat", u"a time hh:mm in columns 13-17"};
constexpr Wording kExtremeTime{u"16-20. sütunlarda ss:dd biçiminde saat", u"a time hh:mm in columns 16-20"};
constexpr Wording kLevel{u"23-27. sütunlarda metre olarak seviye", u"a level in metres in columns 23-27"};

int TwoDigits(const char* p) {
  if (!IsDigit(p[0]) || !IsDigit(p[1])) return -1;
  return (p[0] - '0') * 10 + (p[1] - '0');
}

/// Metres, five characters, point or comma -> centimetres, exact for what the digits say.
std::optional<double> LevelCm(std::string_view field) {
  field = WithoutBlanks(field);
  const bool negative = !field.empty() && field.front() == '-';
  if (!field.empty() && (field.front() == '-' || field.front() == '+'))
    field = WithoutBlanks(field.substr(1));
  int digits = 0;
  int value = 0;
  int decimals = -1;  // -1: no decimal sign yet
  for (const char c : field) {
    if (IsDigit(c)) {
      value = value * 10 + (c - '0');
      ++digits;
      if (decimals >= 0) ++decimals;
    } else if ((c == '.' || c == ',') && decimals < 0) {
      decimals = 0;
    } else {
      return std::nullopt;
    }
  }
  if (digits == 0) return std::nullopt;
  const int shift = 2 - std::max(decimals, 0);
  const double magnitude = shift >= 0 ? value * kPowersOfTen[static_cast<std::size_t>(shift)]
                                      : value / kPowersOfTen[static_cast<std::size_t>(-shift)];
  return negative ? -magnitude : magnitude;
}

/// Minute of the day as the grid shows it; -1 when the field is no time.
int MinuteOf(const char* p) {
  const int hour = TwoDigits(p);
  const int minute = TwoDigits(p + 3);
  if (hour < 0 || minute < 0 || minute > 59 || IsDigit(p[2])) return -1;
  const int total = hour * 60 + minute;
  return total <= kMinutesPerDay ? MinuteOfReading(total) : -1;
}

/// Readings come in runs of one date: the last date text is remembered with its day.
class DateReader {
 public:
  [[nodiscard]] bool IsLast(const char* p) const { return std::memcmp(p, text_.data(), text_.size()) == 0; }
  [[nodiscard]] Day Last() const { return day_; }

  std::optional<Day> Read(const char* p) {
    if (IsLast(p)) return day_;
    const int d = TwoDigits(p);
    const int m = TwoDigits(p + 3);
    const int century = TwoDigits(p + 6);
    const int rest = TwoDigits(p + 8);
    if (d < 0 || m < 0 || century < 0 || rest < 0 || IsDigit(p[2]) || IsDigit(p[5])) return std::nullopt;
    const std::chrono::year_month_day date(std::chrono::year(century * 100 + rest),
                                           std::chrono::month(static_cast<unsigned>(m)),
                                           std::chrono::day(static_cast<unsigned>(d)));
    if (!date.ok()) return std::nullopt;
    std::memcpy(text_.data(), p, text_.size());
    day_ = Day(date);
    return day_;
  }

 private:
  std::array<char, 10> text_{'-'};  // no date begins so
  Day day_{};
};

/// True for a text that begins as a data line does: with a date, or with an extreme's word and a date.
bool BeginsAsReading(std::string_view text) {
  const bool extreme = text.starts_with("Max ") || text.starts_with("Min ");
  if (extreme) text.remove_prefix(4);
  constexpr std::size_t kDateAndTime = 17;
  return text.size() >= kDateAndTime && DateReader().Read(text.data()).has_value();
}

/// What stands behind the fields of a line is not read; here it is the rest of lines whose ends are gone: a
/// date, or bytes that no text has.
bool HoldsMore(std::string_view rest) {
  if (rest.find('\0') != std::string_view::npos) return true;
  for (std::size_t slash = rest.find('/'); slash != std::string_view::npos;
       slash = rest.find('/', slash + 1)) {
    if (slash >= 2 && rest.size() >= slash + 8 && DateReader().Read(rest.data() + slash - 2)) return true;
  }
  return false;
}

enum class LineEnd { Next, Stop };

class Decoder {
 public:
  Decoder(std::uint8_t sourceFile, const std::optional<DayWindow>& window, std::vector<Reading>& out,
          DataLineTally& tally)
      : sourceFile_(sourceFile), window_(window), out_(out), tally_(tally) {}

  /// text: the trimmed line; levelByte: position of its level field; cut: the file ends inside the line.
  LineEnd Line(std::string_view text, qint64 levelByte, bool cut) {
    ++line_;
    if (text.empty()) {
      ++tally_.blank;
      return LineEnd::Next;
    }
    if (text == kEndMark) {
      ++tally_.afterEnd;
      tally_.end = DataEnd::EndMark;
      return LineEnd::Stop;
    }
    Reading reading;
    reading.levelByte = levelByte;
    reading.sourceFile = sourceFile_;
    reading.day = kNoDay;
    if (const Wording* expected = ReadFields(text, cut, reading)) return Refuse(expected, reading.day);
    if (text.size() > static_cast<std::size_t>(kFieldsEnd) &&
        HoldsMore(text.substr(static_cast<std::size_t>(kFieldsEnd))) && tally_.joined++ == 0) {
      tally_.firstJoinedLine = line_;
    }
    return Keep(reading);
  }

  /// A line behind the one that ended the reading: only counted. Behind a window it is the ordinary readings
  /// that tell whether the file goes on with that window.
  void Unread(std::string_view text) {
    if (text.empty()) return;
    ++tally_.unread;
    if (text.size() <= static_cast<std::size_t>(kLevelColumn)) return;
    const bool extreme = text.starts_with("Max") || text.starts_with("Min");
    if (extreme && tally_.end == DataEnd::BehindWindow) return;
    const char* date = text.data() + (extreme ? 4 : 0);
    if (!unreadKnown_ || !dates_.IsLast(date)) {
      const auto day = dates_.Read(date);
      unreadKnown_ = day.has_value();
      unreadInside_ = day && Place(*day) == Position::Inside;
    }
    if (unreadKnown_ && unreadInside_) ++tally_.unreadInside;
  }

  /// Says what was read, once no line follows. firstRow: where this file's readings begin.
  void Finish(std::size_t firstRow) {
    tally_.endLine = line_;
    tally_.ordinary = tally_.kept - extremesKept_ + ordinaryOutside_;
    tally_.lastReading = lastOutside_;
    tally_.lacksLastRecords = someDayIsClosed_ && !DayIsClosed();
    if (place_ != Position::Inside) return;
    for (std::size_t row = out_.size(); row > firstRow; --row) {
      if (out_[row - 1].kind != ReadingKind::Ordinary) continue;
      tally_.lastReading = out_[row - 1].Time();
      return;
    }
  }

  /// The line that almost every line is: 27 columns, the date of the line before, a level with two decimals.
  /// False, and nothing done, when it is another one; that one goes the general way, which gives the same for
  /// both.
  bool PlainLine(const char* line, qint64 levelByte) {
    if (!lastWasOrdinary_ || place_ != Position::Inside || !dates_.IsLast(line)) return false;
    const int hour = TwoDigits(line + 12);
    const int minute = TwoDigits(line + 15);
    const int tens = line[22] == ' ' ? 0 : line[22] - '0';
    const int metres = line[23] - '0';
    const int hundredths = TwoDigits(line + 25);
    const int total = hour * 60 + minute;
    // A line break there would make two lines of it.
    const bool blanks =
        std::memcmp(line + 10, "  ", 2) == 0 && std::memcmp(line + 17, "    ", 4) == 0 && line[21] != '\n';
    const bool plain = hour >= 0 && minute >= 0 && minute < 60 && total <= kMinutesPerDay &&
                       line[14] == ':' && tens >= 0 && tens <= 9 && metres >= 0 && metres <= 9 &&
                       line[24] == '.' && hundredths >= 0 && blanks;
    if (!plain) return false;
    ++line_;
    ++tally_.kept;
    Reading& reading = out_.emplace_back();
    reading.levelCm = tens * 1000 + metres * 100 + hundredths;
    reading.levelByte = levelByte;
    reading.day = dates_.Last();
    reading.minuteOfDay = static_cast<std::int16_t>(MinuteOfReading(total));
    reading.flag = line[21];
    reading.sourceFile = sourceFile_;
    return true;
  }

 private:
  enum class Position { Unknown, Before, Inside, Behind };

  [[nodiscard]] Position Place(Day day) const {
    if (!window_) return Position::Inside;
    if (day < window_->first) return Position::Before;
    return day > window_->last ? Position::Behind : Position::Inside;
  }

  /// Fills the reading from a line; null, or what a field should have held.
  const Wording* ReadFields(std::string_view text, bool cut, Reading& reading) {
    const bool maximum = text.starts_with("Max");
    const bool extreme = maximum || text.starts_with("Min");
    if (text.size() <= static_cast<std::size_t>(kLevelColumn)) return &kColumns;
    if (cut && text.size() < static_cast<std::size_t>(kFieldsEnd)) {
      return &kWholeLine;
    }
    const auto day = dates_.Read(text.data() + (extreme ? 4 : 0));
    reading.day = day.value_or(kNoDay);
    if (!day) return extreme ? &kExtremeDate : &kDate;
    const int minute = MinuteOf(text.data() + (extreme ? 15 : 12));
    if (minute < 0) return extreme ? &kExtremeTime : &kTime;
    const auto level = LevelCm(text.substr(static_cast<std::size_t>(kLevelColumn), kLevelWidth));
    if (!level) return &kLevel;
    reading.minuteOfDay = static_cast<std::int16_t>(minute);
    reading.levelCm = *level;
    reading.flag = text[static_cast<std::size_t>(kLevelColumn) - 1];
    if (extreme) reading.kind = maximum ? ReadingKind::Maximum : ReadingKind::Minimum;
    return nullptr;
  }

  [[nodiscard]] bool DayIsClosed() const { return maximumSeen_ && minimumSeen_; }

  void NoteRecord(ReadingKind kind) {
    maximumSeen_ = kind == ReadingKind::Maximum || (maximumSeen_ && kind == ReadingKind::Minimum);
    minimumSeen_ = kind == ReadingKind::Minimum || (minimumSeen_ && kind == ReadingKind::Maximum);
    someDayIsClosed_ = someDayIsClosed_ || DayIsClosed();
  }

  /// Appends a reading of the window; the first ordinary one behind it ends the file.
  LineEnd Keep(const Reading& reading) {
    lastWasOrdinary_ = reading.kind == ReadingKind::Ordinary;
    NoteRecord(reading.kind);
    if (lastWasOrdinary_ && !tally_.firstReading) tally_.firstReading = reading.Time();
    if (lastWasOrdinary_) place_ = Place(reading.day);
    const Position position = place_ == Position::Unknown ? Place(reading.day) : place_;
    if (position == Position::Inside) {
      ++tally_.kept;
      if (!lastWasOrdinary_) ++extremesKept_;
      out_.push_back(reading);
      return LineEnd::Next;
    }
    ++tally_.outsideWindow;
    if (!lastWasOrdinary_) return LineEnd::Next;
    ++ordinaryOutside_;
    lastOutside_ = reading.Time();
    if (position == Position::Behind) {
      tally_.end = DataEnd::BehindWindow;
      return LineEnd::Stop;
    }
    if (tally_.kept > 0 && tally_.stray++ == 0) tally_.firstStrayLine = line_;
    return LineEnd::Next;
  }

  /// day: of the line, kNoDay when that is what could not be read.
  LineEnd Refuse(const Wording* expected, Day day) {
    lastWasOrdinary_ = false;  // the remembered date may be this line's
    if (day != kNoDay && Place(day) != Position::Inside) {
      ++tally_.outsideWindow;
      return LineEnd::Next;
    }
    ++tally_.refused;
    if (tally_.faults.size() < kMostFaultsKept) {
      tally_.faults.push_back({line_, *expected});
    }
    return LineEnd::Next;
  }

  std::uint8_t sourceFile_;
  const std::optional<DayWindow>& window_;
  std::vector<Reading>& out_;
  DataLineTally& tally_;
  DateReader dates_;
  Position place_ = Position::Unknown;  ///< of the last ordinary reading
  bool lastWasOrdinary_ = false;        ///< the remembered date is that reading's, and so place_ holds for it
  qint64 line_ = kHeaderLines;
  bool maximumSeen_ = false, minimumSeen_ = false;  ///< behind the last ordinary reading
  bool someDayIsClosed_ = false;
  qint64 extremesKept_ = 0;
  qint64 ordinaryOutside_ = 0;
  std::optional<DateTime> lastOutside_;  ///< the last ordinary reading outside the window
  bool unreadKnown_ = false;             ///< the remembered date is that of an unread line
  bool unreadInside_ = false;            ///< and where it lies
};

/// Passes over the rest of the file; the number of its lines.
qint64 PassOver(const char* at, const char* end, Decoder& decoder) {
  qint64 lines = 0;
  while (at < end) {
    const auto* lineBreak =
        static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
    decoder.Unread(WithoutBlanks({at, static_cast<std::size_t>((lineBreak ? lineBreak : end) - at)}));
    at = lineBreak ? lineBreak + 1 : end;
    ++lines;
  }
  return lines;
}

}  // namespace

DataLineTally DecodeDataLines(QByteArrayView file, qint64 headerEnd, std::uint8_t sourceFile,
                              const std::optional<DayWindow>& window, std::vector<Reading>& out) {
  DataLineTally tally;
  const char* const begin = file.data();
  const char* const end = begin + file.size();
  if (headerEnd < 1 || headerEnd > file.size()) return tally;
  const std::size_t firstRow = out.size();
  Decoder decoder(sourceFile, window, out, tally);

  constexpr std::ptrdiff_t kPlainLine = kFieldsEnd + 2;  // with CR LF
  const char* at = begin + (headerEnd - 1);
  while (end - at >= kLeastTail) {
    if (end - at >= kPlainLine && at[kFieldsEnd] == '\r' && at[kFieldsEnd + 1] == '\n' &&
        decoder.PlainLine(at, (at - begin) + 1 + kLevelColumn)) {
      at += kPlainLine;
      continue;
    }
    const auto* lineBreak =
        static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
    const std::string_view text =
        WithoutBlanks({at, static_cast<std::size_t>((lineBreak ? lineBreak : end) - at)});
    const qint64 levelByte = (at - begin) + 1 + kLevelColumn;
    at = lineBreak ? lineBreak + 1 : end;
    if (decoder.Line(text, levelByte, !lineBreak) == LineEnd::Stop) break;
  }
  decoder.Finish(firstRow);
  const qint64 unread = PassOver(at, end, decoder);
  (tally.end == DataEnd::BehindWindow ? tally.outsideWindow : tally.afterEnd) += unread;
  return tally;
}

std::optional<int> ReadingInHeader(QByteArrayView file, qint64 headerEnd) {
  const char* at = file.data();
  const char* const end = at + std::clamp<qint64>(headerEnd - 1, 0, file.size());
  for (int line = 1; at < end; ++line) {
    const auto* lineBreak =
        static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
    const std::string_view text(at, static_cast<std::size_t>((lineBreak ? lineBreak : end) - at));
    // Zeros stand where a disk lost a part of the file, line ends included.
    if (text.find('\0') != std::string_view::npos || BeginsAsReading(WithoutBlanks(text))) return line;
    at = lineBreak ? lineBreak + 1 : end;
  }
  return std::nullopt;
}

}  // namespace vesk

#include "datafiles/raw_header.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

#include "datafiles/data_lines.h"
#include "datafiles/dates.h"
#include "datafiles/header_checks.h"
#include "datafiles/numbers.h"
#include "datafiles/water_year.h"
#include "platform/code_page.h"
#include "platform/folder_entries.h"

namespace vesk {
namespace {

constexpr qint64 kFirstLook = 4096;  // a header is under 1 kB
constexpr qint64 kLongestHeader = 65536;
constexpr qsizetype kValueColumn = 26;  // 0-based
constexpr qsizetype kLongestValue = 80;
constexpr qsizetype kDateTimeWidth = 16;
constexpr int kFirstPlausibleYear = 1000;  // a year of two digits is a year of the first century

struct HeaderLines {
  std::array<QByteArrayView, kHeaderLines> lines;
  int count = 0;
  qint64 end = 0;  ///< 0-based offset behind the last line
};

HeaderLines SplitHeader(QByteArrayView bytes) {
  HeaderLines header;
  qsizetype at = 0;
  while (header.count < kHeaderLines && at < bytes.size()) {
    const qsizetype lineBreak = bytes.indexOf('\n', at);
    if (lineBreak < 0) break;  // a header line that is not ended is cut off
    QByteArrayView line = bytes.sliced(at, lineBreak - at);
    if (line.endsWith('\r')) line.chop(1);
    header.lines[static_cast<std::size_t>(header.count++)] = line;
    at = lineBreak + 1;
  }
  header.end = at;
  return header;
}

QString CompanionName(const QString& dataDirectory, const QString& fileName) {
  if (fileName.isEmpty()) return {};
  QString name = fileName;
  if (name.size() >= 9) name[8] = QLatin1Char('_');
  return dataDirectory + name + QStringLiteral(".xxx");
}

struct DateParts {
  int day, month, year, hour, minute;
};

DateParts PartsOf(DateTime time) {
  const Day date = std::chrono::floor<std::chrono::days>(time);
  const int minute = static_cast<int>((time - date).count());
  return {DayOf(date), MonthOf(date), YearOf(date), minute / 60, minute % 60};
}

QString UnpaddedClock(int hour, int minute) {
  return QString::number(hour) + QLatin1Char(':') + QString::number(minute);
}

/// Some loggers write seconds behind the setup time; the system works to the minute.
QString WithoutSeconds(const QString& dateTime) {
  return dateTime.section(QLatin1Char(':'), 0, 1).left(kDateTimeWidth);
}

/// Decodes one header into a record. The first failing line names itself; later lines are still read.
class HeaderDecoder {
 public:
  HeaderDecoder(const HeaderLines& lines, QString fileName, const Regional& regional, HeaderRefusal& result)
      : lines_(lines),
        fileName_(std::move(fileName)),
        regional_(regional),
        result_(result),
        header_(result.header) {}

  void Decode() {
    header_.correctionCode = CorrectionCode();
    header_.Version = Value(3);
    header_.LoggerType = Value(4);
    header_.RegionNo = Value(5);
    header_.BasinNo = Value(6);
    header_.StationNo = Value(7);
    SetSetup(Date(8, kLongestValue));
    SetFirst(Date(9, kDateTimeWidth));
    SetLast(Date(10, kDateTimeWidth));
    SetWaterYearsText();
    header_.SampleCount = ParseNumber(Value(11), regional_);
    header_.SampleInterval = ParseNumber(Value(12), regional_);
    header_.RecordInterval = ParseNumber(Value(13), regional_);
    if (lines_.count < kHeaderLines) {
      Fail(lines_.count + 1, Wording{u"15 başlık satırı", u"15 header lines"});
      return;
    }
    header_.HeaderEnd = lines_.end + 1;
    if (header_.LastRecordTime < header_.FirstRecordTime) {
      Fail(10,
           Wording{u"ilk kayıttan önce olmayan son kayıt", u"a last record that is not before the first"});
    }
    // In a header that lost or won a line the count would be a date.
    result_.yearsKnown = !result_.damaged && ReadWholeNumber(Value(11)).has_value();
  }

 private:
  [[nodiscard]] QString CorrectionCode() const {
    return lines_.count > 0 ? DecodeWindows1254(lines_.lines[0]).trimmed() : QString();
  }

  /// number: 1 to 15.
  [[nodiscard]] QString Value(int number, qsizetype width = kLongestValue) const {
    if (number > lines_.count) return {};
    const QByteArrayView line = lines_.lines[static_cast<std::size_t>(number - 1)];
    if (line.size() <= kValueColumn) return {};
    return DecodeWindows1254(line.sliced(kValueColumn, std::min(width, line.size() - kValueColumn)))
        .trimmed();
  }

  std::optional<DateTime> Date(int number, qsizetype width) {
    auto date = ReadDateTime(WithoutSeconds(NormaliseDateText(Value(number, width))));
    if (date && YearOf(std::chrono::floor<std::chrono::days>(*date)) < kFirstPlausibleYear) date.reset();
    if (!date && number <= lines_.count)
      Fail(number,
           Wording{u"27. sütundan başlayan gg/aa/yyyy ss:dd", u"a date dd/mm/yyyy hh:mm from column 27 on"});
    return date;
  }

  void SetSetup(std::optional<DateTime> time) {
    if (!time) return;
    const DateParts parts = PartsOf(*time);
    header_.SetupTime = *time;
    header_.SetupDay = parts.day;
    header_.SetupMonth = parts.month;
    header_.SetupYear = parts.year;
    header_.SetupHour = parts.hour;
    header_.SetupMinute = parts.minute;
  }

  void SetFirst(std::optional<DateTime> time) {
    if (!time) return;
    const DateParts parts = PartsOf(*time);
    header_.FirstRecordTime = *time;
    header_.FirstDay = parts.day;
    header_.FirstMonth = parts.month;
    header_.FirstYear = parts.year;
    header_.FirstHour = parts.hour;
    header_.FirstMinute = parts.minute;
    header_.FirstClock = UnpaddedClock(parts.hour, parts.minute);
    header_.FirstWaterYear = WaterYearOf(std::chrono::floor<std::chrono::days>(*time));
    header_.WaterYearStart = WaterYearStartText(header_.FirstWaterYear);
  }

  void SetLast(std::optional<DateTime> time) {
    if (!time) return;
    const DateParts parts = PartsOf(*time);
    header_.LastRecordTime = *time;
    header_.LastHour = parts.hour;
    header_.LastMinute = parts.minute;
    header_.LastClock = UnpaddedClock(parts.hour, parts.minute);
    header_.LastWaterYear = WaterYearOf(std::chrono::floor<std::chrono::days>(*time));
  }

  void SetWaterYearsText() {
    if (header_.FirstWaterYear == 0 && header_.LastWaterYear == 0) return;
    header_.WaterYearsText = QLatin1Char(' ') + QString::number(header_.FirstWaterYear);
    if (header_.FirstWaterYear != header_.LastWaterYear) {
      header_.WaterYearsText += QStringLiteral(" - ") + QString::number(header_.LastWaterYear);
    }
  }

  void Fail(int line, const Message& expected) {
    if (result_.damaged) return;
    result_.damaged = true;
    result_.detail = Message(Wording{u"%1, %2. satır; beklenen: %3", u"%1, line %2: expected %3"}, fileName_,
                             line, expected);
  }

  const HeaderLines& lines_;
  QString fileName_;
  const Regional& regional_;
  HeaderRefusal& result_;
  RawHeader& header_;
};

/// Whole days from the first record to the last, both ends at day precision.
int DaysCovered(const RawHeader& header) {
  const Day first = std::chrono::floor<std::chrono::days>(header.FirstRecordTime);
  const Day last = std::chrono::floor<std::chrono::days>(header.LastRecordTime);
  return static_cast<int>((last - first).count());
}

/// A short text without control characters, for messages about files that hold anything.
QString Printable(const QString& text) {
  constexpr qsizetype kEnough = 20;
  QString result = text.left(kEnough);
  for (QChar& c : result) {
    if (!c.isPrint()) c = QLatin1Char('?');
  }
  return result;
}

HeaderRefusal NotRead(HeaderFault fault, const QString& fileName, const Message& reason) {
  return {.fault = fault, .detail = Error{{}, fileName, reason}.Said(), .header = {}};
}

}  // namespace

HeaderReading ReadRawHeader(QByteArrayView bytes, const QString& dataDirectory, const QString& fileName,
                            const Regional& regional) {
  HeaderRefusal result;
  result.header.CompanionName = CompanionName(dataDirectory, fileName);
  const HeaderLines lines = SplitHeader(bytes);
  HeaderDecoder(lines, fileName, regional, result).Decode();
  if (!IsAcceptedVersion(result.header.Version)) {
    result.fault = HeaderFault::Version;
    result.detail = Message(Wording{u"%1, 3. satır: \"%2\" sürümü okunamıyor; beklenen: 10, 11 veya 21",
                                    u"%1, line 3: version \"%2\" is not read; expected 10, 11 or 21"},
                            fileName, Printable(result.header.Version));
    return result;
  }
  result.header.DaysCovered = DaysCovered(result.header);
  if (result.damaged) return result;
  return std::move(result.header);
}

HeaderReading ReadHeaderOfFile(const QString& dataDirectory, const QString& fileName,
                               const Regional& regional) {
  const QString path = dataDirectory + fileName;
  const QFileInfo info(path);
  if (fileName.isEmpty() || !info.exists()) {
    return NotRead(HeaderFault::Missing, fileName,
                   Wording{u"dosya artık yerinde değil", u"the file is no longer there"});
  }
  if (!info.isFile())
    return NotRead(HeaderFault::Unreadable, fileName, Wording{u"bu bir dosya değil", u"not a file"});
  QFile file;
  if (const Status opened = OpenToRead(file, path, {}); !opened)
    return NotRead(HeaderFault::Unreadable, fileName, opened.Failure().reason);
  QByteArray bytes = file.read(kFirstLook);
  if (bytes.count('\n') < kHeaderLines && file.size() > bytes.size()) {
    bytes += file.read(kLongestHeader - bytes.size());
  }
  return ReadRawHeader(bytes, dataDirectory, fileName, regional);
}

}  // namespace vesk

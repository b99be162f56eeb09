#include "tools/sample_data.h"

#include <QDir>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "platform/whole_file.h"

namespace vesk::sample {

namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::minutes;

/// Day and clock as loggers write them: midnight is 24:00 of the day that ends.
struct Stamp {
  Day day{};
  int minute = 0;  ///< 1 to 1440
};

Stamp StampOf(DateTime time) {
  const Day day = floor<days>(time - minutes(1));
  return {day, static_cast<int>((time - day) / minutes(1))};
}

void AppendDigits(QByteArray& out, int value, int width) {
  char text[8];
  for (int i = width; i-- > 0; value /= 10) text[i] = static_cast<char>('0' + value % 10);
  out.append(text, width);
}

void AppendDate(QByteArray& out, Day day) {
  const std::chrono::year_month_day date(day);
  AppendDigits(out, static_cast<int>(static_cast<unsigned>(date.day())), 2);
  out += '/';
  AppendDigits(out, static_cast<int>(static_cast<unsigned>(date.month())), 2);
  out += '/';
  AppendDigits(out, static_cast<int>(date.year()), 4);
}

void AppendClock(QByteArray& out, int minute) {
  AppendDigits(out, minute / 60, 2);
  out += ':';
  AppendDigits(out, minute % 60, 2);
}

/// Metres with two decimals, right-aligned in five characters.
void AppendLevel(QByteArray& out, int levelCm, char decimalSign) {
  QByteArray text;
  if (levelCm < 0) text += '-';
  text += QByteArray::number(std::abs(levelCm) / 100);
  text += decimalSign;
  AppendDigits(text, std::abs(levelCm) % 100, 2);
  out += text.rightJustified(5, ' ');
}

/// Headers write the last minute of a day as 23:59, never 24:00.
QByteArray HeaderTime(DateTime time) {
  const Stamp stamp = StampOf(time);
  QByteArray text;
  AppendDate(text, stamp.day);
  text += ' ';
  AppendClock(text, std::min(stamp.minute, 1439));
  return text;
}

/// The setup time is a plain clock time, midnight 00:00.
QByteArray SetupTime(DateTime time) {
  const Day day = floor<days>(time);
  QByteArray text;
  AppendDate(text, day);
  text += ' ';
  AppendClock(text, static_cast<int>((time - day) / minutes(1)));
  return text;
}

DateTime LastReading(const RawFilePlan& plan) {
  return plan.first + minutes(plan.intervalMinutes) * std::max(plan.count - 1, 0);
}

struct Peak {
  int minute = 0;
  int levelCm = 0;
};

/// Writes data lines and keeps the day's extremes, the earliest of equal levels.
class DataWriter {
 public:
  DataWriter(const RawFilePlan& plan, QByteArray& out) : plan_(plan), out_(out) {}

  void Reading(DateTime time) {
    const Stamp stamp = StampOf(time);
    if (open_ && stamp.day != day_) EndDay();
    const int levelCm = plan_.levelCm ? plan_.levelCm(time) : 100;
    if (!open_) {
      dateText_.clear();
      AppendDate(dateText_, stamp.day);
      highest_ = lowest_ = {stamp.minute, levelCm};
    }
    open_ = true;
    day_ = stamp.day;
    if (levelCm > highest_.levelCm) highest_ = {stamp.minute, levelCm};
    if (levelCm < lowest_.levelCm) lowest_ = {stamp.minute, levelCm};
    out_ += dateText_;
    out_ += "  ";
    AppendClock(out_, stamp.minute);
    out_ += "    ";
    EndLine(levelCm);
  }

  void EndDay() {
    if (!open_) return;
    open_ = false;
    if (plan_.noExtremes && plan_.noExtremes(day_)) return;
    Extreme("Max ", highest_);
    Extreme("Min ", lowest_);
  }

 private:
  void Extreme(const char* word, const Peak& peak) {
    out_ += word;
    out_ += dateText_;
    out_ += ' ';
    AppendClock(out_, peak.minute);
    out_ += ' ';
    EndLine(peak.levelCm);
  }

  void EndLine(int levelCm) {
    out_ += plan_.flag;
    AppendLevel(out_, levelCm, plan_.decimalSign);
    out_ += plan_.lineEnd;
  }

  const RawFilePlan& plan_;
  QByteArray& out_;
  bool open_ = false;
  Day day_{};
  QByteArray dateText_;
  Peak highest_;
  Peak lowest_;
};

/// Scrambles the bits of a number; a hash of the time stands in for chance, so that no order of calls
/// matters.
std::uint32_t Scramble(std::uint32_t value) {
  value = (value ^ (value >> 16)) * 0x7feb352dU;
  value = (value ^ (value >> 15)) * 0x846ca68bU;
  return value ^ (value >> 16);
}

/// 0 to range - 1.
int Chance(unsigned seed, std::int64_t key, int range) {
  const auto mixed = Scramble(static_cast<std::uint32_t>(key) * 0x9e3779b9U + Scramble(seed));
  return static_cast<int>(mixed % static_cast<std::uint32_t>(range));
}

/// A flood rises over 18 hours to its peak and halves every 30 hours; one starts in about every third week.
int FloodCm(const River& river, std::int64_t minute) {
  constexpr std::int64_t kWeek = 7 * 1440;
  int highestCm = 0;
  for (std::int64_t week = minute / kWeek - 1; week <= minute / kWeek; ++week) {
    if (Chance(river.seed + 7, week, 3) != 0) continue;
    const int peakCm = river.floodCm * (20 + Chance(river.seed + 8, week, 81)) / 100;
    const std::int64_t sinceStart = minute - week * kWeek - Chance(river.seed + 9, week, 5 * 1440);
    if (sinceStart < 0) continue;
    if (sinceStart < 1080) {
      highestCm = std::max(highestCm, static_cast<int>(peakCm * sinceStart / 1080));
      continue;
    }
    const std::int64_t recession = sinceStart - 1080;
    const std::int64_t halvings = std::min<std::int64_t>(recession / 1800, 20);
    const std::int64_t startCm = static_cast<std::int64_t>(peakCm) >> halvings;
    const std::int64_t levelCm = startCm - startCm * (recession % 1800) / 3600;
    highestCm = std::max(highestCm, static_cast<int>(levelCm));
  }
  return highestCm;
}

}  // namespace

QByteArray LoggerText(Logger logger) {
  switch (logger) {
    case Logger::OpticalEncoder:
      return QByteArrayLiteral("Optik Kodlu");
    case Logger::PressureSensor:
      return QByteArrayLiteral("Bas\375n\347 Sens\366rl\374");
    case Logger::Aquifer:
      return QByteArrayLiteral("Akifer");
  }
  return {};
}

DateTime At(int year, int month, int day, int hour, int minute) {
  const Day date = std::chrono::year(year) / month / day;
  return DateTime(date) + minutes(hour * 60 + minute);
}

QString RawFileName(const RawFilePlan& plan) {
  QByteArray name = plan.prefix + '-' + plan.station + '-' + plan.stem;
  if (plan.dayCount) {
    name += '=';
    AppendDigits(name, *plan.dayCount, 4);
  }
  return QString::fromLatin1(name + ".txt");
}

QByteArray RawHeaderBytes(const RawFilePlan& plan) {
  const DateTime setup = plan.first - minutes(plan.intervalMinutes);
  const QByteArray interval = QByteArray::number(plan.intervalMinutes);
  const QByteArray lines[] = {
      plan.firstLine,
      "Kurum ................... \326RNEK VER\335 / DENEME \335STASYONU",
      "S\374r\374m No ................ " + plan.version,
      "Alet Tipi ............... " + LoggerText(plan.logger),
      "B\366lge No ................ " + plan.region,
      "Havza No ................ " + plan.basin,
      "\335stasyon No ............. " + plan.station,
      "Kurulma Tarihi .......... " + SetupTime(setup),
      "\335lk Kay\375t Tarihi ........ " + HeaderTime(plan.first),
      "Son Kay\375t Tarihi ........ " + HeaderTime(plan.lastInHeader.value_or(LastReading(plan))),
      "\326rnek Say\375s\375 ............ " + QByteArray::number(plan.count),
      "\326rnekleme Aral\375\360\375 (dk) .. " + interval,
      "Kay\375t Aral\375\360\375 (dk) ...... " + interval,
      "Pil Gerilimi (V) ........ 3.6",
      "A\347\375klama ................ Deneme verisi",
  };
  QByteArray out;
  for (const QByteArray& line : lines) out += line + plan.lineEnd;
  return out;
}

QByteArray RawFileBytes(const RawFilePlan& plan) {
  QByteArray out = RawHeaderBytes(plan);
  constexpr int kLineBytes = 30;
  out.reserve(out.size() + plan.count * kLineBytes + plan.count / 12 * kLineBytes + 100);
  DataWriter writer(plan, out);
  for (int i = 0; i < plan.count; ++i) {
    const DateTime time = plan.first + minutes(plan.intervalMinutes) * i;
    if (!plan.inGap || !plan.inGap(time)) writer.Reading(time);
  }
  writer.EndDay();
  if (plan.endMark) out += QByteArray(20, '*') + plan.lineEnd;
  return out;
}

Result<QString> WriteRawFile(const QString& folder, const RawFilePlan& plan) {
  const QString path = QDir(folder).filePath(RawFileName(plan));
  const Status written = WriteWholeFile(
      path, RawFileBytes(plan), Wording{u"Ham dosya yazılamadı", u"The raw file could not be written"});
  if (!written) return written.Failure();
  return path;
}

int RiverLevelCm(const River& river, DateTime time) {
  const std::int64_t minute = time.time_since_epoch() / minutes(1);
  constexpr std::int64_t kYearMinutes = 525960;  // 365.25 days; the high is at the turn of the year
  const std::int64_t inYear = minute % kYearMinutes;
  const std::int64_t fromHigh = std::min(inYear, kYearMinutes - inYear);
  const auto seasonCm = static_cast<int>(river.seasonCm - river.seasonCm * 2 * fromHigh / kYearMinutes);
  const int rippleCm = Chance(river.seed, minute, 2 * river.rippleCm + 1) - river.rippleCm;
  const int floodCm = river.floodCm == 0 ? 0 : FloodCm(river, minute);
  return river.baseCm + seasonCm + floodCm + rippleCm;
}

Result<QStringList> WriteSampleData(const QString& folder) {
  QStringList names;
  for (const SampleStation& station : SampleStations()) {
    for (const RawFilePlan& plan : station.files) {
      const Result<QString> written = WriteRawFile(folder, plan);
      if (!written) return written.Failure();
      names += RawFileName(plan);
    }
  }
  return names;
}

Result<QStringList> WriteBulkData(const QString& folder, int fileCount) {
  QStringList names;
  for (int i = 0; i < fileCount; ++i) {
    RawFilePlan plan;
    plan.station = QByteArray::number(20000 + i);
    plan.stem = "251001";
    plan.firstLine = QByteArray(8, ' ');
    plan.first = At(2024, 10, 1, 0, 15);
    plan.intervalMinutes = 15;
    plan.count = 35040;
    plan.levelCm = [seed = static_cast<unsigned>(i + 1)](DateTime time) {
      return RiverLevelCm({.seed = seed}, time);
    };
    const Result<QString> written = WriteRawFile(folder, plan);
    if (!written) return written.Failure();
    names += RawFileName(plan);
  }
  return names;
}

}  // namespace vesk::sample

// Raw logger files made up for a test: the 15-line header and data lines in the layout the loggers write.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QString>

#include <algorithm>

#include "datafiles/dates.h"

namespace vesk::test {

/// One raw file to be. Levels follow a calm saw-tooth, so every reading can be told from its neighbours.
struct RawFileSketch {
  QString prefix = QStringLiteral("001");
  QString station = QStringLiteral("12345");
  QString stem = QStringLiteral("010203");
  DateTime first{};
  DateTime last{};
  int stepMinutes = 60;
  bool midnightAs24 = false;  ///< as loggers write it: midnight is 24:00 of the day that ends
  bool withExtremes = true;   ///< a Max and a Min line after the last reading of each day
  QByteArray firstLine;       ///< correction code or marker; empty for a blank line
  QByteArray version = "10";
  QByteArray type = "Optical Encoder";

  [[nodiscard]] QString DeliveredName() const {
    return prefix + QLatin1Char('-') + station + QLatin1Char('-') + stem + QStringLiteral(".txt");
  }
};

/// Level of the n-th reading of a sketch, cm: 100 to 199, then again.
inline int SketchLevelCm(int index) {
  return 100 + index % 100;
}

inline QByteArray HeaderLine(const char* label, const QByteArray& value) {
  return QByteArray(label).leftJustified(26, ' ', true) + value + "\r\n";
}

/// Date and time as the loggers write them, "dd/mm/yyyy hh:mm".
inline QString LoggerTimeText(DateTime time, bool midnightAs24) {
  const Day day = std::chrono::floor<std::chrono::days>(time);
  if (!midnightAs24 || time != DateTime(day)) return DateTimeText(time);
  return DateText(day - std::chrono::days(1)) + QStringLiteral(" 24:00");
}

inline QByteArray SketchHeader(const RawFileSketch& sketch, int samples) {
  const QByteArray first = LoggerTimeText(sketch.first, sketch.midnightAs24).toLatin1();
  const QByteArray last = LoggerTimeText(sketch.last, sketch.midnightAs24).toLatin1();
  const QByteArray step = QByteArray::number(sketch.stepMinutes);
  return sketch.firstLine + "\r\n" + HeaderLine("Unit", "1") + HeaderLine("Version", sketch.version) +
         HeaderLine("Type", sketch.type) + HeaderLine("Region", "26") + HeaderLine("Basin", "7") +
         HeaderLine("Station", sketch.station.toLatin1()) + HeaderLine("Setup", first) +
         HeaderLine("First record", first) + HeaderLine("Last record", last) +
         HeaderLine("Samples", QByteArray::number(samples)) + HeaderLine("Sampling", step) +
         HeaderLine("Recording", step) + HeaderLine("-", "0") + HeaderLine("-", "0");
}

/// The level field, five characters with a decimal point whatever the machine's locale.
inline QByteArray LevelField(int levelCm) {
  return QByteArray::number(levelCm / 100.0, 'f', 2).rightJustified(5);
}

inline QByteArray OrdinaryLine(DateTime time, int levelCm, char flag = ' ', bool midnightAs24 = false) {
  const QString text = LoggerTimeText(time, midnightAs24);
  return text.left(10).toLatin1() + "  " + text.mid(11, 5).toLatin1() + "    " + flag + LevelField(levelCm) +
         "\r\n";
}

inline QByteArray ExtremeLine(const char* kind, DateTime time, int levelCm, bool midnightAs24 = false) {
  return QByteArray(kind) + ' ' + LoggerTimeText(time, midnightAs24).toLatin1() + "  " + LevelField(levelCm) +
         "\r\n";
}

/// The whole content of a sketch.
inline QByteArray SketchContent(const RawFileSketch& sketch) {
  QByteArray lines;
  int index = 0;
  int highest = 0;
  int lowest = 9999;
  const std::chrono::minutes step(sketch.stepMinutes);
  for (DateTime time = sketch.first; time <= sketch.last; time += step, ++index) {
    const int level = SketchLevelCm(index);
    lines += OrdinaryLine(time, level, ' ', sketch.midnightAs24);
    highest = std::max(highest, level);
    lowest = std::min(lowest, level);
    const std::chrono::minutes shift(sketch.midnightAs24 ? 1 : 0);
    const auto dayOf = [shift](DateTime t) { return std::chrono::floor<std::chrono::days>(t - shift); };
    if (!sketch.withExtremes || dayOf(time + step) == dayOf(time)) continue;
    lines += ExtremeLine("Max", time, highest, sketch.midnightAs24) +
             ExtremeLine("Min", time, lowest, sketch.midnightAs24);
    highest = 0;
    lowest = 9999;
  }
  return SketchHeader(sketch, index) + lines + QByteArray(20, '*') + "\r\n";
}

/// Writes the sketch into a folder (with its trailing separator) under its delivered name, or another one.
inline QString WriteSketch(const QString& folder, const RawFileSketch& sketch, const QString& name = {}) {
  const QString fileName = name.isEmpty() ? sketch.DeliveredName() : name;
  QFile file(folder + fileName);
  EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << fileName.toStdString();
  const QByteArray content = SketchContent(sketch);
  EXPECT_EQ(file.write(content), content.size());
  return fileName;
}

}  // namespace vesk::test

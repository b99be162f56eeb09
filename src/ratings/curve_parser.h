// The own format of rating-curve files, line by line.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <map>
#include <tuple>

#include "ratings/curve_check.h"
#include "ratings/curve_file.h"

namespace vesk {

class CurveParser {
 public:
  /// lines: without their ends, the heading among them.
  CurveText Read(const QStringList& lines);

 private:
  enum class Section { Curve, Period, Segments, Points, Shifts, Gaugings, End };

  void ReadLine(const QString& line);
  void BeginSection(const QString& name);
  void ReadField(const QString& name, const QString& value);
  void ReadCurveField(const QString& name, const QString& value);
  void ReadPeriodField(const QString& name, const QString& value);
  bool ReadPeriodNumber(const QString& name, const QString& value);
  void ReadSegment(const QStringList& words);
  void ReadPoint(const QStringList& words);
  void ReadShift(const QStringList& words);
  void ReadGauging(const QString& line);
  void TakeNumber(const QString& text, double& number);
  void TakeTime(const QString& text, std::optional<DateTime>& time);
  void Fault(const Message& what) { read_.faults.push_back({line_, what}); }
  void Note(CurvePart part, std::size_t place);
  void CheckMissing();
  void CheckWhole();
  CurvePeriod& Period() { return read_.curve.periods.back(); }

  CurveText read_;
  int line_ = 0;
  Section section_ = Section::Curve;
  QSet<QString> seen_;  ///< fields of the section and sections of the period
  std::map<std::tuple<int, CurvePart, int>, int> lines_;  ///< where a part of a period stands
};

}  // namespace vesk

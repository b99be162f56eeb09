// The fields of a gauging one by one: how they are read, what they may hold, how they are written. One rule
// for files, the register and the cells of a window.
#pragma once

#include <QString>
#include <QStringView>

#include <array>

#include "datafiles/gauging.h"
#include "platform/wording.h"

namespace vesk {

enum class GaugingField { Time, Level, Discharge, Uncertainty, Method, Party, Remark, Used };

/// In the order of the window's columns.
inline constexpr std::array kGaugingFields = {
    GaugingField::Time,   GaugingField::Level, GaugingField::Discharge, GaugingField::Uncertainty,
    GaugingField::Method, GaugingField::Party, GaugingField::Remark,    GaugingField::Used};

/// What figures make sense. The discharge of a trickle is some 1e-5 m3/s, that of the largest river 3e5.
inline constexpr double kMostGaugingLevelCm = 1e6;  ///< up or down
inline constexpr double kLeastDischargeM3s = 1e-6, kMostDischargeM3s = 1e6;
inline constexpr double kLeastUncertaintyPercent = 0.001, kMostUncertaintyPercent = 1000;
inline constexpr int kFirstGaugingYear = 1700;  ///< a year in two digits is none

/// Of the column: "Level (cm)".
Wording TitleOf(GaugingField field);
/// As files have it: "level_cm".
QString NameOf(GaugingField field);

/// Puts a text into a field; empty: nothing is known. The decimal mark is a point or a comma, thousands are
/// not marked. Time: "dd/mm/yyyy hh:mm" with any separators, or "yyyy-mm-dd hh:mm"; seconds are left out; a
/// date alone is its 00:00. Gives what was expected, and leaves the gauging as it was, when the text is
/// nothing of that; an empty message when all is well.
Message TakeField(Gauging& gauging, GaugingField field, QStringView text);

/// As TakeField reads it, and gives the very same value back.
QString TextOf(const Gauging& gauging, GaugingField field);

/// The shortest text that reads back as that number, without an exponent.
QString ExactNumberText(double value);

/// What is wrong with a gauging: the field's name and what was expected; empty when nothing is.
Message GaugingFault(const Gauging& gauging);

/// True when a time's text has a clock time in it, not the date alone.
bool HasClock(QStringView timeText);

}  // namespace vesk

// Round values for the marks of an axis.
#pragma once

#include <vector>

namespace vesk {

struct AxisTicks {
  std::vector<double> values;
  int decimals = 0;  ///< that their texts need
};

/// Multiples of 1, 2 or 5 times a power of ten from low to high (high above low), about `most` of them.
AxisTicks LinearTicks(double low, double high, int most);

/// 1, 2 and 5 of each decade, or the ones alone over more than four decades. low, high: decimal logarithms.
std::vector<double> LogTicks(double low, double high);

}  // namespace vesk

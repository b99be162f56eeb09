#include "platform/axis_ticks.h"

#include <algorithm>
#include <cmath>

namespace vesk {

AxisTicks LinearTicks(double low, double high, int most) {
  const double raw = (high - low) / std::max(most, 2);
  const double decade = std::pow(10, std::floor(std::log10(raw)));
  double step = 10 * decade;
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * decade >= raw) {
      step = factor * decade;
      break;
    }
  }
  AxisTicks ticks;
  ticks.decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
  for (double at = std::ceil(low / step - 1e-9); at * step <= high + 1e-9 * step; ++at)
    ticks.values.push_back(at * step);
  return ticks;
}

std::vector<double> LogTicks(double low, double high) {
  std::vector<double> values;
  const bool many = high - low > 4;
  for (int decade = static_cast<int>(std::floor(low)); decade <= static_cast<int>(std::ceil(high));
       ++decade) {
    for (const double factor : {1.0, 2.0, 5.0}) {
      const double at = decade + std::log10(factor);
      if ((factor > 1 && many) || at < low || at > high) continue;
      values.push_back(factor * std::pow(10, decade));
    }
  }
  return values;
}

}  // namespace vesk

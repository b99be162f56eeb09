// Gaugings as a fit takes them.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

#include "datafiles/dates.h"
#include "datafiles/numbers.h"
#include "ratings/fit_problem.h"

namespace vesk {
namespace {

constexpr Wording kFailed{u"Anahtar eğrisi bulunamadı", u"The rating curve could not be fitted"};

/// "gauging 3 (12/05/2020 10:30)"
Message NameOf(const Gauging& gauging, std::size_t place) {
  static constexpr Wording kName{u"%1. ölçüm", u"gauging %1"};
  static constexpr Wording kNameAt{u"%1. ölçüm (%2)", u"gauging %1 (%2)"};
  const auto number = static_cast<int>(place) + 1;
  if (!gauging.time) return {kName, number};
  return {kNameAt, number, DateTimeText(*gauging.time)};
}

std::optional<Error> FaultOf(const Gauging& gauging, std::size_t place) {
  static constexpr Wording kDischarge{u"%1: sıfırdan büyük bir debi (m3/s) beklenir",
                                      u"%1: a discharge above 0 (m3/s) is expected"};
  static constexpr Wording kUncertainty{u"%1: sıfırdan büyük bir belirsizlik (%) beklenir",
                                        u"%1: an uncertainty above 0 (%) is expected"};
  static constexpr Wording kLevel{u"%1: bir seviye (cm) beklenir", u"%1: a level (cm) is expected"};
  const Message name = NameOf(gauging, place);
  if (!std::isfinite(gauging.dischargeM3s) || gauging.dischargeM3s <= 0)
    return Error{kFailed, {}, {kDischarge, name}};
  if (gauging.uncertaintyPercent &&
      !(*gauging.uncertaintyPercent > 0 && std::isfinite(*gauging.uncertaintyPercent)))
    return Error{kFailed, {}, {kUncertainty, name}};
  if (!std::isfinite(*gauging.levelCm)) return Error{kFailed, {}, {kLevel, name}};
  return std::nullopt;
}

double MedianOf(std::vector<double> values) {
  std::ranges::sort(values);
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void SetWeights(const std::vector<Gauging>& gaugings, std::vector<FitPoint>& points) {
  std::vector<double> known;
  for (const FitPoint& point : points) {
    const auto& percent = gaugings[static_cast<std::size_t>(point.gauging)].uncertaintyPercent;
    if (percent) known.push_back(*percent);
  }
  if (known.empty()) return;
  const double usual = MedianOf(known);
  double sum = 0;
  for (FitPoint& point : points) {
    const double percent =
        gaugings[static_cast<std::size_t>(point.gauging)].uncertaintyPercent.value_or(usual);
    point.weight = 1 / (percent * percent);
    sum += point.weight;
  }
  const double mean = sum / static_cast<double>(points.size());
  for (FitPoint& point : points) point.weight /= mean;
}

}  // namespace

Result<std::vector<FitPoint>> FitPointsOf(const std::vector<Gauging>& gaugings, FitWeights weights) {
  static constexpr Wording kNone{u"seviyesi olan ve kullanılan ölçüm yok",
                                 u"there is no gauging that is used and has a level"};
  static constexpr Wording kEqual{u"bütün ölçümler aynı seviyede (%1 cm); farklı seviyeler beklenir",
                                  u"all gaugings have one level (%1 cm); different levels are expected"};
  std::vector<FitPoint> points;
  for (std::size_t i = 0; i < gaugings.size(); ++i) {
    const Gauging& gauging = gaugings[i];
    if (!gauging.used || !gauging.levelCm) continue;
    if (auto fault = FaultOf(gauging, i)) return *std::move(fault);
    points.push_back({*gauging.levelCm, std::log(gauging.dischargeM3s), 1, static_cast<int>(i)});
  }
  if (points.empty()) return Error{kFailed, {}, kNone};
  if (weights == FitWeights::FromUncertainties) SetWeights(gaugings, points);
  std::ranges::sort(points, {}, [](const FitPoint& point) {
    return std::tuple(point.levelCm, point.lnDischarge, point.weight, point.gauging);
  });
  if (points.front().levelCm == points.back().levelCm)
    return Error{kFailed, {}, {kEqual, NumberText(points.front().levelCm)}};
  return points;
}

}  // namespace vesk

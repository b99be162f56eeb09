// Where a rating curve gives no discharge, or one beyond what was gauged.
#include <optional>

#include "findings/samples.h"

namespace vesk {
namespace {

struct CurveRun {
  DischargeFlag flag = DischargeFlag::None;
  std::size_t first = 0, last = 0;
};

void AddRun(const Samples& samples, const DischargeSource& curve, const CurveRun& run,
            std::vector<Finding>& found) {
  const std::vector<Sample>& all = samples.InTime();
  Finding finding = samples.Over(FindingRule::Curve, all[run.first], all[run.last]);
  finding.severity = HasDischarge(run.flag) ? FindingSeverity::Note : FindingSeverity::Doubt;
  finding.value = static_cast<double>(run.last - run.first + 1);
  finding.unit = FindingUnit::Readings;
  finding.expected = curve.Explain(all[run.first].Time(), run.flag);
  samples.Add(finding, run.first, run.last, found);
}

}  // namespace

void FindOffCurve(const Samples& samples, const StationSeries& series, std::vector<Finding>& found) {
  const DischargeSource* const curve = series.Curve().get();
  if (curve == nullptr) return;
  const std::vector<Sample>& all = samples.InTime();
  std::optional<CurveRun> run;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const DischargeFlag flag = series.CurveDischargeOf(all[i].row)->flag;
    if (run && run->flag == flag) {
      run->last = i;
      continue;
    }
    if (run) AddRun(samples, *curve, *run, found);
    run.reset();
    if (flag != DischargeFlag::None) run = CurveRun{flag, i, i};
  }
  if (run) AddRun(samples, *curve, *run, found);
}

}  // namespace vesk

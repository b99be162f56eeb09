#include "findings/findings.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "datafiles/numbers.h"
#include "findings/samples.h"

namespace vesk {
namespace {

struct RuleTexts {
  const char* word = "";
  Wording name;
};

constexpr std::array<RuleTexts, kFindingRules.size()> kRules = {{
    {"gap", {u"Boşluk", u"Gap"}},
    {"overlap", {u"Çakışan dosyalar", u"Overlap"}},
    {"double", {u"Aynı zaman iki kez", u"Same time twice"}},
    {"order", {u"Geri giden zaman", u"Time runs back"}},
    {"step", {u"Aralık dışı zaman", u"Off the step"}},
    {"spike", {u"Sıçrama", u"Spike"}},
    {"rate", {u"Hızlı değişim", u"Fast change"}},
    {"flat", {u"Düz çizgi", u"Flat line"}},
    {"range", {u"Sınır dışı", u"Out of range"}},
    {"extreme", {u"Max/Min kaydı", u"Max/Min record"}},
    {"joint", {u"Dosya geçişi", u"Joint of files"}},
    {"header", {u"Başlık", u"Header"}},
    {"refused", {u"Okunmayan satırlar", u"Lines not read"}},
    {"sensor", {u"Algılayıcı", u"Sensor"}},
    {"curve", {u"Eğri dışı", u"Off the curve"}},
}};

const RuleTexts& TextsOf(FindingRule rule) {
  return kRules[static_cast<std::size_t>(rule)];
}

/// Chosen years that follow each other are one window: readings go on from one to the next.
std::vector<DayWindow> WindowsOf(const Choice& choice) {
  std::vector<DayWindow> windows;
  for (const StationWaterYear& chosen : YearsOf(choice))
    windows.push_back({chosen.year.FirstDay(), chosen.year.LastDay()});
  std::ranges::sort(windows, {}, &DayWindow::first);
  std::vector<DayWindow> joined;
  for (const DayWindow& window : windows) {
    if (!joined.empty() && window.first <= joined.back().last + std::chrono::days(1)) {
      joined.back().last = std::max(joined.back().last, window.last);
    } else {
      joined.push_back(window);
    }
  }
  return joined;
}

}  // namespace

QString RuleWord(FindingRule rule) {
  return QString::fromLatin1(TextsOf(rule).word);
}

std::optional<FindingRule> RuleOfWord(QStringView word) {
  for (const FindingRule rule : kFindingRules) {
    if (word == QLatin1String(TextsOf(rule).word)) return rule;
  }
  return std::nullopt;
}

Wording RuleName(FindingRule rule) {
  return TextsOf(rule).name;
}

QString SeverityWord(FindingSeverity severity) {
  return severity == FindingSeverity::Doubt ? QStringLiteral("doubt") : QStringLiteral("note");
}

Message ValueText(const Finding& finding) {
  static constexpr std::array<Wording, 8> kUnits = {{
      {u"%1 okuma", u"%1 readings"},
      {u"%1 dk", u"%1 min"},
      {u"%1 cm", u"%1 cm"},
      {u"%1 cm/sa", u"%1 cm/h"},
      {u"%1 sa", u"%1 h"},
      {u"%%1", u"%1 %"},
      {u"%1 satır", u"%1 lines"},
      {u"%1 dosya", u"%1 files"},
  }};
  constexpr double kHundredths = 100;
  const double shown = std::round(finding.value * kHundredths) / kHundredths;
  return {kUnits[static_cast<std::size_t>(finding.unit)], NumberText(shown)};
}

FindingInput InputOf(const LoadedReadings& loaded, const StationLimits& limits) {
  return InputOf(loaded.series, loaded.readOuts, loaded.missedFiles, limits);
}

FindingInput InputOf(const StationSeries& series, const std::vector<ReadOut>& readOuts,
                     const std::vector<QString>& missedFiles, const StationLimits& limits) {
  return {.series = series,
          .readOuts = readOuts,
          .windows = WindowsOf(series.Chosen()),
          .limits = limits,
          .missedFiles = missedFiles};
}

std::vector<Finding> FindAll(const FindingInput& input) {
  return FindAll(Samples(input.series, input.readOuts, input.each), input);
}

std::vector<Finding> FindAll(const Samples& samples, const FindingInput& input) {
  std::vector<Finding> found;
  FindGaps(samples, input, found);
  FindInTimes(samples, found);
  FindInLevels(samples, input.limits, found);
  FindInRecords(input, found);
  FindAtJoints(samples, input.limits, found);
  FindInFiles(input, found);
  FindSensorFaults(samples, found);
  FindOffCurve(samples, input.series, found);
  std::ranges::stable_sort(found, {}, &Finding::from);
  return found;
}

}  // namespace vesk

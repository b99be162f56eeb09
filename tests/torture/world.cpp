#include "torture/world.h"
#include "datafiles/dates.h"

#include "datafiles/raw_file_names.h"
#include "datafiles/raw_header.h"

namespace vesk::torture {
namespace {

using sample::At;
using sample::RawFilePlan;

constexpr char kStation[] = "101-12001";

/// Levels with plateaus, spikes and repeats: extremes share their minute and level with readings.
std::function<int(DateTime)> Levels(std::uint64_t seed) {
  return [seed](DateTime time) {
    Random random(seed ^ static_cast<std::uint64_t>(time.time_since_epoch().count()));
    if (random.OneIn(40)) return random.OneIn(2) ? 9999 : 0;
    return 100 + random.Below(12) * 5;
  };
}

RawFilePlan PlanFrom(Random& random, DateTime first, int number, std::uint64_t levels) {
  RawFilePlan plan;
  plan.stem = "23" + QByteArray::number(1000 + number * 10 + random.Below(9));
  plan.first = first;
  plan.intervalMinutes = random.OneIn(3) ? 30 : 60;
  plan.count = 24 + random.Below(72);
  plan.levelCm = Levels(levels);
  if (random.OneIn(5)) plan.noExtremes = [](Day day) { return DayOf(day) % 2 == 0; };
  return plan;
}

}  // namespace

World MakeWorld(Random& random, WorldKind kind, bool withCount) {
  World world;
  world.choice.station = QLatin1String(kStation);
  const std::uint64_t levels = random.Next();
  const bool atYearsEnd = random.OneIn(3);
  DateTime first = atYearsEnd ? At(2024, 9, 28, 1 + random.Below(12))
                              : At(2024, 1 + random.Below(6), 3, 1 + random.Below(20));
  const int files = kind == WorldKind::SingleFile ? 1 : 1 + random.Below(4);
  for (int i = 0; i < files; ++i) {
    RawFilePlan plan = PlanFrom(random, first, i, levels);
    const auto length = std::chrono::minutes(plan.intervalMinutes * plan.count);
    // The next one goes on behind it, some time later, or overlaps it.
    first =
        std::chrono::floor<std::chrono::hours>(first + length) + std::chrono::hours(random.Below(30) - 15);
    world.plans.push_back(std::move(plan));
  }
  if (withCount) {
    for (RawFilePlan& plan : world.plans) plan.dayCount = CountedNameOf(plan).mid(17, 4).toInt();
  }
  if (kind == WorldKind::SingleFile) {
    world.choice.stem = sample::RawFileName(world.plans.front()).left(16);
  } else {
    world.choice.years = {2024};
    if (atYearsEnd && random.OneIn(2)) world.choice.years.push_back(2025);
  }
  return world;
}

Choice WriteWorld(const World& world, const QString& folder) {
  for (const RawFilePlan& plan : world.plans)
    Put(folder + sample::RawFileName(plan), sample::RawFileBytes(plan));
  Choice choice = world.choice;
  choice.folder = folder;
  return choice;
}

QString CountedNameOf(const RawFilePlan& plan) {
  const HeaderReading reading = ReadRawHeader(sample::RawHeaderBytes(plan), {}, sample::RawFileName(plan));
  const int days = (reading ? *reading : reading.Failure().header).DaysCovered;
  return CountedName(sample::RawFileName(plan).left(16), days);
}

}  // namespace vesk::torture

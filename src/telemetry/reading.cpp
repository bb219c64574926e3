#include "telemetry/reading.h"

#include <cstddef>

namespace lumowatt {

namespace {

constexpr double deadBandWatts = 0.3;
constexpr double deadBandAmps = 0.01;

}  // namespace

std::string_view name(Trend trend) {
  constexpr std::string_view names[] = {"up", "down", "steady"};
  return names[static_cast<std::size_t>(trend)];
}

Trend trend(const Reading& reading) {
  if (reading.external && reading.full) return Trend::steady;
  if (reading.batteryWatts > deadBandWatts) return Trend::up;
  if (reading.batteryWatts < -deadBandWatts) return Trend::down;
  return Trend::steady;
}

std::optional<double> percentPerHour(const Reading& reading) {
  // Both comparisons are false for a NaN, so it has no rate.
  const bool flows = reading.batteryAmps > deadBandAmps || reading.batteryAmps < -deadBandAmps;
  if (reading.rawMax < 1 || !flows) return std::nullopt;
  return reading.batteryAmps * 1000.0 / static_cast<double>(reading.rawMax) * 100.0;
}

}  // namespace lumowatt

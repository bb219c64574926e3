#include "cli/dump.h"

#include <string_view>

#include "base/number.h"

namespace lumowatt {

namespace {

std::string truth(bool value) { return value ? "true" : "false"; }

std::string minutes(const Reading& reading) {
  return reading.minutes ? std::to_string(*reading.minutes) : "unknown";
}

std::string rate(const Reading& reading) {
  const auto percent = percentPerHour(reading);
  return percent ? fixed(*percent, 2) : "unknown";
}

std::string temperature(const Reading& reading) {
  return reading.temperatureC ? shortest(*reading.temperatureC) : "unavailable";
}

}  // namespace

std::string dump(const Reading& reading) {
  const struct {
    std::string_view key;
    std::string value;
  } lines[] = {
      {"percent", std::to_string(reading.percent)},
      {"trend", std::string(name(trend(reading)))},
      {"charging", truth(reading.charging)},
      {"external", truth(reading.external)},
      {"full", truth(reading.full)},
      {"minutes", minutes(reading)},
      {"rawCurrentmAh", std::to_string(reading.rawCurrent)},
      {"rawMaxmAh", std::to_string(reading.rawMax)},
      {"designmAh", std::to_string(reading.design)},
      {"nominalmAh", std::to_string(reading.nominal)},
      {"cycles", std::to_string(reading.cycles)},
      {"batteryVolts", fixed(reading.batteryVolts, 3)},
      {"batteryAmps", fixed(reading.batteryAmps, 3)},
      {"batteryWatts", fixed(reading.batteryWatts, 3)},
      {"percentPerHour", rate(reading)},
      {"systemWatts", fixed(reading.systemWatts, 3)},
      {"wallWatts", fixed(reading.wallWatts, 3)},
      {"wallVolts", fixed(reading.wallVolts, 3)},
      {"wallAmps", fixed(reading.wallAmps, 3)},
      {"adapterWatts", std::to_string(reading.adapterWatts)},
      {"adapterName", reading.adapterName},
      {"temperatureC", temperature(reading)},
  };
  std::string text;
  for (const auto& [key, value] : lines) text.append(key).append("=").append(value).append("\n");
  return text;
}

}  // namespace lumowatt

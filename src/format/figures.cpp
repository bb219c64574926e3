#include "format/figures.h"

#include <cstddef>

#include "base/number.h"

namespace lumowatt {

namespace {

constexpr double heavyDrainWatts = -15.0;

}  // namespace

std::string duration(std::optional<std::int64_t> minutes) {
  if (!minutes) return "calculating";
  if (*minutes < 60) return std::to_string(*minutes) + " min";
  return std::to_string(*minutes / 60) + " h " + std::to_string(*minutes % 60) + " min";
}

std::string clock(std::int64_t minutes) {
  const std::int64_t hours = minutes / 60;
  const std::int64_t rest = minutes % 60;
  const bool oneDigit = rest >= 0 && rest < 10;
  return std::to_string(hours) + (oneDigit ? ":0" : ":") + std::to_string(rest);
}

std::string watts(double value, bool signedValue) {
  const std::string text = magnitude(value, 1) + " W";
  return signedValue ? std::string(sign(value)) + text : text;
}

std::string statusLine(const Reading& reading) {
  const std::string& adapter = reading.adapterName;
  if (reading.full && reading.external) return "Fully charged, on power";
  if (reading.charging) return adapter.empty() ? "Charging" : "Charging on " + adapter;
  if (!reading.external) return "On battery";
  const std::string idle = "On power, not charging";
  return adapter.empty() ? idle : idle + " (" + adapter + ")";
}

std::string_view arrow(Trend trend) {
  constexpr std::string_view arrows[] = {"▲", "▼", "•"};
  return arrows[static_cast<std::size_t>(trend)];
}

std::optional<Color> accent(const Reading& reading) {
  if (reading.charging) return systemGreen;
  if (reading.external) return reading.full ? std::optional(systemGreen) : std::nullopt;
  if (reading.percent <= 10) return systemRed;
  if (reading.percent <= 20) return systemOrange;
  return std::nullopt;
}

std::optional<SystemColor> trendAccent(const Reading& reading) {
  const Trend direction = trend(reading);
  if (direction == Trend::up) return SystemColor::green;
  const bool isHeavy = direction == Trend::down && reading.batteryWatts < heavyDrainWatts;
  return isHeavy ? std::optional(SystemColor::orange) : std::nullopt;
}

}  // namespace lumowatt

#include "render/tiles.h"

#include <string>

#include "base/number.h"
#include "format/figures.h"

namespace lumowatt {

namespace {

// As many characters as a row has room for at its full width, beside a sign or an arrow.
constexpr std::size_t room = 4;

/// With a decimal where there is room for it, "−8.3" and "−120"; everybody knows that it is watts.
std::string power(double watts) {
  std::string text = magnitude(watts, 1);
  if (text.size() > room) text = magnitude(watts, 0);
  return text.insert(0, sign(watts));
}

/// With the trend in front, "▼2:15", where there is room for it.
std::string timeAndTrend(std::int64_t minutes, std::string_view trend) {
  std::string text = clock(minutes);
  return text.size() > room ? text : text.insert(0, trend);
}

}  // namespace

std::vector<Tile> tiles(const Reading& reading, TitleExtras extras, bool colored) {
  const std::string_view trendArrow = arrow(trend(reading));
  const auto color = colored ? trendAccent(reading) : std::nullopt;
  const TileRow percentRow{std::to_string(reading.percent) + "%"};
  const Tile percentAlone{percentRow, {std::string(trendArrow), color}};
  const TileRow powerRow{power(reading.batteryWatts), color};

  if (extras.power && extras.time) {
    Tile extrasTile{powerRow};
    if (reading.minutes) extrasTile.push_back({clock(*reading.minutes)});
    return {percentAlone, extrasTile};
  }
  if (extras.power) return {{percentRow, powerRow}};
  if (extras.time && reading.minutes) {
    return {{percentRow, {timeAndTrend(*reading.minutes, trendArrow), color}}};
  }
  return {percentAlone};
}

}  // namespace lumowatt

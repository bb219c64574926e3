#include "render/tiles.h"

#include <string>

#include "base/number.h"
#include "format/figures.h"

namespace lumowatt {

namespace {

// Number of characters, not counting the sign, that fit into a row without being narrowed.
constexpr std::size_t maximumLength = 4;

/// Formats a power with its sign, and with a decimal if it fits: "−8.3", "−120". The unit is
/// omitted to save space.
std::string powerFigure(double watts) {
  std::string text = magnitude(watts, 1);
  if (text.size() > maximumLength) text = magnitude(watts, 0);
  return text.insert(0, sign(watts));
}

}  // namespace

std::vector<Tile> tiles(const Reading& reading, TitleExtras extras, bool colored) {
  const std::string_view trendArrow = arrow(trend(reading));
  const auto color = colored ? trendAccent(reading) : std::nullopt;
  const std::string percent = std::to_string(reading.percent);
  const TileRow percentRow{percent + "%"};
  const Tile percentAlone{percentRow, {std::string(trendArrow), color}};
  const TileRow powerRow{powerFigure(reading.batteryWatts), color};

  if (extras.power && extras.time) {
    Tile extrasTile{powerRow};
    if (reading.minutes) extrasTile.push_back({clock(*reading.minutes)});
    return {percentAlone, extrasTile};
  }
  if (extras.power) return {{percentRow, powerRow}};
  if (extras.time && reading.minutes) {
    // An arrow beside the time would be too small in an icon of 16 pixels.
    const TileRow percentAndTrend{.text = percent,
                                  .mark = TileMark{std::string(trendArrow), color}};
    return {{percentAndTrend, {clock(*reading.minutes)}}};
  }
  return {percentAlone};
}

}  // namespace lumowatt

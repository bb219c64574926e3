#include "render/tiles.h"

#include <string>

#include "base/number.h"
#include "format/figures.h"

namespace lumowatt {

namespace {

// As many characters as a row has room for at its full width, beside a sign.
constexpr std::size_t room = 4;

/// With a decimal where there is room for it, "−8.3" and "−120"; everybody knows that it is watts.
std::string power(double watts) {
  std::string text = magnitude(watts, 1);
  if (text.size() > room) text = magnitude(watts, 0);
  return text.insert(0, sign(watts));
}

}  // namespace

std::vector<Tile> tiles(const Reading& reading, TitleExtras extras, bool colored) {
  const std::string_view trendArrow = arrow(trend(reading));
  const auto color = colored ? trendAccent(reading) : std::nullopt;
  const std::string percent = std::to_string(reading.percent);
  const TileRow percentRow{percent + "%"};
  const Tile percentAlone{percentRow, {std::string(trendArrow), color}};
  const TileRow powerRow{power(reading.batteryWatts), color};

  if (extras.power && extras.time) {
    Tile extrasTile{powerRow};
    if (reading.minutes) extrasTile.push_back({clock(*reading.minutes)});
    return {percentAlone, extrasTile};
  }
  if (extras.power) return {{percentRow, powerRow}};
  if (extras.time && reading.minutes) {
    // In the time's row an arrow would be too small at 16 pixels.
    const TileRow percentAndTrend{.text = percent,
                                  .mark = TileMark{std::string(trendArrow), color}};
    return {{percentAndTrend, {clock(*reading.minutes)}}};
  }
  return {percentAlone};
}

}  // namespace lumowatt

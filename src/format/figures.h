#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "graphics/color.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// A time estimate in words: "45 min", "2 h 5 min", or "calculating" when there is none.
std::string duration(std::optional<std::int64_t> minutes);

/// Hours and minutes as on a clock, "1:35".
std::string clock(std::int64_t minutes);

/// A power figure, "7.1 W". With `signedValue` its sign stands in front ("−7.1 W", "+0.0 W");
/// without, it is the magnitude alone.
std::string watts(double value, bool signedValue);

/// The state of the power source in one line, such as "On battery".
std::string statusLine(const Reading& reading);

/// The direction as one character: "▲", "▼" or "•".
std::string_view arrow(Trend trend);

/// The colour that calls for attention: green on power, orange and red on a low battery. Absent
/// when the ordinary colour will do.
std::optional<Color> accent(const Reading& reading);

/// The colour that calls for attention to the trend: green while charging, orange beyond 15 W out
/// of the battery. Absent when the ordinary colour will do.
std::optional<SystemColor> trendAccent(const Reading& reading);

}  // namespace lumowatt

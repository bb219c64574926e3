#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "graphics/color.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Formats a time estimate: "45 min", "2 h 5 min", or "calculating" if `minutes` is empty.
std::string duration(std::optional<std::int64_t> minutes);

/// Formats a duration as hours and minutes: "1:35".
std::string clock(std::int64_t minutes);

/// Formats a power with one decimal: with its sign if `signedValue` is true ("−7.1 W", "+0.0 W"),
/// else the magnitude only ("7.1 W").
std::string watts(double value, bool signedValue);

/// Describes the power source in one line, such as "On battery".
std::string statusLine(const Reading& reading);

/// Returns the symbol of a trend: "▲" for up, "▼" for down, "•" for steady.
std::string_view arrow(Trend trend);

/// Returns the highlight color of the battery's state: green while charging and when full on
/// external power, orange and red for a low battery. Returns std::nullopt for the default color.
std::optional<Color> accent(const Reading& reading);

/// Returns the highlight color of the trend: green for up, orange for a discharge of more than
/// 15 W. Returns std::nullopt for the default color.
std::optional<SystemColor> trendAccent(const Reading& reading);

}  // namespace lumowatt

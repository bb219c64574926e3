#pragma once

#include <string_view>
#include <vector>

#include "graphics/image.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Returns the color of a chart in the menu: the accent of the reading if `colored` and the reading
/// has an accent, otherwise `userAccent`.
Color chartColor(const Reading& reading, bool colored,
                 const Color& userAccent = SystemColor::accent);

/// Placeholder for a chart whose samples span no time.
inline constexpr std::string_view collectingHistory = "Collecting history…";

/// Returns a chart of the charge over time, `width` by `height` points: a baseline and a line in
/// `color` through the samples, oldest first. The chart spans the time from the first sample to the
/// last, and the range from the lowest percentage to the highest, but at least 4 percentage points.
/// If the samples span no time, the chart shows `collectingHistory`.
Image sparkline(std::vector<Sample> samples, const Color& color, double width = 250.0,
                double height = 38.0);

}  // namespace lumowatt

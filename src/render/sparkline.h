#pragma once

#include <string_view>
#include <vector>

#include "graphics/image.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// The colour of a chart in the menu of a reading: that of the reading, where it has one and
/// `colored`, else the user's.
Color chartColor(const Reading& reading, bool colored,
                 const Color& userAccent = SystemColor::accent);

/// What stands in a chart's place as long as its samples span no time.
inline constexpr std::string_view collectingHistory = "Collecting history…";

/// A chart of the charge over time, `width` by `height` points: a line in `color` through the
/// samples, oldest first, on a baseline. It spans from the first sample to the last and from the
/// lowest to the highest, but at least 4 percentage points. As long as the samples span no time it
/// says that the history is being collected.
Image sparkline(std::vector<Sample> samples, const Color& color, double width = 250.0,
                double height = 38.0);

}  // namespace lumowatt

#pragma once

#include <string>
#include <vector>

#include "telemetry/reading.h"

namespace lumowatt {

/// Returns a chart of the charge over time as a line of text, for menus without pictures. The line
/// consists of 30 block characters, from the first sample to the last, and the lowest and highest
/// percentages. The vertical scale is that of `sparkline`. Returns `collectingHistory` if the
/// samples span no time.
std::string blockChart(const std::vector<Sample>& samples);

}  // namespace lumowatt

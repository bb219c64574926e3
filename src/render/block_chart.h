#pragma once

#include <string>
#include <vector>

#include "telemetry/reading.h"

namespace lumowatt {

/// A chart of the charge over time as a line of text, for menus without pictures: 30 block
/// characters from the first sample to the last, scaled as the drawn chart, then the lowest and the
/// highest percentage. As long as the samples span no time it says that the history is being
/// collected.
std::string blockChart(const std::vector<Sample>& samples);

}  // namespace lumowatt

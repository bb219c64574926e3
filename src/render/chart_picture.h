#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "graphics/image.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Title of every chart of the history.
inline constexpr std::string_view chartTitle = "Charge over the last hour";

/// Data of the large chart picture.
struct ChartContents {
  std::vector<Sample> samples;  ///< oldest first
  std::string heading;
  Color color;      ///< of the line and the area
  double midnight;  ///< start of the local day on the time scale of the samples; may be negative
};

/// Returns the chart as a large picture on a window's background. The samples form a line over a
/// lightly filled area, with round percentages to the left and times of day below. The line is
/// interrupted where samples are missing, for example while the machine slept. Percentages outside
/// 0 to 100 are clamped. Without samples, the picture shows `collectingHistory`.
Drawing chartPicture(ChartContents contents);

}  // namespace lumowatt

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "graphics/image.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// What every chart of the history is called.
inline constexpr std::string_view chartTitle = "Charge over the last hour";

/// What the larger chart is drawn from.
struct ChartContents {
  std::vector<Sample> samples;  ///< oldest first
  std::string heading;
  Color color;      ///< of the line
  double midnight;  ///< when the local day began, in the samples' time, which may be before 0
};

/// Draws the chart as a large picture on a window's background: the samples as a line over a
/// lightly filled area, with round percentages beside it and the times of a clock below. Where
/// samples are missing, as in a sleep, the line is interrupted. Percentages outside 0 to 100 lie at
/// the edge. Without a sample it says that the history is being collected.
Drawing chartPicture(ChartContents contents);

}  // namespace lumowatt

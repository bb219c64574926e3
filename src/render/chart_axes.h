#pragma once

#include <cstdint>
#include <vector>

#include "telemetry/reading.h"

namespace lumowatt {

/// Vertical axis of a chart: round percentages at equal distances.
struct PercentAxis {
  static constexpr std::int64_t steps = 5;

  std::int64_t lowest;  ///< percentage at the bottom
  std::int64_t step;    ///< percentage points between two labels

  std::int64_t highest() const { return lowest + steps * step; }
};

/// Returns the axis for the samples, which must not be empty. The axis lies within 0 to 100 %. It
/// spans at least 10 percentage points, so that a change of 1 % looks small.
PercentAxis percentAxis(const std::vector<Sample>& samples);

/// Horizontal axis of a chart, in seconds on the time scale of the samples.
struct TimeAxis {
  double start;
  double end;
  double step;  ///< seconds between two labels, a multiple of 60
};

/// Returns the axis for the samples, oldest first, which must not be empty. The axis ends at the
/// last sample. It is 5, 10, 30 or 60 minutes long: the shortest of these that fits all samples, or
/// 60 minutes if none does.
TimeAxis timeAxis(const std::vector<Sample>& samples);

}  // namespace lumowatt

#pragma once

#include <cstdint>
#include <vector>

#include "telemetry/reading.h"

namespace lumowatt {

/// The percentages beside a chart: round ones, at equal distances from the bottom to the top.
struct PercentAxis {
  static constexpr std::int64_t steps = 5;

  std::int64_t lowest;  ///< at the bottom
  std::int64_t step;

  std::int64_t highest() const { return lowest + steps * step; }
};

/// The percentages for samples, of which there is one at least, within 0 to 100. They span 10
/// points or more, so that a point more or less does not look like much.
PercentAxis percentAxis(const std::vector<Sample>& samples);

/// The time below a chart, in seconds as samples have it.
struct TimeAxis {
  double start;
  double end;
  double step;  ///< between two times on the axis, in seconds, whole minutes
};

/// The time for samples, oldest first, of which there is one at least. It ends at the last and is
/// 5, 10, 30 or 60 minutes long, as the samples need.
TimeAxis timeAxis(const std::vector<Sample>& samples);

}  // namespace lumowatt

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "telemetry/reading.h"

namespace lumowatt {

/// Where the samples of a history stand in a chart.
struct HistoryScale {
  double start;          ///< the time of the first sample
  double span;           ///< seconds from there to the last sample, above 0
  std::int64_t lowest;   ///< percent
  std::int64_t highest;  ///< percent

  /// Across: 0 for the first sample's time, 1 for the last one's.
  double across(double time) const;

  /// Upward: 0 for the lowest percentage, 1 for the highest, or for 4 points above the lowest where
  /// the highest is nearer: a flat history lies low.
  double upward(double percent) const;
};

/// The scale for samples, oldest first; absent as long as they span no time.
std::optional<HistoryScale> historyScale(const std::vector<Sample>& samples);

}  // namespace lumowatt

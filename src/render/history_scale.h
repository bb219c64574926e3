#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "telemetry/reading.h"

namespace lumowatt {

/// Mapping from the samples of a history to positions in a chart.
struct HistoryScale {
  double start;          ///< time of the first sample
  double span;           ///< seconds between the first and the last sample, greater than 0
  std::int64_t lowest;   ///< percent
  std::int64_t highest;  ///< percent

  /// Returns 0 for the time of the first sample, 1 for the time of the last one, and a proportional
  /// value for any other time.
  double horizontalFraction(double time) const;

  /// Returns 0 for the lowest percentage and 1 for the top of the chart. The top is the highest
  /// percentage, but at least 4 points above the lowest, so that a flat history is drawn low.
  double verticalFraction(double percent) const;
};

/// Returns the scale for the samples, oldest first. Returns std::nullopt if they span no time.
std::optional<HistoryScale> historyScale(const std::vector<Sample>& samples);

}  // namespace lumowatt

#include "render/history_scale.h"

#include <algorithm>

namespace lumowatt {

double HistoryScale::horizontalFraction(double time) const { return (time - start) / span; }

double HistoryScale::verticalFraction(double percent) const {
  const auto low = static_cast<double>(lowest);
  const double range = std::max(low + 4.0, static_cast<double>(highest)) - low;
  return (percent - low) / range;
}

std::optional<HistoryScale> historyScale(const std::vector<Sample>& samples) {
  if (samples.empty() || !(samples.back().time > samples.front().time)) return std::nullopt;
  const auto [lowest, highest] = std::ranges::minmax_element(samples, {}, &Sample::percent);
  const double start = samples.front().time;
  return HistoryScale{.start = start,
                      .span = samples.back().time - start,
                      .lowest = lowest->percent,
                      .highest = highest->percent};
}

}  // namespace lumowatt

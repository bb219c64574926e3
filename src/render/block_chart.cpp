#include "render/block_chart.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/rounding.h"
#include "render/history_scale.h"
#include "render/sparkline.h"

namespace lumowatt {

namespace {

constexpr int columns = 30;

// Levels of the chart. The lowest level is a block rather than a space, because a space is narrower
// in proportional fonts.
constexpr std::array<std::string_view, 8> blocks{"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};

/// Returns the charge at `time`, linearly interpolated between the neighboring samples. `time` lies
/// between the first sample and the last.
double percentAt(const std::vector<Sample>& samples, double time) {
  const auto before = std::ranges::adjacent_find(
      samples, [time](const Sample&, const Sample& next) { return next.time > time; });
  if (before == samples.end()) return static_cast<double>(samples.back().percent);
  const Sample& next = *std::next(before);
  const auto low = static_cast<double>(before->percent);
  const double fraction = (time - before->time) / (next.time - before->time);
  return low + (static_cast<double>(next.percent) - low) * fraction;
}

/// Returns the block for a height from 0 to 1. Returns the lowest block if the height is not a
/// number, which happens when the percentages are too large for a `double` to distinguish them.
std::string_view block(double height) {
  constexpr double top = blocks.size() - 1;
  return blocks[static_cast<std::size_t>(roundedHalfAwayFromZero(height * top).value_or(0))];
}

}  // namespace

std::string blockChart(const std::vector<Sample>& samples) {
  const auto scale = historyScale(samples);
  if (!scale) return std::string(collectingHistory);
  std::string text;
  for (int column = 0; column < columns; ++column) {
    const double time = scale->start + scale->span * column / (columns - 1);
    text += block(scale->verticalFraction(percentAt(samples, time)));
  }
  text += " " + std::to_string(scale->lowest);
  if (scale->highest != scale->lowest) text += "–" + std::to_string(scale->highest);
  return text + "%";
}

}  // namespace lumowatt

#include "render/chart_axes.h"

#include <algorithm>
#include <array>

namespace lumowatt {

namespace {

constexpr std::int64_t fullPercent = 100;

constexpr std::array<std::int64_t, 4> percentSteps{2, 5, 10, 20};
static_assert(percentSteps.back() * PercentAxis::steps == fullPercent);

/// Length of a time axis and the interval between its labels, in seconds.
struct Period {
  double length;
  double step;
};

constexpr std::array<Period, 4> periods{
    {{300.0, 60.0}, {600.0, 120.0}, {1800.0, 300.0}, {3600.0, 600.0}}};

}  // namespace

PercentAxis percentAxis(const std::vector<Sample>& samples) {
  const auto [least, most] = std::ranges::minmax_element(samples, {}, &Sample::percent);
  const std::int64_t low = std::max<std::int64_t>(least->percent, 0);
  const std::int64_t high = std::min(most->percent, fullPercent);
  const auto stepsNeeded = [low, high](std::int64_t step) {
    return (high + step - 1) / step - low / step;
  };
  const std::int64_t step = *std::ranges::find_if(
      percentSteps, [&](std::int64_t each) { return stepsNeeded(each) <= PercentAxis::steps; });
  const std::int64_t spare = PercentAxis::steps - stepsNeeded(step);
  const std::int64_t below = (spare + 1) / 2;
  const std::int64_t first =
      std::clamp<std::int64_t>(low / step - below, 0, fullPercent / step - PercentAxis::steps);
  return {.lowest = first * step, .step = step};
}

TimeAxis timeAxis(const std::vector<Sample>& samples) {
  const double end = samples.back().time;
  const double needed = end - samples.front().time;
  const auto* fitting = std::ranges::find_if(
      periods, [needed](const Period& period) { return needed <= period.length; });
  if (fitting == periods.end()) fitting = &periods.back();
  return {.start = end - fitting->length, .end = end, .step = fitting->step};
}

}  // namespace lumowatt

#include "render/sparkline.h"

#include <algorithm>
#include <utility>

#include "graphics/canvas.h"

namespace lumowatt {

namespace {

/// The samples, two at least, as a line in `plot`.
Path chartLine(const std::vector<Sample>& samples, const Rect& plot) {
  const auto [lowest, highest] = std::ranges::minmax_element(samples, {}, &Sample::percent);
  const auto low = static_cast<double>(lowest->percent);
  const double range = std::max(low + 4.0, static_cast<double>(highest->percent)) - low;
  const double start = samples.front().time;
  const double span = samples.back().time - start;

  Path path;
  path.reserve(samples.size());
  for (const Sample& sample : samples) {
    const Point point{
        plot.minX() + (sample.time - start) / span * plot.width,
        plot.minY() + plot.height * ((static_cast<double>(sample.percent) - low) / range)};
    if (path.empty()) {
      path.emplace_back(MoveTo{point});
    } else {
      path.emplace_back(LineTo{point});
    }
  }
  return path;
}

}  // namespace

Image sparkline(std::vector<Sample> samples, const Color& color, double width, double height) {
  const auto draw = [samples = std::move(samples), color, height](Canvas& canvas,
                                                                  const Rect& rect) {
    const Rect plot = rect.inset(2.0, 5.0);
    const Path baseline{MoveTo{{plot.minX(), plot.minY()}}, LineTo{{plot.maxX(), plot.minY()}}};
    canvas.stroke(baseline, {.width = 1.0}, separator);
    if (samples.size() >= 2 && samples.back().time > samples.front().time) {
      canvas.stroke(chartLine(samples, plot),
                    {.width = 2.0, .join = LineJoin::round, .cap = LineCap::round}, color);
    } else {
      canvas.drawText({{"Collecting history…", systemFont(11.0), secondaryLabel}},
                      {4.0, height * 0.5 - 7.0});
    }
  };
  return {Drawing{.size = {width, height}, .flipped = false, .draw = draw}};
}

}  // namespace lumowatt

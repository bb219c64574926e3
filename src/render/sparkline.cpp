#include "render/sparkline.h"

#include <utility>

#include "format/figures.h"
#include "graphics/canvas.h"
#include "render/history_scale.h"

namespace lumowatt {

namespace {

/// Returns the line through the samples, scaled to fill `plot`.
Path chartLine(const std::vector<Sample>& samples, const HistoryScale& scale, const Rect& plot) {
  Path path;
  path.reserve(samples.size());
  for (const Sample& sample : samples) {
    const Point point{
        plot.minX() + scale.horizontalFraction(sample.time) * plot.width,
        plot.minY() + scale.verticalFraction(static_cast<double>(sample.percent)) * plot.height};
    if (path.empty()) {
      path.emplace_back(MoveTo{point});
    } else {
      path.emplace_back(LineTo{point});
    }
  }
  return path;
}

}  // namespace

Color chartColor(const Reading& reading, bool colored, const Color& userAccent) {
  const std::optional<Color> color = colored ? accent(reading) : std::nullopt;
  return color.value_or(userAccent);
}

Image sparkline(std::vector<Sample> samples, const Color& color, double width, double height) {
  const auto draw = [samples = std::move(samples), color, height](Canvas& canvas,
                                                                  const Rect& rect) {
    const Rect plot = rect.inset(2.0, 5.0);
    const Path baseline{MoveTo{{plot.minX(), plot.minY()}}, LineTo{{plot.maxX(), plot.minY()}}};
    canvas.stroke(baseline, {.width = 1.0}, separator);
    if (const auto scale = historyScale(samples)) {
      canvas.stroke(chartLine(samples, *scale, plot),
                    {.width = 2.0, .join = LineJoin::round, .cap = LineCap::round}, color);
    } else {
      canvas.drawText({{std::string(collectingHistory), systemFont(11.0), secondaryLabel}},
                      {4.0, height * 0.5 - 7.0});
    }
  };
  return {Drawing{.size = {width, height}, .flipped = false, .draw = draw}};
}

}  // namespace lumowatt

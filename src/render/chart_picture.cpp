#include "render/chart_picture.h"

#include <algorithm>
#include <utility>

#include "base/rounding.h"
#include "format/figures.h"
#include "graphics/canvas.h"
#include "render/chart_axes.h"
#include "render/sparkline.h"

namespace lumowatt {

namespace {

constexpr Size pictureSize{688.0, 408.0};
constexpr Rect plotArea{60.0, 88.0, 600.0, 280.0};
constexpr double pictureMargin = 24.0;
constexpr double labelDistance = 8.0;  // between the plot and the labels of its axes

constexpr Stroke lineStroke{.width = 2.0, .join = LineJoin::round, .cap = LineCap::round};
constexpr double areaOpacity = 0.15;
constexpr double dotRadius = 4.0;
constexpr double ringRadius = 6.0;  // ring around the dot, in the background color

// Interval between two samples, in seconds, above which the line is interrupted. The normal
// interval is 30 seconds.
constexpr double gapThreshold = 90.0;

AttributedString label(std::string text) {
  return {{std::move(text), monospacedDigitFont(11.0), secondaryLabel}};
}

/// Formats a time, in seconds since the local midnight, as "09:05". The time may be on another day.
std::string timeOfDay(double seconds) {
  constexpr std::int64_t minutesOfDay = 1440;
  const std::int64_t minutes = roundedHalfAwayFromZero(seconds / 60.0).value_or(0) % minutesOfDay;
  const std::string text = clock(minutes < 0 ? minutes + minutesOfDay : minutes);
  return text.size() < 5 ? "0" + text : text;
}

/// Returns the times on the axis that are a whole number of steps before or after midnight.
std::vector<double> labeledTimes(const TimeAxis& axis, double midnight) {
  const auto steps = [&](double time) {
    return roundedHalfAwayFromZero((time - midnight) / axis.step).value_or(0);
  };
  std::vector<double> times;
  for (std::int64_t step = steps(axis.start); step <= steps(axis.end); ++step) {
    const double time = midnight + static_cast<double>(step) * axis.step;
    if (time >= axis.start && time <= axis.end) times.push_back(time);
  }
  return times;
}

/// Renderer of the axes, the line and the area of a chart with at least one sample.
class Chart {
 public:
  Chart(Canvas& canvas, const ChartContents& contents)
      : canvas_(canvas),
        contents_(contents),
        percents_(percentAxis(contents.samples)),
        times_(timeAxis(contents.samples)) {}

  void draw() {
    drawAxes();
    const std::vector<Sample>& samples = contents_.samples;
    const auto isGap = [](const Sample& before, const Sample& after) {
      return after.time - before.time > gapThreshold;
    };
    for (auto first = samples.begin(); first != samples.end();) {
      const auto last = std::adjacent_find(first, samples.end(), isGap);
      const auto end = last == samples.end() ? last : std::next(last);
      drawSegment({first, end});
      first = end;
    }
    drawDot(ringRadius, SystemColor::windowBackground);
    drawDot(dotRadius, contents_.color);
  }

 private:
  double x(double time) const {
    const double fraction = (time - times_.start) / (times_.end - times_.start);
    return plotArea.minX() + std::max(fraction, 0.0) * plotArea.width;
  }

  double y(std::int64_t percent) const {
    const auto range = static_cast<double>(percents_.highest() - percents_.lowest);
    const std::int64_t clamped = std::clamp(percent, percents_.lowest, percents_.highest());
    const double fraction = static_cast<double>(clamped - percents_.lowest) / range;
    return plotArea.maxY() - fraction * plotArea.height;
  }

  Point point(const Sample& sample) const { return {x(sample.time), y(sample.percent)}; }

  void drawAxes() {
    Path grid;
    for (std::int64_t i = 0; i <= PercentAxis::steps; ++i) {
      const std::int64_t percent = percents_.lowest + i * percents_.step;
      const double lineY = y(percent);
      grid.insert(grid.end(), {MoveTo{{plotArea.minX(), lineY}}, LineTo{{plotArea.maxX(), lineY}}});
      const AttributedString text = label(std::to_string(percent) + "%");
      const Size size = canvas_.textSize(text);
      canvas_.drawText(text,
                       {plotArea.minX() - labelDistance - size.width, lineY - size.height / 2});
    }
    for (const double time : labeledTimes(times_, contents_.midnight)) {
      const double lineX = x(time);
      grid.insert(grid.end(), {MoveTo{{lineX, plotArea.minY()}}, LineTo{{lineX, plotArea.maxY()}}});
      const AttributedString text = label(timeOfDay(time - contents_.midnight));
      const double width = canvas_.textSize(text).width;
      canvas_.drawText(text, {lineX - width / 2, plotArea.maxY() + labelDistance});
    }
    canvas_.stroke(grid, {.width = 1.0}, separator);
  }

  /// Draws the line and the area of consecutive samples without a gap. A single sample becomes a
  /// dot whose diameter is the width of the line.
  void drawSegment(const std::vector<Sample>& samples) {
    Path line;
    for (const Sample& sample : samples) {
      if (line.empty()) line.emplace_back(MoveTo{point(sample)});
      line.emplace_back(LineTo{point(sample)});
    }
    Path area = line;
    area.emplace_back(LineTo{{x(samples.back().time), plotArea.maxY()}});
    area.emplace_back(LineTo{{x(samples.front().time), plotArea.maxY()}});
    area.emplace_back(ClosePath{});
    canvas_.fillPath(area, contents_.color, areaOpacity);
    canvas_.stroke(line, lineStroke, contents_.color);
  }

  /// Draws a dot at the last sample.
  void drawDot(double radius, const Color& color) {
    const auto [x, y] = point(contents_.samples.back());
    canvas_.fillRoundedRect({x - radius, y - radius, 2 * radius, 2 * radius}, radius, color);
  }

  Canvas& canvas_;
  const ChartContents& contents_;
  PercentAxis percents_;
  TimeAxis times_;
};

void drawHeading(Canvas& canvas, const std::string& heading) {
  canvas.drawText({{heading, boldSystemFont(17.0), SystemColor::label}}, {pictureMargin, 20.0});
  canvas.drawText({{std::string(chartTitle), systemFont(12.0), secondaryLabel}},
                  {pictureMargin, 46.0});
}

/// Draws text at the center of the plot, where the axes would be.
void drawCentered(Canvas& canvas, const AttributedString& text) {
  const Size size = canvas.textSize(text);
  const Point center{pictureSize.width / 2, (plotArea.minY() + plotArea.maxY()) / 2};
  canvas.drawText(text, {center.x - size.width / 2, center.y - size.height / 2});
}

}  // namespace

Drawing chartPicture(ChartContents contents) {
  const auto draw = [contents = std::move(contents)](Canvas& canvas, const Rect& rect) {
    canvas.fill(rect, SystemColor::windowBackground);
    drawHeading(canvas, contents.heading);
    if (contents.samples.empty()) {
      drawCentered(canvas, label(std::string(collectingHistory)));
    } else {
      Chart(canvas, contents).draw();
    }
  };
  return {.size = pictureSize, .flipped = true, .draw = draw};
}

}  // namespace lumowatt

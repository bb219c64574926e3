#include "render/chart_picture.h"

#include <string>

#include "base/rounding.h"
#include "graphics/canvas.h"
#include "render/history_scale.h"
#include "render/sparkline.h"

namespace lumowatt {

namespace {

constexpr Rect chart{64.0, 28.0, 1000.0, 152.0};
constexpr Size picture{1096.0, 224.0};
constexpr double gap = 8.0;  // between the chart and what is written at its edges
constexpr Font font = systemFont(15.0);

AttributedString styled(std::string text) { return {{std::move(text), font, secondaryLabel}}; }

std::string percentage(std::int64_t percent) { return std::to_string(percent) + "%"; }

/// Writes a percentage left of the chart, its middle at the height `y`.
void drawLevel(Canvas& canvas, std::int64_t percent, double y) {
  const AttributedString text = styled(percentage(percent));
  const Size size = canvas.textSize(text);
  canvas.drawText(text, {chart.minX() - gap - size.width, y - size.height / 2});
}

void drawEdges(Canvas& canvas, const HistoryScale& scale) {
  const double inset = 5.0;  // of the line, from the chart's upper and lower edge
  const double bottom = chart.maxY() - inset;
  const double height = chart.height - 2 * inset;
  drawLevel(canvas, scale.lowest, bottom);
  if (scale.highest != scale.lowest) {
    drawLevel(canvas, scale.highest,
              bottom - height * scale.upward(static_cast<double>(scale.highest)));
  }

  const auto minutes = roundedHalfAwayFromZero(scale.span / 60.0).value_or(0);
  const AttributedString now = styled("now");
  canvas.drawText(styled(std::to_string(minutes) + " min ago"), {chart.minX(), chart.maxY() + gap});
  canvas.drawText(now, {chart.maxX() - canvas.textSize(now).width, chart.maxY() + gap});
}

}  // namespace

Drawing chartPicture(const std::vector<Sample>& samples, const Color& color) {
  const auto draw = [line = sparkline(samples, color, chart.width, chart.height),
                     scale = historyScale(samples)](Canvas& canvas, const Rect& rect) {
    canvas.fill(rect, SystemColor::windowBackground);
    canvas.drawImage(line, chart);
    if (scale) drawEdges(canvas, *scale);
  };
  return {.size = picture, .flipped = true, .draw = draw};
}

}  // namespace lumowatt

#include "render/snapshot.h"

#include <utility>

#include "base/error_report.h"
#include "base/output_file.h"
#include "format/details.h"
#include "format/figures.h"
#include "graphics/symbol.h"
#include "render/glyph.h"

namespace lumowatt {

namespace {

constexpr double pictureWidth = 560.0;
constexpr double stripHeight = 34.0;
constexpr double margin = 24.0;
constexpr double panelTop = stripHeight + 14.0;
constexpr double lineSpacing = 24.0;
constexpr double pixelsPerPoint = 2.0;

constexpr Color background = CalibratedRgb{0.1, 0.08, 0.15};
constexpr Color strip = CalibratedRgb{0.17, 0.14, 0.23};
constexpr Color panel = CalibratedRgb{0.2, 0.17, 0.27};
constexpr Color detailsText = CalibratedWhite{0.93};
constexpr Color captionText = CalibratedWhite{0.7};

/// Draws the glyph and the title at the right end of the menu bar strip.
void drawItem(Canvas& canvas, const Reading& reading) {
  const std::string title = std::to_string(reading.percent) + "%  " +
                            std::string(arrow(trend(reading))) + "  " +
                            watts(reading.batteryWatts, true);
  const AttributedString text{{title, monospacedDigitFont(15.0), white}};
  const double left = pictureWidth - margin - canvas.textSize(text).width;
  canvas.drawText(text, {left, 8.0});

  const auto name = reading.charging ? symbol::battery100Bolt : levelSymbol(reading.percent);
  const Symbol glyph{
      .name = std::string(name), .tint = accent(reading).value_or(white), .pointSize = 16.0};
  canvas.drawImage({glyph}, {left - 30.0, 6.0, 26.0, 22.0});
}

void drawPanel(Canvas& canvas, const std::vector<std::string>& lines) {
  const auto count = static_cast<double>(lines.size());
  canvas.fillRoundedRect({margin, panelTop, pictureWidth - 2 * margin, lineSpacing * count + 22.0},
                         10.0, panel);
  Point origin{margin + 16.0, panelTop + 12.0};
  for (const std::string& line : lines) {
    const bool isHeading = &line == &lines.front();
    const Font font = isHeading ? boldSystemFont(14.0) : systemFont(13.0);
    canvas.drawText({{line, font, detailsText}}, origin);
    origin.y += lineSpacing;
  }
}

}  // namespace

Drawing snapshot(const Reading& reading, std::vector<std::string> lines, bool isSample) {
  const double height = lineSpacing * static_cast<double>(lines.size()) + 56.0 + 70.0;
  const auto draw = [reading, lines = std::move(lines), isSample](Canvas& canvas,
                                                                  const Rect& rect) {
    canvas.fill(rect, background);
    canvas.fill({0.0, 0.0, pictureWidth, stripHeight}, strip);
    drawItem(canvas, reading);
    drawPanel(canvas, lines);
    if (isSample) {
      canvas.drawText({{"Sample values, not a live reading", systemFont(12.0), captionText}},
                      {margin, rect.maxY() - 30.0});
    }
  };
  return {.size = {pictureWidth, height}, .flipped = true, .draw = draw};
}

Result<> writeSnapshot(const Reading& reading, const std::string& path, bool isSample,
                       BitmapFactory& bitmaps) {
  const auto bitmap =
      bitmaps.draw(snapshot(reading, details(reading), isSample), pixelsPerPoint, Appearance::dark);
  if (!bitmap) {
    reportError("cannot draw the picture", bitmap.failure().reason);
    return Failure{"no bitmap"};
  }
  const auto png = (*bitmap)->encodePng();
  if (!png) return Failure{"could not encode png"};
  return writeFile(path, *png);
}

}  // namespace lumowatt

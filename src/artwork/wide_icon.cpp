#include "artwork/wide_icon.h"

#include <string_view>

#include "artwork/battery.h"
#include "artwork/characters.h"
#include "artwork/palette.h"
#include "artwork/rounded_polygon.h"
#include "artwork/svg.h"

namespace lumowatt::artwork {

namespace {

// Digits are as high as the battery. Panels show the icon 16 pixels high, so a unit is a pixel.
// Widths and gaps are whole pixels, so that all digits are equally sharp.
constexpr Lettering lettering{.height = 10.0, .width = 5.0, .gap = 1.0, .weight = 1.5};
constexpr double top = 3.0;

// Makes the default size larger than any panel needs, so that panels scale the picture down.
constexpr double magnification = 4.0;

// Panels that show wide icons do not recolor them, and the background is unknown. The icon
// therefore has a dark plate. Even on white, the plate is dark enough for a contrast of 4.5:1 to
// each tint.
constexpr double plateOpacity = 0.88;
constexpr double plateRadius = 4.0;
constexpr double plateMargin = 3.0;  // left of the battery and right of the title

constexpr Rgba textColor{1.0, 1.0, 1.0, 1.0};

/// Returns a color as SVG attributes. A missing color and the label colors become the text color,
/// since the secondary label color would be too faint at this size.
std::string fillAttributes(const std::optional<Color>& color) {
  const bool isText = !color || *color == Color(SystemColor::label) || *color == secondaryLabel;
  const Rgba paint = isText ? textColor : resolved(*color, Appearance::dark);
  const auto percent = [](double component) { return decimal(100.0 * component) + "%"; };
  return "fill=\"rgb(" + percent(paint.red) + "," + percent(paint.green) + "," +
         percent(paint.blue) + ")\" fill-opacity=\"" + decimal(paint.alpha) + "\"";
}

/// Returns an SVG element that fills an area, translated by `offset`, by the given fill rule:
/// "evenodd" for a symbol, "nonzero" for text.
std::string filledElement(const Path& path, const std::optional<Color>& color, const Point& offset,
                          std::string_view rule) {
  return "<path " + fillAttributes(color) + " fill-rule=\"" + std::string(rule) +
         "\" transform=\"translate(" + decimal(offset.x) + "," + decimal(offset.y) + ")\" d=\"" +
         pathData(path) + "\"/>\n";
}

std::string plateElement(double width) {
  const Path path = roundedPolygon({{{0.0, 0.0}, plateRadius},
                                    {{width, 0.0}, plateRadius},
                                    {{width, gridSize}, plateRadius},
                                    {{0.0, gridSize}, plateRadius}});
  return R"(<path fill="#000" fill-opacity=")" + decimal(plateOpacity) + "\" d=\"" +
         pathData(path) + "\"/>\n";
}

}  // namespace

std::string wideIcon(const Symbol& symbol, const AttributedString& title) {
  std::string elements;
  double width = plateMargin;
  if (const auto path = symbolPath(symbol.name)) {
    elements += filledElement(*path, symbol.tint, {width, 0.0}, "evenodd");
    width += gridSize;
  }
  for (const TextRun& run : title) {
    const auto text = outline(run.text, lettering);
    if (!text) continue;
    elements += filledElement(text->area, run.color, {width, top}, "nonzero");
    width += text->width;
  }
  width += plateMargin;
  return svg({width, gridSize}, plateElement(width) + elements, Ink::unknown, magnification);
}

}  // namespace lumowatt::artwork

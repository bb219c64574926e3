#include "artwork/wide_icon.h"

#include <string_view>

#include "artwork/battery.h"
#include "artwork/characters.h"
#include "artwork/palette.h"
#include "artwork/rounded_polygon.h"
#include "artwork/svg.h"

namespace lumowatt::artwork {

namespace {

// Digits are as high as the battery. Panels show the icon 16 pixels high, where a
// unit is a pixel: widths and gaps are whole ones, so that each digit is as sharp as the others.
constexpr Lettering lettering{.height = 10.0, .width = 5.0, .gap = 1.0, .weight = 1.5};
constexpr double top = 3.0;

// Panels scale the picture down to the height that they want.
constexpr double magnification = 4.0;

// Panels that show a wide icon do not color it, and what is behind it is not known. So it has a
// dark plate, opaque enough for a contrast of 4.5 to 1 between each tint and the plate on white.
constexpr double plateOpacity = 0.88;
constexpr double plateRadius = 4.0;
constexpr double plateMargin = 3.0;  // beside the battery, and beside the title

constexpr Rgba textColor{1.0, 1.0, 1.0, 1.0};

/// A color as attributes: that of text where there is none, or a faint one, which would be too
/// faint at this size.
std::string fill(const std::optional<Color>& color) {
  const bool isText = !color || *color == Color(SystemColor::label) || *color == secondaryLabel;
  const Rgba paint = isText ? textColor : resolved(*color, Appearance::dark);
  const auto percent = [](double component) { return decimal(100.0 * component) + "%"; };
  return "fill=\"rgb(" + percent(paint.red) + "," + percent(paint.green) + "," +
         percent(paint.blue) + ")\" fill-opacity=\"" + decimal(paint.alpha) + "\"";
}

/// An area moved to that place, filled by the given rule: "evenodd" for a symbol, "nonzero" for
/// text.
std::string painted(const Path& path, const std::optional<Color>& color, const Point& at,
                    std::string_view rule) {
  return "<path " + fill(color) + " fill-rule=\"" + std::string(rule) +
         "\" transform=\"translate(" + decimal(at.x) + "," + decimal(at.y) + ")\" d=\"" +
         pathData(path) + "\"/>\n";
}

std::string plate(double width) {
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
    elements += painted(*path, symbol.tint, {width, 0.0}, "evenodd");
    width += gridSize;
  }
  for (const TextRun& run : title) {
    const auto text = outline(run.text, lettering);
    if (!text) continue;
    elements += painted(text->area, run.color, {width, top}, "nonzero");
    width += text->width;
  }
  width += plateMargin;
  return svg({width, gridSize}, plate(width) + elements, Ink::unknown, magnification);
}

}  // namespace lumowatt::artwork

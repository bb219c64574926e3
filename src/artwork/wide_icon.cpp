#include "artwork/wide_icon.h"

#include <string_view>

#include "artwork/battery.h"
#include "artwork/characters.h"
#include "artwork/palette.h"
#include "artwork/svg.h"

namespace lumowatt::artwork {

namespace {

// Digits are as high as the battery with a bolt is.
constexpr Lettering lettering{.height = 10.0, .width = 4.6, .gap = 1.0, .weight = 1.5};
constexpr double top = 3.0;

// Panels scale the picture down to the height that they want.
constexpr double magnification = 4.0;

// Panels that show a wide icon do not color it. So it has the colors for a dark one, and an edge
// that keeps it legible on a light one.
constexpr std::string_view edge =
    R"(fill="none" stroke="#000" stroke-opacity=".7" stroke-linejoin="round" )";
constexpr double textEdge = 1.0;
constexpr double symbolEdge = 0.5;  // a wider one would fill the gaps within it

/// A colour as attributes: that of text where there is none, or a faint one, which would be too
/// faint at this size.
std::string fill(const std::optional<Color>& color) {
  const bool isText = !color || *color == secondaryLabel;
  const Rgba paint = resolved(isText ? SystemColor::label : *color, Appearance::dark);
  const auto percent = [](double component) { return decimal(100.0 * component) + "%"; };
  return "fill=\"rgb(" + percent(paint.red) + "," + percent(paint.green) + "," +
         percent(paint.blue) + ")\" fill-opacity=\"" + decimal(paint.alpha) + "\" ";
}

/// An area with these attributes, painted over its edge.
std::string painted(const Path& path, const std::optional<Color>& color, double edgeWidth,
                    const std::string& attributes) {
  const std::string rest = attributes + " d=\"" + pathData(path) + "\"/>\n";
  std::string elements = "<path ";
  elements.append(edge).append("stroke-width=\"" + decimal(edgeWidth) + "\" ").append(rest);
  return elements.append("<path ").append(fill(color)).append(rest);
}

}  // namespace

std::string wideIcon(const std::optional<Symbol>& symbol, const AttributedString& title) {
  std::string elements;
  double width = 0.0;
  if (const auto path = symbol ? symbolPath(symbol->name) : std::nullopt) {
    elements += painted(*path, symbol->tint, symbolEdge, R"(fill-rule="evenodd")");
    width = gridSize;
  }
  for (const TextRun& run : title) {
    const auto text = outline(run.text, lettering);
    if (!text) continue;
    elements += painted(text->area, run.color, textEdge,
                        "transform=\"translate(" + decimal(width) + "," + decimal(top) + ")\"");
    width += text->width;
  }
  return svg({width, gridSize}, elements, magnification);
}

}  // namespace lumowatt::artwork

#include "artwork/wide_icon.h"

#include <variant>

#include "artwork/battery.h"
#include "artwork/characters.h"
#include "artwork/svg.h"

namespace lumowatt::artwork {

namespace {

// Digits are as high as the batteries' outline is from its lower edge to a little above it.
constexpr Lettering lettering{.height = 10.0, .width = 4.6, .gap = 1.0, .weight = 1.5};
constexpr double top = 3.0;

// Panels scale the picture down to the height that they want.
constexpr double magnification = 4.0;

/// A colour of text as one of those that icons have.
std::optional<SystemColor> tint(const std::optional<Color>& color) {
  const auto* const systemColor = color ? std::get_if<SystemColor>(&*color) : nullptr;
  return systemColor != nullptr ? std::optional(*systemColor) : std::nullopt;
}

}  // namespace

std::string wideIcon(const std::optional<Symbol>& symbol, const AttributedString& title) {
  std::string elements;
  double width = 0.0;
  if (const auto path = symbol ? symbolPath(symbol->name) : std::nullopt) {
    elements += area(*path, tint(symbol->tint), R"(fill-rule="evenodd")");
    width = gridSize;
  }
  for (const TextRun& run : title) {
    const auto text = outline(run.text, lettering);
    if (!text) continue;
    elements += area(text->area, tint(run.color),
                     "transform=\"translate(" + decimal(width) + "," + decimal(top) + ")\"");
    width += text->width;
  }
  return svg({width, gridSize}, elements, magnification);
}

}  // namespace lumowatt::artwork

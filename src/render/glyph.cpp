#include "render/glyph.h"

#include <algorithm>
#include <utility>

#include "graphics/symbol.h"

namespace lumowatt {

std::string_view levelSymbol(std::int64_t percent) {
  if (percent < 13) return symbol::battery0;
  if (percent < 38) return symbol::battery25;
  if (percent < 63) return symbol::battery50;
  if (percent < 88) return symbol::battery75;
  return symbol::battery100;
}

std::optional<Image> tinted(std::string_view name, const std::optional<Color>& color,
                            std::string description) {
  if (std::ranges::find(symbol::all, name) == symbol::all.end()) return std::nullopt;
  return Image{Symbol{.name = std::string(name), .tint = color, .isTemplate = !color},
               std::move(description)};
}

}  // namespace lumowatt

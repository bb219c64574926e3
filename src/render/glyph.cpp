#include "render/glyph.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "base/fatal.h"
#include "graphics/symbol.h"

namespace lumowatt {

std::string_view levelSymbol(std::int64_t percent) {
  if (percent < 13) return symbol::battery0;
  if (percent < 38) return symbol::battery25;
  if (percent < 63) return symbol::battery50;
  if (percent < 88) return symbol::battery75;
  return symbol::battery100;
}

std::string_view animatedSymbol(std::int64_t percent, std::int64_t frame) {
  constexpr std::int64_t offset = 12;
  constexpr std::int64_t quarter = 25;
  constexpr std::array levels{symbol::battery25, symbol::battery50, symbol::battery75,
                              symbol::battery100};
  constexpr std::int64_t count = levels.size();
  if (percent < std::numeric_limits<std::int64_t>::min() + offset) {
    fatal("cannot animate the battery", "its percentage is too small");
  }
  const std::int64_t first = std::clamp<std::int64_t>((percent - offset) / quarter, 0, count - 1);
  return levels[static_cast<std::size_t>(first + frame % (count - first))];
}

std::int64_t nextFrame(std::int64_t frame) {
  if (frame == std::numeric_limits<std::int64_t>::max())
    fatal("cannot animate the battery", "the frame number overflows");
  return frame + 1;
}

std::optional<Image> tinted(std::string_view name, const std::optional<Color>& color,
                            std::string description) {
  if (std::ranges::find(symbol::all, name) == symbol::all.end()) return std::nullopt;
  return Image{Symbol{.name = std::string(name), .tint = color, .isTemplate = !color},
               std::move(description)};
}

}  // namespace lumowatt

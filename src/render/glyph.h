#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "graphics/image.h"

namespace lumowatt {

/// Returns the name of the symbol for a charge of `percent`, rounded to the nearest quarter: a
/// battery that is empty, filled to 25, 50 or 75 percent, or full. Accepts any number.
std::string_view levelSymbol(std::int64_t percent);

/// Returns the name of the symbol for a frame of the charging animation of a battery at `percent`.
/// The animation cycles through the levels 25, 50, 75 and 100, starting at the lowest level that is
/// greater than `percent - 12`. Exits the process with an error if `percent - 12` overflows.
std::string_view animatedSymbol(std::int64_t percent, std::int64_t frame);

/// Returns the frame after `frame`. Exits the process with an error if the number overflows.
std::int64_t nextFrame(std::int64_t frame);

/// Returns an image of a symbol with the given color. If `color` is std::nullopt, the image is a
/// template, which the menu bar colors. Returns std::nullopt if `name` is unknown. `description` is
/// the text for screen readers.
std::optional<Image> tinted(std::string_view name, const std::optional<Color>& color,
                            std::string description);

}  // namespace lumowatt

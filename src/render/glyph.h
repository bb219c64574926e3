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
/// The animation repeats the levels from the lowest one above `percent` - 12 up to full. Exits the
/// process with an error if `percent` - 12 overflows.
std::string_view animatedSymbol(std::int64_t percent, std::int64_t frame);

/// Returns the frame after `frame`. Exits the process with an error if the number overflows.
std::int64_t nextFrame(std::int64_t frame);

/// Returns the symbol called `name` in `color`, or as a template without a color. Returns
/// std::nullopt if no symbol has that name. `description` is the text for screen readers.
std::optional<Image> tinted(std::string_view name, const std::optional<Color>& color,
                            std::string description);

}  // namespace lumowatt

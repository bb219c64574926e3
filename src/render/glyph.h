#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "graphics/image.h"

namespace lumowatt {

/// The name of the symbol that shows a charge of `percent`, to the nearest quarter: a battery that
/// is empty, filled by 25, 50 or 75 per cent, or full. Any number has one.
std::string_view levelSymbol(std::int64_t percent);

/// A symbol in one colour, or without one as a template. Absent when there is no symbol of that
/// name. `description` is for screen readers.
std::optional<Image> tinted(std::string_view name, const std::optional<Color>& color,
                            std::string description);

}  // namespace lumowatt

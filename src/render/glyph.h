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

/// The name of the symbol that a frame of the charging animation shows of a battery at `percent`:
/// from the lowest level above the charge less 12 points up to full, and again. Ends the process
/// when so small a charge cannot be reduced.
std::string_view animatedSymbol(std::int64_t percent, std::int64_t frame);

/// The frame after `frame`. Ends the process when there is none.
std::int64_t nextFrame(std::int64_t frame);

/// A symbol in one colour, or without one as a template. Absent when there is no symbol of that
/// name. `description` is for screen readers.
std::optional<Image> tinted(std::string_view name, const std::optional<Color>& color,
                            std::string description);

}  // namespace lumowatt

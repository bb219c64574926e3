#pragma once

#include <optional>
#include <string_view>

#include "graphics/path.h"

/// The project's own pictures of the named symbols, for platforms that have none.
namespace lumowatt::artwork {

/// The side of the square on which the symbols are drawn. Its origin is the top left corner.
inline constexpr double gridSize = 16.0;

/// The part of the square that the symbols reach, the same for all of them.
inline constexpr Rect bounds{0.0, 1.25, 16.0, 13.5};

/// The name of a battery that is struck through, for a machine without one. It is not among the
/// symbols: a Mac has no picture of that name.
inline constexpr std::string_view noBattery = "battery.slash";

/// The area of a symbol or of `noBattery`, to be filled in one color; its figures do not overlap,
/// except that a hole lies within what surrounds it (the even-odd rule). Absent when there is
/// nothing of that name.
std::optional<Path> symbolPath(std::string_view name);

}  // namespace lumowatt::artwork

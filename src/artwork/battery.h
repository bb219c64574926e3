#pragma once

#include <optional>
#include <string_view>

#include "graphics/path.h"

/// The project's own pictures of the named symbols, for platforms that have none.
namespace lumowatt::artwork {

/// The side of the square on which the symbols are drawn. Its origin is the top left corner.
inline constexpr double gridSize = 16.0;

/// The part of the square that the symbols reach, the same for all of them.
inline constexpr Rect bounds{0.0, 1.8, 16.0, 12.4};

/// The area of a symbol, to be filled in one colour; its figures do not overlap, except that a hole
/// lies within what surrounds it (the even-odd rule). Absent when there is no symbol of that name.
std::optional<Path> symbolPath(std::string_view name);

}  // namespace lumowatt::artwork

#pragma once

#include <optional>
#include <string_view>

#include "graphics/path.h"

/// Artwork for the named symbols, for platforms that do not provide these symbols.
namespace lumowatt::artwork {

/// Side of the square on which symbols are drawn. The origin is the top left corner.
inline constexpr double gridSize = 16.0;

/// Part of the square that symbols may cover, the same for all symbols.
inline constexpr Rect bounds{0.0, 1.25, 16.0, 13.5};

/// Name of the crossed-out battery for machines without a battery. It is not in `symbol::all`,
/// because macOS has no symbol with this name.
inline constexpr std::string_view noBattery = "battery.slash";

/// Returns the area of a symbol or of `noBattery`, to be filled in one color by the even-odd rule.
/// Its figures are either nested or disjoint. Returns std::nullopt for any other name.
std::optional<Path> symbolPath(std::string_view name);

}  // namespace lumowatt::artwork

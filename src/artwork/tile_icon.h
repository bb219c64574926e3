#pragma once

#include <string>

#include "graphics/tile.h"

namespace lumowatt::artwork {

/// A tile as the SVG file of an icon. Rows that are too wide are narrowed to the tile; one with a
/// character that has no outline is left out.
std::string tileIcon(const Tile& tile);

}  // namespace lumowatt::artwork

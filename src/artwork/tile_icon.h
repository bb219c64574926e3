#pragma once

#include <string>

#include "artwork/svg.h"
#include "graphics/tile.h"

namespace lumowatt::artwork {

/// Returns the icon of a tile as an SVG file. Texts and marks without a color are templates in the
/// given ink. Rows that are too wide are narrowed to fit the tile. A row or a mark that contains an
/// unsupported character is omitted (characters.h lists the supported ones).
std::string tileIcon(const Tile& tile, Ink ink = Ink::unknown);

}  // namespace lumowatt::artwork

#pragma once

#include <string>

#include "artwork/svg.h"
#include "graphics/tile.h"

namespace lumowatt::artwork {

/// A tile as the SVG file of an icon; rows without a color are in that ink. Rows that are too wide
/// are narrowed to the tile; one with a character that has no outline is left out.
std::string tileIcon(const Tile& tile, Ink ink = Ink::unknown);

}  // namespace lumowatt::artwork

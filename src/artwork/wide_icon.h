#pragma once

#include <string>
#include <string_view>

#include "graphics/attributed_string.h"
#include "graphics/image.h"

namespace lumowatt::artwork {

/// A symbol and the title beside it, in their tints or else white, on a dark plate that keeps them
/// legible on any background, as the SVG file of one icon that is wider than it is high. A run of
/// the title with a character that has no outline is left out, and so is a symbol of another name.
std::string wideIcon(const Symbol& symbol, const AttributedString& title);

}  // namespace lumowatt::artwork

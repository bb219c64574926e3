#pragma once

#include <string>
#include <string_view>

#include "graphics/attributed_string.h"
#include "graphics/image.h"

namespace lumowatt::artwork {

/// Returns an icon that is wider than it is high, as an SVG file: a symbol and the title to the
/// right of it, on a dark plate that makes both legible on any background. Parts without a tint are
/// white. Omits a symbol with an unknown name, and runs of the title that contain an unsupported
/// character (characters.h lists the supported ones).
std::string wideIcon(const Symbol& symbol, const AttributedString& title);

}  // namespace lumowatt::artwork

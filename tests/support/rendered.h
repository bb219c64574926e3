#pragma once

#include <string>

#include "support/picture.h"

namespace lumowatt {

/// Renders the square SVG file at the path `svg` with librsvg, at `side` by `side` pixels.
Picture rendered(const std::string& svg, int side);

/// Expects an SVG file with these contents to look like the stored picture `name` when it is
/// rendered at the same height. Saves a rendering that differs in the build's `pictures` folder.
void expectLooksLike(const std::string& contents, const std::string& name);

}  // namespace lumowatt

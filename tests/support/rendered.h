#pragma once

#include <string>

#include "support/picture.h"

namespace lumowatt {

/// The SVG file at the path `svg`, of a square, as librsvg renders it with sides of `side` pixels.
Picture rendered(const std::string& svg, int side);

}  // namespace lumowatt

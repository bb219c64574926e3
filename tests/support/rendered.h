#pragma once

#include <string>

#include "support/picture.h"

namespace lumowatt {

/// The SVG file at the path `svg`, of a square, as librsvg renders it with sides of `side` pixels.
Picture rendered(const std::string& svg, int side);

/// Expects that an SVG file's contents, rendered as high as the stored picture of that name, look
/// as that does. Where they do not, the new picture is put into the folder `pictures` of the build.
void expectLooksLike(const std::string& contents, const std::string& name);

}  // namespace lumowatt

#pragma once

#include <string>

namespace lumowatt::artwork {

/// The application's icon as an SVG file, 1024 by 1024: a battery with a bolt on a dark square with
/// round corners and the margins that icons have in a Mac's Dock.
std::string appIcon();

}  // namespace lumowatt::artwork

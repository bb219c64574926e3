#pragma once

#include <string>

namespace lumowatt::artwork {

/// Returns the application icon as an SVG file of 1024 by 1024 pixels: a battery with a bolt on a
/// dark square with round corners. The square has the margins of icons in the Dock of macOS.
std::string appIcon();

}  // namespace lumowatt::artwork

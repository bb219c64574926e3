#pragma once

#include <vector>

#include "graphics/path.h"

namespace lumowatt::artwork {

struct Corner {
  Point at;
  double radius = 0.0;  ///< distance from the corner at which its rounding starts; 0: sharp
};

/// Returns a closed figure with at least three corners. Adjacent corners must not coincide. The
/// rounding of a corner extends at most to the next corner, or only to the middle of the edge if
/// the next corner is round as well.
Path roundedPolygon(const std::vector<Corner>& corners);

}  // namespace lumowatt::artwork

#pragma once

#include <vector>

#include "graphics/path.h"

namespace lumowatt::artwork {

struct Corner {
  Point at;
  double radius = 0.0;  ///< how far from the corner its rounding begins; 0 for a sharp one
};

/// A closed figure with these corners, three at least, no two next to each other in one place. A
/// rounding ends where an edge ends, or in its middle where that edge's other corner is round too.
Path roundedPolygon(const std::vector<Corner>& corners);

}  // namespace lumowatt::artwork

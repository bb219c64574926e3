#pragma once

#include <vector>

#include "artwork/rounded_polygon.h"

namespace lumowatt::artwork {

/// Returns the area of a line of the given thickness through the points. The center of the line is
/// rounded as each corner specifies. In a bend, the outer edge is rounded more than the center and
/// the inner edge less; at a right angle, the difference is half the thickness. An open line has
/// square ends, which extend half the thickness beyond its first and last point. The areas of all
/// lines have the same orientation, so that overlapping lines can be filled together by the nonzero
/// rule.
Path strokeOutline(const std::vector<Corner>& points, bool isClosed, double thickness);

}  // namespace lumowatt::artwork

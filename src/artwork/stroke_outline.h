#pragma once

#include <vector>

#include "artwork/rounded_polygon.h"

namespace lumowatt::artwork {

/// The area of a line of that thickness through the points, each rounded as far as its corner says:
/// on the outer side of a bend by half the thickness more, on the inner side by as much less.
/// An open line has square ends, which reach half the thickness beyond its first and last point.
/// All such areas go round in the same direction, so that those of several lines can be filled
/// together (the nonzero rule).
Path strokeOutline(const std::vector<Corner>& points, bool isClosed, double thickness);

}  // namespace lumowatt::artwork

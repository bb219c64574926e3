#include "artwork/rounded_polygon.h"

#include <algorithm>
#include <cmath>

namespace lumowatt::artwork {

namespace {

Point interpolate(Point from, Point to, double share) {
  return {from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
}

double distance(Point a, Point b) {
  const double x = b.x - a.x;
  const double y = b.y - a.y;
  return std::sqrt(x * x + y * y);
}

/// Returns the largest radius of `corner` that the edge from `corner` to `neighbor` has room for.
double maxRadius(const Corner& corner, const Corner& neighbor) {
  return distance(corner.at, neighbor.at) * (neighbor.radius > 0.0 ? 0.5 : 1.0);
}

}  // namespace

Path roundedPolygon(const std::vector<Corner>& corners) {
  // Distance between an end of a quarter circle and its control point, as a fraction of the
  // distance between the end and the corner.
  constexpr double quarterCircle = 0.5522847498;

  Path path;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const Corner& corner = corners[i];
    const Corner& previous = corners[(i + corners.size() - 1) % corners.size()];
    const Corner& next = corners[(i + 1) % corners.size()];
    const double radius =
        std::min({corner.radius, maxRadius(corner, previous), maxRadius(corner, next)});
    const Point start =
        interpolate(corner.at, previous.at, radius / distance(corner.at, previous.at));
    const Point end = interpolate(corner.at, next.at, radius / distance(corner.at, next.at));

    if (path.empty()) {
      path.emplace_back(MoveTo{start});
    } else {
      path.emplace_back(LineTo{start});
    }
    if (radius > 0.0) {
      path.emplace_back(CurveTo{interpolate(start, corner.at, quarterCircle),
                                interpolate(end, corner.at, quarterCircle), end});
    }
  }
  path.emplace_back(ClosePath{});
  return path;
}

}  // namespace lumowatt::artwork

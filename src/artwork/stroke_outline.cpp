#include "artwork/stroke_outline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace lumowatt::artwork {

namespace {

using Corners = std::vector<Corner>;

/// Returns the unit vector from one point toward another.
Point direction(Point from, Point to) {
  const double x = to.x - from.x;
  const double y = to.y - from.y;
  const double length = std::sqrt(x * x + y * y);
  return {x / length, y / length};
}

Point moved(Point point, Point direction, double distance) {
  return {point.x + direction.x * distance, point.y + direction.y * distance};
}

/// Returns the corner of the edge that runs at `distance` to the right of the center line
/// (negative: to the left), where y grows downward. The unit vectors `in` and `out` are the
/// directions of the center line before and after its corner.
Corner edgeCorner(const Corner& corner, Point in, Point out, double distance) {
  const double cross = in.x * out.y - in.y * out.x;  // positive in a turn to the right
  const double dot = in.x * out.x + in.y * out.y;
  const Point normals{-(in.y + out.y), in.x + out.x};  // the sum of both, to the right
  // How much smaller the rounding of the edge is than the rounding of the center line.
  const double reduction = distance * cross / (1.0 + dot);
  return {moved(corner.at, normals, distance / (1.0 + dot)),
          std::max(corner.radius - reduction, 0.0)};
}

/// Returns the edge that runs at `distance` to the right of the center line, in the direction of
/// the line.
Corners edge(const Corners& points, bool isClosed, double distance) {
  Corners corners;
  corners.reserve(points.size());
  const std::size_t count = points.size();
  for (std::size_t i = 0; i < count; ++i) {
    const bool isFirst = !isClosed && i == 0;
    const bool isLast = !isClosed && i + 1 == count;
    const Point at = points[i].at;
    const Point in = direction(points[(i + count - 1) % count].at, at);
    const Point out = direction(at, points[(i + 1) % count].at);
    corners.push_back(edgeCorner(points[i], isFirst ? out : in, isLast ? in : out, distance));
  }
  return corners;
}

void append(Path& path, const Corners& corners) {
  const Path figure = roundedPolygon(corners);
  path.insert(path.end(), figure.begin(), figure.end());
}

}  // namespace

Path strokeOutline(const std::vector<Corner>& points, bool isClosed, double thickness) {
  const double half = thickness / 2.0;
  Corners line = points;
  if (!isClosed) {
    line.front() = {moved(line[0].at, direction(line[1].at, line[0].at), half)};
    const std::size_t last = line.size() - 1;
    line.back() = {moved(line[last].at, direction(line[last - 1].at, line[last].at), half)};
  }
  Corners right = edge(line, isClosed, half);
  Corners left = edge(line, isClosed, -half);
  std::ranges::reverse(left);
  Path path;
  if (isClosed) {
    append(path, right);
    append(path, left);
  } else {
    right.insert(right.end(), left.begin(), left.end());
    append(path, right);
  }
  return path;
}

}  // namespace lumowatt::artwork

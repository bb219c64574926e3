#pragma once

#include <algorithm>

namespace lumowatt {

// All coordinates and lengths are in points. The scale of a bitmap sets the pixels per point.

struct Point {
  double x = 0.0;
  double y = 0.0;

  friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
  double width = 0.0;
  double height = 0.0;

  friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle. (x, y) is the corner with the smallest coordinates: the bottom left corner where y
/// grows upward, the top left corner where y grows downward.
struct Rect {
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;

  double minX() const { return x; }
  double minY() const { return y; }
  double maxX() const { return x + width; }
  double maxY() const { return y + height; }

  /// Returns the rectangle with its left and right edges moved inward by `dx`, and its top and
  /// bottom edges by `dy`. Opposite edges that would pass each other meet in the middle.
  Rect inset(double dx, double dy) const {
    dx = std::min(dx, width / 2);
    dy = std::min(dy, height / 2);
    return {x + dx, y + dy, width - 2 * dx, height - 2 * dy};
  }

  friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace lumowatt

#pragma once

#include <variant>
#include <vector>

#include "graphics/geometry.h"

namespace lumowatt {

struct MoveTo {
  Point to;
  friend bool operator==(const MoveTo&, const MoveTo&) = default;
};

struct LineTo {
  Point to;
  friend bool operator==(const LineTo&, const LineTo&) = default;
};

/// A cubic Bézier curve.
struct CurveTo {
  Point control1;
  Point control2;
  Point to;
  friend bool operator==(const CurveTo&, const CurveTo&) = default;
};

/// A straight line back to the start of the figure.
struct ClosePath {
  friend bool operator==(const ClosePath&, const ClosePath&) = default;
};

/// A sequence of path segments. Each figure starts with a `MoveTo`.
using Path = std::vector<std::variant<MoveTo, LineTo, CurveTo, ClosePath>>;

enum class LineJoin { miter, round };
enum class LineCap { butt, round };

/// The style of a stroked path.
struct Stroke {
  double width = 1.0;  ///< points
  LineJoin join = LineJoin::miter;
  LineCap cap = LineCap::butt;

  friend bool operator==(const Stroke&, const Stroke&) = default;
};

}  // namespace lumowatt

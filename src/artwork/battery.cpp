#include "artwork/battery.h"

#include <array>
#include <cmath>
#include <vector>

#include "artwork/rounded_polygon.h"
#include "graphics/symbol.h"

namespace lumowatt::artwork {

namespace {

// A panel shows the square at 16 pixels or at 22, where a unit is 1 pixel or 1.375, and an edge can
// hardly be sharp at both. These numbers were searched for: at either size each line of the outline
// has one row or column of pixels nearly for itself, with at most a sixth of it in the next, and
// each gap keeps one that is nearly free.
//
// All coordinates are from the body's centre; what lies right of it is in front, at the terminal.
constexpr Point center{6.96, 8.0};
constexpr Size half{6.91, 3.73};
constexpr double outline = 0.75;
constexpr Size halfInside{half.width - outline, half.height - outline};
constexpr Size halfFill{halfInside.width - 1.0, halfInside.height - 0.88};
constexpr Rect terminal{7.89, -2.0, 1.15, 4.0};

constexpr double outerRadius = 2.3;
constexpr double innerRadius = outerRadius - outline;
constexpr double fillRadius = 0.8;

// Half of the bolt's corners, from the upper tip to the left. A half turn gives the others.
constexpr Point tip{2.4, -6.2};
constexpr Point elbow{-3.4, 1.3};
constexpr Point notch{-1.2, 1.3};
constexpr Point otherTip{-tip.x, -tip.y};
constexpr double boltRadius = 0.35;
constexpr double boltGap = 1.0;

using Corners = std::vector<Corner>;

Corners rectangle(const Rect& rect, double radius) {
  return {{{rect.minX(), rect.minY()}, radius},
          {{rect.maxX(), rect.minY()}, radius},
          {{rect.maxX(), rect.maxY()}, radius},
          {{rect.minX(), rect.maxY()}, radius}};
}

/// The part of the body within `halfSize` of its centre, from its left end up to a share of it.
Corners block(Size halfSize, double radius, double share = 1.0) {
  return rectangle(
      {-halfSize.width, -halfSize.height, 2 * halfSize.width * share, 2 * halfSize.height}, radius);
}

/// The same on the other side of the centre, upside down.
Corners turned(Corners corners) {
  for (Corner& corner : corners) corner.at = {-corner.at.x, -corner.at.y};
  return corners;
}

void add(Path& path, Corners corners) {
  for (Corner& corner : corners) {
    corner.at.x += center.x;
    corner.at.y += center.y;
  }
  const Path figure = roundedPolygon(corners);
  path.insert(path.end(), figure.begin(), figure.end());
}

/// Where the gap left of the bolt's edge from `start` to `end` begins at the height `y`.
Point besideEdge(Point start, Point end, double y) {
  const double slope = (end.x - start.x) / (end.y - start.y);
  return {start.x + slope * (y - start.y) - boltGap * std::sqrt(1.0 + slope * slope), y};
}

Corners bolt() {
  Corners corners{{tip, boltRadius}, {elbow, boltRadius}, {notch, 0.0}};
  const Corners rest = turned(corners);
  corners.insert(corners.end(), rest.begin(), rest.end());
  return corners;
}

/// The outline's left part, cut above by the bolt's upper edge and below by its lower one.
Corners outlineBesideBolt() {
  const auto [x, y] = half;
  const auto [insideX, insideY] = halfInside;
  return {{besideEdge(notch, otherTip, y), 0.0},
          {{-x, y}, outerRadius},
          {{-x, -y}, outerRadius},
          {besideEdge(tip, elbow, -y), 0.0},
          {besideEdge(tip, elbow, -insideY), 0.0},
          {{-insideX, -insideY}, innerRadius},
          {{-insideX, insideY}, innerRadius},
          {besideEdge(notch, otherTip, insideY), 0.0}};
}

/// The fill's left part: what the bolt leaves above its elbow, a triangle.
Corners fillBesideBolt() {
  const auto [x, y] = halfFill;
  const Point top = besideEdge(tip, elbow, -y);
  const Point bottom = besideEdge(tip, elbow, y);
  const double meeting = -y + 2 * y * (top.x + x) / (top.x - bottom.x);
  return {{{-x, -y}, fillRadius}, {top, boltRadius}, {{-x, meeting}, boltRadius}};
}

Path levelPath(double level) {
  Path path;
  add(path, block(half, outerRadius));
  add(path, block(halfInside, innerRadius));
  if (level > 0.0) add(path, block(halfFill, fillRadius, level));
  return path;
}

Path boltPath() {
  Path path;
  add(path, bolt());
  for (const Corners& piece : {outlineBesideBolt(), fillBesideBolt()}) {
    add(path, piece);
    add(path, turned(piece));
  }
  return path;
}

/// The terminal, round in front.
void addTerminal(Path& path) {
  Corners corners = rectangle(terminal, 0.0);
  corners[1].radius = terminal.width;
  corners[2].radius = terminal.width;
  add(path, corners);
}

struct Level {
  std::string_view name;
  double level;
};

constexpr std::array<Level, 5> levels{{{symbol::battery0, 0.0},
                                       {symbol::battery25, 0.25},
                                       {symbol::battery50, 0.5},
                                       {symbol::battery75, 0.75},
                                       {symbol::battery100, 1.0}}};

std::optional<Path> bodyPath(std::string_view name) {
  if (name == symbol::battery100Bolt) return boltPath();
  for (const Level& known : levels) {
    if (known.name == name) return levelPath(known.level);
  }
  return std::nullopt;
}

}  // namespace

std::optional<Path> symbolPath(std::string_view name) {
  std::optional<Path> path = bodyPath(name);
  if (path) addTerminal(*path);
  return path;
}

}  // namespace lumowatt::artwork

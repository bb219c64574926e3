#include "artwork/battery.h"

#include <array>
#include <cstddef>
#include <vector>

#include "artwork/rounded_polygon.h"
#include "graphics/symbol.h"

namespace lumowatt::artwork {

namespace {

// A panel shows the square at 16 pixels or at 22, where a unit is 1 pixel or 1.375. Edges are at
// whole units, so that at 16 each is where two pixels meet. At 22 those 3 or 5 units above and
// below the center are so too, but for an eighth of a pixel, and each gap keeps a pixel that is
// free. The outline is as thick as the lines of the panels' own icons.
//
// All coordinates are from the body's center; what lies right of it is in front, at the terminal.
constexpr Point center{7.0, 8.0};
constexpr Size halfBody{7.0, 5.0};
constexpr double outlineWidth = 2.0;
constexpr double gap = 1.0;
constexpr Size halfInside{halfBody.width - outlineWidth, halfBody.height - outlineWidth};
constexpr Size halfFill{halfInside.width - gap, halfInside.height - gap};

constexpr double outerRadius = 2.5;
constexpr double innerRadius = outerRadius - outlineWidth;

constexpr double terminalFront = gridSize - center.x;
constexpr double halfTerminal = 2.0;
constexpr double terminalRadius = 0.8;

// Half of the corners of the bolt and of the slash. A half turn gives the others.
constexpr std::array<Point, 3> halfBolt{{{2.0, -4.2}, {-3.6, 0.92}, {-0.8, 0.92}}};
constexpr std::array<Point, 2> halfSlash{{{5.3, 6.7}, {6.7, 5.3}}};

// The slash runs at 45 degrees. How far from its middle, along a row, the outline goes on.
constexpr double besideSlash = 3.0;
constexpr double cutRadius = 1.0;  // where the cut meets the front and the back

using Corners = std::vector<Corner>;

/// The rectangle within `halfSize` of the body's center, from its left end up to a share of it.
Corners block(Size halfSize, double radius, double share = 1.0) {
  const auto [x, y] = halfSize;
  const double end = 2 * x * share - x;
  return {{{-x, -y}, radius}, {{end, -y}, radius}, {{end, y}, radius}, {{-x, y}, radius}};
}

/// The terminal, from above down, as a part of the body's edge.
Corners terminal() {
  return {{{halfBody.width, -halfTerminal}},
          {{terminalFront, -halfTerminal}, terminalRadius},
          {{terminalFront, halfTerminal}, terminalRadius},
          {{halfBody.width, halfTerminal}}};
}

/// Inserts the terminal after the corner in front and above, which is the second.
Corners withTerminal(Corners corners) {
  const Corners inserted = terminal();
  corners.insert(corners.begin() + 2, inserted.begin(), inserted.end());
  return corners;
}

/// The same on the other side of the center, upside down.
Corners turned(Corners corners) {
  for (Corner& corner : corners) corner.at = {-corner.at.x, -corner.at.y};
  return corners;
}

/// These points and, after them, the same turned.
template <std::size_t size>
Corners withTurned(const std::array<Point, size>& points) {
  Corners corners;
  for (const Point& point : points) corners.push_back({point});
  const Corners rest = turned(corners);
  corners.insert(corners.end(), rest.begin(), rest.end());
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

/// The part of the outline above the slash, in front of it.
Corners outlineAboveSlash() {
  const auto [x, y] = halfBody;
  const auto [insideX, insideY] = halfInside;
  return {{{besideSlash - y, -y}},
          {{x, -y}, outerRadius},
          {{x, x - besideSlash}, cutRadius},
          {{insideX, insideX - besideSlash}},
          {{insideX, -insideY}, innerRadius},
          {{besideSlash - insideY, -insideY}}};
}

Path levelPath(double level) {
  Path path;
  add(path, withTerminal(block(halfBody, outerRadius)));
  add(path, block(halfInside, innerRadius));
  if (level > 0.0) add(path, block(halfFill, 0.0, level));
  return path;
}

/// A bolt within an outline, or one with a gap around it, would be a few gray pixels at 16. So it
/// is a hole in a battery that is filled all over.
Path boltPath() {
  Path path;
  add(path, withTerminal(block(halfBody, outerRadius)));
  add(path, withTurned(halfBolt));
  return path;
}

Path slashPath() {
  Path path;
  add(path, withTurned(halfSlash));
  add(path, withTerminal(outlineAboveSlash()));
  add(path, turned(outlineAboveSlash()));
  return path;
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

}  // namespace

std::optional<Path> symbolPath(std::string_view name) {
  if (name == symbol::battery100Bolt) return boltPath();
  if (name == noBattery) return slashPath();
  for (const Level& known : levels) {
    if (known.name == name) return levelPath(known.level);
  }
  return std::nullopt;
}

}  // namespace lumowatt::artwork

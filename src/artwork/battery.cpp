#include "artwork/battery.h"

#include <array>
#include <cstddef>
#include <vector>

#include "artwork/rounded_polygon.h"
#include "graphics/symbol.h"

namespace lumowatt::artwork {

namespace {

// Panels render the square of a symbol at 16 pixels (1 pixel per unit) or at 22 pixels (1.375
// pixels per unit). The horizontal and vertical edges of the battery lie on whole units, which are
// pixel boundaries at 16 pixels. At 22 pixels, the edges 3 and 5 units above and below the center
// are within an eighth of a pixel of a pixel boundary, and every gap contains an empty pixel. The
// outline is as thick as the lines of the panels' own icons.
//
// Coordinates are relative to the center of the body. The terminal is on the right.
constexpr Point bodyCenter{7.0, 8.0};
constexpr Size halfBody{7.0, 5.0};
constexpr double outlineWidth = 2.0;
constexpr double gap = 1.0;
constexpr Size halfInside{halfBody.width - outlineWidth, halfBody.height - outlineWidth};
constexpr Size halfFill{halfInside.width - gap, halfInside.height - gap};

constexpr double outerRadius = 2.5;
constexpr double innerRadius = outerRadius - outlineWidth;

constexpr double terminalFront = gridSize - bodyCenter.x;
constexpr double halfTerminal = 2.0;
constexpr double terminalRadius = 0.8;

// Half of the corners of the bolt and of the slash. Rotation by 180 degrees yields the others.
constexpr std::array<Point, 3> halfBolt{{{2.0, -4.2}, {-3.6, 0.92}, {-0.8, 0.92}}};
constexpr std::array<Point, 2> halfSlash{{{5.3, 6.7}, {6.7, 5.3}}};

// Horizontal distance from the center line of the slash, which runs at 45 degrees, to the outline.
constexpr double clearance = 3.0;
// Radius of the corners where the clearance beside the slash interrupts the outline.
constexpr double cutRadius = 1.0;

using Corners = std::vector<Corner>;

/// Returns a rectangle around the center of the body. Only the given share of its width is
/// included, starting at the left edge.
Corners rectangle(Size halfSize, double radius, double share = 1.0) {
  const auto [x, y] = halfSize;
  const double end = 2 * x * share - x;
  return {{{-x, -y}, radius}, {{end, -y}, radius}, {{end, y}, radius}, {{-x, y}, radius}};
}

/// Returns the corners of the terminal, from top to bottom, as part of the edge of the body.
Corners terminal() {
  return {{{halfBody.width, -halfTerminal}},
          {{terminalFront, -halfTerminal}, terminalRadius},
          {{terminalFront, halfTerminal}, terminalRadius},
          {{halfBody.width, halfTerminal}}};
}

/// Inserts the terminal after the second corner, which is the top right one.
Corners withTerminal(Corners corners) {
  const Corners inserted = terminal();
  corners.insert(corners.begin() + 2, inserted.begin(), inserted.end());
  return corners;
}

/// Returns the corners rotated by 180 degrees about the center of the body.
Corners rotated(Corners corners) {
  for (Corner& corner : corners) corner.at = {-corner.at.x, -corner.at.y};
  return corners;
}

/// Returns the points, followed by the points rotated by 180 degrees.
template <std::size_t size>
Corners withRotated(const std::array<Point, size>& points) {
  Corners corners;
  for (const Point& point : points) corners.push_back({point});
  const Corners rest = rotated(corners);
  corners.insert(corners.end(), rest.begin(), rest.end());
  return corners;
}

void addFigure(Path& path, Corners corners) {
  for (Corner& corner : corners) {
    corner.at.x += bodyCenter.x;
    corner.at.y += bodyCenter.y;
  }
  const Path figure = roundedPolygon(corners);
  path.insert(path.end(), figure.begin(), figure.end());
}

/// Returns the part of the outline to the upper right of the slash.
Corners outlineAboveSlash() {
  const auto [x, y] = halfBody;
  const auto [insideX, insideY] = halfInside;
  return {{{clearance - y, -y}},
          {{x, -y}, outerRadius},
          {{x, x - clearance}, cutRadius},
          {{insideX, insideX - clearance}},
          {{insideX, -insideY}, innerRadius},
          {{clearance - insideY, -insideY}}};
}

Path levelPath(double level) {
  Path path;
  addFigure(path, withTerminal(rectangle(halfBody, outerRadius)));
  addFigure(path, rectangle(halfInside, innerRadius));
  if (level > 0.0) addFigure(path, rectangle(halfFill, 0.0, level));
  return path;
}

/// Returns a filled battery with a hole in the shape of a bolt. A filled bolt inside an outline, or
/// with a gap around it, would be just a few gray pixels at 16 pixels.
Path boltPath() {
  Path path;
  addFigure(path, withTerminal(rectangle(halfBody, outerRadius)));
  addFigure(path, withRotated(halfBolt));
  return path;
}

Path slashPath() {
  Path path;
  addFigure(path, withRotated(halfSlash));
  addFigure(path, withTerminal(outlineAboveSlash()));
  addFigure(path, rotated(outlineAboveSlash()));
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

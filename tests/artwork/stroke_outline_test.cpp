#include "artwork/stroke_outline.h"

#include <gtest/gtest.h>

namespace lumowatt::artwork {

namespace {

using Points = std::vector<Point>;

/// Returns the ends of the straight lines in a path.
Points corners(const Path& path) {
  Points points;
  for (const auto& element : path) {
    if (const auto* const move = std::get_if<MoveTo>(&element)) points.push_back(move->to);
    if (const auto* const line = std::get_if<LineTo>(&element)) points.push_back(line->to);
  }
  return points;
}

/// Returns the ends of the curves in a path.
Points curveEnds(const Path& path) {
  Points points;
  for (const auto& element : path) {
    if (const auto* const curve = std::get_if<CurveTo>(&element)) points.push_back(curve->to);
  }
  return points;
}

/// Returns twice the area of a polygon. The sign depends on the orientation of the polygon.
double signedArea(const Points& points) {
  double area = 0.0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point& a = points[i];
    const Point& b = points[(i + 1) % points.size()];
    area += a.x * b.y - b.x * a.y;
  }
  return area;
}

const std::vector<Corner> squareCorners{{{0, 0}}, {{10, 0}}, {{10, 10}}, {{0, 10}}};

}  // namespace

TEST(StrokeOutline, ExtendsAStraightLineByHalfItsThickness) {
  EXPECT_EQ(corners(strokeOutline({{{0, 0}}, {{10, 0}}}, false, 4.0)),
            (Points{{-2, 2}, {12, 2}, {12, -2}, {-2, -2}}));
}

TEST(StrokeOutline, RoundsASharpCornerOnItsOuterSideOnly) {
  const Path path = strokeOutline({{{0, 0}}, {{10, 0}}, {{10, 10}}}, false, 2.0);
  // The outer corner at (11, -1) is missing: it is a curve from (11, 0) to (10, -1).
  EXPECT_EQ(corners(path), (Points{{-1, 1}, {9, 1}, {9, 11}, {11, 11}, {11, 0}, {-1, -1}}));
  EXPECT_EQ(curveEnds(path), (Points{{10, -1}}));
}

TEST(StrokeOutline, RoundsTheOuterSideOfABendMoreThanTheInnerSide) {
  const Path path = strokeOutline({{{0, 0}}, {{10, 0}, 3.0}, {{10, 10}}}, false, 2.0);
  // The inner corner at (9, 1) is rounded by 2, the outer corner at (11, -1) by 4.
  EXPECT_EQ(curveEnds(path), (Points{{9, 3}, {7, -1}}));
}

TEST(StrokeOutline, HasASharpInnerCornerIfTheRadiusIsTooSmall) {
  const Path path = strokeOutline({{{0, 0}}, {{10, 0}, 1.0}, {{10, 10}}}, false, 4.0);
  EXPECT_EQ(curveEnds(path).size(), 1U);
}

TEST(StrokeOutline, TurnsALoopIntoARing) {
  const Path ring = strokeOutline(squareCorners, true, 2.0);
  EXPECT_EQ(corners(ring),
            (Points{{1, 1}, {9, 1}, {9, 9}, {1, 9}, {-1, 10}, {10, 11}, {11, 0}, {0, -1}}));
  EXPECT_EQ(curveEnds(ring), (Points{{0, 11}, {11, 10}, {10, -1}, {-1, 0}}));
}

TEST(StrokeOutline, HasTheSameOrientationForAllLines) {
  const double line = signedArea(corners(strokeOutline({{{0, 0}}, {{9, 5}}}, false, 2.0)));
  const double bend =
      signedArea(corners(strokeOutline({{{9, 5}}, {{0, 0}}, {{3, 9}}}, false, 2.0)));
  const Points ring = corners(strokeOutline(squareCorners, true, 2.0));
  const double outside = signedArea({ring.begin() + 4, ring.end()});
  const double hole = signedArea({ring.begin(), ring.begin() + 4});
  EXPECT_LT(line, 0.0);
  EXPECT_LT(bend, 0.0);
  EXPECT_LT(outside, 0.0);
  EXPECT_GT(hole, 0.0);
}

}  // namespace lumowatt::artwork

#include "artwork/rounded_polygon.h"

#include <gtest/gtest.h>

namespace lumowatt::artwork {

namespace {

const std::vector<Point> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};

Path rounded(const std::vector<double>& radii) {
  std::vector<Corner> corners;
  for (std::size_t i = 0; i < square.size(); ++i) corners.push_back({square[i], radii[i]});
  return roundedPolygon(corners);
}

}  // namespace

TEST(RoundedPolygon, ConsistsOfStraightEdgesIfAllCornersAreSharp) {
  EXPECT_EQ(rounded({0, 0, 0, 0}), (Path{MoveTo{{0, 0}}, LineTo{{10, 0}}, LineTo{{10, 10}},
                                         LineTo{{0, 10}}, ClosePath{}}));
}

TEST(RoundedPolygon, RoundsACornerByAQuarterCircleOfItsRadius) {
  const Path path = rounded({0, 2, 0, 0});
  ASSERT_EQ(path.size(), 6U);
  EXPECT_EQ(std::get<LineTo>(path[1]).to, (Point{8, 0}));
  const auto& curve = std::get<CurveTo>(path[2]);
  EXPECT_EQ(curve.to, (Point{10, 2}));
  // The distance of the control points of a quarter circle from its ends is 0.5523 times the
  // radius.
  EXPECT_NEAR(curve.control1.x, 8 + 2 * 0.5523, 1e-4);
  EXPECT_EQ(curve.control1.y, 0.0);
  EXPECT_EQ(curve.control2.x, 10.0);
  EXPECT_NEAR(curve.control2.y, 2 - 2 * 0.5523, 1e-4);
}

TEST(RoundedPolygon, LimitsAdjacentRoundingsToHalfTheirEdge) {
  const Path path = rounded({0, 100, 100, 0});
  EXPECT_EQ(std::get<CurveTo>(path[2]).to, (Point{10, 5}));
  EXPECT_EQ(std::get<LineTo>(path[3]).to, (Point{10, 5}));
  EXPECT_EQ(std::get<CurveTo>(path[4]).to, (Point{5, 10}));
}

TEST(RoundedPolygon, LimitsTheRadiusBesideSharpCornersToTheLengthOfTheEdge) {
  const Path path = rounded({0, 100, 0, 0});
  EXPECT_EQ(std::get<LineTo>(path[1]).to, (Point{0, 0}));
  EXPECT_EQ(std::get<CurveTo>(path[2]).to, (Point{10, 10}));
}

}  // namespace lumowatt::artwork

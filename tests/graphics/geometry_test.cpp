#include "graphics/geometry.h"

#include <gtest/gtest.h>

namespace lumowatt {

TEST(Rect, ComputesTheCoordinatesOfItsEdges) {
  const Rect rect{3.0, 5.0, 20.0, 10.0};
  EXPECT_EQ(rect.minX(), 3.0);
  EXPECT_EQ(rect.minY(), 5.0);
  EXPECT_EQ(rect.maxX(), 23.0);
  EXPECT_EQ(rect.maxY(), 15.0);
}

TEST(RectInset, MovesAllEdgesInward) {
  EXPECT_EQ((Rect{0.0, 0.0, 250.0, 38.0}.inset(2.0, 5.0)), (Rect{2.0, 5.0, 246.0, 28.0}));
  EXPECT_EQ((Rect{10.0, 20.0, 8.0, 6.0}.inset(1.0, 3.0)), (Rect{11.0, 23.0, 6.0, 0.0}));
}

TEST(RectInset, MovesAllEdgesOutwardIfNegative) {
  EXPECT_EQ((Rect{10.0, 20.0, 8.0, 6.0}.inset(-1.0, -2.0)), (Rect{9.0, 18.0, 10.0, 10.0}));
}

TEST(RectInset, CollapsesToTheMiddleIfLargerThanHalfTheRectangle) {
  EXPECT_EQ((Rect{0.0, 0.0, 3.0, 8.0}.inset(2.0, 5.0)), (Rect{1.5, 4.0, 0.0, 0.0}));
}

}  // namespace lumowatt

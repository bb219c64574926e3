#include "render/chart_picture.h"

#include <gtest/gtest.h>

#include "fakes/recording_canvas.h"

namespace lumowatt {

namespace {

using Operations = std::vector<std::string>;

Operations drawn(const std::vector<Sample>& samples) {
  const Drawing picture = chartPicture(samples, systemGreen);
  EXPECT_TRUE(picture.flipped);
  EXPECT_EQ(picture.size, (Size{1096.0, 224.0}));
  RecordingCanvas canvas;
  picture.draw(canvas, {0.0, 0.0, picture.size.width, picture.size.height});
  return canvas.operations;
}

}  // namespace

TEST(ChartPicture, IsTheChartAtFourTimesItsSizeWithItsEnds) {
  // Characters are 10 wide and 18 high. The line runs from 33 to 175 points from the top.
  EXPECT_EQ(drawn({{0, 20}, {3540, 80}}),
            (Operations{
                "fill (0, 0, 1096, 224) windowBackground",
                "begin (64, 28, 1000, 152) of 1000 x 152",
                "stroke M(2, 5) L(998, 5) width 1 separator",
                "stroke M(2, 5) L(998, 147) width 2 round joins round caps green",
                "end",
                "text (26, 166) \"20%\" system 15 secondaryLabel",
                "text (26, 24) \"80%\" system 15 secondaryLabel",
                "text (64, 188) \"59 min ago\" system 15 secondaryLabel",
                "text (1034, 188) \"now\" system 15 secondaryLabel",
            }));
}

TEST(ChartPicture, OfAFlatHistoryHasOnePercentage) {
  const Operations operations = drawn({{0, 77}, {3600, 77}});
  ASSERT_EQ(operations.size(), 8U);
  EXPECT_EQ(operations[5], "text (26, 166) \"77%\" system 15 secondaryLabel");
  EXPECT_EQ(operations[6], "text (64, 188) \"60 min ago\" system 15 secondaryLabel");
}

TEST(ChartPicture, WritesTheHighestWhereTheLineReachesIt) {
  // Two of four points: the middle, 104 points from the top.
  EXPECT_EQ(drawn({{0, 50}, {3600, 52}}).at(6), "text (26, 95) \"52%\" system 15 secondaryLabel");
}

TEST(ChartPicture, WithoutAHistoryHasNoEnds) {
  EXPECT_EQ(drawn({}), (Operations{
                           "fill (0, 0, 1096, 224) windowBackground",
                           "begin (64, 28, 1000, 152) of 1000 x 152",
                           "stroke M(2, 5) L(998, 5) width 1 separator",
                           "text (4, 69) \"Collecting history…\" system 11 secondaryLabel",
                           "end",
                       }));
}

}  // namespace lumowatt

#include "render/sparkline.h"

#include <gtest/gtest.h>

#include "fakes/recording_canvas.h"

namespace lumowatt {

namespace {

using Operations = std::vector<std::string>;

// In a chart of the default size, 250 x 38, the plot extends from (2, 5) to (248, 33).
const std::string baseline = "stroke M(2, 5) L(248, 5) width 1 separator";
const std::string line = " width 2 round joins round caps green";
const std::string placeholder = "text (4, 12) \"Collecting history…\" system 11 secondaryLabel";

/// Draws a chart at its own size and returns the operations.
Operations drawOperations(const Image& image) {
  const auto& drawing = std::get<Drawing>(image.content);
  RecordingCanvas canvas;
  drawing.draw(canvas, {0.0, 0.0, drawing.size.width, drawing.size.height});
  return canvas.operations;
}

Operations chart(const std::vector<Sample>& samples) {
  return drawOperations(sparkline(samples, systemGreen));
}

Reading readingAt(std::int64_t percent) {
  Reading reading;
  reading.percent = percent;
  return reading;
}

}  // namespace

TEST(Sparkline, IsAnUnflippedImageOfTheDefaultSize) {
  const Image image = sparkline({}, systemGreen);
  const auto& drawing = std::get<Drawing>(image.content);
  EXPECT_EQ(drawing.size, (Size{250.0, 38.0}));
  EXPECT_FALSE(drawing.flipped);
  EXPECT_EQ(image.accessibilityDescription, "");
}

TEST(Sparkline, DrawsOnePercentagePointAsAQuarterOfTheHeight) {
  EXPECT_EQ(chart({{0, 50}, {60, 51}}), (Operations{baseline, "stroke M(2, 5) L(248, 12)" + line}));
}

TEST(Sparkline, DrawsAFlatHistoryOnTheBaseline) {
  EXPECT_EQ(chart({{100, 77}, {130, 77}, {160, 77}}),
            (Operations{baseline, "stroke M(2, 5) L(125, 5) L(248, 5)" + line}));
}

TEST(Sparkline, FillsTheHeightForALargeRange) {
  // 100 samples from 20 % to 80 %.
  std::vector<Sample> samples(100);
  for (int i = 0; i < 100; ++i) samples[static_cast<std::size_t>(i)] = {36.0 * i, 20 + 60 * i / 99};
  const Operations operations = chart(samples);
  ASSERT_EQ(operations.size(), 2U);
  EXPECT_EQ(operations[0], baseline);
  EXPECT_TRUE(operations[1].starts_with("stroke M(2, 5) L(")) << operations[1];
  EXPECT_TRUE(operations[1].ends_with(" L(248, 33)" + line)) << operations[1];
  EXPECT_EQ(std::ranges::count(operations[1], 'L'), 99);
}

TEST(Sparkline, FillsTheHeightForARangeOfFourPoints) {
  EXPECT_EQ(chart({{0, 54}, {60, 50}}), (Operations{baseline, "stroke M(2, 33) L(248, 5)" + line}));
}

TEST(Sparkline, DrawsPointsAtTheirTimes) {
  // The second sample is at a quarter of the time and at 40 of 50 percentage points:
  // x = 2 + 246 / 4 = 63.5, y = 5 + 28 * 0.8 = 27.4.
  EXPECT_EQ(chart({{1000, 30}, {1015, 70}, {1060, 80}}),
            (Operations{baseline, "stroke M(2, 5) L(63.5, 27.4) L(248, 33)" + line}));
}

TEST(Sparkline, DrawsPointsAtFractionalCoordinates) {
  // The second sample is at a tenth of the time and at 3 of 10 percentage points:
  // x = 2 + 24.6 = 26.6, y = 5 + 28 * 0.3 = 13.4.
  EXPECT_EQ(chart({{1000, 30}, {1006, 33}, {1060, 40}}),
            (Operations{baseline, "stroke M(2, 5) L(26.6, 13.4) L(248, 33)" + line}));
}

TEST(Sparkline, DoesNotClampSamplesLaterThanTheLastOne) {
  EXPECT_EQ(chart({{0, 50}, {120, 50}, {60, 50}}),
            (Operations{baseline, "stroke M(2, 5) L(494, 5) L(248, 5)" + line}));
}

TEST(Sparkline, ShowsAPlaceholderWithoutSamples) {
  EXPECT_EQ(chart({}), (Operations{baseline, placeholder}));
}

TEST(Sparkline, ShowsAPlaceholderForOneSample) {
  EXPECT_EQ(chart({{5, 50}}), (Operations{baseline, placeholder}));
}

TEST(Sparkline, ShowsAPlaceholderForSamplesWithTheSameTime) {
  EXPECT_EQ(chart({{5, 50}, {5, 60}, {5, 70}}), (Operations{baseline, placeholder}));
}

TEST(Sparkline, ShowsAPlaceholderWhenTheLastSamplePrecedesTheFirst) {
  EXPECT_EQ(chart({{60, 50}, {90, 55}, {0, 60}}), (Operations{baseline, placeholder}));
}

TEST(Sparkline, HasTheRequestedSize) {
  const Image image = sparkline({}, systemGreen, 100.0, 60.2);
  EXPECT_EQ(std::get<Drawing>(image.content).size, (Size{100.0, 60.2}));
  EXPECT_EQ(drawOperations(image),
            (Operations{"stroke M(2, 5) L(98, 5) width 1 separator",
                        "text (4, 23.1) \"Collecting history…\" system 11 secondaryLabel"}));
}

TEST(Sparkline, DrawsIntoTheGivenRectangleButPlacesTextByItsOwnHeight) {
  const Image image = sparkline({}, systemGreen);
  RecordingCanvas canvas;
  std::get<Drawing>(image.content).draw(canvas, {10.0, 20.0, 54.0, 30.0});
  EXPECT_EQ(canvas.operations,
            (Operations{"stroke M(12, 25) L(62, 25) width 1 separator", placeholder}));
}

TEST(ChartColor, IsTheAccentOfTheReadingWhenColorsAreOn) {
  const Reading low = readingAt(8);
  EXPECT_EQ(chartColor(low, true), systemRed);
  EXPECT_EQ(chartColor(low, true, systemGreen), systemRed);
}

TEST(ChartColor, FallsBackToTheUserAccent) {
  const Reading low = readingAt(8);
  const Reading ordinary = readingAt(64);
  EXPECT_EQ(chartColor(low, false, systemGreen), systemGreen);
  EXPECT_EQ(chartColor(ordinary, true, systemGreen), systemGreen);
  EXPECT_EQ(chartColor(ordinary, true), Color(SystemColor::accent));
}

TEST(Sparkline, AcceptsPercentagesOutsideZeroToOneHundred) {
  EXPECT_EQ(chart({{0, -100}, {60, 300}}),
            (Operations{baseline, "stroke M(2, 5) L(248, 33)" + line}));
}

}  // namespace lumowatt

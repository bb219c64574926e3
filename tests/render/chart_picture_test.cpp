#include "render/chart_picture.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/recording_canvas.h"

namespace lumowatt {

namespace {

using Operations = std::vector<std::string>;

/// The charts of these tests begin at 13:00:00, which is 0 in the samples' time.
constexpr double midnight = -13 * 3600.0;

Operations drawn(const std::vector<Sample>& samples, double dayBegan = midnight,
                 Size character = {10.0, 18.0}) {
  const Drawing picture = chartPicture({.samples = samples,
                                        .heading = "64% · On battery",
                                        .color = systemGreen,
                                        .midnight = dayBegan});
  EXPECT_TRUE(picture.flipped);
  EXPECT_EQ(picture.size, (Size{688.0, 408.0}));
  RecordingCanvas canvas;
  canvas.character = character;
  picture.draw(canvas, {0.0, 0.0, picture.size.width, picture.size.height});
  return canvas.operations;
}

/// The operations that begin with a word.
Operations those(const std::string& word, const Operations& operations) {
  Operations found;
  std::ranges::copy_if(operations, std::back_inserter(found),
                       [&](const std::string& each) { return each.starts_with(word + " "); });
  return found;
}

/// The lines of the charge, without the grid.
Operations lines(const Operations& operations) {
  Operations found = those("stroke", operations);
  EXPECT_TRUE(!found.empty() && found.front().ends_with("width 1 separator"));
  found.erase(found.begin());
  return found;
}

/// The operations that write one of these texts.
Operations texts(const std::vector<std::string>& wanted, const Operations& operations) {
  Operations found;
  std::ranges::copy_if(operations, std::back_inserter(found), [&](const std::string& each) {
    return std::ranges::any_of(wanted, [&](const std::string& text) {
      return each.find('"' + text + '"') != std::string::npos;
    });
  });
  return found;
}

/// What is written below the plot, in order.
std::string times(const Operations& operations) {
  std::string all;
  for (const std::string& text : those("text", operations)) {
    if (text.find(", 376) ") == std::string::npos) continue;
    const std::size_t start = text.find('"') + 1;
    if (!all.empty()) all += " ";
    all += text.substr(start, text.find('"', start) - start);
  }
  return all;
}

const std::string lineStyle = " width 2 round joins round caps green";

}  // namespace

TEST(ChartPicture, HasAHeadingAxesAFilledAreaALineAndADotAtItsEnd) {
  // The plot is from (60, 88) to (660, 368): 5 minutes across, 10 points up. Characters are 10 wide
  // and 18 high.
  EXPECT_EQ(drawn({{240, 71}, {270, 72}, {300, 72}}),
            (Operations{
                "fill (0, 0, 688, 408) windowBackground",
                "text (24, 20) \"64% · On battery\" bold 17 label",
                "text (24, 46) \"Charge over the last hour\" system 12 secondaryLabel",
                "text (22, 359) \"66%\" digits 11 secondaryLabel",
                "text (22, 303) \"68%\" digits 11 secondaryLabel",
                "text (22, 247) \"70%\" digits 11 secondaryLabel",
                "text (22, 191) \"72%\" digits 11 secondaryLabel",
                "text (22, 135) \"74%\" digits 11 secondaryLabel",
                "text (22, 79) \"76%\" digits 11 secondaryLabel",
                "text (35, 376) \"13:00\" digits 11 secondaryLabel",
                "text (155, 376) \"13:01\" digits 11 secondaryLabel",
                "text (275, 376) \"13:02\" digits 11 secondaryLabel",
                "text (395, 376) \"13:03\" digits 11 secondaryLabel",
                "text (515, 376) \"13:04\" digits 11 secondaryLabel",
                "text (635, 376) \"13:05\" digits 11 secondaryLabel",
                "stroke M(60, 368) L(660, 368) M(60, 312) L(660, 312) M(60, 256) L(660, 256)"
                " M(60, 200) L(660, 200) M(60, 144) L(660, 144) M(60, 88) L(660, 88)"
                " M(60, 88) L(60, 368) M(180, 88) L(180, 368) M(300, 88) L(300, 368)"
                " M(420, 88) L(420, 368) M(540, 88) L(540, 368) M(660, 88) L(660, 368)"
                " width 1 separator",
                "area M(540, 228) L(540, 228) L(600, 200) L(660, 200) L(660, 368) L(540, 368) Z"
                " opacity 0.15 green",
                "stroke M(540, 228) L(540, 228) L(600, 200) L(660, 200)" + lineStyle,
                "rounded (654, 194, 12, 12) radius 6 windowBackground",
                "rounded (656, 196, 8, 8) radius 4 green",
            }));
}

TEST(ChartPicture, AfterYearsOfRunningIsAsExactAsAtTheStart) {
  const double years = 100'000'001.0;
  const Operations operations =
      drawn({{years + 240, 71}, {years + 270, 72}, {years + 300, 72}}, years + midnight);
  EXPECT_EQ(operations, drawn({{240, 71}, {270, 72}, {300, 72}}));
}

TEST(ChartPicture, PutsPointsBetweenPixels) {
  // 5 minutes across are 2 points a second; from 50% to 75% up are 11.2 points each.
  EXPECT_EQ(lines(drawn({{210.1, 51}, {255.05, 66}, {300, 74}})),
            (Operations{"stroke M(480.2, 356.8) L(480.2, 356.8) L(570.1, 188.8) L(660, 99.2)" +
                        lineStyle}));
}

TEST(ChartPicture, CentersItsTextsWhateverTheyMeasure) {
  const Size character{10.02, 18.3};
  EXPECT_EQ(texts({"66%", "13:00", "13:05"}, drawn({{0, 71}, {300, 72}}, midnight, character)),
            (Operations{
                "text (21.94, 358.85) \"66%\" digits 11 secondaryLabel",
                "text (34.95, 376) \"13:00\" digits 11 secondaryLabel",
                "text (634.95, 376) \"13:05\" digits 11 secondaryLabel",
            }));
  EXPECT_EQ(drawn({}, midnight, character).back(),
            "text (248.81, 218.85) \"Collecting history…\" digits 11 secondaryLabel");
}

TEST(ChartPicture, HasAGapWhereSamplesAreMissing) {
  // An hour across, 10 points a minute, and 54% to 64% up, 28 points a percent.
  const Operations operations = drawn({{0, 60}, {90, 60}, {1800, 60}, {1890, 60}, {3600, 60}});
  EXPECT_EQ(lines(operations), (Operations{
                                   "stroke M(60, 200) L(60, 200) L(75, 200)" + lineStyle,
                                   "stroke M(360, 200) L(360, 200) L(375, 200)" + lineStyle,
                                   "stroke M(660, 200) L(660, 200)" + lineStyle,
                               }));
  EXPECT_EQ(those("area", operations).size(), 3U);
}

TEST(ChartPicture, ADelayOfThreeSamplesIsNoGap) {
  EXPECT_EQ(lines(drawn({{0, 60}, {90, 60}})).size(), 1U);
  EXPECT_EQ(lines(drawn({{0, 60}, {90.5, 60}})).size(), 2U);
}

TEST(ChartPicture, HasTimesAtRoundMinutes) {
  EXPECT_EQ(times(drawn({{317, 50}, {3917, 50}})), "13:10 13:20 13:30 13:40 13:50 14:00");
  EXPECT_EQ(times(drawn({{0, 50}, {1500, 50}})), "12:55 13:00 13:05 13:10 13:15 13:20 13:25");
  EXPECT_EQ(times(drawn({{0, 50}, {400, 50}})), "12:58 13:00 13:02 13:04 13:06");
}

TEST(ChartPicture, HasTimesOfTwoDigitsAlsoAcrossMidnight) {
  EXPECT_EQ(times(drawn({{0, 50}, {3600, 50}}, -8.5 * 3600)),
            "08:30 08:40 08:50 09:00 09:10 09:20 09:30");
  EXPECT_EQ(times(drawn({{0, 50}, {3600, 50}}, 1800)), "23:30 23:40 23:50 00:00 00:10 00:20 00:30");
  EXPECT_EQ(times(drawn({{0, 50}, {3600, 50}}, 1800 - 86400)),
            "23:30 23:40 23:50 00:00 00:10 00:20 00:30");
}

TEST(ChartPicture, HasTheTimesAroundMidnightToTheMinute) {
  EXPECT_EQ(times(drawn({{0, 50}}, 0.0)), "23:55 23:56 23:57 23:58 23:59 00:00");
  EXPECT_EQ(times(drawn({{0, 50}}, -120.0)), "23:57 23:58 23:59 00:00 00:01 00:02");
}

TEST(ChartPicture, HasTheTimesOfTheDayAlsoByAMidnightOfDecadesAgo) {
  constexpr double fortyYears = 14'610 * 86'400.0;
  EXPECT_EQ(times(drawn({{0, 50}, {300, 50}}, midnight - fortyYears)),
            "13:00 13:01 13:02 13:03 13:04 13:05");
}

TEST(ChartPicture, OfASingleSampleIsADotAtTheRight) {
  const Operations operations = drawn({{0, 64}});  // between 58% and 68%
  EXPECT_EQ(operations.back(), "rounded (656, 196, 8, 8) radius 4 green");
  EXPECT_EQ(times(operations), "12:55 12:56 12:57 12:58 12:59 13:00");
}

TEST(ChartPicture, OfPercentagesOutsideItsScaleLiesAtTheEdge) {
  EXPECT_EQ(lines(drawn({{0, -7}, {30, 140}})),
            (Operations{"stroke M(600, 368) L(600, 368) L(660, 88)" + lineStyle}));
}

TEST(ChartPicture, WithoutAHistorySaysThatItIsCollected) {
  EXPECT_EQ(drawn({}), (Operations{
                           "fill (0, 0, 688, 408) windowBackground",
                           "text (24, 20) \"64% · On battery\" bold 17 label",
                           "text (24, 46) \"Charge over the last hour\" system 12 secondaryLabel",
                           "text (249, 219) \"Collecting history…\" digits 11 secondaryLabel",
                       }));
}

}  // namespace lumowatt

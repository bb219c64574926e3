#include "render/chart_picture.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/recording_canvas.h"

namespace lumowatt {

namespace {

using Operations = std::vector<std::string>;

/// Midnight on the time scale of the samples. Time 0 is therefore 13:00:00.
constexpr double midnight = -13 * 3600.0;

/// Draws the chart of the samples and returns the operations.
Operations drawChart(const std::vector<Sample>& samples, double dayStart = midnight,
                     Size character = {10.0, 18.0}) {
  const Drawing picture = chartPicture({.samples = samples,
                                        .heading = "64% · On battery",
                                        .color = systemGreen,
                                        .midnight = dayStart});
  EXPECT_TRUE(picture.flipped);
  EXPECT_EQ(picture.size, (Size{688.0, 408.0}));
  RecordingCanvas canvas;
  canvas.character = character;
  picture.draw(canvas, {0.0, 0.0, picture.size.width, picture.size.height});
  return canvas.operations;
}

/// Returns the operations with this name.
Operations operationsNamed(const std::string& name, const Operations& operations) {
  Operations matches;
  std::ranges::copy_if(operations, std::back_inserter(matches),
                       [&](const std::string& each) { return each.starts_with(name + " "); });
  return matches;
}

/// Returns the operations that draw the lines of the charge, without the grid.
Operations chartLines(const Operations& operations) {
  Operations matches = operationsNamed("stroke", operations);
  EXPECT_TRUE(!matches.empty() && matches.front().ends_with("width 1 separator"));
  matches.erase(matches.begin());
  return matches;
}

/// Returns the operations that draw one of these texts.
Operations textOperations(const std::vector<std::string>& texts, const Operations& operations) {
  Operations matches;
  std::ranges::copy_if(operations, std::back_inserter(matches), [&](const std::string& each) {
    return std::ranges::any_of(texts, [&](const std::string& text) {
      return each.find('"' + text + '"') != std::string::npos;
    });
  });
  return matches;
}

/// Returns the labels below the plot, separated by spaces.
std::string timeLabels(const Operations& operations) {
  std::string all;
  for (const std::string& text : operationsNamed("text", operations)) {
    if (text.find(", 376) ") == std::string::npos) continue;
    const std::size_t start = text.find('"') + 1;
    if (!all.empty()) all += " ";
    all += text.substr(start, text.find('"', start) - start);
  }
  return all;
}

const std::string lineStyle = " width 2 round joins round caps green";

}  // namespace

TEST(ChartPicture, DrawsHeadingAxesAreaLineAndEndDot) {
  // The plot extends from (60, 88) to (660, 368). It is 5 minutes wide and 10 percentage points
  // high. Characters are 10 wide and 18 high.
  EXPECT_EQ(drawChart({{240, 71}, {270, 72}, {300, 72}}),
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

TEST(ChartPicture, RemainsExactAfterYearsOfUptime) {
  const double years = 100'000'001.0;
  const Operations operations =
      drawChart({{years + 240, 71}, {years + 270, 72}, {years + 300, 72}}, years + midnight);
  EXPECT_EQ(operations, drawChart({{240, 71}, {270, 72}, {300, 72}}));
}

TEST(ChartPicture, DrawsPointsAtFractionalCoordinates) {
  // The plot is 5 minutes wide, which is 2 points per second. It spans 50% to 75%, which is 11.2
  // points per percent.
  EXPECT_EQ(chartLines(drawChart({{210.1, 51}, {255.05, 66}, {300, 74}})),
            (Operations{"stroke M(480.2, 356.8) L(480.2, 356.8) L(570.1, 188.8) L(660, 99.2)" +
                        lineStyle}));
}

TEST(ChartPicture, CentersTextsByTheirMeasuredSize) {
  const Size character{10.02, 18.3};
  EXPECT_EQ(textOperations({"66%", "13:00", "13:05"},
                           drawChart({{0, 71}, {300, 72}}, midnight, character)),
            (Operations{
                "text (21.94, 358.85) \"66%\" digits 11 secondaryLabel",
                "text (34.95, 376) \"13:00\" digits 11 secondaryLabel",
                "text (634.95, 376) \"13:05\" digits 11 secondaryLabel",
            }));
  EXPECT_EQ(drawChart({}, midnight, character).back(),
            "text (248.81, 218.85) \"Collecting history…\" digits 11 secondaryLabel");
}

TEST(ChartPicture, InterruptsTheLineWhereSamplesAreMissing) {
  // The plot is one hour wide, which is 10 points per minute. It spans 54% to 64%, which is 28
  // points per percent.
  const Operations operations = drawChart({{0, 60}, {90, 60}, {1800, 60}, {1890, 60}, {3600, 60}});
  EXPECT_EQ(chartLines(operations), (Operations{
                                        "stroke M(60, 200) L(60, 200) L(75, 200)" + lineStyle,
                                        "stroke M(360, 200) L(360, 200) L(375, 200)" + lineStyle,
                                        "stroke M(660, 200) L(660, 200)" + lineStyle,
                                    }));
  EXPECT_EQ(operationsNamed("area", operations).size(), 3U);
}

TEST(ChartPicture, InterruptsTheLineOnlyAfterMoreThanNinetySeconds) {
  EXPECT_EQ(chartLines(drawChart({{0, 60}, {90, 60}})).size(), 1U);
  EXPECT_EQ(chartLines(drawChart({{0, 60}, {90.5, 60}})).size(), 2U);
}

TEST(ChartPicture, LabelsTimesAtRoundMinutes) {
  EXPECT_EQ(timeLabels(drawChart({{317, 50}, {3917, 50}})), "13:10 13:20 13:30 13:40 13:50 14:00");
  EXPECT_EQ(timeLabels(drawChart({{0, 50}, {1500, 50}})),
            "12:55 13:00 13:05 13:10 13:15 13:20 13:25");
  EXPECT_EQ(timeLabels(drawChart({{0, 50}, {400, 50}})), "12:58 13:00 13:02 13:04 13:06");
}

TEST(ChartPicture, LabelsTimesWithTwoDigitHoursAcrossMidnight) {
  EXPECT_EQ(timeLabels(drawChart({{0, 50}, {3600, 50}}, -8.5 * 3600)),
            "08:30 08:40 08:50 09:00 09:10 09:20 09:30");
  EXPECT_EQ(timeLabels(drawChart({{0, 50}, {3600, 50}}, 1800)),
            "23:30 23:40 23:50 00:00 00:10 00:20 00:30");
  EXPECT_EQ(timeLabels(drawChart({{0, 50}, {3600, 50}}, 1800 - 86400)),
            "23:30 23:40 23:50 00:00 00:10 00:20 00:30");
}

TEST(ChartPicture, LabelsEachMinuteAroundMidnight) {
  EXPECT_EQ(timeLabels(drawChart({{0, 50}}, 0.0)), "23:55 23:56 23:57 23:58 23:59 00:00");
  EXPECT_EQ(timeLabels(drawChart({{0, 50}}, -120.0)), "23:57 23:58 23:59 00:00 00:01 00:02");
}

TEST(ChartPicture, LabelsTimesOfDayWhenMidnightWasDecadesAgo) {
  constexpr double fortyYears = 14'610 * 86'400.0;
  EXPECT_EQ(timeLabels(drawChart({{0, 50}, {300, 50}}, midnight - fortyYears)),
            "13:00 13:01 13:02 13:03 13:04 13:05");
}

TEST(ChartPicture, DrawsASingleSampleAsADotAtTheRight) {
  const Operations operations = drawChart({{0, 64}});  // on an axis from 58% to 68%
  EXPECT_EQ(operations.back(), "rounded (656, 196, 8, 8) radius 4 green");
  EXPECT_EQ(timeLabels(operations), "12:55 12:56 12:57 12:58 12:59 13:00");
}

TEST(ChartPicture, ClampsPercentagesOutsideZeroToOneHundred) {
  EXPECT_EQ(chartLines(drawChart({{0, -7}, {30, 140}})),
            (Operations{"stroke M(600, 368) L(600, 368) L(660, 88)" + lineStyle}));
}

TEST(ChartPicture, ShowsAPlaceholderWithoutSamples) {
  EXPECT_EQ(drawChart({}),
            (Operations{
                "fill (0, 0, 688, 408) windowBackground",
                "text (24, 20) \"64% · On battery\" bold 17 label",
                "text (24, 46) \"Charge over the last hour\" system 12 secondaryLabel",
                "text (249, 219) \"Collecting history…\" digits 11 secondaryLabel",
            }));
}

}  // namespace lumowatt

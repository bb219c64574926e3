// The application: launch, refresh, accessibility, history and animation.

#include "menubar/app.h"

#include "menubar/app_fixture.h"

namespace lumowatt {

namespace {

using Calls = std::vector<std::string>;

std::vector<double> times(const std::vector<Sample>& history) {
  std::vector<double> all;
  all.reserve(history.size());
  for (const Sample& sample : history) all.push_back(sample.time);
  return all;
}

constexpr BatteryState charging{
    .percent = 50, .watts = 20.0, .external = true, .charging = true, .minutes = 60};

}  // namespace

TEST_F(AppTest, ShowsNothingAndRunsNoTimerBeforeLaunch) {
  EXPECT_TRUE(desktop.calls.empty());
  EXPECT_TRUE(desktop.timerIntervals().empty());
  EXPECT_FALSE(app->last());
  EXPECT_TRUE(app->history().empty());
  EXPECT_EQ(app->frame(), 0);
  EXPECT_EQ(battery.callCount, 0);
}

TEST_F(AppTest, PerformsTheStepsOfTheLaunchInOrder) {
  app->applicationDidFinishLaunching();
  EXPECT_EQ(desktop.calls,
            (Calls{"attach menu Lumowatt", "contents", "timer", "watch power sources"}));
  EXPECT_EQ(desktop.timerIntervals(), std::vector{5.0});
  EXPECT_EQ(battery.callCount, 1);
}

TEST_F(AppTest, RefreshesEveryFiveSeconds) {
  app->applicationDidFinishLaunching();
  desktop.advanceTime(4.9);
  EXPECT_EQ(battery.callCount, 1);
  desktop.advanceTime(0.1);
  EXPECT_EQ(battery.callCount, 2);
  desktop.advanceTime(60.0);
  EXPECT_EQ(battery.callCount, 14);
}

TEST_F(AppTest, RefreshesWhenAPowerSourceChanges) {
  app->applicationDidFinishLaunching();
  setBattery(charging);
  desktop.reportPowerSourceChange();
  EXPECT_EQ(battery.callCount, 2);
  EXPECT_EQ(app->last()->percent, 50);
}

TEST_F(AppTest, RefreshesByTimerWithoutPowerSourceReports) {
  desktop.canWatchPowerSources = false;
  app->applicationDidFinishLaunching();
  desktop.reportPowerSourceChange();
  EXPECT_EQ(battery.callCount, 1);
  desktop.advanceTime(5.0);
  EXPECT_EQ(battery.callCount, 2);
}

TEST_F(AppTest, IsNotKeptAliveByItsCallbacks) {
  setBattery(charging);
  app->applicationDidFinishLaunching();
  ASSERT_EQ(desktop.scheduledTicks.size(), 2U);
  app.reset();
  EXPECT_TRUE(desktop.timerIntervals().empty()) << "destruction stops its timers";
  const int callCount = battery.callCount;
  const Calls calls = desktop.calls;
  for (const auto& tick : desktop.scheduledTicks) tick();
  desktop.reportPowerSourceChange();
  EXPECT_EQ(battery.callCount, callCount);
  EXPECT_EQ(desktop.calls, calls);
}

TEST_F(AppTest, ShowsTheReadingOnRefresh) {
  app->refresh();
  EXPECT_EQ(desktop.symbol(), "battery.75percent template");
  EXPECT_EQ(desktop.buttonContents.image->accessibilityDescription, "Battery 64 percent");
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W");
  EXPECT_EQ(desktop.buttonContents.toolTip,
            "On battery\nCharge: 64% (0 of 0 mAh)\nTime to empty: 2 h 15 min\n"
            "Battery power: −8.3 W  (0.00 V, +0.000 A)\nSystem use: 0.0 W\nCycle count: 0");
  EXPECT_EQ(desktop.buttonContents.accessibilityLabel, "Battery 64 percent, On battery, −8.3 W");
  EXPECT_EQ(app->last()->percent, 64);
}

TEST_F(AppTest, IncludesTheSignOfThePowerInTheAccessibilityLabel) {
  refreshWith({.watts = 0.0});
  EXPECT_TRUE(desktop.buttonContents.accessibilityLabel.ends_with(", +0.0 W"));
  refreshWith({.watts = -0.04});
  EXPECT_TRUE(desktop.buttonContents.accessibilityLabel.ends_with(", −0.0 W"));
  refreshWith({.percent = 57, .watts = -8.04});
  EXPECT_EQ(desktop.buttonContents.accessibilityLabel, "Battery 57 percent, On battery, −8.0 W");
}

TEST_F(AppTest, ChangesOnlyTheTitleWhenTheBatteryDisappears) {
  refreshWith(charging);
  desktop.advanceTime(100.0);
  const auto history = times(app->history());
  const std::string symbol = desktop.symbol();
  const std::string toolTip = desktop.buttonContents.toolTip;
  desktop.calls.clear();
  removeBattery();
  app->refresh();
  EXPECT_EQ(desktop.calls, Calls{"title"});
  EXPECT_EQ(desktop.plainTitle(), "No battery");
  EXPECT_EQ(desktop.symbol(), symbol);
  EXPECT_EQ(desktop.buttonContents.toolTip, toolTip);
  EXPECT_EQ(app->last()->percent, 50);
  EXPECT_EQ(times(app->history()), history);
  EXPECT_TRUE(app->isAnimating());
  const std::int64_t frame = app->frame();
  desktop.advanceTime(0.7);
  EXPECT_EQ(app->frame(), frame + 1) << "the animation continues with the last reading";
}

TEST_F(AppTest, HasNoReadingUntilABatteryAppears) {
  removeBattery();
  app->applicationDidFinishLaunching();
  EXPECT_EQ(desktop.plainTitle(), "No battery");
  EXPECT_EQ(desktop.symbol(), "none");
  EXPECT_FALSE(app->last());
  EXPECT_TRUE(app->history().empty());
  setBattery({});
  desktop.advanceTime(5.0);
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W");
}

TEST_F(AppTest, ReadsTheBatteryAndAddsSamplesWithoutAButton) {
  desktop.hasButton = false;
  refreshWith(charging);
  EXPECT_EQ(app->last()->percent, 50);
  EXPECT_EQ(app->history().size(), 1U);
  EXPECT_TRUE(desktop.calls.empty());
  EXPECT_FALSE(app->isAnimating());
  removeBattery();
  app->refresh();
  EXPECT_TRUE(desktop.calls.empty());
}

TEST_F(AppTest, AdvancesTheAnimationAfterTheButtonDisappears) {
  refreshWith(charging);
  desktop.hasButton = false;
  desktop.calls.clear();
  desktop.advanceTime(1.5);
  EXPECT_EQ(app->frame(), 2);
  EXPECT_TRUE(desktop.calls.empty());
}

// History

TEST_F(AppTest, AddsTheFirstSampleOnTheFirstRefresh) {
  app->refresh();
  ASSERT_EQ(app->history().size(), 1U);
  EXPECT_EQ(app->history()[0].time, 1000.0);
  EXPECT_EQ(app->history()[0].percent, 64);
}

TEST_F(AppTest, AddsSamplesAtLeastThirtySecondsApart) {
  app->refresh();
  for (const double seconds : {5.0, 10.0, 25.0, 29.999}) {
    desktop.time = 1000.0 + seconds;
    app->refresh();
    EXPECT_EQ(app->history().size(), 1U) << seconds;
  }
  desktop.time = 1030.0;
  app->refresh();
  EXPECT_EQ(times(app->history()), (std::vector{1000.0, 1030.0}));
}

TEST_F(AppTest, RemovesSamplesOlderThanOneHour) {
  app->refresh();
  desktop.time = 1100.0;
  app->refresh();
  desktop.time = 4600.0;
  app->refresh();
  EXPECT_EQ(times(app->history()), (std::vector{1000.0, 1100.0, 4600.0}));
  desktop.time = 4700.5;
  app->refresh();
  EXPECT_EQ(times(app->history()), (std::vector{4600.0, 4700.5}));
}

TEST_F(AppTest, RetainsOldSamplesUntilTheNextIsAdded) {
  app->refresh();
  desktop.time = 4590.0;
  app->refresh();
  desktop.time = 4610.0;  // the first sample is too old, but the last is younger than 30 seconds
  app->refresh();
  EXPECT_EQ(times(app->history()), (std::vector{1000.0, 4590.0}));
  desktop.time = 4620.0;
  app->refresh();
  EXPECT_EQ(times(app->history()), (std::vector{4590.0, 4620.0}));
}

// Animation

TEST_F(AppTest, AnimatesWhileChargingBelowOneHundredPercent) {
  refreshWith(charging);
  EXPECT_TRUE(app->shouldAnimate(app->preferences()));
  EXPECT_EQ(desktop.timerIntervals(), std::vector{0.7});
  refreshWith(charging);
  EXPECT_EQ(desktop.timerIntervals(), std::vector{0.7}) << "the running timer continues";
}

TEST_F(AppTest, DoesNotDelayTheNextFrameOnRefresh) {
  refreshWith(charging);
  desktop.advanceTime(0.5);
  app->refresh();
  desktop.advanceTime(0.3);
  EXPECT_EQ(app->frame(), 1);
  EXPECT_EQ(std::ranges::count(desktop.calls, "timer"), 1);
}

TEST_F(AppTest, ResetsTheFrameOnlyWhenTheAnimationEnds) {
  refreshWith(charging);
  desktop.advanceTime(1.5);
  refreshWith({});
  EXPECT_EQ(app->frame(), 0) << "after the end of the animation";
  desktop.scheduledTicks.at(0)();  // a tick that was pending when the timer was stopped
  EXPECT_EQ(app->frame(), 1);
  app->refresh();
  EXPECT_EQ(app->frame(), 1) << "an animation that is not running does not end";
  refreshWith(charging);
  EXPECT_TRUE(app->isAnimating());
  EXPECT_EQ(app->frame(), 1) << "after the start of the animation";
  EXPECT_EQ(desktop.symbol(), "battery.75percent green") << "the second level of the animation";
}

TEST_F(AppTest, StopsAnimatingAtOneHundredPercentAndResetsTheFrame) {
  refreshWith({.percent = 99, .watts = 5.0, .external = true, .charging = true});
  desktop.advanceTime(2.2);
  EXPECT_EQ(app->frame(), 3);
  refreshWith({.percent = 100, .watts = 5.0, .external = true, .charging = true});
  EXPECT_FALSE(app->isAnimating());
  EXPECT_TRUE(desktop.timerIntervals().empty());
  EXPECT_EQ(app->frame(), 0);
  EXPECT_EQ(desktop.symbol(), "battery.100percent.bolt green");
}

TEST_F(AppTest, DoesNotAnimateWithReducedMotion) {
  desktop.reducedMotion = true;
  refreshWith(charging);
  EXPECT_FALSE(app->isAnimating());
  EXPECT_EQ(desktop.symbol(), "battery.100percent.bolt green");
}

TEST_F(AppTest, StopsAnimatingOnTheFirstRefreshWithReducedMotion) {
  refreshWith(charging);
  desktop.reducedMotion = true;
  EXPECT_TRUE(app->isAnimating());
  app->refresh();
  EXPECT_FALSE(app->isAnimating());
}

TEST_F(AppTest, AnimatesOnlyWhenChargingWithThePreferenceOn) {
  EXPECT_FALSE(app->shouldAnimate(app->preferences()));
  refreshWith({});
  EXPECT_FALSE(app->shouldAnimate(app->preferences()));
  refreshWith({.percent = 100, .external = true, .charging = true});
  EXPECT_FALSE(app->shouldAnimate(app->preferences()));
  refreshWith(charging);
  EXPECT_TRUE(app->shouldAnimate(app->preferences()));
  app->setAnimate(false);
  EXPECT_FALSE(app->shouldAnimate(app->preferences()));
}

TEST_F(AppTest, RedrawsOnlyTheGlyphOnAnAnimationTick) {
  refreshWith(charging);
  const int callCount = battery.callCount;
  desktop.calls.clear();
  desktop.advanceTime(0.7);
  EXPECT_EQ(desktop.calls, Calls{"image"});
  EXPECT_EQ(battery.callCount, callCount);
  EXPECT_EQ(app->frame(), 1);
}

TEST_F(AppTest, ReadsThePreferencesOncePerRefreshMenuOrTick) {
  refreshWith(charging);
  EXPECT_EQ(desktop.preferenceReads, 1);
  app->menu();
  EXPECT_EQ(desktop.preferenceReads, 2);
  desktop.advanceTime(0.7);
  EXPECT_EQ(desktop.preferenceReads, 3);
}

TEST_F(AppTest, ReturnsTheMenuOfTheLastReadingWithoutReadingAgain) {
  EXPECT_EQ(titleOf(app->menu().at(0)), "No battery found");
  refreshWith({});
  setBattery({.percent = 33});
  EXPECT_EQ(titleOf(app->menu().at(1)), "Charge: 64% (0 of 0 mAh)");
  EXPECT_EQ(battery.callCount, 1);
}

TEST_F(AppTest, ShowsTilesForTheModeAndTheColorPreference) {
  using Tiles = std::vector<Tile>;
  const auto tiles = [this] {
    app->refresh();
    return desktop.buttonContents.title.tiles;
  };
  setBattery({.watts = 12.0, .external = true, .charging = true, .minutes = 95});
  EXPECT_EQ(tiles(), (Tiles{{{"64%"}, {"+12.0", SystemColor::green}}}));
  app->setMode(Mode::percentTime);
  EXPECT_EQ(tiles(),
            (Tiles{{{.text = "64", .mark = TileMark{"▲", SystemColor::green}}, {"1:35"}}}));
  app->setUseColor(false);
  EXPECT_EQ(tiles(), (Tiles{{{.text = "64", .mark = TileMark{"▲", {}}}, {"1:35"}}}));
  app->setMode(Mode::percent);
  EXPECT_EQ(tiles(), (Tiles{{{"64%"}, {"▲"}}}));
  app->setMode(Mode::all);
  EXPECT_EQ(tiles(), (Tiles{{{"64%"}, {"▲"}}, {{"+12.0"}, {"1:35"}}}));
}

}  // namespace lumowatt

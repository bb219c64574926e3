// The application's refresh cycle: launch, refresh, history, animation, accessibility.

#include "menubar/app.h"

#include "menubar/app_fixture.h"

namespace lumowatt {

namespace {

using Notes = std::vector<std::string>;

std::vector<double> times(const std::vector<Sample>& history) {
  std::vector<double> all;
  all.reserve(history.size());
  for (const Sample& sample : history) all.push_back(sample.time);
  return all;
}

constexpr BatteryState charging{
    .percent = 50, .watts = 20.0, .external = true, .charging = true, .minutes = 60};

}  // namespace

TEST_F(AppTest, WhenMadeShowsNothingAndRunsNoTimer) {
  EXPECT_TRUE(desktop.notes.empty());
  EXPECT_TRUE(desktop.intervals().empty());
  EXPECT_FALSE(app->last());
  EXPECT_TRUE(app->history().empty());
  EXPECT_EQ(app->frame(), 0);
  EXPECT_EQ(battery.asked, 0);
}

TEST_F(AppTest, LaunchesInOrder) {
  app->applicationDidFinishLaunching();
  EXPECT_EQ(desktop.notes,
            (Notes{"attach menu Lumowatt", "contents", "timer", "watch power sources"}));
  EXPECT_EQ(desktop.intervals(), std::vector{5.0});
  EXPECT_EQ(battery.asked, 1);
}

TEST_F(AppTest, RefreshesEveryFiveSeconds) {
  app->applicationDidFinishLaunching();
  desktop.pass(4.9);
  EXPECT_EQ(battery.asked, 1);
  desktop.pass(0.1);
  EXPECT_EQ(battery.asked, 2);
  desktop.pass(60.0);
  EXPECT_EQ(battery.asked, 14);
}

TEST_F(AppTest, RefreshesWhenAPowerSourceChanges) {
  app->applicationDidFinishLaunching();
  setBattery(charging);
  desktop.changePower();
  EXPECT_EQ(battery.asked, 2);
  EXPECT_EQ(app->last()->percent, 50);
}

TEST_F(AppTest, WithoutNewsOfPowerSourcesLaunchesWithTheTimerAlone) {
  desktop.watchesPower = false;
  app->applicationDidFinishLaunching();
  desktop.changePower();
  EXPECT_EQ(battery.asked, 1);
  desktop.pass(5.0);
  EXPECT_EQ(battery.asked, 2);
}

TEST_F(AppTest, IsHeldWeaklyByWhatCallsIt) {
  setBattery(charging);
  app->applicationDidFinishLaunching();
  ASSERT_EQ(desktop.allTicks.size(), 2U);
  app.reset();
  EXPECT_TRUE(desktop.intervals().empty()) << "its timers end with it";
  const int asked = battery.asked;
  const Notes notes = desktop.notes;
  for (const auto& tick : desktop.allTicks) tick();
  desktop.changePower();
  EXPECT_EQ(battery.asked, asked);
  EXPECT_EQ(desktop.notes, notes);
}

TEST_F(AppTest, ARefreshShowsTheReading) {
  app->refresh();
  EXPECT_EQ(desktop.symbol(), "battery.75percent template");
  EXPECT_EQ(desktop.shown.image->accessibilityDescription, "Battery 64 percent");
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W");
  EXPECT_EQ(desktop.shown.toolTip,
            "On battery\nCharge: 64% (0 of 0 mAh)\nTime to empty: 2 h 15 min\n"
            "Battery power: −8.3 W  (0.00 V, +0.000 A)\nSystem use: 0.0 W\nCycle count: 0");
  EXPECT_EQ(desktop.shown.accessibilityLabel, "Battery 64 percent, On battery, −8.3 W");
  EXPECT_EQ(app->last()->percent, 64);
}

TEST_F(AppTest, TheAccessibilityLabelHasTheSignOfThePower) {
  show({.watts = 0.0});
  EXPECT_TRUE(desktop.shown.accessibilityLabel.ends_with(", +0.0 W"));
  show({.watts = -0.04});
  EXPECT_TRUE(desktop.shown.accessibilityLabel.ends_with(", −0.0 W"));
  show({.percent = 57, .watts = -8.04});
  EXPECT_EQ(desktop.shown.accessibilityLabel, "Battery 57 percent, On battery, −8.0 W");
}

TEST_F(AppTest, WithoutABatterySaysSoAndChangesNothingElse) {
  show(charging);
  desktop.pass(100.0);
  const auto history = times(app->history());
  const std::string symbol = desktop.symbol();
  const std::string toolTip = desktop.shown.toolTip;
  desktop.notes.clear();
  removeBattery();
  app->refresh();
  EXPECT_EQ(desktop.notes, Notes{"title"});
  EXPECT_EQ(desktop.plainTitle(), "No battery");
  EXPECT_EQ(desktop.symbol(), symbol);
  EXPECT_EQ(desktop.shown.toolTip, toolTip);
  EXPECT_EQ(app->last()->percent, 50);
  EXPECT_EQ(times(app->history()), history);
  EXPECT_TRUE(app->isAnimating());
  const std::int64_t frame = app->frame();
  desktop.pass(0.7);
  EXPECT_EQ(app->frame(), frame + 1) << "the animation goes on with the last reading";
}

TEST_F(AppTest, WithoutABatteryAtFirstHasNoReading) {
  removeBattery();
  app->applicationDidFinishLaunching();
  EXPECT_EQ(desktop.plainTitle(), "No battery");
  EXPECT_EQ(desktop.symbol(), "none");
  EXPECT_FALSE(app->last());
  EXPECT_TRUE(app->history().empty());
  setBattery({});
  desktop.pass(5.0);
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W");
}

TEST_F(AppTest, WithoutAButtonStillReadsAndRemembers) {
  desktop.hasButton = false;
  show(charging);
  EXPECT_EQ(app->last()->percent, 50);
  EXPECT_EQ(app->history().size(), 1U);
  EXPECT_TRUE(desktop.notes.empty());
  EXPECT_FALSE(app->isAnimating());
  removeBattery();
  app->refresh();
  EXPECT_TRUE(desktop.notes.empty());
}

TEST_F(AppTest, WithoutAButtonAnymoreTheAnimationCountsOn) {
  show(charging);
  desktop.hasButton = false;
  desktop.notes.clear();
  desktop.pass(1.5);
  EXPECT_EQ(app->frame(), 2);
  EXPECT_TRUE(desktop.notes.empty());
}

// History

TEST_F(AppTest, TheFirstRefreshGivesTheFirstSample) {
  app->refresh();
  ASSERT_EQ(app->history().size(), 1U);
  EXPECT_EQ(app->history()[0].time, 1000.0);
  EXPECT_EQ(app->history()[0].percent, 64);
}

TEST_F(AppTest, SamplesAreThirtySecondsApartAtLeast) {
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

TEST_F(AppTest, ASampleOfExactlyAnHourIsKeptAndAnOlderOneDropped) {
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

TEST_F(AppTest, OldSamplesStayUntilTheNextIsAdded) {
  app->refresh();
  desktop.time = 4590.0;
  app->refresh();
  desktop.time = 4610.0;  // the first is older than an hour, but the last younger than 30 seconds
  app->refresh();
  EXPECT_EQ(times(app->history()), (std::vector{1000.0, 4590.0}));
  desktop.time = 4620.0;
  app->refresh();
  EXPECT_EQ(times(app->history()), (std::vector{4590.0, 4620.0}));
}

// Animation

TEST_F(AppTest, AnimatesWhileChargingBelowAHundred) {
  show(charging);
  EXPECT_TRUE(app->shouldAnimate(app->preferences()));
  EXPECT_EQ(desktop.intervals(), std::vector{0.7});
  show(charging);
  EXPECT_EQ(desktop.intervals(), std::vector{0.7}) << "the running timer goes on";
}

TEST_F(AppTest, ARefreshDoesNotDelayTheNextFrame) {
  show(charging);
  desktop.pass(0.5);
  app->refresh();
  desktop.pass(0.3);
  EXPECT_EQ(app->frame(), 1);
  EXPECT_EQ(std::ranges::count(desktop.notes, "timer"), 1);
}

TEST_F(AppTest, KeepsItsFrameUntilAnAnimationEnds) {
  show(charging);
  desktop.pass(1.5);
  show({});
  EXPECT_EQ(app->frame(), 0) << "the end of the animation";
  desktop.allTicks.at(0)();  // was on its way as the timer ended
  EXPECT_EQ(app->frame(), 1);
  app->refresh();
  EXPECT_EQ(app->frame(), 1) << "what does not run does not end";
  show(charging);
  EXPECT_TRUE(app->isAnimating());
  EXPECT_EQ(app->frame(), 1) << "the start of the animation";
  EXPECT_EQ(desktop.symbol(), "battery.75percent green") << "the second of its levels";
}

TEST_F(AppTest, EndsTheAnimationAtAHundredAndBeginsAtFrameZeroAgain) {
  show({.percent = 99, .watts = 5.0, .external = true, .charging = true});
  desktop.pass(2.2);
  EXPECT_EQ(app->frame(), 3);
  show({.percent = 100, .watts = 5.0, .external = true, .charging = true});
  EXPECT_FALSE(app->isAnimating());
  EXPECT_TRUE(desktop.intervals().empty());
  EXPECT_EQ(app->frame(), 0);
  EXPECT_EQ(desktop.symbol(), "battery.100percent.bolt green");
}

TEST_F(AppTest, DoesNotAnimateWithReducedMotion) {
  desktop.reducedMotion = true;
  show(charging);
  EXPECT_FALSE(app->isAnimating());
  EXPECT_EQ(desktop.symbol(), "battery.100percent.bolt green");
}

TEST_F(AppTest, StopsAnimatingAtTheRefreshThatSeesReducedMotion) {
  show(charging);
  desktop.reducedMotion = true;
  EXPECT_TRUE(app->isAnimating());
  app->refresh();
  EXPECT_FALSE(app->isAnimating());
}

TEST_F(AppTest, DoesNotAnimateWithoutThePreferenceTheChargeOrAReading) {
  EXPECT_FALSE(app->shouldAnimate(app->preferences()));
  show({});
  EXPECT_FALSE(app->shouldAnimate(app->preferences()));
  show({.percent = 100, .external = true, .charging = true});
  EXPECT_FALSE(app->shouldAnimate(app->preferences()));
  show(charging);
  EXPECT_TRUE(app->shouldAnimate(app->preferences()));
  app->setAnimate(false);
  EXPECT_FALSE(app->shouldAnimate(app->preferences()));
}

TEST_F(AppTest, ATickRedrawsTheGlyphAloneAndReadsNothing) {
  show(charging);
  const int asked = battery.asked;
  desktop.notes.clear();
  desktop.pass(0.7);
  EXPECT_EQ(desktop.notes, Notes{"image"});
  EXPECT_EQ(battery.asked, asked);
  EXPECT_EQ(app->frame(), 1);
}

TEST_F(AppTest, ReadsThePreferencesOnceForARefreshAMenuOrATick) {
  show(charging);
  EXPECT_EQ(desktop.preferenceReadings, 1);
  app->menu();
  EXPECT_EQ(desktop.preferenceReadings, 2);
  desktop.pass(0.7);
  EXPECT_EQ(desktop.preferenceReadings, 3);
}

TEST_F(AppTest, TheMenuIsOfTheLastReadingAndTakesNone) {
  EXPECT_EQ(titleOf(app->menu().at(0)), "No battery found");
  show({});
  setBattery({.percent = 33});
  EXPECT_EQ(titleOf(app->menu().at(1)), "Charge: 64% (0 of 0 mAh)");
  EXPECT_EQ(battery.asked, 1);
}

TEST_F(AppTest, TheTitleHasTheTilesOfTheModeAndTheColors) {
  using Tiles = std::vector<Tile>;
  const auto tiles = [this] {
    app->refresh();
    return desktop.shown.title.tiles;
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

// Scenarios in which the battery or the preferences change over time.

#include "menubar/app_fixture.h"

namespace lumowatt {

using AppScenario = AppTest;

TEST_F(AppScenario, RecordsTheLastOfThreeHoursOfDischarge) {
  // Three hours of discharge from 100 %, by one percentage point every two minutes.
  setBattery({.percent = 100});
  app->applicationDidFinishLaunching();
  for (int minute = 2; minute <= 180; minute += 2) {
    desktop.advanceTime(119.0);
    setBattery({.percent = 100 - minute / 2});
    desktop.advanceTime(1.0);
  }
  EXPECT_EQ(battery.callCount, 1 + 3 * 3600 / 5);
  EXPECT_EQ(desktop.plainTitle(), " 10% ▼ −8.3 W");
  EXPECT_EQ(desktop.symbol(), "battery.0percent red");

  // The history contains a sample for every 30 seconds of the last hour, including both ends.
  const std::vector<Sample>& history = app->history();
  ASSERT_EQ(history.size(), 121U);
  EXPECT_EQ(history.front().time, 1000.0 + 2 * 3600.0);
  EXPECT_EQ(history.front().percent, 40);
  EXPECT_EQ(history.back().time, 1000.0 + 3 * 3600.0);
  EXPECT_EQ(history.back().percent, 10);
  for (std::size_t i = 1; i < history.size(); ++i) {
    EXPECT_EQ(history[i].time - history[i - 1].time, 30.0);
    EXPECT_LE(history[i].percent, history[i - 1].percent);
  }
}

TEST_F(AppScenario, AnimatesUntilFullAndDetectsUnplugging) {
  BatteryState state{.percent = 96};
  setBattery(state);
  app->applicationDidFinishLaunching();
  EXPECT_EQ(desktop.symbol(), "battery.100percent template");

  // Plug in the charger. The item shows the change immediately.
  state = {.percent = 96, .watts = 30.0, .external = true, .charging = true, .minutes = 12};
  setBattery(state);
  desktop.reportPowerSourceChange();
  EXPECT_EQ(desktop.plainTitle(), " 96% ▲ +30.0 W");
  EXPECT_EQ(desktop.symbol(), "battery.100percent green") << "the only frame above 86 %";
  EXPECT_TRUE(app->isAnimating());
  EXPECT_TRUE(desktop.buttonContents.toolTip.starts_with("Charging\n"));

  while (state.percent < 100) {
    desktop.advanceTime(60.0);
    EXPECT_TRUE(app->isAnimating()) << state.percent;
    EXPECT_GT(app->frame(), 80);
    ++state.percent;
    setBattery(state);
  }
  desktop.advanceTime(5.0);
  EXPECT_FALSE(app->isAnimating());
  EXPECT_EQ(app->frame(), 0);
  EXPECT_EQ(desktop.symbol(), "battery.100percent.bolt green");

  setBattery({.percent = 100, .watts = 0.0, .external = true, .full = true});
  desktop.advanceTime(5.0);
  EXPECT_EQ(desktop.symbol(), "battery.100percent.bolt green");
  EXPECT_EQ(desktop.plainTitle(), " 100% • +0.0 W");

  // Unplug the charger.
  setBattery({.percent = 100, .watts = -18.0});
  desktop.reportPowerSourceChange();
  EXPECT_EQ(desktop.symbol(), "battery.100percent template");
  EXPECT_EQ(desktop.plainTitle(), " 100% ▼ −18.0 W");
  EXPECT_EQ(desktop.buttonContents.title.text[1].color, systemOrange);
  EXPECT_EQ(desktop.timerIntervals(), std::vector{5.0});
}

TEST_F(AppScenario, ShowsABatteryThatIsRemovedAndReinserted) {
  app->applicationDidFinishLaunching();
  desktop.advanceTime(60.0);
  EXPECT_EQ(app->history().size(), 3U);
  removeBattery();
  desktop.advanceTime(60.0);
  EXPECT_EQ(desktop.plainTitle(), "No battery");
  EXPECT_EQ(desktop.symbol(), "battery.75percent template");
  EXPECT_EQ(app->history().size(), 3U);
  setBattery({.percent = 60});
  desktop.advanceTime(5.0);
  EXPECT_EQ(desktop.plainTitle(), " 60% ▼ −8.3 W");
  EXPECT_EQ(desktop.symbol(), "battery.50percent template");
  EXPECT_EQ(app->history().size(), 4U);
}

TEST_F(AppScenario, ContinuesTheHistoryWithAReplacedBattery) {
  setBattery({.percent = 80});
  app->applicationDidFinishLaunching();
  desktop.advanceTime(60.0);
  setBattery({.percent = 20, .watts = -5.0});
  desktop.advanceTime(30.0);
  EXPECT_EQ(desktop.plainTitle(), " 20% ▼ −5.0 W");
  EXPECT_TRUE(desktop.buttonContents.accessibilityLabel.starts_with("Battery 20 percent"));
  // The history contains the charge of both batteries.
  std::vector<std::int64_t> charges;
  for (const Sample& sample : app->history()) charges.push_back(sample.percent);
  EXPECT_EQ(charges, (std::vector<std::int64_t>{80, 80, 80, 20}));
}

TEST_F(AppScenario, AppliesPreferencesFromTheMenuWhileCharging) {
  setBattery({.percent = 40, .watts = 20.0, .external = true, .charging = true, .minutes = 90});
  app->applicationDidFinishLaunching();
  EXPECT_EQ(desktop.plainTitle(), " 40% ▲ +20.0 W");
  chooseItem("Percent and time");
  EXPECT_EQ(desktop.plainTitle(), " 40% ▲ 1:30");
  EXPECT_EQ(desktop.buttonContents.title.text[1].color, systemGreen);
  chooseItem("Colors");
  EXPECT_EQ(desktop.buttonContents.title.text[1].color, Color(SystemColor::label));
  EXPECT_EQ(desktop.symbol(), "battery.50percent green") << "the animation remains green";
  chooseItem("Charging animation");
  EXPECT_EQ(desktop.symbol(), "battery.100percent.bolt template");
  EXPECT_EQ(desktop.timerIntervals(), std::vector{5.0});
  chooseItem("Colors");
  chooseItem("Charging animation");
  chooseItem("Percent");
  EXPECT_EQ(desktop.plainTitle(), " 40% ▲");
  EXPECT_EQ(desktop.symbol(), "battery.50percent green");
  EXPECT_EQ(desktop.store, (std::map<std::string, std::string, std::less<>>{
                               {"animate", "true"}, {"color", "true"}, {"mode", "0"}}));
}

TEST_F(AppScenario, RemovesOldSamplesAfterANightOfSleep) {
  app->applicationDidFinishLaunching();
  desktop.advanceTime(1800.0);
  EXPECT_EQ(app->history().size(), 61U);
  desktop.time += 8 * 3600.0;  // no timer ticks during sleep
  setBattery({.percent = 61});
  app->refresh();
  ASSERT_EQ(app->history().size(), 1U) << "samples older than an hour are removed";
  EXPECT_EQ(app->history()[0].percent, 61);
}

}  // namespace lumowatt

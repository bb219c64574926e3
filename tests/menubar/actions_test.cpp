// The menu as the application builds it, and what its items do.

#include "menubar/app_fixture.h"

namespace lumowatt {

namespace {

using Actions = AppTest;
using Notes = std::vector<std::string>;

/// How often each of the login item's calls was made.
std::ptrdiff_t count(const Notes& notes, const std::string& note) {
  return std::ranges::count(notes, note);
}

}  // namespace

TEST_F(Actions, TheMenuIsOfAFreshReading) {
  app->refresh();
  setBattery({.percent = 33});
  app->menuWillOpen();
  EXPECT_EQ(battery.asked, 2);
  EXPECT_EQ(app->menu()[1].title, "Charge: 33% (0 of 0 mAh)");
  EXPECT_EQ(desktop.plainTitle(), " 33% ▼ −8.3 W") << "and so is the title";
}

TEST_F(Actions, TheMenuIsBuiltAnewEachTime) {
  app->menuWillOpen();
  const std::size_t size = app->menu().size();
  app->menuWillOpen();
  EXPECT_EQ(app->menu().size(), size);
}

TEST_F(Actions, WithoutABatteryTheMenuHasOneItem) {
  removeBattery();
  app->menuWillOpen();
  ASSERT_EQ(app->menu().size(), 1U);
  EXPECT_EQ(app->menu()[0].title, "No battery found");
}

TEST_F(Actions, WithoutABatteryAnymoreTheMenuIsOfTheLastReading) {
  app->refresh();
  removeBattery();
  app->menuWillOpen();
  EXPECT_EQ(app->menu()[1].title, "Charge: 64% (0 of 0 mAh)");
  EXPECT_EQ(desktop.plainTitle(), "No battery");
}

TEST_F(Actions, TheMenuTellsTheVersion) {
  app->menuWillOpen();
  EXPECT_EQ(item("Lumowatt 1.0.0, by Fernhollow").action, Action::none);
}

TEST_F(Actions, PickingAModeStoresItAndChangesTheTitle) {
  choose("Percent, power and time");
  EXPECT_EQ(desktop.preferences["mode"], "3");
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W · 2:15");
  choose("Percent");
  EXPECT_EQ(desktop.preferences["mode"], "0");
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼");
  app->menuWillOpen();
  EXPECT_TRUE(item("Percent").isOn);
  EXPECT_FALSE(item("Percent, power and time").isOn);
}

TEST_F(Actions, WithAStoredModeOutOfRangeTheDefaultIsCheckedAndPercentCanBePicked) {
  desktop.preferences["mode"] = "7";
  app->menuWillOpen();
  EXPECT_TRUE(item("Percent and battery power").isOn);
  choose("Percent");
  EXPECT_EQ(desktop.preferences["mode"], "0");
}

TEST_F(Actions, PickingWithATagOutOfRangeDoesNothing) {
  for (const std::int64_t tag : {-1, 4, 99}) {
    app->pick({.action = Action::pick, .tag = tag});
    EXPECT_FALSE(desktop.preferences.contains("mode")) << tag;
  }
  EXPECT_EQ(battery.asked, 0);
}

TEST_F(Actions, TheFirstToggleOfAPreferenceStoresFalse) {
  app->menuWillOpen();
  EXPECT_TRUE(item("Colors").isOn);
  choose("Colors");
  EXPECT_EQ(desktop.preferences["color"], "false");
  app->menuWillOpen();
  EXPECT_FALSE(item("Colors").isOn);
  choose("Colors");
  EXPECT_EQ(desktop.preferences["color"], "true");
}

TEST_F(Actions, TogglingColorsChangesTheItemAtOnce) {
  setBattery({.percent = 8});
  choose("Colors");
  EXPECT_EQ(desktop.symbol(), "battery.0percent template");
  choose("Colors");
  EXPECT_EQ(desktop.symbol(), "battery.0percent red");
}

TEST_F(Actions, TogglingTheAnimationStartsAndStopsIt) {
  setBattery({.percent = 50, .watts = 20.0, .external = true, .charging = true});
  choose("Charging animation");
  EXPECT_EQ(desktop.preferences["animate"], "false");
  EXPECT_FALSE(app->isAnimating());
  EXPECT_EQ(desktop.symbol(), "battery.100percent.bolt green");
  choose("Charging animation");
  EXPECT_TRUE(app->isAnimating());
}

TEST_F(Actions, CopiesTheDetailsOfTheLastReading) {
  app->refresh();
  setBattery({.percent = 33});
  app->copyDetails();
  EXPECT_EQ(battery.asked, 1) << "no new reading is taken";
  EXPECT_EQ(desktop.pasteboard,
            "On battery\nCharge: 64% (0 of 0 mAh)\nTime to empty: 2 h 15 min\n"
            "Battery power: −8.3 W  (0.00 V, +0.000 A)\nSystem use: 0.0 W\nCycle count: 0");
}

TEST_F(Actions, CopiesTheDetailsThatTheMenuShows) {
  setBattery({.percent = 33});
  choose("Copy details");
  EXPECT_TRUE(desktop.pasteboard.starts_with("On battery\nCharge: 33% (0 of 0 mAh)\n"))
      << desktop.pasteboard;
}

TEST_F(Actions, WithoutAReadingLeavesThePasteboardAsItIs) {
  app->copyDetails();
  EXPECT_EQ(desktop.pasteboard, "(untouched)");
}

TEST_F(Actions, RegistersTheLoginItemInEveryStateButEnabled) {
  for (const LoginItemStatus status :
       {LoginItemStatus::notRegistered, LoginItemStatus::requiresApproval,
        LoginItemStatus::notFound}) {
    desktop.notes.clear();
    desktop.loginItem = status;
    app->menuWillOpen();
    EXPECT_FALSE(item("Open at login").isOn);
    choose("Open at login");
    EXPECT_EQ(count(desktop.notes, "register login item"), 1);
    EXPECT_EQ(count(desktop.notes, "unregister login item"), 0);
    EXPECT_EQ(desktop.loginItem, LoginItemStatus::enabled);
  }
  app->menuWillOpen();
  EXPECT_TRUE(item("Open at login").isOn);
}

TEST_F(Actions, UnregistersTheLoginItemWhenItIsEnabled) {
  desktop.loginItem = LoginItemStatus::enabled;
  choose("Open at login");
  EXPECT_EQ(count(desktop.notes, "unregister login item"), 1);
  EXPECT_EQ(count(desktop.notes, "register login item"), 0);
  EXPECT_EQ(desktop.loginItem, LoginItemStatus::notRegistered);
  EXPECT_EQ(count(desktop.notes, "beep"), 0);
}

TEST_F(Actions, BeepsWhenTheLoginItemCannotBeChanged) {
  desktop.refusesLogin = true;
  app->toggleLogin();
  EXPECT_EQ(desktop.notes, (Notes{"register login item", "beep"}));
  desktop.loginItem = LoginItemStatus::enabled;
  app->toggleLogin();
  EXPECT_EQ(desktop.notes, (Notes{"register login item", "beep", "unregister login item", "beep"}));
  EXPECT_EQ(battery.asked, 0) << "no refresh follows";
}

TEST_F(Actions, OpensTheBatterySettings) {
  app->perform({.action = Action::openSettings});
  EXPECT_EQ(desktop.notes, Notes{"open battery settings"});
}

TEST_F(Actions, LinesAndTheQuitItemAreNotTheApplicationsToPerform) {
  app->perform({.action = Action::none});
  app->perform({.action = Action::terminate});
  EXPECT_TRUE(desktop.notes.empty());
  EXPECT_TRUE(desktop.preferences.empty());
}

}  // namespace lumowatt

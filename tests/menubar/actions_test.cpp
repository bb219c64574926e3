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
  open();
  EXPECT_EQ(battery.asked, 2);
  EXPECT_EQ(titleOf(menu[1]), "Charge: 33% (0 of 0 mAh)");
  EXPECT_EQ(desktop.plainTitle(), " 33% ▼ −8.3 W") << "and so is the title";
}

TEST_F(Actions, TheMenuIsBuiltAnewEachTime) {
  open();
  const std::size_t size = menu.size();
  open();
  EXPECT_EQ(menu.size(), size);
}

TEST_F(Actions, WithoutABatteryTheMenuHasOneItem) {
  removeBattery();
  open();
  ASSERT_EQ(menu.size(), 1U);
  EXPECT_EQ(titleOf(menu[0]), "No battery found");
}

TEST_F(Actions, WithoutABatteryAnymoreTheMenuIsOfTheLastReading) {
  app->refresh();
  removeBattery();
  open();
  EXPECT_EQ(titleOf(menu[1]), "Charge: 64% (0 of 0 mAh)");
  EXPECT_EQ(desktop.plainTitle(), "No battery");
}

TEST_F(Actions, TheMenuTellsTheVersion) {
  open();
  EXPECT_EQ(choiceOf(item("Lumowatt 1.0.0, by Fernhollow")), nullptr);
}

TEST_F(Actions, PickingAModeStoresItAndChangesTheTitle) {
  choose("Percent, power and time");
  EXPECT_EQ(desktop.store["mode"], "3");
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W · 2:15");
  choose("Percent");
  EXPECT_EQ(desktop.store["mode"], "0");
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼");
  open();
  EXPECT_TRUE(isOn(item("Percent")));
  EXPECT_FALSE(isOn(item("Percent, power and time")));
}

TEST_F(Actions, WithAStoredModeOutOfRangeTheDefaultIsCheckedAndPercentCanBePicked) {
  desktop.store["mode"] = "7";
  open();
  EXPECT_TRUE(isOn(item("Percent and battery power")));
  choose("Percent");
  EXPECT_EQ(desktop.store["mode"], "0");
}

TEST_F(Actions, PickingWithATagOutOfRangeDoesNothing) {
  for (const std::int64_t tag : {-1, 4, 99}) {
    app->pick(tag);
    EXPECT_FALSE(desktop.store.contains("mode")) << tag;
  }
  EXPECT_EQ(battery.asked, 0);
}

TEST_F(Actions, TheFirstToggleOfAPreferenceStoresFalse) {
  open();
  EXPECT_TRUE(isOn(item("Colors")));
  choose("Colors");
  EXPECT_EQ(desktop.store["color"], "false");
  open();
  EXPECT_FALSE(isOn(item("Colors")));
  choose("Colors");
  EXPECT_EQ(desktop.store["color"], "true");
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
  EXPECT_EQ(desktop.store["animate"], "false");
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
    open();
    EXPECT_FALSE(isOn(item("Open at login")));
    choose("Open at login");
    EXPECT_EQ(count(desktop.notes, "register login item"), 1);
    EXPECT_EQ(count(desktop.notes, "unregister login item"), 0);
    EXPECT_EQ(desktop.loginItem, LoginItemStatus::enabled);
  }
  open();
  EXPECT_TRUE(isOn(item("Open at login")));
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
  app->perform({Action::openSettings});
  EXPECT_EQ(desktop.notes, Notes{"open battery settings"});
}

TEST_F(Actions, TheDesktopsOwnActionsAreNotTheApplicationsToPerform) {
  app->perform({Action::showChart});
  app->perform({Action::terminate});
  EXPECT_TRUE(desktop.notes.empty());
  EXPECT_TRUE(desktop.store.empty());
}

}  // namespace lumowatt

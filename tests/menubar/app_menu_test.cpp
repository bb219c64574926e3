// The menu of the application and the actions of its items.

#include "menubar/app_fixture.h"

namespace lumowatt {

namespace {

using AppMenu = AppTest;
using Calls = std::vector<std::string>;

/// Returns how often `call` occurs.
std::ptrdiff_t count(const Calls& calls, const std::string& call) {
  return std::ranges::count(calls, call);
}

}  // namespace

TEST_F(AppMenu, ShowsANewReadingWhenOpened) {
  app->refresh();
  setBattery({.percent = 33});
  openMenu();
  EXPECT_EQ(battery.callCount, 2);
  EXPECT_EQ(titleOf(menu[1]), "Charge: 33% (0 of 0 mAh)");
  EXPECT_EQ(desktop.plainTitle(), " 33% ▼ −8.3 W") << "the title shows the new reading too";
}

TEST_F(AppMenu, IsRebuiltEachTimeItOpens) {
  openMenu();
  const std::size_t size = menu.size();
  openMenu();
  EXPECT_EQ(menu.size(), size);
}

TEST_F(AppMenu, HasOneItemWithoutABattery) {
  removeBattery();
  openMenu();
  ASSERT_EQ(menu.size(), 1U);
  EXPECT_EQ(titleOf(menu[0]), "No battery found");
}

TEST_F(AppMenu, ShowsTheLastReadingAfterTheBatteryDisappears) {
  app->refresh();
  removeBattery();
  openMenu();
  EXPECT_EQ(titleOf(menu[1]), "Charge: 64% (0 of 0 mAh)");
  EXPECT_EQ(desktop.plainTitle(), "No battery");
}

TEST_F(AppMenu, ShowsTheVersion) {
  openMenu();
  EXPECT_EQ(choiceOf(item("Lumowatt 1.0.0, by Fernhollow")), nullptr);
}

TEST_F(AppMenu, StoresTheSelectedModeAndUpdatesTheTitle) {
  chooseItem("Percent, power and time");
  EXPECT_EQ(desktop.store["mode"], "3");
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W · 2:15");
  chooseItem("Percent");
  EXPECT_EQ(desktop.store["mode"], "0");
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼");
  openMenu();
  EXPECT_TRUE(isOn(item("Percent")));
  EXPECT_FALSE(isOn(item("Percent, power and time")));
}

TEST_F(AppMenu, ChecksTheDefaultModeWhenTheStoredModeIsOutOfRange) {
  desktop.store["mode"] = "7";
  openMenu();
  EXPECT_TRUE(isOn(item("Percent and battery power")));
  chooseItem("Percent");
  EXPECT_EQ(desktop.store["mode"], "0");
}

TEST_F(AppMenu, IgnoresModeTagsOutOfRange) {
  for (const std::int64_t tag : {-1, 4, 99}) {
    app->pick(tag);
    EXPECT_FALSE(desktop.store.contains("mode")) << tag;
  }
  EXPECT_EQ(battery.callCount, 0);
}

TEST_F(AppMenu, StoresFalseOnTheFirstToggleOfAPreference) {
  openMenu();
  EXPECT_TRUE(isOn(item("Colors")));
  chooseItem("Colors");
  EXPECT_EQ(desktop.store["color"], "false");
  openMenu();
  EXPECT_FALSE(isOn(item("Colors")));
  chooseItem("Colors");
  EXPECT_EQ(desktop.store["color"], "true");
}

TEST_F(AppMenu, UpdatesTheGlyphImmediatelyWhenTogglingColors) {
  setBattery({.percent = 8});
  chooseItem("Colors");
  EXPECT_EQ(desktop.symbol(), "battery.0percent template");
  chooseItem("Colors");
  EXPECT_EQ(desktop.symbol(), "battery.0percent red");
}

TEST_F(AppMenu, StopsAndStartsTheAnimationWhenToggled) {
  setBattery({.percent = 50, .watts = 20.0, .external = true, .charging = true});
  chooseItem("Charging animation");
  EXPECT_EQ(desktop.store["animate"], "false");
  EXPECT_FALSE(app->isAnimating());
  EXPECT_EQ(desktop.symbol(), "battery.100percent.bolt green");
  chooseItem("Charging animation");
  EXPECT_TRUE(app->isAnimating());
}

TEST_F(AppMenu, CopiesTheDetailsOfTheLastReading) {
  app->refresh();
  setBattery({.percent = 33});
  app->copyDetails();
  EXPECT_EQ(battery.callCount, 1) << "the battery is not read again";
  EXPECT_EQ(desktop.pasteboard,
            "On battery\nCharge: 64% (0 of 0 mAh)\nTime to empty: 2 h 15 min\n"
            "Battery power: −8.3 W  (0.00 V, +0.000 A)\nSystem use: 0.0 W\nCycle count: 0");
}

TEST_F(AppMenu, CopiesTheDetailsThatItShows) {
  setBattery({.percent = 33});
  chooseItem("Copy details");
  EXPECT_TRUE(desktop.pasteboard.starts_with("On battery\nCharge: 33% (0 of 0 mAh)\n"))
      << desktop.pasteboard;
}

TEST_F(AppMenu, LeavesThePasteboardUnchangedWithoutAReading) {
  app->copyDetails();
  EXPECT_EQ(desktop.pasteboard, "(untouched)");
}

TEST_F(AppMenu, RegistersTheLoginItemUnlessItIsEnabled) {
  for (const LoginItemStatus status :
       {LoginItemStatus::notRegistered, LoginItemStatus::requiresApproval,
        LoginItemStatus::notFound}) {
    desktop.calls.clear();
    desktop.loginItem = status;
    openMenu();
    EXPECT_FALSE(isOn(item("Open at login")));
    chooseItem("Open at login");
    EXPECT_EQ(count(desktop.calls, "register login item"), 1);
    EXPECT_EQ(count(desktop.calls, "unregister login item"), 0);
    EXPECT_EQ(desktop.loginItem, LoginItemStatus::enabled);
  }
  openMenu();
  EXPECT_TRUE(isOn(item("Open at login")));
}

TEST_F(AppMenu, UnregistersTheLoginItemWhenItIsEnabled) {
  desktop.loginItem = LoginItemStatus::enabled;
  chooseItem("Open at login");
  EXPECT_EQ(count(desktop.calls, "unregister login item"), 1);
  EXPECT_EQ(count(desktop.calls, "register login item"), 0);
  EXPECT_EQ(desktop.loginItem, LoginItemStatus::notRegistered);
  EXPECT_EQ(count(desktop.calls, "beep"), 0);
}

TEST_F(AppMenu, BeepsWhenTheLoginItemCannotBeChanged) {
  desktop.isLoginItemReadOnly = true;
  app->toggleLogin();
  EXPECT_EQ(desktop.calls, (Calls{"register login item", "beep"}));
  desktop.loginItem = LoginItemStatus::enabled;
  app->toggleLogin();
  EXPECT_EQ(desktop.calls, (Calls{"register login item", "beep", "unregister login item", "beep"}));
  EXPECT_EQ(battery.callCount, 0) << "no refresh follows";
}

TEST_F(AppMenu, OpensTheBatterySettings) {
  app->perform({Action::openSettings});
  EXPECT_EQ(desktop.calls, Calls{"open battery settings"});
}

TEST_F(AppMenu, IgnoresActionsThatTheDesktopPerforms) {
  app->perform({Action::showChart});
  app->perform({Action::terminate});
  EXPECT_TRUE(desktop.calls.empty());
  EXPECT_TRUE(desktop.store.empty());
}

}  // namespace lumowatt

#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "fakes/fake_desktop.h"
#include "fakes/scripted_battery.h"
#include "menubar/app.h"
#include "support/menu_items.h"

namespace lumowatt {

/// State of a battery. By default, it is at 64 % and drains at 8.34 W.
struct BatteryState {
  std::int64_t percent = 64;
  double watts = -8.34;
  bool external = false;
  bool charging = false;
  bool full = false;
  std::optional<std::int64_t> minutes = 135;
};

/// Returns the properties that the battery service reports in this state.
PropertyDictionary properties(const BatteryState& state);

/// Application on a fake desktop with a scripted battery.
class AppTest : public testing::Test {
 protected:
  AppTest();

  /// Sets the state of the battery for the following readings.
  void setBattery(const BatteryState& state) { battery.set(properties(state)); }
  void removeBattery() { battery.set(std::nullopt); }

  /// Sets the state of the battery and refreshes the application.
  void refreshWith(const BatteryState& state);

  void openMenu() { menu = app->menuWillOpen(); }

  /// Returns the item with this title from the opened menu. Fails the test if it is missing.
  MenuItem item(const std::string& title) const;

  /// Opens the menu and performs the action of the item with this title.
  void chooseItem(const std::string& title);

  FakeDesktop desktop;
  ScriptedBattery battery;
  std::shared_ptr<App> app;
  Menu menu;  ///< the most recently opened menu
};

}  // namespace lumowatt

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

/// A battery in words; 64 %, draining at 8.34 W, unless told otherwise.
struct BatteryState {
  std::int64_t percent = 64;
  double watts = -8.34;
  bool external = false;
  bool charging = false;
  bool full = false;
  std::optional<std::int64_t> minutes = 135;
};

PropertyDictionary properties(const BatteryState& state);

/// An application on a fake desktop.
class AppTest : public testing::Test {
 protected:
  AppTest();

  /// What the battery is from the next reading on.
  void setBattery(const BatteryState& state) { battery.set(properties(state)); }
  void removeBattery() { battery.set(std::nullopt); }

  /// The same, seen at once.
  void show(const BatteryState& state);

  /// Opens the menu.
  void open() { menu = app->menuWillOpen(); }

  /// The item of the opened menu with that title; fails the test when there is none.
  MenuItem item(const std::string& title) const;

  /// Opens the menu and chooses an item.
  void choose(const std::string& title);

  FakeDesktop desktop;
  ScriptedBattery battery;
  std::shared_ptr<App> app;
  Menu menu;  ///< as it was opened last
};

}  // namespace lumowatt

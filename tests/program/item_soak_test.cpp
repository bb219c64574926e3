#include <algorithm>
#include <chrono>
#include <thread>

#include "program/item_fixture.h"
#include "program/menu_ids.h"
#include "program/process_name.h"
#include "support/open_counter.h"

namespace lumowatt {

namespace {

constexpr int refreshesPerHour = 3600 / 5;

/// The item with time in a hurry, in a panel that shows the title as icons.
class Hour : public ItemTest {
 protected:
  Hour() : name_("panel-2-systray") {}

  /// Starts the item in a time that is 360 times as fast.
  void startInAHurry() {
    item = startAnother(LUMOWATT_HURRYING_CLOCK);
    panel->waitForItems(2);
    counter_.watch(machine.powerSupplyFolder() / "BAT0");
  }

  /// Uses the item for so many refreshes: the charge falls, the charger comes and goes, and now and
  /// then the menu is opened and something chosen.
  void use(int refreshes) {
    for (; refreshes > 0; --refreshes) {
      panel->waitUntil([this] { return counter_.opened().contains("energy_full"); });
      machine.set("BAT0/capacity", std::to_string(20 + refreshes % 70));
      machine.set("BAT0/power_now", std::to_string(4'000'000 + refreshes * 10'000));
      machine.set("AC/online", refreshes / 50 % 2 == 0 ? "0" : "1");
      machine.set("BAT0/status", refreshes / 50 % 2 == 0 ? "Discharging" : "Charging");
      if (refreshes % 10 == 0) panel->open();
      if (refreshes % 30 == 0) panel->click(menu_id::percent + refreshes / 30 % 4);
      panel->forgetSignals();
    }
  }

  /// How many files the item has open that it does not open just for a reading.
  long lastingFiles() const {
    long least = item->openFiles();
    for (int i = 0; i < 50; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(3));
      least = std::min<long>(least, item->openFiles());
    }
    return least;
  }

 private:
  ProcessName name_;
  OpenCounter counter_;
};

}  // namespace

TEST_F(Hour, LeavesMemoryAndDescriptorsAsTheyWereAndEndsWithAChart) {
  startInAHurry();
  use(refreshesPerHour * 5 / 4);  // the history is as long as it gets
  const long memory = item->residentMemory();
  const long files = lastingFiles();
  use(refreshesPerHour);
  EXPECT_EQ(lastingFiles(), files);
  if (!sanitized) {
    EXPECT_LE(item->residentMemory(), memory + 64);
  }
  panel->open();
  const std::string chart = panel->menuProperty(menu_id::chart, "label");
  EXPECT_TRUE(chart.ends_with("%")) << chart;
}

}  // namespace lumowatt

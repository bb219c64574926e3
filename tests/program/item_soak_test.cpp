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

/// Fixture for an item with an accelerated clock, in a panel that shows the title as icons.
class LongRunningItem : public ItemTest {
 protected:
  LongRunningItem() : name_("panel-2-systray") {}

  /// Starts the program with a clock that is 360 times as fast.
  void startAccelerated() {
    item = startProcess(LUMOWATT_ACCELERATED_CLOCK);
    panel->waitForItems(2);
    counter_.watch(machine.powerSupplyFolder() / "BAT0");
  }

  /// Uses the item for a number of refreshes. Changes the charge and the power at each of them, and
  /// connects or disconnects the charger at every 50th. Opens the menu at every 10th refresh, and
  /// chooses a mode at every 30th.
  void use(int refreshes) {
    for (; refreshes > 0; --refreshes) {
      panel->waitUntil([this] { return counter_.opened().contains("energy_full"); });
      machine.set("BAT0/capacity", std::to_string(20 + refreshes % 70));
      machine.set("BAT0/power_now", std::to_string(4'000'000 + refreshes * 10'000));
      machine.set("AC/online", refreshes / 50 % 2 == 0 ? "0" : "1");
      machine.set("BAT0/status", refreshes / 50 % 2 == 0 ? "Discharging" : "Charging");
      if (refreshes % 10 == 0) panel->open();
      if (refreshes % 30 == 0) panel->click(menu_id::percent + refreshes / 30 % 4);
      panel->clearSignals();
    }
  }

  /// Returns the number of files that the item has open between readings.
  long permanentFiles() const {
    long minimum = item->openFiles();
    for (int i = 0; i < 50; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(3));
      minimum = std::min<long>(minimum, item->openFiles());
    }
    return minimum;
  }

 private:
  ProcessName name_;
  OpenCounter counter_;
};

}  // namespace

TEST_F(LongRunningItem, LeaksNoMemoryOrDescriptorsInAnHourAndHasAChart) {
  startAccelerated();
  use(refreshesPerHour * 5 / 4);  // the history reaches its full length
  const long memory = item->residentMemory();
  const long files = permanentFiles();
  use(refreshesPerHour);
  EXPECT_EQ(permanentFiles(), files);
  if (!isSanitized) {
    EXPECT_LE(item->residentMemory(), memory + 64);
  }
  panel->open();
  const std::string chart = panel->menuProperty(menu_id::chart, "label");
  EXPECT_TRUE(chart.ends_with("%")) << chart;
}

}  // namespace lumowatt

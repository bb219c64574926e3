#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "program/item_fixture.h"
#include "program/menu_ids.h"
#include "support/open_counter.h"

namespace lumowatt {

namespace {

/// Fixture with a machine that changes while the item runs.
class ItemOnChangingMachine : public ItemTest {
 protected:
  std::string label() const { return panel->property("XAyatanaLabel"); }

  /// Opens the menu, so that the item reads the battery, and returns the updated label.
  std::string nextLabel() const {
    panel->open();
    return label();
  }

  /// Renames the folder of a pack.
  void renamePack(const char* pack, const char* name) const {
    std::filesystem::rename(machine.powerSupplyFolder() / pack, machine.powerSupplyFolder() / name);
  }

  /// Adds a pack of 50 Wh that is discharged with 5 W. `percent` is the charge, `energy` the
  /// remaining energy in µWh.
  void addPack(const std::string& name, const std::string& percent,
               const std::string& energy) const {
    for (const auto& [attribute, value] : {std::pair{"type", "Battery"},
                                           {"status", "Discharging"},
                                           {"energy_full", "50000000"},
                                           {"power_now", "5000000"},
                                           {"voltage_now", "12000000"}}) {
      machine.set(name + "/" + attribute, value);
    }
    machine.set(name + "/capacity", percent);
    machine.set(name + "/energy_now", energy);
  }
};

}  // namespace

TEST_F(ItemOnChangingMachine, DoesNotBlockOnAttributesReplacedByPipes) {
  start();
  EXPECT_EQ(label(), "98% ▼ −4.8 W");
  for (const char* const name : {"power_now", "status"}) {
    machine.remove(std::string("BAT0/") + name);
    ASSERT_EQ(::mkfifo((machine.powerSupplyFolder() / "BAT0" / name).c_str(), 0600), 0);
  }
  EXPECT_EQ(nextLabel(), "98% • +0.0 W");
  for (const char* const name : {"power_now", "status"}) {
    machine.remove(std::string("BAT0/") + name);
  }
  machine.set("BAT0/power_now", "8300000");
  machine.set("BAT0/status", "Discharging");
  EXPECT_EQ(nextLabel(), "98% ▼ −8.3 W");
}

TEST_F(ItemOnChangingMachine, ShowsThePackThatReplacedAnother) {
  start();
  EXPECT_EQ(label(), "98% ▼ −4.8 W");
  machine.remove("BAT0");
  addPack("BAT1", "20", "10000000");
  EXPECT_EQ(nextLabel(), "20% ▼ −5.0 W");
  machine.remove("BAT1");
  addPack("BAT0", "60", "30000000");  // with the name of the first pack
  EXPECT_EQ(nextLabel(), "60% ▼ −5.0 W");
}

TEST_F(ItemOnChangingMachine, ShowsTheSameBatteryAfterPacksSwapNames) {
  machine.remove("BAT0");
  addPack("BAT0", "20", "10000000");
  addPack("BAT1", "60", "30000000");
  start();
  EXPECT_EQ(label(), "40% ▼ −10.0 W");
  const std::string report = panel->property("ToolTip").at(3);
  renamePack("BAT0", "other");
  renamePack("BAT1", "BAT0");
  renamePack("other", "BAT1");
  EXPECT_EQ(nextLabel(), "40% ▼ −10.0 W");
  EXPECT_EQ(panel->property("ToolTip").at(3), report);
}

TEST_F(ItemOnChangingMachine, ShowsOnlyTheNewPacksAfterBothWereReplaced) {
  machine.remove("BAT0");
  addPack("BAT0", "20", "10000000");
  addPack("BAT1", "60", "30000000");
  start();
  for (const char* const pack : {"BAT0", "BAT1"}) {
    machine.remove(pack);
    addPack(pack, "90", "45000000");
  }
  EXPECT_EQ(nextLabel(), "90% ▼ −10.0 W");
}

TEST_F(ItemOnChangingMachine, KeepsWorkingWhenItsFilesAreUpgraded) {
  const std::filesystem::path built = std::filesystem::path(LUMOWATT_PROGRAM).parent_path();
  const std::filesystem::path installed = user.path() / "installed";
  const auto install = [&](const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (const char* const name :
         {"lumowatt", "lumowatt-desktop.so", "lumowatt-drawing.so", "icons"}) {
      std::filesystem::copy(built / name, folder / name, std::filesystem::copy_options::recursive);
    }
  };
  install(installed);
  ItemTest::install("xdg-open",
                    "echo \"$@\" > $traces/arguments.new\n"
                    "mv $traces/arguments.new $traces/arguments\n");
  prefix = {"/bin/bash", "-c", "exec " + (installed / "lumowatt").string()};
  startWithChart();
  EXPECT_EQ(panel->property("IconThemePath"), (installed / "icons").string());

  std::filesystem::remove_all(installed);  // now /proc/PID/exe ends with " (deleted)"
  install(installed);
  EXPECT_EQ(nextLabel(), "98% ▼ −4.8 W");
  chooseChart();
  EXPECT_EQ(waitForTrace("arguments"),
            (user.path() / "runtime/lumowatt-chart.png").string() + "\n");
  choose(menu_id::openAtLogin, "Open at login");
  const std::string entry =
      fileContents(configuration() / "autostart/com.fernhollow.Lumowatt.desktop");
  EXPECT_NE(entry.find("Exec=\"" + (installed / "lumowatt").string() + "\"\n"), std::string::npos)
      << entry;
}

TEST_F(ItemOnChangingMachine, OmitsEightHoursOfSleepFromReadingsAndChart) {
  const std::string slept = user.path() / "slept-now";
  variables = {{"SLEPT_FILE", slept}};
  const OpenCounter counter;
  counter.watch(machine.powerSupplyFolder() / "BAT0");
  startWithChart();

  machine.set("BAT0/capacity", "40");
  counter.opened();
  const auto start = std::chrono::steady_clock::now();
  user.write("slept-now", "");
  panel->waitUntil([this] { return label().starts_with("40%"); });
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  const std::size_t readings = counter.opened().count(alwaysReadAttribute);
  const std::chrono::duration<double> awake = std::chrono::steady_clock::now() - start;
  EXPECT_GE(readings, 2U);
  // The clock is 360 times as fast, and a reading is due every 5 seconds: in 8 hours, 5760 of them.
  EXPECT_LE(static_cast<double>(readings), 5.0 + 1.1 * awake.count() * 360 / 5);
  panel->open();
  const std::string chart = panel->menuProperty(menu_id::chart, "label");
  EXPECT_EQ(chart.find("98"), std::string::npos) << chart;
}

}  // namespace lumowatt

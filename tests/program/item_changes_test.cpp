#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "program/item_fixture.h"
#include "program/menu_ids.h"
#include "support/open_counter.h"

namespace lumowatt {

namespace {

/// The item on a machine to which something happens.
class ItemChanges : public ItemTest {
 protected:
  std::string label() const { return panel->property("XAyatanaLabel"); }

  /// What the item shows once it has read the machine again.
  std::string nextLabel() const {
    panel->open();
    return label();
  }

  /// The name of a pack as the machine has it is another one.
  void rename(const char* pack, const char* name) const {
    std::filesystem::rename(machine.powerSupplyFolder() / pack, machine.powerSupplyFolder() / name);
  }

  /// Adds a pack of 50 Wh that is emptied with 5 W.
  void addPack(const std::string& name, const std::string& percent, const std::string& left) const {
    for (const auto& [attribute, value] : {std::pair{"type", "Battery"},
                                           {"status", "Discharging"},
                                           {"energy_full", "50000000"},
                                           {"power_now", "5000000"},
                                           {"voltage_now", "12000000"}}) {
      machine.set(name + "/" + attribute, value);
    }
    machine.set(name + "/capacity", percent);
    machine.set(name + "/energy_now", left);
  }
};

}  // namespace

TEST_F(ItemChanges, AttributesThatBecomePipesKeepItWaitingForNothing) {
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

TEST_F(ItemChanges, APackInThePlaceOfAnotherIsTheBattery) {
  start();
  EXPECT_EQ(label(), "98% ▼ −4.8 W");
  machine.remove("BAT0");
  addPack("BAT1", "20", "10000000");
  EXPECT_EQ(nextLabel(), "20% ▼ −5.0 W");
  machine.remove("BAT1");
  addPack("BAT0", "60", "30000000");  // the name of the first, too
  EXPECT_EQ(nextLabel(), "60% ▼ −5.0 W");
}

TEST_F(ItemChanges, PacksThatExchangeTheirNamesAreTheSameBattery) {
  machine.remove("BAT0");
  addPack("BAT0", "20", "10000000");
  addPack("BAT1", "60", "30000000");
  start();
  EXPECT_EQ(label(), "40% ▼ −10.0 W");
  const std::string report = panel->property("ToolTip").at(3);
  rename("BAT0", "other");
  rename("BAT1", "BAT0");
  rename("other", "BAT1");
  EXPECT_EQ(nextLabel(), "40% ▼ −10.0 W");
  EXPECT_EQ(panel->property("ToolTip").at(3), report);
}

TEST_F(ItemChanges, BothPacksExchangedForOthersAreTheOthersAlone) {
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

TEST_F(ItemChanges, AnUpgradeOfItsFilesLeavesItWorking) {
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
  ItemTest::install("xdg-open", "echo \"$@\" > $traces/new\nmv $traces/new $traces/told\n");
  prefix = {"/bin/bash", "-c", "exec " + (installed / "lumowatt").string()};
  startWithChart();
  EXPECT_EQ(panel->property("IconThemePath"), (installed / "icons").string());

  std::filesystem::remove_all(installed);  // the kernel calls its program deleted now
  install(installed);
  EXPECT_EQ(nextLabel(), "98% ▼ −4.8 W");
  chooseChart();
  EXPECT_EQ(trace("told"), (user.path() / "runtime/lumowatt-chart.png").string() + "\n");
  choose(menu_id::openAtLogin, "Open at login");
  const std::string entry =
      fileContents(configuration() / "autostart/com.fernhollow.Lumowatt.desktop");
  EXPECT_NE(entry.find("Exec=\"" + (installed / "lumowatt").string() + "\"\n"), std::string::npos)
      << entry;
}

TEST_F(ItemChanges, EightHoursOfSleepAreOneReadingAndNoPartOfTheChart) {
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
  // 360 seconds pass in one, and there is a reading every five: 5760 were missed.
  EXPECT_LE(static_cast<double>(readings), 5.0 + 1.1 * awake.count() * 360 / 5);
  panel->open();
  const std::string chart = panel->menuProperty(menu_id::chart, "label");
  EXPECT_EQ(chart.find("98"), std::string::npos) << chart;
}

}  // namespace lumowatt

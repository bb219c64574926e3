// Files that one reading opens: only the required attributes, each of them once.

#include <gtest/gtest.h>

#include <set>

#include "platform/linux/power_supply/open_hooks.h"
#include "platform/linux/power_supply/service.h"
#include "support/fixtures.h"
#include "support/mock_machine.h"
#include "support/open_counter.h"

namespace lumowatt::power_supply {

namespace {

/// Returns the names of the attributes of BAT0 and AC that one reading opens.
std::multiset<std::string> openedBy(const Attributes& pack, const Attributes& charger) {
  const MockMachine machine;
  machine.supply("BAT0", pack);
  machine.supply("AC", charger);
  OpenCounter counter;
  counter.watch(machine.powerSupplyFolder() / "BAT0");
  counter.watch(machine.powerSupplyFolder() / "AC");
  EXPECT_FALSE(machine.properties().is_null());
  return counter.opened();
}

using Names = std::multiset<std::string>;

const Attributes extras = {{"uevent", ""},
                           {"alarm", "0"},
                           {"serial_number", "X"},
                           {"technology", "Li-ion"},
                           {"manufacturer", "LGC"},
                           {"model_name", "LNV"},
                           {"energy_full", "1"},
                           {"energy_now", "1"},
                           {"current_avg", "1"},
                           {"voltage_avg", "1"},
                           {"power_avg", "1"},
                           {"voltage_max_design", "1"},
                           {"time_to_full_now", "1"},
                           {"capacity_level", "Normal"}};

}  // namespace

TEST(ServiceFileAccess, OpensEachNeededAttributeOnceWhileDischarging) {
  Attributes pack = chargePack({{"power_now", "6000000"},
                                {"time_to_empty_now", "7200"},
                                {"time_to_empty_avg", "7200"},
                                {"temp", "300"},
                                {"cycle_count", "3"},
                                {"scope", "System"}});
  pack.insert(extras.begin(), extras.end());
  const Names expected = {"type",
                          "scope",
                          "present",
                          "status",
                          "capacity",
                          "charge_full",
                          "charge_full_design",
                          "charge_now",
                          "voltage_now",
                          "voltage_min_design",
                          "current_now",
                          "power_now",
                          "time_to_empty_now",
                          "temp",
                          "cycle_count",
                          "type",
                          "online"};
  EXPECT_EQ(openedBy(pack, {{"type", "Mains"}, {"online", "0"}, {"manufacturer", "Acme"}}),
            expected);
}

TEST(ServiceFileAccess, SkipsFlowAndEstimateOfAFullPack) {
  const Names opened =
      openedBy(chargePack({{"status", "Full"}, {"power_now", "1"}, {"time_to_empty_now", "7200"}}),
               {{"type", "Mains"},
                {"online", "1"},
                {"manufacturer", "Acme"},
                {"model_name", "Brick"},
                {"voltage_max", "1"},
                {"current_max", "1"}});
  const Names expected = {"type",       "present",     "status",
                          "capacity",   "charge_full", "charge_full_design",
                          "charge_now", "voltage_now", "voltage_min_design",
                          "type",       "online",      "manufacturer",
                          "model_name"};
  EXPECT_EQ(opened, expected);
}

TEST(ServiceFileAccess, OpensSixteenFilesForOnePackAndOneCharger) {
  const auto folder = fixturePath("linux", "01-thinkpad-lnv45n1-discharging") / "class";
  Service service(folder / "power_supply", folder / "hwmon");
  const int before = openCount();
  EXPECT_TRUE(service.properties());
  // The class, the pack, the charger; 11 attributes of the pack and 2 of the charger.
  EXPECT_EQ(openCount() - before, 1 + 1 + 1 + 11 + 2);
}

TEST(ServiceFileAccess, OpensOnlyExistingAttributesOfAnOnlineCharger) {
  const MockMachine machine;
  machine.supply("port", {{"type", "USB"}, {"online", "1"}, {"input_power_limit", "60000000"}});
  const int before = openCount();
  EXPECT_TRUE(machine.properties().is_null());
  EXPECT_EQ(openCount() - before, 5) << "the class, the charger and its three attributes";
}

TEST(ServiceFileAccess, SkipsSensorsOfAnAppleLaptopOnBattery) {
  const MockMachine machine;
  machine.sensors("hwmon0", {{"name", "macsmc_hwmon"}});
  machine.supply("macsmc-battery", chargePack());
  OpenCounter counter;
  counter.watch(machine.hwmonFolder() / "hwmon0");
  EXPECT_FALSE(machine.properties().is_null());
  EXPECT_EQ(counter.opened(), Names());
  machine.supply("macsmc-battery", {{"status", "Charging"}});
  EXPECT_FALSE(machine.properties().is_null());
  EXPECT_EQ(counter.opened(), Names({"name"}));
}

TEST(ServiceFileAccess, SkipsOtherAttributesOfPeripheralsAndEmptyBays) {
  const MockMachine machine;
  machine.supply("BAT0", chargePack());
  machine.supply("hidpp_battery_0", chargePack({{"scope", "Device"}}));
  machine.supply("BAT1", chargePack({{"present", "0"}}));
  OpenCounter counter;
  counter.watch(machine.powerSupplyFolder() / "hidpp_battery_0");
  counter.watch(machine.powerSupplyFolder() / "BAT1");
  EXPECT_FALSE(machine.properties().is_null());
  EXPECT_EQ(counter.opened(), (Names{"type", "scope", "type", "present"}));
}

}  // namespace lumowatt::power_supply

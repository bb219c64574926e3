#include "platform/linux/power_supply/service.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/dump.h"
#include "support/fixtures.h"
#include "support/mock_machine.h"
#include "telemetry/read.h"

namespace lumowatt::power_supply {

namespace {

using nlohmann::json;

json propertiesWith(const Attributes& changes) {
  const MockMachine machine;
  machine.supply("BAT0", chargePack(changes));
  return machine.properties();
}

/// Adds ten thousand supplies, which are links to the same device.
void addThousands(const MockMachine& machine, const Attributes& attributes) {
  machine.supply("../device", attributes);
  std::filesystem::create_directories(machine.powerSupplyFolder());
  for (int i = 0; i < 10'000; ++i) {
    std::filesystem::create_directory_symlink(
        "../device", machine.powerSupplyFolder() / ("supply" + std::to_string(i)));
  }
}

}  // namespace

TEST(LaptopPacks, HaveAnyScopeExceptDevice) {
  for (const char* scope : {"System\n", "Unknown\n", "", "(missing)"}) {
    EXPECT_FALSE(propertiesWith({{"scope", scope}}).is_null()) << scope;
  }
  for (const char* scope : {"Device\n", "device\n", "DEVICE"}) {
    EXPECT_TRUE(propertiesWith({{"scope", scope}}).is_null()) << scope;
  }
}

TEST(LaptopPacks, AreIgnoredIfNotPresent) {
  EXPECT_FALSE(propertiesWith({{"present", missing}}).is_null());
  EXPECT_FALSE(propertiesWith({{"present", ""}}).is_null());
  EXPECT_FALSE(propertiesWith({{"present", "2"}}).is_null());
  EXPECT_TRUE(propertiesWith({{"present", "0\n"}}).is_null());
  EXPECT_TRUE(propertiesWith({{"present", " +0 \n"}}).is_null());
}

TEST(LaptopPacks, HaveTheTypeBattery) {
  EXPECT_TRUE(propertiesWith({{"type", "UPS"}}).is_null());
  EXPECT_TRUE(propertiesWith({{"type", missing}}).is_null());
  EXPECT_FALSE(propertiesWith({{"type", " Battery \n"}}).is_null());
}

TEST(LaptopPacks, MayHaveAnyName) {
  for (const char* name :
       {"BATC", "CMB1", "macsmc-battery", "sbs-12-000b", "cw2015-battery", "é"}) {
    const MockMachine machine;
    machine.supply(name, chargePack());
    EXPECT_EQ(machine.properties()["CurrentCapacity"], 50) << name;
  }
}

TEST(Service, ReportsNoBatteryWithoutItsFolder) {
  const MockMachine machine;
  EXPECT_TRUE(machine.properties().is_null());
}

TEST(Service, ReportsNoBatteryIfThereAreOnlyChargers) {
  const MockMachine machine;
  machine.supply("AC", {{"type", "Mains"}, {"online", "1"}});
  EXPECT_TRUE(machine.properties().is_null());
}

TEST(Service, IgnoresIrrelevantAndInvalidSupplies) {
  const MockMachine machine;
  machine.supply("BAT0", chargePack());
  const json alone = machine.properties();
  machine.supply("AAA", {});
  std::filesystem::create_directory(machine.powerSupplyFolder() / "empty");
  std::filesystem::create_symlink("nowhere", machine.powerSupplyFolder() / "dangling");
  machine.supply("ups", {{"type", "UPS"}, {"online", "1"}, {"capacity", "3"}});
  machine.supply("sbs-charger", {{"type", "Mains"}, {"online", "1"}});
  EXPECT_EQ(machine.properties(), alone);
}

TEST(Service, DoesNotTreatAnOnlineBatteryAsACharger) {
  EXPECT_EQ(propertiesWith({{"online", "1"}})["ExternalConnected"], 0);
}

TEST(Service, ReportsTheDriversEstimateIfNoFlowIsKnown) {
  const json properties = propertiesWith({{"current_now", missing}, {"time_to_empty_now", "7200"}});
  EXPECT_EQ(properties["AvgTimeToEmpty"], 120);
  EXPECT_EQ(properties["TimeRemaining"], 120);
  EXPECT_EQ(properties["Amperage"], 0);
}

TEST(Service, DescribesTheAdapterOfOnlineChargers) {
  const MockMachine machine;
  machine.supply("BAT0", chargePack({{"status", "Charging"}}));
  machine.supply("ADP1", {{"type", "Mains"}, {"online", "1"}});
  machine.supply(
      "ucsi-source-psy-USBC000:001",
      {{"type", "USB"}, {"online", "1"}, {"voltage_now", "20000000"}, {"current_now", "3250000"}});
  EXPECT_EQ(machine.properties()["AdapterDetails"],
            json({{"Watts", 65}, {"Name", "65W USB-C Power Adapter"}}));
}

TEST(Service, CombinesSeveralPacksIntoOneBattery) {
  const MockMachine machine;
  machine.supply("BAT0", energyPack({{"energy_now", "10000000"}, {"power_now", "0"}}));
  machine.supply("BAT1", energyPack({{"energy_full", "30000000"}, {"energy_now", "20000000"}}));
  const json properties = machine.properties();
  EXPECT_EQ(properties["CurrentCapacity"], 38) << "30 of 80 Wh";
  EXPECT_EQ(properties["AppleRawCurrentCapacity"], 3000);
  EXPECT_EQ(properties["AppleRawMaxCapacity"], 8000);
  EXPECT_EQ(properties["DesignCapacity"], 12000);
  EXPECT_EQ(properties["Voltage"], 12500);
  EXPECT_EQ(properties["Amperage"], -400);
  EXPECT_EQ(properties["PowerTelemetryData"]["BatteryPower"], -5000);
  EXPECT_EQ(properties["AvgTimeToEmpty"], 360) << "30 Wh at 5 W";
}

TEST(Service, CombinesSeveralPacksThatReportCharge) {
  const MockMachine machine;
  machine.supply("BAT0", chargePack());
  machine.supply("BAT1", chargePack({{"charge_full", "2000000"},
                                     {"charge_now", "500000"},
                                     {"voltage_min_design", "22000000"},
                                     {"time_to_empty_now", "60"}}));
  const json properties = machine.properties();
  EXPECT_EQ(properties["CurrentCapacity"], 38) << "22 + 11 of 44 + 44 Wh";
  EXPECT_EQ(properties["AppleRawMaxCapacity"], 8000) << "88 Wh at 11 V";
  EXPECT_EQ(properties["Amperage"], -1000);
  EXPECT_EQ(properties["AvgTimeToEmpty"], 165) << "33 Wh at 12 W";
}

TEST(Service, FindsThePackAmongThousandsOfPortsAndPeripherals) {
  for (const Attributes& attributes :
       {Attributes{{"type", "USB\n"}, {"online", "0\n"}}, chargePack({{"scope", "Device\n"}})}) {
    const MockMachine machine;
    machine.supply("macsmc-battery", chargePack());
    const json alone = machine.properties();
    addThousands(machine, attributes);
    EXPECT_EQ(machine.properties(), alone);
  }
}

TEST(Service, CombinesThousandsOfPacksIntoOneBattery) {
  // Each pack has 50 Wh at 10 V (5 Ah), and 5 W at 12.5 V (400 mA).
  const MockMachine machine;
  addThousands(machine, energyPack());
  const json properties = machine.properties();
  EXPECT_EQ(properties["CurrentCapacity"], 50);
  EXPECT_EQ(properties["AppleRawMaxCapacity"], 50'000'000);
  EXPECT_EQ(properties["AppleRawCurrentCapacity"], 25'000'000);
  EXPECT_EQ(properties["DesignCapacity"], 60'000'000);
  EXPECT_EQ(properties["Voltage"], 12'500);
  EXPECT_EQ(properties["Amperage"], -4'000'000);
}

TEST(Service, ReadsTheFilesAgainOnEachCall) {
  const MockMachine machine;
  machine.supply("BAT0", chargePack());
  Service service(machine.powerSupplyFolder(), machine.hwmonFolder());
  EXPECT_EQ(signedNumber(service.properties()->find("CurrentCapacity")), 50);
  machine.supply("BAT0", {{"capacity", "49\n"}});
  EXPECT_EQ(signedNumber(service.properties()->find("CurrentCapacity")), 49);
  std::filesystem::remove_all(machine.powerSupplyFolder() / "BAT0");
  EXPECT_FALSE(service.properties());
  machine.supply("BAT0", chargePack());
  EXPECT_TRUE(service.properties());
}

TEST(Service, IgnoresSuppliesWhoseTypeIsAPipe) {
  const MockMachine machine;
  machine.supply("BAT0", chargePack());
  const json alone = machine.properties();
  machine.supply("BAT1", chargePack({{"type", missing}}));
  machine.supply("AC", {{"online", "1\n"}});
  for (const char* const name : {"BAT1/type", "AC/type"}) {
    ASSERT_EQ(::mkfifo((machine.powerSupplyFolder() / name).c_str(), 0600), 0);
  }
  EXPECT_EQ(machine.properties(), alone);
}

TEST(Service, TreatsChargersWhoseAttributesArePipesAsOffline) {
  const MockMachine machine;
  machine.supply("BAT0", chargePack());
  machine.supply("AC", {{"type", "Mains\n"}});
  const json offline = machine.properties();
  for (const char* const name : {"online", "input_power_limit", "model_name"}) {
    ASSERT_EQ(::mkfifo((machine.powerSupplyFolder() / "AC" / name).c_str(), 0600), 0);
  }
  EXPECT_EQ(machine.properties(), offline);
}

TEST(Service, ReportsNoBatteryIfItsFolderIsAPipe) {
  const MockMachine machine;
  machine.supply("BAT0", chargePack());
  std::filesystem::remove_all(machine.powerSupplyFolder());
  ASSERT_EQ(::mkfifo(machine.powerSupplyFolder().c_str(), 0600), 0);
  EXPECT_EQ(machine.properties(), nullptr);
}

/// An attribute with invalid content, or one that cannot be read. The properties must equal those
/// of a machine without the attribute.
class InvalidAttribute : public testing::TestWithParam<std::string> {};

TEST_P(InvalidAttribute, IsTreatedAsMissing) {
  const std::string& attribute = GetParam();
  const json absent = propertiesWith({{attribute, missing}});

  const std::string invalidContents[] = {"",
                                         "\n",
                                         "unknown\n",
                                         "12.5\n",
                                         "0x10\n",
                                         "1 2\n",
                                         "99999999999999999999\n",
                                         "\xFF\xFE\x80",
                                         std::string("5\0", 2),
                                         std::string(5000, '9')};
  for (const std::string& contents : invalidContents) {
    EXPECT_EQ(propertiesWith({{attribute, contents}}), absent) << contents.substr(0, 20);
  }

  const MockMachine machine;
  machine.supply("BAT0", chargePack({{attribute, missing}}));
  const auto path = machine.powerSupplyFolder() / "BAT0" / attribute;
  std::filesystem::create_directory(path);
  EXPECT_EQ(machine.properties(), absent) << "a folder: EISDIR";
  std::filesystem::remove(path);
  std::filesystem::create_symlink("nowhere", path);
  EXPECT_EQ(machine.properties(), absent) << "a link to nowhere: ENOENT";
  std::filesystem::remove(path);
  std::filesystem::create_symlink("/proc/self/mem", path);
  EXPECT_EQ(machine.properties(), absent) << "unreadable: EIO";
  std::filesystem::remove(path);
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const int writer = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  EXPECT_EQ(machine.properties(), absent) << "a pipe without data: EAGAIN";
  ::close(writer);
  EXPECT_EQ(machine.properties(), absent) << "a pipe without a writer";
}

INSTANTIATE_TEST_SUITE_P(Pack, InvalidAttribute,
                         testing::Values("scope", "present", "status", "capacity", "charge_full",
                                         "charge_full_design", "charge_now", "voltage_now",
                                         "voltage_min_design", "current_now", "temp", "cycle_count",
                                         "time_to_empty_now"),
                         [](const auto& test) { return test.param; });

TEST(Service, ReportsHugeValuesUnlessTheyExceed64Bits) {
  const std::string huge = "9223372036854775807\n";
  const json properties = propertiesWith({{"charge_full", huge},
                                          {"charge_full_design", huge},
                                          {"charge_now", huge},
                                          {"current_now", huge},
                                          {"voltage_now", huge},
                                          {"voltage_min_design", huge},
                                          {"capacity", huge},
                                          {"temp", huge},
                                          {"cycle_count", huge}});
  EXPECT_EQ(properties["CurrentCapacity"], 100);
  EXPECT_EQ(properties["AppleRawMaxCapacity"], 9223372036854776) << "µAh, rounded to mAh";
  EXPECT_EQ(properties["CycleCount"], 9223372036854775807);
  EXPECT_FALSE(properties.contains("Temperature")) << "ten times the value exceeds 64 bits";
  EXPECT_FALSE(properties["PowerTelemetryData"].contains("BatteryPower"));
  EXPECT_EQ(properties["AvgTimeToEmpty"], 60) << "the current empties the battery in one hour";
}

TEST(Service, OmitsOrClampsNegativeValues) {
  const json properties = propertiesWith({{"charge_full", "-4000000"},
                                          {"charge_now", "-2000000"},
                                          {"voltage_now", "-12000000"},
                                          {"capacity", "-50"},
                                          {"cycle_count", "-1"}});
  EXPECT_EQ(properties["CurrentCapacity"], 0);
  EXPECT_EQ(properties["Voltage"], 0);
  EXPECT_EQ(properties["Amperage"], -500);
  EXPECT_FALSE(properties.contains("AppleRawMaxCapacity"));
  EXPECT_FALSE(properties.contains("CycleCount"));
}

// The exact results are halfway between two integers. They must be rounded only once.
TEST(ServiceRounding, RoundsHalvesAwayFromZero) {
  EXPECT_EQ(propertiesWith({{"charge_now", "410000"}, {"current_now", "400000"}})["TimeRemaining"],
            62)
      << "61.5 min";
  EXPECT_EQ(propertiesWith({{"status", "Charging"},
                            {"charge_now", "3590000"},
                            {"current_now", "400000"}})["TimeRemaining"],
            62)
      << "61.5 min";
  EXPECT_EQ(propertiesWith({{"current_now", "15000"},
                            {"voltage_now", "4100000"}})["PowerTelemetryData"]["BatteryPower"],
            -62)
      << "61.5 mW";
  EXPECT_EQ(propertiesWith({{"current_now", missing},
                            {"power_now", "33000"},
                            {"voltage_now", "4400000"}})["Amperage"],
            -8)
      << "7.5 mA";
}

TEST(ServiceRounding, RoundsHalvesOfSeveralPacksAwayFromZero) {
  const MockMachine machine;
  const Attributes pack = {{"charge_full", "9000000"},
                           {"charge_now", "4100500"},
                           {"voltage_min_design", "5816381"},
                           {"current_now", "7500"},
                           {"voltage_now", "5816381"}};
  machine.supply("BAT0", chargePack(pack));
  Attributes idle = pack;
  idle["charge_now"] = "3000000";
  idle["current_now"] = "0";
  machine.supply("BAT1", chargePack(idle));
  const json properties = machine.properties();
  EXPECT_EQ(properties["AppleRawCurrentCapacity"], 7101) << "7100.5 mAh";
  EXPECT_EQ(properties["Amperage"], -8) << "7.5 mA";
}

class LinuxMachine : public testing::TestWithParam<std::string> {
 protected:
  static std::filesystem::path file(const std::string& name) {
    return fixturePath("linux", GetParam()) / name;
  }

  static std::optional<PropertyDictionary> properties() {
    return Service(file("class/power_supply"), file("class/hwmon")).properties();
  }
};

TEST_P(LinuxMachine, HasTheExpectedProperties) {
  const auto actual = properties();
  if (!std::filesystem::exists(file("properties.json"))) {
    EXPECT_FALSE(actual) << "a machine without a battery";
    return;
  }
  ASSERT_TRUE(actual);
  // Converts the expected JSON to properties and back, so that its Booleans become numbers.
  const auto expected = propertiesFromJson(jsonFile(file("properties.json")));
  EXPECT_EQ(jsonFromProperties(*actual), jsonFromProperties(expected));
}

TEST_P(LinuxMachine, HasTheExpectedReadingAndDump) {
  Service service(file("class/power_supply"), file("class/hwmon"));
  const auto reading = read(service);
  EXPECT_EQ(reading ? dump(*reading) : "error=no battery\n", fileContents(file("expected.txt")));
}

INSTANTIATE_TEST_SUITE_P(Fixtures, LinuxMachine, testing::ValuesIn(fixtureNames("linux")),
                         [](const auto& test) { return testName(test.param); });

}  // namespace lumowatt::power_supply

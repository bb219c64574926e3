#include "platform/linux/power_supply/apple_sensors.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/mock_machine.h"

namespace lumowatt::power_supply {

namespace {

const Attributes chip = {
    {"name", "macsmc_hwmon\n"},     {"power1_label", "Total System Power\n"},
    {"power1_input", "9876543\n"},  {"power2_label", "3.8 V Rail Power\n"},
    {"power2_input", "1\n"},        {"power3_label", "AC Input Power\n"},
    {"power3_input", "12345678\n"}, {"in0_label", "AC Input Voltage\n"},
    {"in0_input", "20100\n"},       {"curr1_label", "AC Input Current\n"},
    {"curr1_input", "614\n"},
};

}  // namespace

TEST(AppleSensors, MeasureInputAndSystemPower) {
  const MockMachine machine;
  machine.sensors("hwmon0", {{"name", "nvme\n"}, {"in0_label", "AC Input Voltage\n"}});
  machine.sensors("hwmon1", chip);
  const MeasuredPower measured = readAppleSensors(machine.hwmonFolder());
  EXPECT_DOUBLE_EQ(measured.inputMilliwatts.value(), 12345.678);
  EXPECT_DOUBLE_EQ(measured.inputMillivolts.value(), 20100);
  EXPECT_DOUBLE_EQ(measured.inputMilliamps.value(), 614);
  EXPECT_DOUBLE_EQ(measured.systemMilliwatts.value(), 9876.543);
}

TEST(AppleSensors, MeasureNothingIfUnreadable) {
  const MockMachine machine;
  machine.sensors("hwmon0", {{"name", "macsmc_hwmon"},
                             {"power1_label", "AC Input Power"},
                             {"in0_label", "AC Input Voltage"},
                             {"in0_input", "much"}});
  const MeasuredPower measured = readAppleSensors(machine.hwmonFolder());
  EXPECT_FALSE(measured.inputMilliwatts);
  EXPECT_FALSE(measured.inputMillivolts);
  EXPECT_FALSE(measured.inputMilliamps);
  EXPECT_FALSE(measured.systemMilliwatts);
}

TEST(AppleSensors, AreFoundAfterAnUnreadableLabel) {
  const MockMachine machine;
  Attributes unreadable = chip;
  unreadable["power1_label"] = std::string(5000, 'x');
  machine.sensors("hwmon0", unreadable);
  const MeasuredPower measured = readAppleSensors(machine.hwmonFolder());
  EXPECT_FALSE(measured.systemMilliwatts);
  EXPECT_DOUBLE_EQ(measured.inputMilliwatts.value(), 12345.678);
}

TEST(AppleSensors, AreFoundAfterAnUnreadableValue) {
  const MockMachine machine;
  Attributes unreadable = chip;
  unreadable.erase("power2_input");
  machine.sensors("hwmon0", unreadable);
  EXPECT_DOUBLE_EQ(readAppleSensors(machine.hwmonFolder()).inputMilliwatts.value(), 12345.678);
}

TEST(AppleSensors, AreIgnoredIfTheLabelContradictsTheKind) {
  const MockMachine machine;
  machine.sensors("hwmon0", {{"name", "macsmc_hwmon"},
                             {"in0_label", "AC Input Power"},
                             {"in0_input", "20100"},
                             {"curr1_label", "AC Input Voltage"},
                             {"curr1_input", "614"}});
  const MeasuredPower measured = readAppleSensors(machine.hwmonFolder());
  EXPECT_FALSE(measured.inputMilliwatts) << "volts are not watts";
  EXPECT_FALSE(measured.inputMillivolts) << "amperes are not volts";
}

TEST(AppleSensors, AreFoundAmongSensorsThatArePipes) {
  const MockMachine machine;
  const auto pipe = [&machine](const std::string& name) {
    std::filesystem::remove(machine.hwmonFolder() / name);
    ASSERT_EQ(::mkfifo((machine.hwmonFolder() / name).c_str(), 0600), 0);
  };
  machine.sensors("hwmon0", chip);
  pipe("hwmon0/name");
  machine.sensors("hwmon1", chip);
  pipe("hwmon1/power1_label");
  pipe("hwmon1/curr1_input");
  const MeasuredPower measured = readAppleSensors(machine.hwmonFolder());
  EXPECT_FALSE(measured.systemMilliwatts);
  EXPECT_FALSE(measured.inputMilliamps);
  EXPECT_DOUBLE_EQ(measured.inputMilliwatts.value(), 12345.678);
  EXPECT_DOUBLE_EQ(measured.inputMillivolts.value(), 20100);
}

TEST(AppleSensors, AreIgnoredOnOtherMachines) {
  const MockMachine machine;
  EXPECT_FALSE(readAppleSensors(machine.hwmonFolder()).inputMilliwatts);
  Attributes other = chip;
  other["name"] = "applesmc";
  machine.sensors("hwmon0", other);
  EXPECT_FALSE(readAppleSensors(machine.hwmonFolder()).inputMilliwatts);
}

TEST(AppleSensors, AreUsedOnlyOnExternalPowerOfAnAppleLaptop) {
  const auto telemetry = [](const std::string& pack, const Attributes& attributes) {
    const MockMachine machine;
    machine.sensors("hwmon0", chip);
    machine.supply(pack, attributes);
    return machine.properties()["PowerTelemetryData"];
  };
  const Attributes charging = chargePack({{"status", "Charging"}});
  EXPECT_EQ(telemetry("macsmc-battery", charging)["SystemPowerIn"], 12346);
  EXPECT_EQ(telemetry("macsmc-battery", charging)["SystemLoad"], 9877);
  EXPECT_EQ(telemetry("macsmc-battery", chargePack())["SystemPowerIn"], 0);
  EXPECT_FALSE(telemetry("BAT0", charging).contains("SystemPowerIn"));
  EXPECT_FALSE(telemetry("mac-battery", charging).contains("SystemPowerIn"));
}

TEST(AppleSensors, AreUsedOnlyIfTheFirstPackIsAnAppleLaptops) {
  const auto areUsedBeside = [](const std::string& other) {
    const MockMachine machine;
    machine.sensors("hwmon0", chip);
    machine.supply("macsmc-battery", chargePack({{"status", "Charging"}}));
    machine.supply(other, chargePack({{"status", "Charging"}}));
    return machine.properties()["PowerTelemetryData"].contains("SystemPowerIn");
  };
  EXPECT_TRUE(areUsedBeside("second"));
  EXPECT_FALSE(areUsedBeside("BAT0"));
}

}  // namespace lumowatt::power_supply

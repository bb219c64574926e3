#include "cli/commands.h"

#include <gtest/gtest.h>

#include "cli/dump.h"
#include "fakes/scripted_battery.h"

namespace lumowatt {

namespace {

void expectOutcome(const Command& command, BatteryService& battery, const std::string& output,
                   int status) {
  const Outcome outcome = carryOut(command, "1.0.0", battery);
  EXPECT_EQ(outcome.output, output);
  EXPECT_EQ(outcome.status, status);
}

}  // namespace

TEST(Commands, VersionIsOneLineAndReadsNoBattery) {
  ScriptedBattery battery(PropertyDictionary{});
  expectOutcome(PrintVersion{}, battery, "1.0.0\n", 0);
  EXPECT_EQ(battery.asked, 0);
}

TEST(Commands, DumpReadsTheBatteryOnce) {
  PropertyDictionary properties;
  properties.set("Voltage", PropertyValue::number(12000));
  ScriptedBattery battery(properties);
  Reading expected;
  expected.batteryVolts = 12.0;
  expectOutcome(PrintDump{}, battery, dump(expected), 0);
  EXPECT_EQ(battery.asked, 1);
}

TEST(Commands, DumpWithoutABatteryIsAnError) {
  ScriptedBattery battery;
  expectOutcome(PrintDump{}, battery, "error=no battery\n", 1);
}

TEST(Commands, SnapshotOfAnUnknownSampleIsAnErrorAndDoesNotFallBackToTheBattery) {
  ScriptedBattery battery(PropertyDictionary{});
  expectOutcome(WriteSnapshot{"out.png", "nosuch"}, battery, "error=unknown sample\n", 1);
  expectOutcome(WriteSnapshot{"out.png", ""}, battery, "error=unknown sample\n", 1);
  EXPECT_EQ(battery.asked, 0);
}

TEST(Commands, LiveSnapshotWithoutABatteryIsAnError) {
  ScriptedBattery battery;
  expectOutcome(WriteSnapshot{"out.png", std::nullopt}, battery, "error=no battery\n", 1);
}

TEST(Commands, SnapshotWithoutABitmapIsAnError) {
  ScriptedBattery battery(PropertyDictionary{});
  expectOutcome(WriteSnapshot{"out.png", std::nullopt}, battery, "error=no bitmap\n", 1);
  EXPECT_EQ(battery.asked, 1);
  expectOutcome(WriteSnapshot{"out.png", "low"}, battery, "error=no bitmap\n", 1);
  EXPECT_EQ(battery.asked, 1) << "a sample does not read the battery";
}

TEST(Commands, MenuBarItemWithoutADesktopIsAnError) {
  ScriptedBattery battery(PropertyDictionary{});
  expectOutcome(ShowMenuBarItem{}, battery, "error=no desktop\n", 1);
}

}  // namespace lumowatt

#include "cli/dump.h"

#include <gtest/gtest.h>

#include "fakes/scripted_battery.h"
#include "support/fixtures.h"
#include "support/json_properties.h"
#include "support/locale.h"
#include "telemetry/read.h"
#include "telemetry/sample_reading.h"

namespace lumowatt {

namespace {

const std::string drainingDump =
    "percent=64\n"
    "trend=down\n"
    "charging=false\n"
    "external=false\n"
    "full=false\n"
    "minutes=228\n"
    "rawCurrentmAh=2463\n"
    "rawMaxmAh=3849\n"
    "designmAh=4629\n"
    "nominalmAh=3976\n"
    "cycles=312\n"
    "batteryVolts=11.600\n"
    "batteryAmps=-0.950\n"
    "batteryWatts=-11.000\n"
    "percentPerHour=-24.68\n"
    "systemWatts=11.000\n"
    "wallWatts=0.000\n"
    "wallVolts=0.000\n"
    "wallAmps=0.000\n"
    "adapterWatts=30\n"
    "adapterName=30W USB-C Power Adapter\n"
    "temperatureC=unavailable\n";

bool hasLine(const std::string& text, const std::string& line) {
  return ("\n" + text).find("\n" + line + "\n") != std::string::npos;
}

}  // namespace

TEST(Dump, PrintsAllValuesOfADrainingBattery) {
  EXPECT_EQ(dump(*sampleReading("draining")), drainingDump);
}

using DumpInGermanLocale = InGermanLocale;

TEST_F(DumpInGermanLocale, EqualsTheDumpInTheDefaultLocale) {
  EXPECT_EQ(dump(*sampleReading("draining")), drainingDump);
}

TEST(Dump, PrintsAWordForEachUnknownValue) {
  const std::string text = dump(Reading());
  EXPECT_TRUE(hasLine(text, "minutes=unknown")) << text;
  EXPECT_TRUE(hasLine(text, "percentPerHour=unknown")) << text;
  EXPECT_TRUE(hasLine(text, "temperatureC=unavailable")) << text;
  EXPECT_TRUE(hasLine(text, "adapterName=")) << text;
}

TEST(Dump, PrintsTheTemperatureWithAFractionalPart) {
  Reading reading;
  reading.temperatureC = 31.5;
  EXPECT_TRUE(hasLine(dump(reading), "temperatureC=31.5"));
  reading.temperatureC = 30.0;
  EXPECT_TRUE(hasLine(dump(reading), "temperatureC=30.0"));
}

TEST(Dump, CalculatesTheRateInDoublePrecision) {
  // The exact rate is 31.875, which rounds to 31.88. Calculated with doubles it is
  // 31.874999999999996, which rounds to 31.87.
  Reading reading;
  reading.rawMax = 5440;
  reading.batteryAmps = 1.734;
  EXPECT_TRUE(hasLine(dump(reading), "percentPerHour=31.87"));
}

TEST(Dump, PreservesTheSignOfANegativeZero) {
  Reading reading;
  reading.batteryWatts = -0.0;
  EXPECT_TRUE(hasLine(dump(reading), "batteryWatts=-0.000"));
}

class DumpOfMachine : public testing::TestWithParam<std::string> {};

TEST_P(DumpOfMachine, MatchesTheExpectedDump) {
  const auto machine = jsonFile(fixturePath("registry", GetParam()));
  ScriptedBattery battery(propertiesFromJson(machine["properties"]));
  EXPECT_EQ(dump(read(battery).value()), machine["dump"].get<std::string>());
}

INSTANTIATE_TEST_SUITE_P(Registry, DumpOfMachine, testing::ValuesIn(fixtureNames("registry")),
                         [](const auto& test) { return testName(test.param); });

}  // namespace lumowatt

// The built executable from outside: on mocked machines, with every switch, and with a standard
// output that cannot be written. Its pictures have tests of their own.

#include <gtest/gtest.h>

#include <cerrno>
#include <map>

#include "program/program.h"
#include "support/files.h"
#include "support/fixtures.h"

namespace lumowatt {

namespace {

/// The dump of a machine, the reading of some of whose attributes fails.
ProcessResult runRefusing(const Machine& machine, const std::string& names, int error) {
  Environment environment = machine.environment(LUMOWATT_REFUSING_ATTRIBUTE);
  environment.emplace_back("REFUSED_NAMES", names);
  environment.emplace_back("REFUSED_ERROR", std::to_string(error));
  return runProcess({LUMOWATT_PROGRAM, "--dump"}, environment);
}

/// `text` with another line in the place of that of the same key.
std::string withLine(std::string text, const std::string& line) {
  const std::size_t start = text.find(line.substr(0, line.find('=') + 1));
  return text.replace(start, text.find('\n', start) - start, line);
}

std::string dumpOf(const std::string& fixture) {
  return fileContents(fixturePath("linux", fixture) / "expected.txt");
}

}  // namespace

class ProgramOnMachine : public testing::TestWithParam<std::string> {};

TEST_P(ProgramOnMachine, DumpsItsReading) {
  const std::string expected = dumpOf(GetParam());
  expectResult(run(GetParam(), {"--dump"}), expected, expected.starts_with("error=") ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Linux, ProgramOnMachine, testing::ValuesIn(fixtureNames("linux")),
                         [](const auto& test) { return testName(test.param); });

TEST(Program, PrintsItsVersion) {
  const std::string version = std::string(LUMOWATT_VERSION) + "\n";
  EXPECT_EQ(version, "1.0.0\n");
  expectResult(run(anyMachine, {"--version"}), version, 0);
  expectResult(run(anyMachine, {"--dump", "--snapshot", "out.png", "--version"}), version, 0);
}

TEST(Program, DumpIgnoresASampleAndUnknownArguments) {
  const std::string live = dumpOf(anyMachine);
  expectResult(run(anyMachine, {"--dump", "--sample", "low"}), live, 0);
  expectResult(run(anyMachine, {"--verbose", "--dump", "file"}), live, 0);
}

TEST(Program, DumpsWhenSnapshotIsTheLastArgument) {
  expectResult(run(anyMachine, {"--dump", "--snapshot"}), dumpOf(anyMachine), 0);
}

TEST(Program, WithoutSwitchesNeedsASessionBus) {
  const std::vector<std::vector<std::string>> withoutSwitches{
      {},
      {"--snapshot"},
      {"--sample", "low"},
      {"--DUMP", "--version=1", "--snapshot=out.png", "-dump"}};
  for (const auto& arguments : withoutSwitches) {
    const ProcessResult result = run(anyMachine, arguments);
    EXPECT_EQ(result.output, "error=no session bus\n");
    EXPECT_EQ(result.errors,
              "lumowatt: cannot connect to the session bus: No such file or directory\n");
    EXPECT_EQ(result.status, 1);
  }
}

TEST(Program, DumpsTheSameUnderAnotherLocale) {
  const Machine machine(anyMachine);
  Environment environment = machine.environment();
  environment.emplace_back("LC_ALL", "de_DE.UTF-8");
  expectResult(runProcess({LUMOWATT_PROGRAM, "--dump"}, environment), dumpOf(anyMachine), 0);
}

TEST(Program, AnAttributeThatCannotBeReadCountsAsAbsent) {
  const Machine machine(anyMachine);
  for (const int error : {ENODEV, EIO, EAGAIN}) {
    // Without the driver's percentage it is computed (49.45 of 50.06 Wh), without the power
    // nothing is known to flow.
    expectResult(runRefusing(machine, "capacity scope", error),
                 withLine(dumpOf(anyMachine), "percent=99"), 0);
    std::string powerless = dumpOf(anyMachine);
    for (const char* line : {"trend=steady", "minutes=unknown", "batteryAmps=0.000",
                             "batteryWatts=0.000", "percentPerHour=unknown", "systemWatts=0.000"}) {
      powerless = withLine(powerless, line);
    }
    expectResult(runRefusing(machine, "power_now", error), powerless, 0);
  }
}

TEST(Program, ASupplyWhoseDeviceIsGoneIsNotThere) {
  expectResult(runRefusing(Machine(anyMachine), "*", ENODEV), "error=no battery\n", 1);
}

TEST(Program, AChargerThatRefusesToTellItsRatingIsStillOnline) {
  const Machine machine({{"BAT0/type", "Battery"},
                         {"BAT0/status", "Not charging"},
                         {"BAT0/capacity", "80"},
                         {"port/type", "USB"},
                         {"port/online", "1"},
                         {"port/voltage_max", "20000000"},
                         {"port/current_max", "3250000"}});
  const ProcessResult told = runRefusing(machine, "", ENODEV);
  EXPECT_NE(told.output.find("external=true"), std::string::npos);
  EXPECT_NE(told.output.find("adapterWatts=65"), std::string::npos);
  const std::string expected = withLine(told.output, "adapterWatts=0");
  expectResult(runRefusing(machine, "voltage_max current_max", ENODEV),
               withLine(expected, "adapterName="), 0);
}

TEST(Program, AFullDeviceAsStandardOutputIsAFailure) {
  for (const char* command : {"--version", "--dump"}) {
    const ProcessResult result = runShell("lumowatt " + std::string(command) + " > /dev/full");
    EXPECT_EQ(result.status, 1) << command;
    EXPECT_EQ(result.errors,
              "lumowatt: cannot write to the standard output: No space left on device\n");
  }
}

TEST(Program, AClosedPipeAsStandardOutputIsAFailure) {
  // The reader has ended, by the time that the program writes.
  const ProcessResult result = runShell("{ sleep 0.2; lumowatt --dump; echo $? >&2; } | true");
  EXPECT_EQ(result.errors, "lumowatt: cannot write to the standard output: Broken pipe\n1\n");
}

TEST(Program, AClosedStandardOutputIsAFailure) {
  const ProcessResult result = runShell("lumowatt --dump >&-");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "lumowatt: cannot write to the standard output: Bad file descriptor\n");
}

#if LUMOWATT_STATIC_RUNTIME && !LUMOWATT_SANITIZED  // the sanitizers are libraries

TEST(Program, NeedsNoLibraryButTheCLibrary) {
  const ProcessResult result = runProcess({"readelf", "--dynamic", LUMOWATT_PROGRAM});
  ASSERT_EQ(result.status, 0);
  std::size_t needed = 0;
  std::size_t ofTheCLibrary = 0;
  for (std::size_t at = result.output.find("(NEEDED)"); at != std::string::npos;
       at = result.output.find("(NEEDED)", at + 1)) {
    ++needed;
    const std::string line = result.output.substr(at, result.output.find('\n', at) - at);
    const bool known =
        line.find("[libc.so.") != std::string::npos || line.find("[ld-linux") != std::string::npos;
    if (known) ++ofTheCLibrary;
  }
  EXPECT_GE(needed, 1U);
  EXPECT_EQ(ofTheCLibrary, needed) << result.output;
}

#endif

}  // namespace lumowatt

// Tests the built executable: on mocked machines, with every switch, and with a standard output
// that cannot be written. Other files test its snapshots.

#include <gtest/gtest.h>

#include <cerrno>
#include <map>

#include "program/program.h"
#include "support/files.h"
#include "support/fixtures.h"

namespace lumowatt {

namespace {

/// Dumps a machine on which reading the attributes with these names fails with `error`.
ProcessResult dumpWithFailingAttributes(const Machine& machine, const std::string& names,
                                        int error) {
  Environment environment = machine.environment(LUMOWATT_FAILING_ATTRIBUTE);
  environment.emplace_back("REFUSED_NAMES", names);
  environment.emplace_back("REFUSED_ERROR", std::to_string(error));
  return runProcess({LUMOWATT_PROGRAM, "--dump"}, environment);
}

/// Returns `text` with `line` instead of the line that has the same key.
std::string withLine(std::string text, const std::string& line) {
  const std::size_t start = text.find(line.substr(0, line.find('=') + 1));
  return text.replace(start, text.find('\n', start) - start, line);
}

std::string expectedDump(const std::string& fixture) {
  return fileContents(fixturePath("linux", fixture) / "expected.txt");
}

}  // namespace

class ProgramOnMachine : public testing::TestWithParam<std::string> {};

TEST_P(ProgramOnMachine, DumpsTheExpectedReading) {
  const std::string expected = expectedDump(GetParam());
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

TEST(Program, DumpIgnoresTheSampleOptionAndUnknownArguments) {
  const std::string live = expectedDump(anyMachine);
  expectResult(run(anyMachine, {"--dump", "--sample", "low"}), live, 0);
  expectResult(run(anyMachine, {"--verbose", "--dump", "file"}), live, 0);
}

TEST(Program, DumpsWhenTheSnapshotHasNoPath) {
  expectResult(run(anyMachine, {"--dump", "--snapshot"}), expectedDump(anyMachine), 0);
}

TEST(Program, FailsWithoutSwitchesAndWithoutASessionBus) {
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

TEST(Program, DumpsTheSameInAnotherLocale) {
  const Machine machine(anyMachine);
  Environment environment = machine.environment();
  environment.emplace_back("LC_ALL", "de_DE.UTF-8");
  expectResult(runProcess({LUMOWATT_PROGRAM, "--dump"}, environment), expectedDump(anyMachine), 0);
}

TEST(Program, TreatsUnreadableAttributesAsMissing) {
  const Machine machine(anyMachine);
  for (const int error : {ENODEV, EIO, EAGAIN}) {
    // If the driver's percentage is missing, the program computes it (49.45 of 50.06 Wh). If the
    // power is missing, the program assumes that no current flows.
    expectResult(dumpWithFailingAttributes(machine, "capacity scope", error),
                 withLine(expectedDump(anyMachine), "percent=99"), 0);
    std::string withoutPower = expectedDump(anyMachine);
    for (const char* line : {"trend=steady", "minutes=unknown", "batteryAmps=0.000",
                             "batteryWatts=0.000", "percentPerHour=unknown", "systemWatts=0.000"}) {
      withoutPower = withLine(withoutPower, line);
    }
    expectResult(dumpWithFailingAttributes(machine, "power_now", error), withoutPower, 0);
  }
}

TEST(Program, IgnoresSuppliesWhoseDeviceWasRemoved) {
  expectResult(dumpWithFailingAttributes(Machine(anyMachine), "*", ENODEV), "error=no battery\n",
               1);
}

TEST(Program, ReportsAChargerAsOnlineWithoutReadableRating) {
  const Machine machine({{"BAT0/type", "Battery"},
                         {"BAT0/status", "Not charging"},
                         {"BAT0/capacity", "80"},
                         {"port/type", "USB"},
                         {"port/online", "1"},
                         {"port/voltage_max", "20000000"},
                         {"port/current_max", "3250000"}});
  const ProcessResult readable = dumpWithFailingAttributes(machine, "", ENODEV);
  EXPECT_NE(readable.output.find("external=true"), std::string::npos);
  EXPECT_NE(readable.output.find("adapterWatts=65"), std::string::npos);
  const std::string expected = withLine(readable.output, "adapterWatts=0");
  expectResult(dumpWithFailingAttributes(machine, "voltage_max current_max", ENODEV),
               withLine(expected, "adapterName="), 0);
}

TEST(Program, FailsWhenStandardOutputIsAFullDevice) {
  for (const char* command : {"--version", "--dump"}) {
    const ProcessResult result = runShell("lumowatt " + std::string(command) + " > /dev/full");
    EXPECT_EQ(result.status, 1) << command;
    EXPECT_EQ(result.errors,
              "lumowatt: cannot write to the standard output: No space left on device\n");
  }
}

TEST(Program, FailsWhenStandardOutputIsABrokenPipe) {
  // The reader exits before the program writes.
  const ProcessResult result = runShell("{ sleep 0.2; lumowatt --dump; echo $? >&2; } | true");
  EXPECT_EQ(result.errors, "lumowatt: cannot write to the standard output: Broken pipe\n1\n");
}

TEST(Program, FailsWhenStandardOutputIsClosed) {
  const ProcessResult result = runShell("lumowatt --dump >&-");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "lumowatt: cannot write to the standard output: Bad file descriptor\n");
}

#if LUMOWATT_STATIC_RUNTIME && !LUMOWATT_SANITIZED  // sanitizers are shared libraries

TEST(Program, LinksOnlyTheCLibraryDynamically) {
  const ProcessResult result = runProcess({"readelf", "--dynamic", LUMOWATT_PROGRAM});
  ASSERT_EQ(result.status, 0);
  std::size_t needed = 0;
  std::size_t fromCLibrary = 0;
  for (std::size_t at = result.output.find("(NEEDED)"); at != std::string::npos;
       at = result.output.find("(NEEDED)", at + 1)) {
    ++needed;
    const std::string line = result.output.substr(at, result.output.find('\n', at) - at);
    const bool isCLibrary =
        line.find("[libc.so.") != std::string::npos || line.find("[ld-linux") != std::string::npos;
    if (isCLibrary) ++fromCLibrary;
  }
  EXPECT_GE(needed, 1U);
  EXPECT_EQ(fromCLibrary, needed) << result.output;
}

#endif

}  // namespace lumowatt

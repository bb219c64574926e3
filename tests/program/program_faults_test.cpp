// Tests the built executable on faulty machines and with exhausted resources. The program must
// either produce a correct result or fail with a message, and must always exit.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "program/program.h"
#include "support/fixtures.h"

namespace lumowatt {

namespace {

/// Beginning of a command that kills the command after 20 seconds.
const std::vector<std::string> withTimeout = {"timeout", "--signal=KILL", "20"};

/// Dumps a machine in a process with these limits, which are options of prlimit.
ProcessResult dump(const Machine& machine, const std::vector<std::string>& limits = {}) {
  std::vector<std::string> command = withTimeout;
  command.emplace_back("prlimit");
  command.insert(command.end(), limits.begin(), limits.end());
  command.insert(command.end(), {LUMOWATT_PROGRAM, "--dump"});
  return runProcess(command, machine.environment());
}

std::string dumpOfAnyMachine() {
  return fileContents(fixturePath("linux", anyMachine) / "expected.txt");
}

/// Writes a snapshot of a sample in a process with this limit, which is an option of prlimit.
/// Expects either the expected file, or no file and an error message. Returns the exit status.
int snapshotWithin(const std::string& limit, const std::string& expected) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  std::vector<std::string> command = withTimeout;
  command.insert(command.end(),
                 {"prlimit", limit, LUMOWATT_PROGRAM, "--snapshot", path, "--sample", "low"});
  const ProcessResult result = runProcess(command);
  if (result.status == 0) {
    EXPECT_EQ(result.output, "wrote " + path + "\n") << limit;
    EXPECT_TRUE(fileContents(path) == expected) << limit;
    return 0;
  }
  // The dynamic loader may fail before the program starts.
  const bool hasStarted =
      result.errors.find("error while loading shared libraries") == std::string::npos;
  EXPECT_EQ(result.status, hasStarted ? 1 : 127) << limit << ": " << result.errors;
  EXPECT_NE(result.errors, "") << limit;
  EXPECT_FALSE(std::filesystem::exists(path)) << limit;
  return result.status;
}

}  // namespace

TEST(ProgramDump, IgnoresAttributesThatArePipesWithoutBlocking) {
  const Machine machine(anyMachine);
  machine.set("port/other", "");  // creates a device; the loop makes its type a pipe
  for (const char* const name : {"BAT0/capacity", "BAT0/scope", "BAT0/temp", "AC/online",
                                 "AC/model_name", "port/type", "pipe"}) {
    machine.remove(name);
    ASSERT_EQ(::mkfifo((machine.powerSupplyFolder() / name).c_str(), 0600), 0) << name;
  }
  // The driver's percentage is missing, so the program computes it: 49.45 of 50.06 Wh.
  std::string expected = dumpOfAnyMachine();
  ASSERT_TRUE(expected.starts_with("percent=98\n"));
  expected.replace(0, 10, "percent=99");
  expectResult(dump(machine), expected, 0);
}

TEST(ProgramDump, ReportsNoBatteryWhenTheFolderIsAPipe) {
  const Machine machine(anyMachine);
  std::filesystem::remove_all(machine.powerSupplyFolder());
  ASSERT_EQ(::mkfifo(machine.powerSupplyFolder().c_str(), 0600), 0);
  expectResult(dump(machine), "error=no battery\n", 1);
}

TEST(ProgramDump, ReadsTenThousandSuppliesWithFewResources) {
  const Machine machine(anyMachine);
  machine.set("../port/type", "USB");
  machine.set("../port/online", "0");
  for (int i = 0; i < 10'000; ++i) {
    std::filesystem::create_directory_symlink(
        "../port", machine.powerSupplyFolder() / ("port" + std::to_string(i)));
  }
  std::vector<std::string> limits{"--nofile=6"};
  if (!isSanitized) limits.emplace_back("--data=8388608");
  expectResult(dump(machine, limits), dumpOfAnyMachine(), 0);
}

#if !LUMOWATT_SANITIZED  // UndefinedBehaviorSanitizer opens additional files

TEST(ProgramDump, IsCompleteOrFailsWithFewFileDescriptors) {
  const Machine machine(anyMachine);
  // Three descriptors are open at start. The loader needs one more. Reading an attribute needs
  // three more.
  for (int files = 4; files <= 5; ++files) {
    const ProcessResult result = dump(machine, {"--nofile=" + std::to_string(files)});
    EXPECT_EQ(result.output, "error=no battery\n") << files;
    EXPECT_EQ(result.errors, "lumowatt: cannot read the battery: Too many open files\n");
    EXPECT_EQ(result.status, 1) << files;
  }
  expectResult(dump(machine, {"--nofile=6"}), dumpOfAnyMachine(), 0);
}

#endif

TEST(ProgramSnapshot, IsCorrectOrFailsWithFewFileDescriptors) {
  const std::string expected = snapshot({"--sample", "low"});
  for (int files = 3; files <= 12; ++files) {
    snapshotWithin("--nofile=" + std::to_string(files), expected);
  }
  EXPECT_EQ(snapshotWithin("--nofile=12", expected), 0);
}

TEST(ProgramSnapshot, LeavesAUsableFontCacheWithFewFileDescriptors) {
  const TemporaryFolder folder;
  const std::filesystem::path cache = folder.path() / "cache";
  folder.write("fonts.conf",
               "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig>"
               "<dir>/usr/share/fonts</dir><cachedir>" +
                   cache.string() + "</cachedir></fontconfig>");
  const auto run = [&](const std::string& files) {
    return runProcess({"prlimit", "--nofile=" + files, LUMOWATT_PROGRAM, "--snapshot",
                       folder.path() / "out.png", "--sample", "low"},
                      {{"FONTCONFIG_FILE", folder.path() / "fonts.conf"}});
  };
  const int minimum = isSanitized ? 5 : 4;  // descriptors that the program needs to start
  for (int files = minimum; files <= 8; ++files) {
    std::filesystem::remove_all(cache);
    const ProcessResult failure = run(std::to_string(files));
    EXPECT_EQ(failure.output, "error=no bitmap\n") << files;
    EXPECT_NE(failure.errors.find("lumowatt: "), std::string::npos) << files;
    EXPECT_EQ(run("64").status, 0) << files;
  }
}

TEST(ProgramWithoutProc, DumpsButFailsToDrawAndToShowTheItem) {
  const Machine machine(anyMachine);
  const auto run = [&machine](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(),
                     {"unshare", "--mount", "--map-root-user", "sh", "-c",
                      R"(mount -t tmpfs none /proc && exec "$0" "$@")", LUMOWATT_PROGRAM});
    return runProcess(arguments, machine.environment());
  };
  if (run({"--version"}).status != 0) GTEST_SKIP() << "/proc cannot be hidden here";
  expectResult(run({"--dump"}), dumpOfAnyMachine(), 0);
  const ProcessResult picture = run({"--snapshot", "/nowhere/out.png"});
  EXPECT_EQ(picture.output, "error=no bitmap\n");
  EXPECT_EQ(picture.errors,
            "lumowatt: cannot draw the picture: cannot locate lumowatt-drawing.so without /proc\n");
  const ProcessResult item = run({});
  EXPECT_EQ(item.output, "error=no desktop\n");
  EXPECT_EQ(item.errors,
            "lumowatt: cannot show the item: cannot locate lumowatt-desktop.so without /proc\n");
}

// AddressSanitizer needs much address space, and its allocations do not fail.
#if !LUMOWATT_SANITIZED

TEST(ProgramDump, FailsWithAMessageWhereverMemoryRunsOut) {
  const Machine machine(anyMachine);
  int from = 1;
  for (; from < 1000; ++from) {
    const ProcessResult result = runProcess({LUMOWATT_PROGRAM, "--dump"},
                                            {{"LD_PRELOAD", LUMOWATT_FAILING_MEMORY},
                                             {"POWER_SUPPLY_FOLDER", machine.powerSupplyFolder()},
                                             {"REFUSED_FROM", std::to_string(from)}});
    if (result.status == 0) {
      EXPECT_EQ(result.output, dumpOfAnyMachine());
      break;
    }
    EXPECT_EQ(result.status, 1) << from;
    EXPECT_EQ(result.output, "") << from;
    EXPECT_TRUE(result.errors.ends_with("lumowatt: out of memory\n")) << from << result.errors;
  }
  EXPECT_GT(from, 10);
  EXPECT_LT(from, 1000);
}

TEST(ProgramSnapshot, IsCorrectOrFailsWithLittleMemory) {
  const std::string expected = snapshot({"--sample", "low"});
  for (const char* const limit : {"--as=", "--data="}) {
    bool isEnough = false;
    for (int mebibytes = 2; mebibytes <= 256; mebibytes += mebibytes < 32 ? 2 : 16) {
      const std::string option = limit + std::to_string(mebibytes * 1024 * 1024);
      const bool isCorrect = snapshotWithin(option, expected) == 0;
      EXPECT_TRUE(isCorrect || !isEnough) << option << ": a lower limit was sufficient";
      isEnough = isCorrect;
    }
    EXPECT_TRUE(isEnough) << limit;
  }
}

#endif

}  // namespace lumowatt

// The built executable on machines and in processes in which something is wrong or short: it gives
// a right answer, or none and a reason, and always ends.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "program/program.h"
#include "support/fixtures.h"

namespace lumowatt {

namespace {

/// A command that ends by itself, or else with the status 124.
const std::vector<std::string> inTime = {"timeout", "--signal=KILL", "20"};

/// The dump of a machine by a process with limits, in words of prlimit.
ProcessResult dump(const Machine& machine, const std::vector<std::string>& limits = {}) {
  std::vector<std::string> command = inTime;
  command.emplace_back("prlimit");
  command.insert(command.end(), limits.begin(), limits.end());
  command.insert(command.end(), {LUMOWATT_PROGRAM, "--dump"});
  return runProcess(command, machine.environment());
}

std::string dumpOfAnyMachine() {
  return fileContents(fixturePath("linux", anyMachine) / "expected.txt");
}

/// A snapshot of a sample by a process with a limit, which must be right or missing with a reason.
/// Returns the status.
int snapshotWithin(const std::string& limit, const std::string& expected) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  std::vector<std::string> command = inTime;
  command.insert(command.end(),
                 {"prlimit", limit, LUMOWATT_PROGRAM, "--snapshot", path, "--sample", "low"});
  const ProcessResult result = runProcess(command);
  if (result.status == 0) {
    EXPECT_EQ(result.output, "wrote " + path + "\n") << limit;
    EXPECT_TRUE(fileContents(path) == expected) << limit;
    return 0;
  }
  const bool isProgram = result.errors.find("error while loading shared libraries") ==
                         std::string::npos;  // but for those, the program has not even begun
  EXPECT_EQ(result.status, isProgram ? 1 : 127) << limit << ": " << result.errors;
  EXPECT_NE(result.errors, "") << limit;
  EXPECT_FALSE(std::filesystem::exists(path)) << limit;
  return result.status;
}

}  // namespace

TEST(ProgramFaults, PipesInThePlaceOfAttributesAreAbsentAndKeepNobodyWaiting) {
  const Machine machine(anyMachine);
  machine.set("port/other", "");  // a device whose type is a pipe as well
  for (const char* const name : {"BAT0/capacity", "BAT0/scope", "BAT0/temp", "AC/online",
                                 "AC/model_name", "port/type", "pipe"}) {
    machine.remove(name);
    ASSERT_EQ(::mkfifo((machine.powerSupplyFolder() / name).c_str(), 0600), 0) << name;
  }
  // Without the driver's percentage it is computed: 49.45 of 50.06 Wh.
  std::string expected = dumpOfAnyMachine();
  ASSERT_TRUE(expected.starts_with("percent=98\n"));
  expected.replace(0, 10, "percent=99");
  expectResult(dump(machine), expected, 0);
}

TEST(ProgramFaults, APipeInThePlaceOfTheFolderIsNoBattery) {
  const Machine machine(anyMachine);
  std::filesystem::remove_all(machine.powerSupplyFolder());
  ASSERT_EQ(::mkfifo(machine.powerSupplyFolder().c_str(), 0600), 0);
  expectResult(dump(machine), "error=no battery\n", 1);
}

TEST(ProgramFaults, TenThousandSuppliesAreReadWithFewFilesAndLittleMemory) {
  const Machine machine(anyMachine);
  machine.set("../port/type", "USB");
  machine.set("../port/online", "0");
  for (int i = 0; i < 10'000; ++i) {
    std::filesystem::create_directory_symlink(
        "../port", machine.powerSupplyFolder() / ("port" + std::to_string(i)));
  }
  std::vector<std::string> limits{"--nofile=6"};
  if (!sanitized) limits.emplace_back("--data=8388608");
  expectResult(dump(machine, limits), dumpOfAnyMachine(), 0);
}

#if !LUMOWATT_SANITIZED  // UndefinedBehaviorSanitizer opens files of its own

TEST(ProgramFaults, ADumpWithFewFilesIsWholeOrNone) {
  const Machine machine(anyMachine);
  // Three are open from the start, as many are needed for an attribute; the loader needs one.
  for (int files = 4; files <= 5; ++files) {
    const ProcessResult result = dump(machine, {"--nofile=" + std::to_string(files)});
    EXPECT_EQ(result.output, "error=no battery\n") << files;
    EXPECT_EQ(result.errors, "lumowatt: cannot read the battery: Too many open files\n");
    EXPECT_EQ(result.status, 1) << files;
  }
  expectResult(dump(machine, {"--nofile=6"}), dumpOfAnyMachine(), 0);
}

#endif

TEST(ProgramFaults, ASnapshotWithFewFilesIsRightOrNone) {
  const std::string expected = snapshot({"--sample", "low"});
  for (int files = 3; files <= 12; ++files) {
    snapshotWithin("--nofile=" + std::to_string(files), expected);
  }
  EXPECT_EQ(snapshotWithin("--nofile=12", expected), 0);
}

TEST(ProgramFaults, ASnapshotWithFewFilesLeavesTheCacheOfFontsAsItShouldBe) {
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
  const int least = sanitized ? 5 : 4;  // with which it starts
  for (int files = least; files <= 8; ++files) {
    std::filesystem::remove_all(cache);
    const ProcessResult without = run(std::to_string(files));
    EXPECT_EQ(without.output, "error=no bitmap\n") << files;
    EXPECT_NE(without.errors.find("lumowatt: "), std::string::npos) << files;
    EXPECT_EQ(run("64").status, 0) << files;
  }
}

TEST(ProgramFaults, WithoutProcADumpIsTheSameAndThereIsNoPictureAndNoItem) {
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

#if !LUMOWATT_SANITIZED  // AddressSanitizer needs memory that it does not use, and refuses none

TEST(ProgramFaults, ADumpWithoutMemoryFromAnyMomentOnIsNoneAndALineThatSaysSo) {
  const Machine machine(anyMachine);
  int from = 1;
  for (; from < 1000; ++from) {
    const ProcessResult result = runProcess({LUMOWATT_PROGRAM, "--dump"},
                                            {{"LD_PRELOAD", LUMOWATT_REFUSING_MEMORY},
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

TEST(ProgramFaults, ASnapshotInLittleMemoryIsRightOrNone) {
  const std::string expected = snapshot({"--sample", "low"});
  for (const char* const limit : {"--as=", "--data="}) {
    bool isEnough = false;
    for (int mebibytes = 2; mebibytes <= 256; mebibytes += mebibytes < 32 ? 2 : 16) {
      const std::string all = limit + std::to_string(mebibytes * 1024 * 1024);
      const bool isRight = snapshotWithin(all, expected) == 0;
      EXPECT_TRUE(isRight || !isEnough) << all << ": less was enough";
      isEnough = isRight;
    }
    EXPECT_TRUE(isEnough) << limit;
  }
}

#endif

}  // namespace lumowatt

// Tests how the built executable writes snapshots: the destination, the errors and the modules that
// it loads. Another file tests the pixels.

#include <gtest/gtest.h>
#include <unistd.h>

#include <utility>

#include "program/program.h"

namespace lumowatt {

namespace {

/// Copy of the program, in a temporary folder that every user can access.
class ProgramCopy {
 public:
  explicit ProgramCopy(std::string programFolder) : folder_(std::move(programFolder)) {
    std::filesystem::permissions(root_.path(), std::filesystem::perms(0755));
    std::filesystem::create_directories(root_.path() / folder_);
    std::filesystem::copy_file(LUMOWATT_PROGRAM, program());
  }

  void addModule(const std::string& folder) const {
    std::filesystem::create_directories(root_.path() / folder);
    const auto module = root_.path() / folder / "lumowatt-drawing.so";
    std::filesystem::copy_file(LUMOWATT_DRAWING_MODULE, module);
    std::filesystem::permissions(module, std::filesystem::perms(0644));  // as in packages
  }

  const TemporaryFolder& root() const { return root_; }
  std::string program() const { return root_.path() / folder_ / "lumowatt"; }
  std::string picture() const { return root_.path() / "out.png"; }

  ProcessResult run() const {
    return runProcess({program(), "--snapshot", picture(), "--sample", "low"});
  }

 private:
  TemporaryFolder root_;
  std::string folder_;
};

}  // namespace

TEST(ProgramSnapshot, OverridesTheDumpAndAcceptsASwitchAsItsPath) {
  const TemporaryFolder folder;
  const auto result =
      runShell("cd " + folder.path().string() +
               " && lumowatt --snapshot --dump --sample low && head -c 4 ./--dump | tail -c 3");
  expectResult(result, "wrote --dump\nPNG", 0);
}

TEST(ProgramSnapshot, UsesTheFirstOfTwoPaths) {
  const TemporaryFolder folder;
  const auto result = runShell("cd " + folder.path().string() +
                               " && lumowatt --snapshot a --snapshot b --sample low && ls");
  expectResult(result, "wrote a\na\n", 0);
}

TEST(ProgramSnapshot, UsesTheFirstOfTwoSamples) {
  expectResult(run(anyMachine, {"--snapshot", "/", "--sample", "nosuch", "--sample", "low"}),
               "error=unknown sample\n", 1);
  EXPECT_EQ(snapshot({"--sample", "low", "--sample", "nosuch"}), snapshot({"--sample", "low"}));
}

TEST(ProgramSnapshot, WritesNoFileForAnUnknownSample) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  expectResult(run(anyMachine, {"--snapshot", path, "--sample", "nosuch"}),
               "error=unknown sample\n", 1);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(ProgramSnapshot, NeedsABatteryUnlessASampleIsNamed) {
  const std::string none = "31-no-battery-desktop-ucsi-gpu";
  expectResult(run(none, {"--snapshot", "/", "--sample"}), "error=no battery\n", 1);
  EXPECT_EQ(snapshot({"--sample", "low"}, none), snapshot({"--sample", "low"}));
}

// Errors when writing

TEST(ProgramSnapshot, FailsWhenThePathIsAFolder) {
  const TemporaryFolder folder;
  expectResult(run(anyMachine, {"--snapshot", folder.path()}), "error=Is a directory\n", 1);
}

TEST(ProgramSnapshot, FailsWhenTheFolderDoesNotExist) {
  expectResult(run(anyMachine, {"--snapshot", "/nowhere/out.png"}),
               "error=No such file or directory\n", 1);
  expectResult(run(anyMachine, {"--snapshot", ""}), "error=No such file or directory\n", 1);
}

TEST(ProgramSnapshot, FailsWhenTheDeviceIsFull) {
  expectResult(run(anyMachine, {"--snapshot", "/dev/full"}), "error=No space left on device\n", 1);
}

TEST(ProgramSnapshot, PreservesAFileThatItMayNotWrite) {
  const ProgramCopy installation("bin");
  installation.addModule("bin");
  installation.root().write("out.png", "old");
  std::filesystem::permissions(installation.picture(), std::filesystem::perms(0444));
  std::vector<std::string> command;
  if (::geteuid() == 0) {  // root may write every file
    command = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
  }
  for (const std::string& path :
       {installation.picture(), installation.root().path().string() + "/new.png"}) {
    if (::geteuid() != 0 && path != installation.picture()) continue;  // this user owns the folder
    std::vector<std::string> all = command;
    all.insert(all.end(), {installation.program(), "--snapshot", path, "--sample", "low"});
    const auto result = runProcess(all, {{"HOME", "/nonexistent"}});
    EXPECT_EQ(result.output, "error=Permission denied\n") << result.errors;
    EXPECT_EQ(result.status, 1);
  }
  EXPECT_EQ(fileContents(installation.picture()), "old");
}

TEST(ProgramSnapshot, FailsWhenAWriteFailsHalfway) {
  const TemporaryFolder folder;
  const auto result = runShell("cd " + folder.path().string() +
                               " && ulimit -f 8 && lumowatt --snapshot out.png --sample low");
  expectResult(result, "error=File too large\n", 1);
}

TEST(ProgramSnapshot, FailsWhenThePathIsABrokenPipe) {
  // The reader exits before the program writes.
  const auto result = runShell(
      "{ sleep 0.2; lumowatt --snapshot /dev/fd/3 --sample low 3>&1 >&2; echo $? >&2; } | true");
  EXPECT_EQ(result.errors, "error=Broken pipe\n1\n");
}

TEST(ProgramSnapshot, PrecedesTheMessageOnStandardOutput) {
  const std::string expected = snapshot({"--sample", "low"}) + "wrote /dev/stdout\n";
  const std::string command = "lumowatt --snapshot /dev/stdout --sample low";
  EXPECT_TRUE(runShell(command).output == expected) << "into a file";
  EXPECT_TRUE(runShell(command + " | cat").output == expected) << "into a pipe";
  const std::string before = "echo before; ";
  EXPECT_TRUE(runShell(before + command + "; echo after").output ==
              "before\n" + expected + "after\n")
      << "into a file that is not empty";
}

TEST(ProgramSnapshot, FailsWhenStandardOutputIsFull) {
  const auto result = runShell("lumowatt --snapshot /dev/stdout --sample low > /dev/full");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "lumowatt: cannot write to the standard output: No space left on device\n");
}

TEST(ProgramSnapshot, FailsWhenItsMessageCannotBeWritten) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  const auto result = runShell("lumowatt --snapshot " + path + " --sample low > /dev/full");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "lumowatt: cannot write to the standard output: No space left on device\n");
}

// Loading of the drawing module

TEST(ProgramSnapshot, FailsWithoutTheDrawingModule) {
  const ProgramCopy alone("bin");
  const auto result = alone.run();
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("lib/lumowatt/lumowatt-drawing.so: cannot open shared object file"),
            std::string::npos)
      << result.errors;
  EXPECT_FALSE(std::filesystem::exists(alone.picture()));
}

TEST(ProgramSnapshot, PrefersTheModuleOfItsInstallation) {
  const ProgramCopy installed("bin");
  installed.addModule("lib/lumowatt");
  installed.root().write("bin/lumowatt-drawing.so", "another");
  expectResult(installed.run(), "wrote " + installed.picture() + "\n", 0);
}

TEST(ProgramSnapshot, IgnoresAModuleInLibWhenTheProgramIsNotInBin) {
  const ProgramCopy build("build");
  build.addModule("lib/lumowatt");
  EXPECT_EQ(build.run().output, "error=no bitmap\n");
}

TEST(ProgramSnapshot, IgnoresModulesInFoldersFromTheEnvironment) {
  const ProgramCopy alone("bin");
  alone.addModule("elsewhere");
  const std::string elsewhere = alone.root().path() / "elsewhere";
  const auto result = runProcess({"/usr/bin/env", "--chdir=" + elsewhere, alone.program(),
                                  "--snapshot", alone.picture(), "--sample", "low"},
                                 {{"LD_LIBRARY_PATH", elsewhere}, {"PATH", elsewhere}});
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
}

TEST(ProgramSnapshot, FailsWhenTheModuleIsNotALibrary) {
  const ProgramCopy broken("bin");
  broken.root().write("bin/lumowatt-drawing.so", "not a library");
  const auto result = broken.run();
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.errors.starts_with("lumowatt: ")) << result.errors;
}

TEST(ProgramSnapshot, FailsWhenTheModuleExportsNothing) {
  const ProgramCopy wrong("bin");
  std::filesystem::copy_file(LUMOWATT_FAILING_ATTRIBUTE,
                             wrong.root().path() / "bin" / "lumowatt-drawing.so");
  const auto result = wrong.run();
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("undefined symbol: lumowattVersion"), std::string::npos)
      << result.errors;
}

TEST(ProgramSnapshot, FailsWhenTheModuleHasAnotherVersion) {
  const ProgramCopy upgraded("bin");
  std::filesystem::copy_file(LUMOWATT_OTHER_VERSION,
                             upgraded.root().path() / "bin" / "lumowatt-drawing.so");
  const auto result = upgraded.run();
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.errors.ends_with(" has another version than this process\n")) << result.errors;
}

TEST(ProgramSnapshot, FailsWithoutAFont) {
  const TemporaryFolder folder;
  folder.write("fonts.conf",
               "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
               "<fontconfig><dir>/nonexistent</dir></fontconfig>");
  const std::string path = folder.path() / "out.png";
  const auto result = runProcess({LUMOWATT_PROGRAM, "--snapshot", path, "--sample", "low"},
                                 {{"FONTCONFIG_FILE", folder.path() / "fonts.conf"}});
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("lumowatt: cannot draw the picture: no font is installed\n"),
            std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(ProgramSnapshot, FailsWhenPangoIsBroken) {
  const auto result = runProcess({LUMOWATT_PROGRAM, "--snapshot", "/", "--sample", "low"},
                                 {{"PANGOCAIRO_BACKEND", "nonsense"}});
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
}

TEST(ProgramSnapshot, IsTheOnlyCommandThatLoadsTheDrawingModule) {
  const auto loaded = [](const std::vector<std::string>& arguments) {
    const Machine machine(anyMachine);
    Environment environment = machine.environment();
    environment.emplace_back("LD_DEBUG", "files");
    std::vector<std::string> command{LUMOWATT_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProcess(command, environment).errors;
  };
  const TemporaryFolder folder;
  const std::string picture = loaded({"--snapshot", folder.path() / "out.png"});
  EXPECT_NE(picture.find("lumowatt-drawing.so"), std::string::npos);
  EXPECT_NE(picture.find("libcairo"), std::string::npos);
  for (const char* argument : {"--dump", "--version"}) {
    const std::string files = loaded({argument});
    EXPECT_NE(files.find("libc.so"), std::string::npos);
    EXPECT_EQ(files.find("lumowatt-drawing.so"), std::string::npos) << argument;
    EXPECT_EQ(files.find("libcairo"), std::string::npos) << argument;
  }
  const std::string failed = loaded({"--snapshot", "out.png", "--sample", "nosuch"});
  EXPECT_EQ(failed.find("lumowatt-drawing.so"), std::string::npos);
}

#if !LUMOWATT_SANITIZED  // sanitizers are incompatible with valgrind and do the same checks

TEST(ProgramSnapshot, LeaksNoMemoryAndHasNoInvalidAccesses) {
  // Two kinds of reports are suppressed. Memory is "possibly lost" because Pango stores only
  // pointers into the middle of its language objects. Frees are "mismatched" because the program
  // and its module each contain an operator new. Both call malloc, but valgrind intercepts only one
  // of them.
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  const auto result =
      runProcess({"valgrind", "--quiet", "--error-exitcode=9", "--leak-check=full",
                  "--show-mismatched-frees=no", "--show-leak-kinds=definite,indirect",
                  "--errors-for-leak-kinds=definite,indirect",
                  std::string("--suppressions=") + LUMOWATT_VALGRIND_SUPPRESSIONS, LUMOWATT_PROGRAM,
                  "--snapshot", path, "--sample", "draining"});
  expectResult(result, "wrote " + path + "\n", 0);
}

#endif

}  // namespace lumowatt

#include "platform/freedesktop/user/programs.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>

#include "platform/freedesktop/user/programs_folder.h"

namespace lumowatt::freedesktop {

namespace {

class ProgramsTest : public ProgramsFolder {
 protected:
  /// Waits for the started program and returns its wait status.
  static int status() {
    int status = 0;
    EXPECT_GT(::wait(&status), 0);
    return status;
  }
};

}  // namespace

TEST_F(ProgramsTest, FindsAProgramInThePath) {
  addProgram("there");
  EXPECT_EQ(findProgram("there"), pathOf("there"));
  EXPECT_EQ(findProgram("none"), "");
  EXPECT_EQ(findProgram(""), "");
}

TEST_F(ProgramsTest, IgnoresFilesThatAreNotExecutable) {
  folder.write("bin/text", "text");
  std::filesystem::create_directory(folder.path() / "bin" / "folder");
  EXPECT_EQ(findProgram("text"), "");
  EXPECT_EQ(findProgram("folder"), "");
}

TEST_F(ProgramsTest, SearchesFoldersInOrderAndSkipsRelativePaths) {
  addProgram("there");
  folder.write("other/there", "#!/bin/sh\n");
  std::filesystem::permissions(folder.path() / "other" / "there", std::filesystem::perms(0755));
  const std::string other = folder.path() / "other";
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());  // contains bin/there
  const ScopedVariable several("PATH", "::.:bin:" + other + ":" + (folder.path() / "bin").string());
  EXPECT_EQ(findProgram("there"), other + "/there");
  std::filesystem::current_path(before);
}

TEST_F(ProgramsTest, FindsAProgramByAnAbsoluteButNotARelativePath) {
  addProgram("there");
  EXPECT_EQ(findProgram(pathOf("there")), pathOf("there"));
  EXPECT_EQ(findProgram("bin/there"), "");
  EXPECT_EQ(findProgram("./there"), "");
}

TEST_F(ProgramsTest, StartsTheFirstInstalledProgram) {
  const std::string result = folder.path() / "result";
  addProgram("second", "echo second \"$@\" > " + result);
  addProgram("third", "echo third > " + result);
  EXPECT_TRUE(startFirst({{"first"}, {"second", "a b", "$HOME", "*"}, {"third"}}));
  EXPECT_EQ(status(), 0);
  EXPECT_EQ(fileContents(result), "second a b $HOME *\n") << "no shell changes the arguments";
}

TEST_F(ProgramsTest, ReturnsNothingIfNoProgramIsInstalled) {
  EXPECT_FALSE(startFirst({{"first"}, {"second"}}));
  EXPECT_FALSE(startFirst({}));
}

TEST_F(ProgramsTest, PassesTheInputToTheProgram) {
  const std::string result = folder.path() / "result";
  addProgram("reader", "/bin/cat > " + result);
  const std::string input = "On battery\nCharge: 64%\nünïcode " + std::string(4000, 'x');
  EXPECT_TRUE(startFirst({{"reader"}}, input));
  EXPECT_EQ(status(), 0);
  EXPECT_EQ(fileContents(result), input);
}

TEST_F(ProgramsTest, StartsAProgramThatIgnoresItsInput) {
  addProgram("idle");
  EXPECT_TRUE(startFirst({{"idle"}}, "text"));
  EXPECT_EQ(status(), 0);
}

TEST_F(ProgramsTest, FailsIfTheInputExceedsThePipeBuffer) {
  addProgram("reader", "/bin/cat > /dev/null");
  EXPECT_FALSE(startFirst({{"reader"}}, std::string(1000000, 'x')));
}

TEST_F(ProgramsTest, ResetsIgnoredSignalsInTheProgram) {
  const std::string result = folder.path() / "result";
  addProgram("signals", "/bin/grep SigIgn /proc/self/status > " + result);
  const auto before = std::signal(SIGPIPE, SIG_IGN);
  EXPECT_TRUE(startFirst({{"signals"}}));
  EXPECT_EQ(status(), 0);
  std::signal(SIGPIPE, before);
  const std::string line = fileContents(result);  // "SigIgn:" and a hexadecimal mask
  const auto ignored = std::stoull(line.substr(line.find('\t')), nullptr, 16);
  EXPECT_EQ(ignored >> (SIGPIPE - 1U) & 1U, 0U) << line;
}

TEST_F(ProgramsTest, ReturnsTheNameOfTheStartedProgram) {
  addProgram("second");
  const auto started = startFirst({{"first"}, {"second"}});
  ASSERT_TRUE(started);
  EXPECT_EQ(started->name, "second");
  EXPECT_EQ(::waitpid(started->process, nullptr, 0), started->process);
}

}  // namespace lumowatt::freedesktop

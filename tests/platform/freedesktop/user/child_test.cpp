#include "platform/freedesktop/user/child.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/freedesktop/user/programs.h"
#include "platform/freedesktop/user/programs_folder.h"

namespace lumowatt::freedesktop {

namespace {

class ChildTest : public ProgramsFolder {
 protected:
  ChildTest() {
    ::sigprocmask(SIG_SETMASK, nullptr, &before);
    prepareToWatchChildren();
    EXPECT_GE(sd_event_new(Out(loop)), 0);
  }
  ~ChildTest() override { ::sigprocmask(SIG_SETMASK, &before, nullptr); }

  void runOnce() const { EXPECT_GE(sd_event_run(loop.get(), UINT64_MAX), 0); }

  /// Starts a program whose output is captured, and records its exit.
  std::unique_ptr<CapturedProgram> capture(const std::string& name, const std::string& input = "") {
    return CapturedProgram::start(loop.get(), {{name}}, input,
                                  [this](const std::optional<std::string>& text) {
                                    ++exitCount;
                                    output = text;
                                  });
  }

  /// Runs a script and returns its output. Returns std::nullopt if the script fails.
  std::optional<std::string> outputOf(const std::string& script) {
    addProgram("program", script);
    exitCount = 0;
    const auto program = capture("program");
    EXPECT_TRUE(program);
    while (exitCount == 0) runOnce();
    return output;
  }

  /// Returns whether this process has no children, neither running nor zombies.
  static bool hasNoChild() { return ::waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD; }

  sigset_t before{};
  EventLoop loop;
  int exitCount = 0;
  std::optional<std::string> output;
};

}  // namespace

TEST_F(ChildTest, ReportsItsExitOnceWithItsSuccess) {
  for (const char* const script : {"exit 0", "exit 1", "kill -9 $$"}) {
    addProgram("program", script);
    const auto started = startFirst({{"program"}});
    ASSERT_TRUE(started);
    int exits = 0;
    EventSource watch = watchChild(loop.get(), started->process, [&](bool succeeded) {
      ++exits;
      EXPECT_EQ(succeeded, std::string_view(script) == "exit 0") << script;
    });
    ASSERT_TRUE(watch);
    while (exits == 0) runOnce();
    EXPECT_EQ(sd_event_run(loop.get(), 0), 0);
    EXPECT_EQ(exits, 1);
    EXPECT_TRUE(hasNoChild());
  }
}

TEST_F(ChildTest, DetachedProgramIsReportedByNameAndReaped) {
  addProgram("second", "exit 3");
  std::string report;
  const auto name = startDetached(loop.get(), {{"first"}, {"second"}}, "",
                                  [&](const std::string& program, bool succeeded) {
                                    report = program + (succeeded ? " succeeded" : " failed");
                                  });
  EXPECT_EQ(name, "second");
  while (report.empty()) runOnce();
  EXPECT_EQ(report, "second failed");
  EXPECT_TRUE(hasNoChild());
}

TEST_F(ChildTest, DetachedProgramIsReapedWithoutAnExitHandler) {
  addProgram("program");
  EXPECT_TRUE(startDetached(loop.get(), {{"program"}}));
  runOnce();
  EXPECT_TRUE(hasNoChild());
  EXPECT_FALSE(startDetached(loop.get(), {{"none"}}));
}

TEST_F(ChildTest, IsWatchedEvenIfThisProcessInheritsAnIgnoredSigchld) {
  std::signal(SIGCHLD, SIG_IGN);
  prepareToWatchChildren();
  EXPECT_EQ(outputOf("echo there"), "there\n");
}

TEST_F(ChildTest, HasNoBlockedSignals) {
  const auto status = outputOf("/bin/grep SigBlk /proc/self/status");
  ASSERT_TRUE(status);
  EXPECT_EQ(std::stoull(status->substr(status->find('\t')), nullptr, 16), 0U) << *status;
}

TEST_F(ChildTest, InheritsOnlyTheThreeStandardStreams) {
  for (int other = 3; other < 1024; ++other) ::fcntl(other, F_SETFD, FD_CLOEXEC);
  const auto program = CapturedProgram::start(loop.get(), {{"/bin/ls", "/proc/self/fd"}}, "",
                                              [this](const std::optional<std::string>& text) {
                                                ++exitCount;
                                                output = text;
                                              });
  ASSERT_TRUE(program);
  while (exitCount == 0) runOnce();
  EXPECT_EQ(output, "0\n1\n2\n3\n") << "3 is the folder that ls reads";
}

TEST_F(ChildTest, CapturedProgramReadsItsInputAndReturnsItsOutput) {
  addProgram("program", "echo first; /bin/cat");
  const auto program = capture("program", "given\nünïcode");
  ASSERT_TRUE(program);
  while (exitCount == 0) runOnce();
  EXPECT_EQ(output, "first\ngiven\nünïcode");
  EXPECT_EQ(exitCount, 1);
  EXPECT_TRUE(hasNoChild());
}

TEST_F(ChildTest, CapturedProgramReturnsNoOutputIfItFails) {
  EXPECT_EQ(outputOf("echo text; exit 1"), std::nullopt);
  EXPECT_EQ(outputOf("echo text; kill -9 $$"), std::nullopt);
}

TEST_F(ChildTest, CapturedProgramMayWriteAtMost64KiB) {
  EXPECT_EQ(outputOf("/usr/bin/head -c 65536 /dev/zero").value_or("").size(), 65536U);
  EXPECT_EQ(outputOf("/usr/bin/head -c 65537 /dev/zero"), std::nullopt);
  EXPECT_EQ(outputOf("exec /bin/cat /dev/zero"), std::nullopt) << "a program that never exits";
}

TEST_F(ChildTest, CapturedProgramThatClosesItsOutputWakesTheLoopOnce) {
  const std::string closed = pathOf("closed");
  addProgram("program", "echo done; exec >&-; : > " + closed + "; read line < " + pathOf("pipe"));
  ASSERT_EQ(::mkfifo(pathOf("pipe").c_str(), 0600), 0);
  const auto program = capture("program");
  ASSERT_TRUE(program);
  while (!std::filesystem::exists(closed)) EXPECT_GE(sd_event_run(loop.get(), 1000), 0);
  int runs = 0;
  while (runs < 10 && sd_event_run(loop.get(), 0) > 0) ++runs;
  EXPECT_LT(runs, 10) << "the end of the output wakes the loop once";
  EXPECT_EQ(exitCount, 0);
  folder.write("bin/pipe", "\n");
  while (exitCount == 0) runOnce();
  EXPECT_EQ(output, "done\n");
}

TEST_F(ChildTest, ExitIsReportedWhileAGrandchildHasTheOutputOpen) {
  addProgram("program", "echo text; read line < " + pathOf("pipe") + " & exit 0");
  ASSERT_EQ(::mkfifo(pathOf("pipe").c_str(), 0600), 0);
  const auto program = capture("program");
  ASSERT_TRUE(program);
  while (exitCount == 0) runOnce();
  EXPECT_EQ(output, "text\n");
  folder.write("bin/pipe", "\n");  // terminates the grandchild
}

TEST_F(ChildTest, CapturedProgramMayBeDestroyedByItsExitHandler) {
  addProgram("program", "echo text");
  std::unique_ptr<CapturedProgram> program;
  program = CapturedProgram::start(loop.get(), {{"program"}}, "",
                                   [&](const std::optional<std::string>& text) {
                                     program.reset();
                                     output = text;
                                   });
  while (program) runOnce();
  EXPECT_EQ(output, "text\n");
  EXPECT_TRUE(hasNoChild());
}

TEST_F(ChildTest, CapturedProgramIsKilledOnDestruction) {
  addProgram("program", "exec /bin/sleep 1000");
  auto program = capture("program");
  ASSERT_TRUE(program);
  EXPECT_FALSE(hasNoChild());
  program.reset();
  EXPECT_TRUE(hasNoChild());
  EXPECT_EQ(exitCount, 0);
}

TEST_F(ChildTest, CapturedProgramIsNullIfNotInstalled) {
  EXPECT_FALSE(capture("none"));
  EXPECT_EQ(exitCount, 0);
}

}  // namespace lumowatt::freedesktop

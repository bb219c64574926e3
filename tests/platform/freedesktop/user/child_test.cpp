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

  void turn() const { EXPECT_GE(sd_event_run(loop.get(), UINT64_MAX), 0); }

  /// Starts a program that is read, and notes its end.
  std::unique_ptr<ReadProgram> read(const std::string& name, const std::string& input = "") {
    return ReadProgram::start(loop.get(), {{name}}, input,
                              [this](const std::optional<std::string>& text) {
                                ++ends;
                                output = text;
                              });
  }

  /// What a program writes. Absent when it fails.
  std::optional<std::string> outputOf(const std::string& script) {
    addProgram("program", script);
    ends = 0;
    const auto program = read("program");
    EXPECT_TRUE(program);
    while (ends == 0) turn();
    return output;
  }

  /// Whether this process has no child, dead or alive.
  static bool hasNoChild() { return ::waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD; }

  sigset_t before{};
  EventLoop loop;
  int ends = 0;
  std::optional<std::string> output;
};

}  // namespace

TEST_F(ChildTest, ThatEndsIsToldOfOnceWithItsSuccess) {
  for (const char* const script : {"exit 0", "exit 1", "kill -9 $$"}) {
    addProgram("program", script);
    const auto started = startFirst({{"program"}});
    ASSERT_TRUE(started);
    int ended = 0;
    EventSource watch = watchChild(loop.get(), started->process, [&](bool succeeded) {
      ++ended;
      EXPECT_EQ(succeeded, std::string_view(script) == "exit 0") << script;
    });
    ASSERT_TRUE(watch);
    while (ended == 0) turn();
    EXPECT_EQ(sd_event_run(loop.get(), 0), 0);
    EXPECT_EQ(ended, 1);
    EXPECT_TRUE(hasNoChild());
  }
}

TEST_F(ChildTest, ThatIsDetachedIsToldOfByNameAndLeavesNothing) {
  addProgram("second", "exit 3");
  std::string told;
  const auto name = startDetached(loop.get(), {{"first"}, {"second"}}, "",
                                  [&](const std::string& program, bool succeeded) {
                                    told = program + (succeeded ? " succeeded" : " failed");
                                  });
  EXPECT_EQ(name, "second");
  while (told.empty()) turn();
  EXPECT_EQ(told, "second failed");
  EXPECT_TRUE(hasNoChild());
}

TEST_F(ChildTest, ThatIsDetachedNeedsNobodyToBeTold) {
  addProgram("program");
  EXPECT_TRUE(startDetached(loop.get(), {{"program"}}));
  turn();
  EXPECT_TRUE(hasNoChild());
  EXPECT_FALSE(startDetached(loop.get(), {{"none"}}));
}

TEST_F(ChildTest, ThatIsIgnoredByTheParentOfThisProcessIsWatchedAllTheSame) {
  std::signal(SIGCHLD, SIG_IGN);
  prepareToWatchChildren();
  EXPECT_EQ(outputOf("echo there"), "there\n");
}

TEST_F(ChildTest, HasNoSignalBlocked) {
  const auto status = outputOf("/bin/grep SigBlk /proc/self/status");
  ASSERT_TRUE(status);
  EXPECT_EQ(std::stoull(status->substr(status->find('\t')), nullptr, 16), 0U) << *status;
}

TEST_F(ChildTest, HasNoFilesButTheThree) {
  for (int other = 3; other < 1024; ++other) ::fcntl(other, F_SETFD, FD_CLOEXEC);  // the tests' own
  const auto program = ReadProgram::start(loop.get(), {{"/bin/ls", "/proc/self/fd"}}, "",
                                          [this](const std::optional<std::string>& text) {
                                            ++ends;
                                            output = text;
                                          });
  ASSERT_TRUE(program);
  while (ends == 0) turn();
  EXPECT_EQ(output, "0\n1\n2\n3\n") << "and the folder that is listed";
}

TEST_F(ChildTest, ThatIsReadHasItsInputAndGivesItsOutput) {
  addProgram("program", "echo first; /bin/cat");
  const auto program = read("program", "given\nünïcode");
  ASSERT_TRUE(program);
  while (ends == 0) turn();
  EXPECT_EQ(output, "first\ngiven\nünïcode");
  EXPECT_EQ(ends, 1);
  EXPECT_TRUE(hasNoChild());
}

TEST_F(ChildTest, ThatIsReadAndFailsGivesNothing) {
  EXPECT_EQ(outputOf("echo text; exit 1"), std::nullopt);
  EXPECT_EQ(outputOf("echo text; kill -9 $$"), std::nullopt);
}

TEST_F(ChildTest, MayWriteSixtyFourKibibytesAndNoMore) {
  EXPECT_EQ(outputOf("/usr/bin/head -c 65536 /dev/zero").value_or("").size(), 65536U);
  EXPECT_EQ(outputOf("/usr/bin/head -c 65537 /dev/zero"), std::nullopt);
  EXPECT_EQ(outputOf("exec /bin/cat /dev/zero"), std::nullopt) << "one that would never end";
}

TEST_F(ChildTest, ThatClosesItsOutputIsWaitedForWithoutWork) {
  const std::string closed = place("closed");
  addProgram("program", "echo done; exec >&-; : > " + closed + "; read line < " + place("pipe"));
  ASSERT_EQ(::mkfifo(place("pipe").c_str(), 0600), 0);
  const auto program = read("program");
  ASSERT_TRUE(program);
  while (!std::filesystem::exists(closed)) EXPECT_GE(sd_event_run(loop.get(), 1000), 0);
  int turns = 0;
  while (turns < 10 && sd_event_run(loop.get(), 0) > 0) ++turns;
  EXPECT_LT(turns, 10) << "the end of the output wakes it once";
  EXPECT_EQ(ends, 0);
  folder.write("bin/pipe", "\n");
  while (ends == 0) turn();
  EXPECT_EQ(output, "done\n");
}

TEST_F(ChildTest, WhoseOwnChildHoldsItsOutputOpenEndsAllTheSame) {
  addProgram("program", "echo text; read line < " + place("pipe") + " & exit 0");
  ASSERT_EQ(::mkfifo(place("pipe").c_str(), 0600), 0);
  const auto program = read("program");
  ASSERT_TRUE(program);
  while (ends == 0) turn();
  EXPECT_EQ(output, "text\n");
  folder.write("bin/pipe", "\n");  // which ends that child
}

TEST_F(ChildTest, MayBeReleasedByItsEnd) {
  addProgram("program", "echo text");
  std::unique_ptr<ReadProgram> program;
  program = ReadProgram::start(loop.get(), {{"program"}}, "",
                               [&](const std::optional<std::string>& text) {
                                 program.reset();
                                 output = text;
                               });
  while (program) turn();
  EXPECT_EQ(output, "text\n");
  EXPECT_TRUE(hasNoChild());
}

TEST_F(ChildTest, ThatIsReadIsKilledWithItsOwner) {
  addProgram("program", "exec /bin/sleep 1000");
  auto program = read("program");
  ASSERT_TRUE(program);
  EXPECT_FALSE(hasNoChild());
  program.reset();
  EXPECT_TRUE(hasNoChild());
  EXPECT_EQ(ends, 0);
}

TEST_F(ChildTest, ThatIsNotInstalledIsNone) {
  EXPECT_FALSE(read("none"));
  EXPECT_EQ(ends, 0);
}

}  // namespace lumowatt::freedesktop

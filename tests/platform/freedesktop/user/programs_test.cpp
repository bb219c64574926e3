#include "platform/freedesktop/user/programs.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>

#include "support/environment.h"
#include "support/files.h"

namespace lumowatt::freedesktop {

namespace {

/// A $PATH with nothing but what a test puts there.
class ProgramsTest : public testing::Test {
 protected:
  void addProgram(const std::string& name, const std::string& script = "") const {
    folder.write("bin/" + name, "#!/bin/sh\n" + script);
    std::filesystem::permissions(folder.path() / "bin" / name, std::filesystem::perms(0755));
  }

  std::string place(const std::string& name) const { return folder.path() / "bin" / name; }

  /// Waits for the program that was started.
  static int status() {
    int status = 0;
    EXPECT_GT(::wait(&status), 0);
    return status;
  }

  TemporaryFolder folder;
  ScopedVariable path{"PATH", (folder.path() / "bin").string()};
};

std::vector<std::string> names(const std::vector<Command>& commands) {
  std::vector<std::string> all;
  all.reserve(commands.size());
  for (const Command& command : commands) all.push_back(command.front());
  return all;
}

using Names = std::vector<std::string>;

}  // namespace

TEST_F(ProgramsTest, AProgramIsFoundInThePath) {
  addProgram("there");
  EXPECT_EQ(findProgram("there"), place("there"));
  EXPECT_EQ(findProgram("none"), "");
  EXPECT_EQ(findProgram(""), "");
}

TEST_F(ProgramsTest, AFileThatIsNoProgramIsNotFound) {
  folder.write("bin/text", "text");
  std::filesystem::create_directory(folder.path() / "bin" / "folder");
  EXPECT_EQ(findProgram("text"), "");
  EXPECT_EQ(findProgram("folder"), "");
}

TEST_F(ProgramsTest, OfSeveralFoldersTheFirstCountsAndRelativeOnesDoNot) {
  addProgram("there");
  folder.write("other/there", "#!/bin/sh\n");
  std::filesystem::permissions(folder.path() / "other" / "there", std::filesystem::perms(0755));
  const std::string other = folder.path() / "other";
  const ScopedVariable several("PATH", "::.:bin:" + other + ":" + (folder.path() / "bin").string());
  EXPECT_EQ(findProgram("there"), other + "/there");
}

TEST_F(ProgramsTest, AProgramIsFoundByItsAbsolutePathAlone) {
  addProgram("there");
  EXPECT_EQ(findProgram(place("there")), place("there"));
  EXPECT_EQ(findProgram("bin/there"), "");
  EXPECT_EQ(findProgram("./there"), "");
}

TEST_F(ProgramsTest, TheFirstThatIsInstalledIsStarted) {
  const std::string result = folder.path() / "result";
  addProgram("second", "echo second \"$@\" > " + result);
  addProgram("third", "echo third > " + result);
  EXPECT_TRUE(startFirst({{"first"}, {"second", "a b", "$HOME", "*"}, {"third"}}));
  EXPECT_EQ(status(), 0);
  EXPECT_EQ(fileContents(result), "second a b $HOME *\n") << "no shell changes the arguments";
}

TEST_F(ProgramsTest, NoneThatIsInstalledIsAFailure) {
  EXPECT_FALSE(startFirst({{"first"}, {"second"}}));
  EXPECT_FALSE(startFirst({}));
}

TEST_F(ProgramsTest, AProgramReadsItsInput) {
  const std::string result = folder.path() / "result";
  addProgram("reader", "/bin/cat > " + result);
  const std::string input = "On battery\nCharge: 64%\nünïcode " + std::string(4000, 'x');
  EXPECT_TRUE(startFirst({{"reader"}}, input));
  EXPECT_EQ(status(), 0);
  EXPECT_EQ(fileContents(result), input);
}

TEST_F(ProgramsTest, AProgramThatReadsNothingIsNoProblem) {
  addProgram("idle");
  EXPECT_TRUE(startFirst({{"idle"}}, "text"));
  EXPECT_EQ(status(), 0);
}

TEST_F(ProgramsTest, AnInputThatAPipeDoesNotHoldIsAFailure) {
  addProgram("reader", "/bin/cat > /dev/null");
  EXPECT_FALSE(startFirst({{"reader"}}, std::string(1000000, 'x')));
}

TEST_F(ProgramsTest, AProgramHasTheSignalsThatItExpects) {
  const std::string result = folder.path() / "result";
  addProgram("signals", "/bin/grep SigIgn /proc/self/status > " + result);
  const auto before = std::signal(SIGPIPE, SIG_IGN);
  EXPECT_TRUE(startFirst({{"signals"}}));
  EXPECT_EQ(status(), 0);
  std::signal(SIGPIPE, before);
  const std::string line = fileContents(result);  // SigIgn: and a mask in hexadecimal
  const auto ignored = std::stoull(line.substr(line.find('\t')), nullptr, 16);
  EXPECT_EQ(ignored >> (SIGPIPE - 1U) & 1U, 0U) << line;
}

TEST(Programs, TheClipboardIsThatOfTheSessionsDisplay) {
  const ScopedVariable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_EQ(names(clipboardCommands()), (Names{"wl-copy", "xclip"}));
  const ScopedVariable none("WAYLAND_DISPLAY", std::nullopt);
  EXPECT_EQ(names(clipboardCommands()), Names{"xclip"});
}

TEST(Programs, TheSettingsAreThoseOfTheRunningDesktopFirst) {
  const Names usual{"gnome-control-center",         "systemsettings",         "systemsettings5",
                    "xfce4-power-manager-settings", "mate-power-preferences", "cinnamon-settings",
                    "lxqt-config-powermanagement"};
  const auto first = [](const std::optional<std::string>& desktop) {
    const ScopedVariable current("XDG_CURRENT_DESKTOP", desktop);
    return names(batterySettingsCommands());
  };
  EXPECT_EQ(first(std::nullopt), usual);
  EXPECT_EQ(first("sway"), usual);
  EXPECT_EQ(first("ubuntu:GNOME"), usual);
  EXPECT_EQ(first("KDE").at(0), "systemsettings");
  EXPECT_EQ(first("XFCE").at(0), "xfce4-power-manager-settings");
  EXPECT_EQ(first("MATE").at(0), "mate-power-preferences");
  EXPECT_EQ(first("X-Cinnamon").at(0), "cinnamon-settings");
  EXPECT_EQ(first("LXQt").at(0), "lxqt-config-powermanagement");
  EXPECT_EQ(first("LXQt").size(), usual.size());
  EXPECT_EQ(first("LXQt").at(1), "gnome-control-center");
}

}  // namespace lumowatt::freedesktop

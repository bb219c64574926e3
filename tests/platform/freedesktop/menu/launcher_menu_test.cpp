#include "platform/freedesktop/menu/launcher_menu.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>

#include "platform/freedesktop/menu/example_menu.h"
#include "platform/freedesktop/user/programs_folder.h"

namespace lumowatt::freedesktop {

namespace {

using Texts = std::vector<std::string>;

const std::string menuLines =
    "64%, discharging\n"
    "Cycle count: 12\n"
    "Charge over the last hour\n"
    "▁▂▃ 60–64%\n"
    "Menu bar shows\n"
    "Percent\n"
    "• Percent and battery power\n"
    "✓ Colors\n"
    "Charging animation\n"
    "Copy details\n"
    "Lumowatt 1.0, by Fernhollow\n"
    "Quit Lumowatt\n";

class LauncherMenuTest : public ProgramsFolder {
 protected:
  LauncherMenuTest() {
    ::sigprocmask(SIG_SETMASK, nullptr, &before);
    prepareToWatchChildren();
    EXPECT_GE(sd_event_new(Out(loop)), 0);
    launcher.emplace(loop.get(), [this](const Choice& choice) { choices.push_back(choice); });
  }
  ~LauncherMenuTest() override { ::sigprocmask(SIG_SETMASK, &before, nullptr); }

  /// Runs the loop until all child processes have exited.
  void waitForPrograms() const {
    siginfo_t ended{};
    while (::waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT) == 0) {
      EXPECT_GE(sd_event_run(loop.get(), UINT64_MAX), 0);
    }
  }

  /// Returns the choices that result from a launcher that runs `script`.
  std::vector<Choice> choicesFrom(const std::string& script, const Menu& shown = exampleMenu) {
    addProgram("dmenu", script);
    choices.clear();
    EXPECT_TRUE(launcher->show(shown));
    waitForPrograms();
    return choices;
  }

  std::string result() const { return folder.path() / "result"; }

  ScopedVariable wayland{"WAYLAND_DISPLAY", std::nullopt};
  sigset_t before{};
  EventLoop loop;
  std::vector<Choice> choices;
  std::optional<LauncherMenu> launcher;
};

}  // namespace

TEST_F(LauncherMenuTest, PassesALineForEachItemToTheLauncherInOrder) {
  EXPECT_TRUE(choicesFrom("echo \"$@\" > " + result() + "; /bin/cat >> " + result()).empty());
  EXPECT_EQ(fileContents(result()), "-i -l 26 -p Lumowatt\n" + menuLines);
}

TEST_F(LauncherMenuTest, ReportsTheChoiceOfTheChosenLine) {
  const std::vector<std::pair<std::string, Choice>> offers{
      {"▁▂▃ 60–64%", {Action::showChart}},
      {"Percent", {Action::pick, 0}},
      {"• Percent and battery power", {Action::pick, 1}},
      {"✓ Colors", {Action::toggleColor}},
      {"Charging animation", {Action::toggleAnimate}},
      {"Copy details", {Action::copyDetails}},
      {"Quit Lumowatt", {Action::terminate}}};
  for (const auto& [line, choice] : offers) {
    const auto chosen = choicesFrom("echo '" + line + "'");
    ASSERT_EQ(chosen.size(), 1U) << line;
    EXPECT_EQ(chosen[0].action, choice.action) << line;
    EXPECT_EQ(chosen[0].tag, choice.tag) << line;
  }
  EXPECT_EQ(choicesFrom("printf 'Copy details'").size(), 1U) << "without a newline";
}

TEST_F(LauncherMenuTest, IgnoresOutputThatIsNotALineWithAChoice) {
  for (const std::string output :
       {"", "\\n", "64%%, discharging\\n", "Menu bar shows\\n", "Lumowatt 1.0, by Fernhollow\\n",
        "Colors\\n", "copy details\\n", "Copy details \\n", "Copy\\n", "Copy details\\n\\n",
        "Copy details\\nQuit Lumowatt\\n", "rm -rf\\n"}) {
    EXPECT_TRUE(choicesFrom("printf '" + output + "'").empty()) << output;
  }
  EXPECT_TRUE(choicesFrom("echo Copy details; exit 1").empty());
  EXPECT_TRUE(choicesFrom("echo Copy details; kill -9 $$").empty());
}

TEST_F(LauncherMenuTest, ReportsTheFirstChoiceForEqualLines) {
  const Menu equal{MenuLine{"same"}, MenuCommand{"same", {Action::copyDetails}},
                   MenuCommand{"same", {Action::terminate}}};
  const auto chosen = choicesFrom("echo same", equal);
  ASSERT_EQ(chosen.size(), 1U);
  EXPECT_EQ(chosen[0].action, Action::copyDetails);
}

TEST_F(LauncherMenuTest, ReplacesControlCharactersWithSpaces) {
  const auto lines = launcherLines({MenuLine{"a\nb\tc\x1f\x7f"}, MenuLine{std::string("d\0e", 3)}});
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].text, "a b c  ");
  EXPECT_EQ(lines[1].text, "d e");
  EXPECT_EQ(launcherLines({MenuLine{"ünïcode ▁"}}).at(0).text, "ünïcode ▁");
}

TEST_F(LauncherMenuTest, OpensOnlyOneLauncherAtATime) {
  ASSERT_EQ(::mkfifo(result().c_str(), 0600), 0);
  addProgram("dmenu", "echo started >> " + pathOf("starts") + "; read line < " + result() +
                          "; echo Copy details");
  EXPECT_TRUE(launcher->show(exampleMenu));
  EXPECT_TRUE(launcher->show(exampleMenu));
  folder.write("result", "\n");
  waitForPrograms();
  EXPECT_EQ(choices.size(), 1U);
  EXPECT_EQ(fileContents(pathOf("starts")), "started\n");
  EXPECT_TRUE(launcher->show(exampleMenu)) << "after the launcher has exited";
  folder.write("result", "\n");
  waitForPrograms();
  EXPECT_EQ(choices.size(), 2U);
}

TEST_F(LauncherMenuTest, CanBeReopenedByAChoice) {
  addProgram("dmenu", "echo Copy details");
  launcher.emplace(loop.get(), [this](const Choice& choice) {
    choices.push_back(choice);
    if (choices.size() < 3) launcher->show(exampleMenu);
  });
  EXPECT_TRUE(launcher->show(exampleMenu));
  waitForPrograms();
  EXPECT_EQ(choices.size(), 3U);
}

TEST_F(LauncherMenuTest, TerminatesTheLauncherWhenDestroyed) {
  addProgram("dmenu", "exec /bin/sleep 1000");
  EXPECT_TRUE(launcher->show(exampleMenu));
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), 0);
  launcher.reset();
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(LauncherMenuTest, SoundsTheBellAndReportsAnErrorWithoutALauncher) {
  addProgram("canberra-gtk-play", "echo \"$@\" > " + result());
  testing::internal::CaptureStderr();
  EXPECT_FALSE(launcher->show(exampleMenu));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "lumowatt: cannot show the menu: no launcher such as fuzzel, rofi or dmenu can be "
            "started\n");
  waitForPrograms();
  EXPECT_EQ(fileContents(result()), "--id bell\n");
  addProgram("dmenu", "echo Copy details");
  EXPECT_TRUE(launcher->show(exampleMenu)) << "once a launcher is installed";
}

}  // namespace lumowatt::freedesktop

#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <optional>
#include <sstream>

#include "program/item_fixture.h"
#include "program/menu_ids.h"
#include "support/picture.h"

namespace lumowatt {

namespace {

/// Plasma's clipboard.
class Klipper : public BusPeer {
 public:
  explicit Klipper(const SessionBus& session) : BusPeer(session) {
    static const sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("setClipboardContents", "s", "", setContents, 0),
        SD_BUS_VTABLE_END,
    };
    sd_bus_add_object_vtable(bus(), nullptr, "/klipper", "org.kde.klipper.klipper", table, this);
    own("org.kde.klipper");
  }

  std::optional<std::string> contents;
  bool refuses = false;
  bool answers = true;
  bool wasAsked = false;

 private:
  static int setContents(sd_bus_message* call, void* object, sd_bus_error*) {
    auto& self = *static_cast<Klipper*>(object);
    self.wasAsked = true;
    if (!self.answers) return 1;  // the call stays open
    const char* text = nullptr;
    if (self.refuses || sd_bus_message_read(call, "s", &text) < 0) return -EIO;
    self.contents = text;
    return sd_bus_reply_method_return(call, "");
  }
};

/// A program that tells its arguments and its input.
constexpr auto telling =
    "cat > $traces/input\necho \"$@\" > $traces/told.new\n"
    "mv $traces/told.new $traces/told\n";

/// What choosing an item does outside of the item.
class Commands : public ItemTest {
 protected:
  std::filesystem::path autostart() const {
    return configuration() / "autostart/com.fernhollow.Lumowatt.desktop";
  }
  bool opensAtLogin() const {
    panel->open();
    return panel->menuProperty(menu_id::openAtLogin, "toggle-state") == 1;
  }
  void startAndChoose(int id, const std::string& title) {
    start();
    panel->open();
    choose(id, title);
  }
  /// On Plasma, a program copies what the clipboard service was asked for in vain.
  void expectProgramIsUsed(const Klipper& klipper) {
    install("xclip", telling);
    variables = {{"XDG_CURRENT_DESKTOP", "KDE"}};
    startAndChoose(menu_id::copyDetails, "Copy details");
    klipper.waitUntil([&] { return klipper.wasAsked; });
    EXPECT_EQ(trace("told"), "-selection clipboard\n");
    EXPECT_EQ(panel->property("ToolTip").at(3), trace("input"));
  }
  /// Chooses the chart, whose drawing waits for the configuration of fonts until it is killed.
  void chooseChartThatIsNeverDrawn() {
    const std::string fonts = user.path() / "fonts.conf";
    EXPECT_EQ(::mkfifo(fonts.c_str(), 0600), 0);
    variables = {{"FONTCONFIG_FILE", fonts}};
    startWithChart();
    chooseChart();
  }
  /// The ids of the item's child processes.
  std::string children() const {
    const std::string id = std::to_string(item->id());
    return fileContents("/proc/" + id + "/task/" + id + "/children");
  }
  void signalChildren(int signal) const {
    std::istringstream ids(children());
    for (pid_t id = 0; ids >> id;) EXPECT_EQ(::kill(id, signal), 0);
  }
  std::string chartFile() const { return user.path() / "runtime/lumowatt-chart.png"; }
};

}  // namespace

TEST_F(Commands, CopyDetailsPutsTheReportOnTheClipboard) {
  install("xclip", telling);
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(trace("told"), "-selection clipboard\n");
  EXPECT_EQ(panel->property("ToolTip").at(3), trace("input"));
}

TEST_F(Commands, CopyDetailsUsesWaylandsProgramOnWayland) {
  install("xclip", "echo xclip > $traces/told");
  install("wl-copy", telling);
  variables = {{"WAYLAND_DISPLAY", "wayland-0"}};
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(trace("told"), "--type text/plain;charset=utf-8\n");
}

TEST_F(Commands, WhatCannotBeCopiedSoundsTheBell) {
  install("canberra-gtk-play", telling);
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(trace("told"), "--id bell\n");
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot copy the details: neither wl-copy nor xclip can be started\n");
}

TEST_F(Commands, AProgramThatFailsToCopySoundsTheBell) {
  install("canberra-gtk-play", telling);
  install("wl-copy", "exit 1");
  install("xclip", "touch $traces/xclip");
  variables = {{"WAYLAND_DISPLAY", "wayland-0"}};
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(trace("told"), "--id bell\n");
  EXPECT_FALSE(std::filesystem::exists(traces() / "xclip"));
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors, "lumowatt: cannot copy the details: wl-copy failed\n");
}

TEST_F(Commands, CopyDetailsUsesPlasmasClipboard) {
  const Klipper klipper(session);
  install("xclip", "touch $traces/xclip");
  variables = {{"XDG_CURRENT_DESKTOP", "KDE"}};
  startAndChoose(menu_id::copyDetails, "Copy details");
  klipper.waitUntil([&] { return klipper.contents.has_value(); });
  EXPECT_EQ(panel->property("ToolTip").at(3), *klipper.contents);
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors, "");
  EXPECT_FALSE(std::filesystem::exists(traces() / "xclip"));
}

TEST_F(Commands, CopyDetailsUsesAProgramWherePlasmasClipboardRefuses) {
  Klipper klipper(session);
  klipper.refuses = true;
  expectProgramIsUsed(klipper);
}

TEST_F(Commands, CopyDetailsUsesAProgramWherePlasmasClipboardDoesNotAnswer) {
  Klipper klipper(session);
  klipper.answers = false;
  expectProgramIsUsed(klipper);
}

TEST_F(Commands, CopyDetailsUsesAProgramOnPlasmaWithoutItsClipboard) {
  install("xclip", telling);
  variables = {{"XDG_CURRENT_DESKTOP", "KDE"}};
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(trace("told"), "-selection clipboard\n");
  EXPECT_EQ(panel->property("ToolTip").at(3), trace("input"));
}

TEST_F(Commands, CopyDetailsUsesPlasmasClipboardOnPlasmaAlone) {
  const Klipper klipper(session);
  install("xclip", telling);
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(trace("told"), "-selection clipboard\n");
  klipper.settle();
  EXPECT_FALSE(klipper.wasAsked);
}

TEST_F(Commands, ProgramsLeaveNothingWhenTheyEnd) {
  install("canberra-gtk-play", "touch $traces/bell");
  install("xclip", "exit 1");
  prefix = {"/usr/bin/env", "--ignore-signal=CHLD"};  // as some sessions start their programs
  startAndChoose(menu_id::copyDetails, "Copy details");
  trace("bell");
  panel->waitUntil([this] { return children().empty(); });
}

TEST_F(Commands, OpenAtLoginPutsAnEntryThereAndTakesItAway) {
  start();
  EXPECT_FALSE(opensAtLogin());
  choose(menu_id::openAtLogin, "Open at login");
  EXPECT_EQ(panel->menuProperty(menu_id::openAtLogin, "toggle-state"), 1);
  EXPECT_EQ(fileContents(autostart()),
            "[Desktop Entry]\nType=Application\nName=Lumowatt\n"
            "Comment=Battery item for the panel\nTryExec=" LUMOWATT_PROGRAM
            "\nExec=\"" LUMOWATT_PROGRAM "\"\nTerminal=false\n");
  EXPECT_TRUE(opensAtLogin());
  choose(menu_id::openAtLogin, "Open at login");
  EXPECT_FALSE(opensAtLogin());
  EXPECT_FALSE(std::filesystem::exists(autostart()));
}

TEST_F(Commands, AnEntryThatTheUserSwitchedOffIsNotOn) {
  start();
  user.write("config/autostart/com.fernhollow.Lumowatt.desktop",
             "[Desktop Entry]\nType=Application\nExec=/bin/true\nHidden=true\n");
  EXPECT_FALSE(opensAtLogin());
  choose(menu_id::openAtLogin, "Open at login");
  EXPECT_TRUE(opensAtLogin());
}

TEST_F(Commands, AnEntryThatCannotBeWrittenSoundsTheBell) {
  install("canberra-gtk-play", telling);
  start();
  user.write("config/autostart", "a file in the folder's place");
  EXPECT_FALSE(opensAtLogin());
  choose(menu_id::openAtLogin, "Open at login");
  EXPECT_EQ(trace("told"), "--id bell\n");
  EXPECT_FALSE(opensAtLogin());
}

TEST_F(Commands, BatterySettingsOpensTheDesktopsOwnPanel) {
  install("gnome-control-center", "echo gnome > $traces/told");
  install("xfce4-power-manager-settings", telling);
  variables = {{"XDG_CURRENT_DESKTOP", "XFCE"}};
  startAndChoose(menu_id::settings, "Battery settings…");
  EXPECT_EQ(trace("told"), "\n");
}

TEST_F(Commands, TheChartOpensInThePictureViewer) {
  install("xdg-open", telling);
  startWithChart();
  chooseChart();
  EXPECT_EQ(trace("told"), chartFile() + "\n");
  struct stat status {};
  ASSERT_EQ(::stat(chartFile().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  const Picture picture(fileContents(chartFile()));
  EXPECT_EQ(picture.width(), 2 * 688);
  EXPECT_EQ(picture.height(), 2 * 408);
}

TEST_F(Commands, TheChartIsNotShownBeforeThereIsOne) {
  install("xdg-open", telling);
  start();
  panel->open();
  EXPECT_EQ(panel->click(menu_id::chart), "");
  panel->settle();
  EXPECT_FALSE(std::filesystem::exists(chartFile()));
}

TEST_F(Commands, TheChartIsDrawnByAProcessOfItsOwn) {
  install("xdg-open", telling);
  startWithChart();
  chooseChart();
  trace("told");
  const std::string maps = fileContents("/proc/" + std::to_string(item->id()) + "/maps");
  EXPECT_NE(maps.find("lumowatt-desktop.so"), std::string::npos);
  EXPECT_EQ(maps.find("lumowatt-drawing.so"), std::string::npos);
  EXPECT_EQ(maps.find("libcairo"), std::string::npos);
  // Nor does anything stay of that process.
  panel->waitUntil([this] { return children().empty(); });
}

TEST_F(Commands, TheChartIsDrawnOnceAtATime) {
  chooseChartThatIsNeverDrawn();
  const std::string drawing = children();
  EXPECT_NE(drawing, "");
  chooseChart();
  EXPECT_EQ(children(), drawing);
  signalChildren(SIGKILL);
}

TEST_F(Commands, TheProcessThatDrawsTheChartEndsBySigterm) {
  chooseChartThatIsNeverDrawn();
  signalChildren(SIGTERM);
  panel->waitUntil([this] { return children().empty(); });
}

TEST_F(Commands, TheChartHasTheTimesOfTheUsersClock) {
  const std::string texts = traces() / "texts";
  variables = {{"TZ", "Test-5:45"}, {"NOTED_TEXTS", texts}};
  install("xdg-open", telling);
  startWithChart(LUMOWATT_NOTED_TEXTS);
  chooseChart();
  trace("told");
  const auto minutesNow = static_cast<int>(std::time(nullptr) / 60 + 5 * 60 + 45);
  std::istringstream lines(fileContents(texts));
  int times = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.size() != 5 || line[2] != ':') continue;
    ++times;
    const int minutes = 60 * std::stoi(line) + std::stoi(line.substr(3));
    EXPECT_LE((minutesNow + 1 - minutes) % 1440, 62) << line << " is no time of the last hour";
  }
  EXPECT_GT(times, 0);
}

TEST_F(Commands, TheChartReplacesALinkAndNotWhatItLeadsTo) {
  install("xdg-open", telling);
  startWithChart();
  user.write("precious", "mine");
  std::filesystem::create_symlink(user.path() / "precious", chartFile());
  chooseChart();
  EXPECT_EQ(trace("told"), chartFile() + "\n");
  EXPECT_FALSE(std::filesystem::is_symlink(chartFile()));
  EXPECT_EQ(fileContents(user.path() / "precious"), "mine");
}

TEST_F(Commands, AProgramGetsTheSignalsAsItExpectsThem) {
  install("xdg-open",
          "grep -E 'SigBlk|SigIgn' /proc/self/status > $traces/new\n"
          "mv $traces/new $traces/signals\n");
  startWithChart();
  chooseChart();
  std::istringstream signals(trace("signals"));
  for (const char* const set : {"SigBlk:", "SigIgn:"}) {
    std::string name;
    std::uint64_t bits = 0;
    signals >> name >> std::hex >> bits;
    EXPECT_EQ(name, set);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ, SIGCHLD}) {
      EXPECT_EQ(bits >> (signal - 1) & 1U, 0U) << name << signal;
    }
  }
}

TEST_F(Commands, WithoutBatterySettingsNothingHappensButAWord) {
  startAndChoose(menu_id::settings, "Battery settings…");
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot open the battery settings: no program for them can be started\n");
}

TEST_F(Commands, AChartThatCannotBeShownSoundsTheBell) {
  install("canberra-gtk-play", telling);
  startWithChart();
  chooseChart();
  EXPECT_EQ(trace("told"), "--id bell\n");
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot show the chart: no program that shows pictures can be started\n");
}

TEST_F(Commands, AChartThatFindsNoSpaceIsNotShownAndLeavesNoFile) {
  install("canberra-gtk-play", telling);
  install("xdg-open", "touch $traces/opened");
  startWithChart(LUMOWATT_REFUSING_SPACE);
  chooseChart();
  EXPECT_EQ(trace("told"), "--id bell\n");
  const std::filesystem::directory_iterator files(user.path() / "runtime");
  EXPECT_EQ(std::distance(begin(files), end(files)), 0);
  EXPECT_FALSE(std::filesystem::exists(traces() / "opened"));
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors, "lumowatt: cannot show the chart: No space left on device\n");
}

TEST_F(Commands, WithoutARuntimeFolderTheChartIsNotShown) {
  install("canberra-gtk-play", telling);
  variables = {{"XDG_RUNTIME_DIR", "runtime"}};  // nor in one that is somewhere from here
  startWithChart();
  chooseChart();
  EXPECT_EQ(trace("told"), "--id bell\n");
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot show the chart: the session has no runtime folder\n");
}

}  // namespace lumowatt

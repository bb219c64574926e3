#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

/// Fake Klipper, the clipboard service of Plasma.
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
  bool fails = false;   ///< whether calls fail
  bool replies = true;  ///< whether calls are answered
  bool wasCalled = false;

 private:
  static int setContents(sd_bus_message* message, void* klipper, sd_bus_error*) {
    auto& self = *static_cast<Klipper*>(klipper);
    self.wasCalled = true;
    if (!self.replies) return 1;  // leaves the call pending
    const char* text = nullptr;
    if (self.fails || sd_bus_message_read(message, "s", &text) < 0) return -EIO;
    self.contents = text;
    return sd_bus_reply_method_return(message, "");
  }
};

/// Script that records its standard input and its arguments.
constexpr auto recordingScript =
    "cat > $traces/input\necho \"$@\" > $traces/arguments.new\n"
    "mv $traces/arguments.new $traces/arguments\n";

/// Fixture for commands of the menu that run programs or write files.
class MenuCommands : public ItemTest {
 protected:
  void TearDown() override {
    if (fontsWriter_ >= 0) ::close(fontsWriter_);
    ItemTest::TearDown();
  }
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
  /// Expects that, on Plasma, the program "xclip" copies the details after a failed call of
  /// Klipper.
  void expectProgramIsUsed(const Klipper& klipper) {
    install("xclip", recordingScript);
    variables = {{"XDG_CURRENT_DESKTOP", "KDE"}};
    startAndChoose(menu_id::copyDetails, "Copy details");
    klipper.waitUntil([&] { return klipper.wasCalled; });
    EXPECT_EQ(waitForTrace("arguments"), "-selection clipboard\n");
    EXPECT_EQ(panel->property("ToolTip").at(3), waitForTrace("input"));
  }
  /// Chooses the chart. The process that draws the chart blocks until `fontsWriter_` is closed,
  /// because it reads its font configuration from this pipe. It does not block in `open`, because
  /// umockdev blocks all signals there.
  void chooseChartWithBlockedDrawing() {
    const std::string fonts = user.path() / "fonts.conf";
    EXPECT_EQ(::mkfifo(fonts.c_str(), 0600), 0);
    fontsWriter_ = ::open(fonts.c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_GE(fontsWriter_, 0);
    variables = {{"FONTCONFIG_FILE", fonts}};
    startWithChart();
    chooseChart();
    panel->waitUntil([this] { return !children().empty(); });
  }
  /// Returns the ids of the item's child processes, separated by spaces.
  std::string children() const {
    const std::string id = std::to_string(item->id());
    return fileContents("/proc/" + id + "/task/" + id + "/children");
  }
  void signalChildren(int signal) const {
    std::istringstream ids(children());
    for (pid_t id = 0; ids >> id;) EXPECT_EQ(::kill(id, signal), 0);
  }
  std::string chartFile() const { return user.path() / "runtime/lumowatt-chart.png"; }

 private:
  int fontsWriter_ = -1;
};

}  // namespace

TEST_F(MenuCommands, CopyDetailsCopiesTheReportToTheClipboard) {
  install("xclip", recordingScript);
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(waitForTrace("arguments"), "-selection clipboard\n");
  EXPECT_EQ(panel->property("ToolTip").at(3), waitForTrace("input"));
}

TEST_F(MenuCommands, CopyDetailsUsesWlCopyOnWayland) {
  install("xclip", "echo xclip > $traces/arguments");
  install("wl-copy", recordingScript);
  variables = {{"WAYLAND_DISPLAY", "wayland-0"}};
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(waitForTrace("arguments"), "--type text/plain;charset=utf-8\n");
}

TEST_F(MenuCommands, CopyDetailsSoundsTheBellWithoutAClipboardProgram) {
  install("canberra-gtk-play", recordingScript);
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(waitForTrace("arguments"), "--id bell\n");
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot copy the details: neither wl-copy nor xclip can be started\n");
}

TEST_F(MenuCommands, CopyDetailsSoundsTheBellIfTheProgramFails) {
  install("canberra-gtk-play", recordingScript);
  install("wl-copy", "exit 1");
  install("xclip", "touch $traces/xclip");
  variables = {{"WAYLAND_DISPLAY", "wayland-0"}};
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(waitForTrace("arguments"), "--id bell\n");
  EXPECT_FALSE(std::filesystem::exists(traces() / "xclip"));
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors, "lumowatt: cannot copy the details: wl-copy failed\n");
}

TEST_F(MenuCommands, CopyDetailsUsesKlipperOnPlasma) {
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

TEST_F(MenuCommands, CopyDetailsUsesAProgramIfKlipperFails) {
  Klipper klipper(session);
  klipper.fails = true;
  expectProgramIsUsed(klipper);
}

TEST_F(MenuCommands, CopyDetailsUsesAProgramIfKlipperDoesNotReply) {
  Klipper klipper(session);
  klipper.replies = false;
  expectProgramIsUsed(klipper);
}

TEST_F(MenuCommands, CopyDetailsUsesAProgramIfKlipperIsMissing) {
  install("xclip", recordingScript);
  variables = {{"XDG_CURRENT_DESKTOP", "KDE"}};
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(waitForTrace("arguments"), "-selection clipboard\n");
  EXPECT_EQ(panel->property("ToolTip").at(3), waitForTrace("input"));
}

TEST_F(MenuCommands, CopyDetailsUsesKlipperOnlyOnPlasma) {
  const Klipper klipper(session);
  install("xclip", recordingScript);
  startAndChoose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(waitForTrace("arguments"), "-selection clipboard\n");
  klipper.processLateMessages();
  EXPECT_FALSE(klipper.wasCalled);
}

TEST_F(MenuCommands, LeaveNoChildProcessesIfSigchldIsIgnored) {
  install("canberra-gtk-play", "touch $traces/bell");
  install("xclip", "exit 1");
  prefix = {"/usr/bin/env", "--ignore-signal=CHLD"};  // some sessions start programs like this
  startAndChoose(menu_id::copyDetails, "Copy details");
  waitForTrace("bell");
  panel->waitUntil([this] { return children().empty(); });
}

TEST_F(MenuCommands, OpenAtLoginAddsAndRemovesTheEntry) {
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

TEST_F(MenuCommands, OpenAtLoginIsUncheckedIfTheEntryIsHidden) {
  start();
  user.write("config/autostart/com.fernhollow.Lumowatt.desktop",
             "[Desktop Entry]\nType=Application\nExec=/bin/true\nHidden=true\n");
  EXPECT_FALSE(opensAtLogin());
  choose(menu_id::openAtLogin, "Open at login");
  EXPECT_TRUE(opensAtLogin());
}

TEST_F(MenuCommands, OpenAtLoginSoundsTheBellIfTheEntryCannotBeWritten) {
  install("canberra-gtk-play", recordingScript);
  start();
  user.write("config/autostart", "a file instead of the folder");
  EXPECT_FALSE(opensAtLogin());
  choose(menu_id::openAtLogin, "Open at login");
  EXPECT_EQ(waitForTrace("arguments"), "--id bell\n");
  EXPECT_FALSE(opensAtLogin());
}

TEST_F(MenuCommands, BatterySettingsOpensTheSettingsOfTheDesktop) {
  install("gnome-control-center", "echo gnome > $traces/arguments");
  install("xfce4-power-manager-settings", recordingScript);
  variables = {{"XDG_CURRENT_DESKTOP", "XFCE"}};
  startAndChoose(menu_id::settings, "Battery settings…");
  EXPECT_EQ(waitForTrace("arguments"), "\n");
}

TEST_F(MenuCommands, ChartOpensInThePictureViewer) {
  install("xdg-open", recordingScript);
  startWithChart();
  chooseChart();
  EXPECT_EQ(waitForTrace("arguments"), chartFile() + "\n");
  struct stat status {};
  ASSERT_EQ(::stat(chartFile().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  const Picture picture(fileContents(chartFile()));
  EXPECT_EQ(picture.width(), 2 * 688);
  EXPECT_EQ(picture.height(), 2 * 408);
}

TEST_F(MenuCommands, ChartIsNotShownWithoutSamples) {
  install("xdg-open", recordingScript);
  start();
  panel->open();
  EXPECT_EQ(panel->click(menu_id::chart), "");
  panel->processLateMessages();
  EXPECT_FALSE(std::filesystem::exists(chartFile()));
}

TEST_F(MenuCommands, ChartIsDrawnInASeparateProcess) {
  install("xdg-open", recordingScript);
  startWithChart();
  chooseChart();
  waitForTrace("arguments");
  const std::string maps = fileContents("/proc/" + std::to_string(item->id()) + "/maps");
  EXPECT_NE(maps.find("lumowatt-desktop.so"), std::string::npos);
  EXPECT_EQ(maps.find("lumowatt-drawing.so"), std::string::npos);
  EXPECT_EQ(maps.find("libcairo"), std::string::npos);
  // The drawing process exits and is reaped.
  panel->waitUntil([this] { return children().empty(); });
}

TEST_F(MenuCommands, ChartIsDrawnByOneProcessAtATime) {
  chooseChartWithBlockedDrawing();
  const std::string drawing = children();
  chooseChart();
  EXPECT_EQ(children(), drawing);
  signalChildren(SIGKILL);
}

TEST_F(MenuCommands, ChartProcessExitsOnSigterm) {
  chooseChartWithBlockedDrawing();
  signalChildren(SIGTERM);
  panel->waitUntil([this] { return children().empty(); });
}

TEST_F(MenuCommands, ChartShowsTimesInTheUsersTimeZone) {
  const std::string texts = traces() / "texts";
  variables = {{"TZ", "Test-5:45"}, {"RECORDED_TEXTS", texts}};
  install("xdg-open", recordingScript);
  startWithChart(LUMOWATT_RECORDED_TEXTS);
  chooseChart();
  waitForTrace("arguments");
  const auto minutesNow = static_cast<int>(std::time(nullptr) / 60 + 5 * 60 + 45);
  std::istringstream lines(fileContents(texts));
  int times = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.size() != 5 || line[2] != ':') continue;
    ++times;
    const int minutes = 60 * std::stoi(line) + std::stoi(line.substr(3));
    EXPECT_LE((minutesNow + 1 - minutes) % 1440, 62) << line << " is not within the last hour";
  }
  EXPECT_GT(times, 0);
}

TEST_F(MenuCommands, ChartReplacesASymbolicLinkAndNotItsTarget) {
  install("xdg-open", recordingScript);
  startWithChart();
  user.write("precious", "mine");
  std::filesystem::create_symlink(user.path() / "precious", chartFile());
  chooseChart();
  EXPECT_EQ(waitForTrace("arguments"), chartFile() + "\n");
  EXPECT_FALSE(std::filesystem::is_symlink(chartFile()));
  EXPECT_EQ(fileContents(user.path() / "precious"), "mine");
}

TEST_F(MenuCommands, StartProgramsWithoutBlockedOrIgnoredSignals) {
  install("xdg-open",
          "grep -E 'SigBlk|SigIgn' /proc/self/status > $traces/new\n"
          "mv $traces/new $traces/signals\n");
  startWithChart();
  chooseChart();
  std::istringstream signals(waitForTrace("signals"));
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

TEST_F(MenuCommands, BatterySettingsReportsAMissingProgram) {
  startAndChoose(menu_id::settings, "Battery settings…");
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot open the battery settings: no program for them can be started\n");
}

TEST_F(MenuCommands, ChartSoundsTheBellWithoutAPictureViewer) {
  install("canberra-gtk-play", recordingScript);
  startWithChart();
  chooseChart();
  EXPECT_EQ(waitForTrace("arguments"), "--id bell\n");
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot show the chart: no program that shows pictures can be started\n");
}

TEST_F(MenuCommands, ChartSoundsTheBellAndLeavesNoFileOnAFullDisk) {
  install("canberra-gtk-play", recordingScript);
  install("xdg-open", "touch $traces/opened");
  startWithChart(LUMOWATT_FAILING_SPACE);
  chooseChart();
  EXPECT_EQ(waitForTrace("arguments"), "--id bell\n");
  const std::filesystem::directory_iterator files(user.path() / "runtime");
  EXPECT_EQ(std::distance(begin(files), end(files)), 0);
  EXPECT_FALSE(std::filesystem::exists(traces() / "opened"));
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors, "lumowatt: cannot show the chart: No space left on device\n");
}

TEST_F(MenuCommands, ChartSoundsTheBellWithoutARuntimeFolder) {
  install("canberra-gtk-play", recordingScript);
  variables = {{"XDG_RUNTIME_DIR", "runtime"}};  // a relative path is invalid
  startWithChart();
  chooseChart();
  EXPECT_EQ(waitForTrace("arguments"), "--id bell\n");
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot show the chart: the session has no runtime folder\n");
}

}  // namespace lumowatt

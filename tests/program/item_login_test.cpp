// "Open at login", in sessions that start the programs in the autostart folder and in sessions that
// do not.

#include <csignal>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

namespace {

/// Fake systemd user manager with xdg-desktop-autostart.target, which starts the programs in the
/// autostart folder.
class SystemdUserManager : public BusPeer {
 public:
  explicit SystemdUserManager(const SessionBus& session) : BusPeer(session) {
    static const sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_PROPERTY("ActiveState", "s", getState, 0, 0),
        SD_BUS_VTABLE_END,
    };
    sd_bus_add_object_vtable(bus(), nullptr,
                             "/org/freedesktop/systemd1/unit/xdg_2ddesktop_2dautostart_2etarget",
                             "org.freedesktop.systemd1.Unit", table, this);
    own("org.freedesktop.systemd1");
  }

  const char* state = "inactive";  ///< ActiveState of the target
  int queryCount = 0;

  /// Waits for a query of the state and replies. Returns once the bus has processed the reply.
  void waitForQuery() {
    waitUntil([this] { return queryCount > 0; });
    queryCount = 0;
    isOwned("org.freedesktop.systemd1");
  }

 private:
  static int getState(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                      void* object, sd_bus_error*) {
    auto& self = *static_cast<SystemdUserManager*>(object);
    ++self.queryCount;
    return sd_bus_message_append(reply, "s", self.state);
  }
};

class OpenAtLogin : public ItemTest {
 protected:
  OpenAtLogin() { install("canberra-gtk-play", "touch $traces/bell"); }

  void startIn(const std::string& desktop, const std::string& library = "") {
    variables = {{"XDG_CURRENT_DESKTOP", desktop}};
    item = startProcess(library);
    panel->waitForItem();
  }

  bool isChecked() const { return panel->menuProperty(menu_id::openAtLogin, "toggle-state") == 1; }
  void choose() const { ItemTest::choose(menu_id::openAtLogin, "Open at login"); }

  std::filesystem::path entry() const {
    return configuration() / "autostart/com.fernhollow.Lumowatt.desktop";
  }
  void writeEntry() const {
    user.write("config/autostart/com.fernhollow.Lumowatt.desktop", contents);
  }

  /// Chooses "Open at login" twice, and expects that this adds and removes the entry.
  void expectToggleWorks() const {
    panel->open();
    EXPECT_FALSE(isChecked());
    choose();
    EXPECT_TRUE(isChecked());
    EXPECT_TRUE(std::filesystem::exists(entry()));
    choose();
    EXPECT_FALSE(isChecked());
    EXPECT_FALSE(std::filesystem::exists(entry()));
    EXPECT_FALSE(std::filesystem::exists(traces() / "bell"));
  }

  const std::string contents = "[Desktop Entry]\nType=Application\nExec=" LUMOWATT_PROGRAM "\n";
};

}  // namespace

TEST_F(OpenAtLogin, SoundsTheBellAndWritesNothingIfNoProgramReadsTheFolder) {
  startIn("sway:wlroots");
  panel->open();
  choose();
  waitForTrace("bell");
  EXPECT_FALSE(isChecked());
  EXPECT_FALSE(std::filesystem::exists(entry()));
  item->send(SIGTERM);
  EXPECT_EQ(item->wait().errors,
            "lumowatt: cannot open at login: nothing in this session reads the autostart folder\n");
}

TEST_F(OpenAtLogin, IsUncheckedDespiteAnEntryIfNoProgramReadsTheFolder) {
  writeEntry();
  startIn("sway");
  panel->waitUntil([this] { return panel->open(), !isChecked(); });
  choose();
  waitForTrace("bell");
  EXPECT_FALSE(isChecked());
  EXPECT_EQ(fileContents(entry()), contents);
}

TEST_F(OpenAtLogin, WorksIfTheAutostartTargetOfSystemdIsActive) {
  SystemdUserManager manager(session);
  manager.state = "active";
  startIn("sway");
  panel->open();
  manager.waitForQuery();
  expectToggleWorks();
}

TEST_F(OpenAtLogin, IsCheckedOnlyWhileTheAutostartTargetIsActive) {
  writeEntry();
  SystemdUserManager manager(session);
  startIn("sway");
  panel->open();
  for (const auto& [state, checked] :
       {std::pair{"inactive", false}, std::pair{"active", true}, std::pair{"inactive", false}}) {
    manager.state = state;
    manager.waitForQuery();
    panel->open();
    EXPECT_EQ(isChecked(), checked) << state;
  }
}

TEST_F(OpenAtLogin, WorksWithoutQueryingSystemdIfDexIsInstalled) {
  SystemdUserManager manager(session);
  install("dex", "");
  startIn("i3", LUMOWATT_ACCELERATED_CLOCK);
  expectToggleWorks();
  manager.processLateMessages();
  EXPECT_EQ(manager.queryCount, 0);
}

TEST_F(OpenAtLogin, WorksWithoutQueryingSystemdOnKnownAndUnnamedDesktops) {
  SystemdUserManager manager(session);
  for (const char* const desktop : {"ubuntu:GNOME", ""}) {
    startIn(desktop, LUMOWATT_ACCELERATED_CLOCK);
    expectToggleWorks();
    manager.processLateMessages();
    EXPECT_EQ(manager.queryCount, 0) << desktop;
    stop();
  }
}

}  // namespace lumowatt

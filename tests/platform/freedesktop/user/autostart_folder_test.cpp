#include "platform/freedesktop/user/autostart_folder.h"

#include "platform/freedesktop/panel_connection.h"
#include "platform/freedesktop/user/programs_folder.h"

namespace lumowatt::freedesktop {

namespace {

constexpr auto targetObject = "/org/freedesktop/systemd1/unit/xdg_2ddesktop_2dautostart_2etarget";

/// Session of the window manager sway, without other programs. The other end of the connection
/// replies as systemd, with the state of a target.
class AutostartFolderTest : public ProgramsFolder {
 protected:
  AutostartFolderTest() {
    sd_event* created = nullptr;
    EXPECT_GE(sd_event_new(&created), 0);
    loop.reset(created);
  }

  /// Calls `isRead` twice. The second result reflects systemd's reply to the first query.
  static bool isRead(AutostartFolder& autostart, const PanelConnection& connection) {
    autostart.isRead();
    connection.processMessages();
    const bool isRead = autostart.isRead();
    connection.processMessages();
    return isRead;
  }
  bool isRead() const {
    AutostartFolder autostart(connection.bus(), loop.get());
    return isRead(autostart, connection);
  }

  /// Returns whether the folder is read in a session with these names of the desktop.
  bool isReadIn(const std::optional<std::string>& names) const {
    const ScopedVariable other("XDG_CURRENT_DESKTOP", names);
    return isRead();
  }

  void handleCall(sd_bus_message* message) {
    if (sd_bus_message_is_method_call(message, "org.freedesktop.DBus.Properties", "Get") <= 0) {
      return;
    }
    ++queries;
    const char* interface = nullptr;
    const char* property = nullptr;
    EXPECT_GT(sd_bus_message_read(message, "ss", &interface, &property), 0);
    EXPECT_STREQ(sd_bus_message_get_path(message), targetObject);
    EXPECT_STREQ(interface, "org.freedesktop.systemd1.Unit");
    EXPECT_STREQ(property, "ActiveState");
    EXPECT_EQ(sd_bus_message_get_auto_start(message), 0) << "the query must not start systemd";
    if (error != nullptr) {
      sd_bus_reply_method_errorf(message, error, "no");
    } else if (state != nullptr) {
      sd_bus_reply_method_return(message, "v", "s", state);
    } else {
      sd_bus_reply_method_return(message, "v", "u", 1U);
    }
  }

  const char* state = "inactive";  ///< null: the reply contains a number
  const char* error = nullptr;
  int queries = 0;
  ScopedVariable desktop{"XDG_CURRENT_DESKTOP", "sway"};
  EventLoop loop;
  PanelConnection connection{[this](sd_bus_message* message) { handleCall(message); }};
};

}  // namespace

TEST_F(AutostartFolderTest, IsReadInAWindowManagerOnlyIfTheTargetIsActive) {
  for (const char* const other : {"inactive", "activating", "deactivating", "failed", ""}) {
    state = other;
    EXPECT_FALSE(isRead()) << other;
  }
  state = "active";
  EXPECT_TRUE(isRead());
}

TEST_F(AutostartFolderTest, IsNotReadInAWindowManagerWithoutSystemd) {
  for (const char* const none : {SD_BUS_ERROR_NAME_HAS_NO_OWNER, SD_BUS_ERROR_SERVICE_UNKNOWN}) {
    error = none;
    EXPECT_FALSE(isRead()) << none;
  }
}

TEST_F(AutostartFolderTest, CountsAsReadUntilTheFirstReply) {
  AutostartFolder autostart(connection.bus(), loop.get());
  EXPECT_TRUE(autostart.isRead());
  EXPECT_TRUE(autostart.isRead());
  connection.processMessages();
  EXPECT_FALSE(autostart.isRead());
}

TEST_F(AutostartFolderTest, QueriesSystemdOnEveryCall) {
  AutostartFolder autostart(connection.bus(), loop.get());
  EXPECT_FALSE(isRead(autostart, connection));
  state = "active";
  EXPECT_FALSE(autostart.isRead()) << "the reply affects the next call";
  connection.processMessages();
  EXPECT_TRUE(autostart.isRead());
  state = "inactive";
  connection.processMessages();
  EXPECT_FALSE(autostart.isRead());
}

TEST_F(AutostartFolderTest, QueriesSystemdOnceAfterTheDelay) {
  const AutostartFolder autostart(connection.bus(), loop.get(), 0.005);
  connection.processMessages();
  EXPECT_EQ(queries, 0);
  while (queries == 0) {
    ASSERT_GE(sd_event_run(loop.get(), UINT64_MAX), 0);
    connection.processMessages();
  }
  EXPECT_EQ(sd_event_run(loop.get(), 20'000), 0) << "no other timer is pending";
}

TEST_F(AutostartFolderTest, SendsNoQueryAfterTheDelayIfAProgramMayReadIt) {
  addProgram("dex");
  const AutostartFolder autostart(connection.bus(), loop.get(), 0.005);
  ASSERT_GT(sd_event_run(loop.get(), UINT64_MAX), 0);
  connection.processMessages();
  EXPECT_EQ(queries, 0);
}

TEST_F(AutostartFolderTest, NeverWakesTheLoopInADesktop) {
  const ScopedVariable gnome("XDG_CURRENT_DESKTOP", "GNOME");
  const AutostartFolder autostart(connection.bus(), loop.get(), 0.005);
  EXPECT_EQ(sd_event_run(loop.get(), 20'000), 0);
}

TEST_F(AutostartFolderTest, PreservesItsStateAfterAnInconclusiveReply) {
  AutostartFolder autostart(connection.bus(), loop.get());
  error = SD_BUS_ERROR_ACCESS_DENIED;
  EXPECT_TRUE(isRead(autostart, connection));
  error = nullptr;
  state = nullptr;
  EXPECT_TRUE(isRead(autostart, connection));
  state = "inactive";
  EXPECT_FALSE(isRead(autostart, connection));
  state = nullptr;
  EXPECT_FALSE(isRead(autostart, connection));
  error = SD_BUS_ERROR_ACCESS_DENIED;
  EXPECT_FALSE(isRead(autostart, connection));
}

TEST_F(AutostartFolderTest, IsNotReadByTheListedWindowManagers) {
  for (const char* const name :
       {"Hyprland", "Wayfire", "awesome", "bspwm", "herbstluftwm", "i3", "labwc", "qtile", "river",
        "sway", "wayfire", "wlroots", "sway:wlroots", ":labwc::wlroots:"}) {
    queries = 0;
    EXPECT_FALSE(isReadIn(name)) << name;
    EXPECT_EQ(queries, 2) << name;
  }
}

TEST_F(AutostartFolderTest, IsReadWithoutAQueryInDesktopsAndUnknownSessions) {
  const std::optional<std::string> none;
  for (const auto& names :
       {none, std::optional<std::string>(""), std::optional<std::string>(":"),
        std::optional<std::string>("GNOME"), std::optional<std::string>("LXQt:labwc:wlroots"),
        std::optional<std::string>("sway:KDE"), std::optional<std::string>("niri"),
        std::optional<std::string>("Openbox"), std::optional<std::string>("swa")}) {
    EXPECT_TRUE(isReadIn(names)) << names.value_or("(none)");
  }
  EXPECT_EQ(queries, 0);
}

TEST_F(AutostartFolderTest, CountsAsReadIfAProgramThatReadsItIsInstalled) {
  for (const char* const name :
       {"dex", "dex-autostart", "fbautostart", "lxsession-xdg-autostart"}) {
    EXPECT_FALSE(isRead());
    addProgram(name);
    queries = 0;
    EXPECT_TRUE(isRead()) << name;
    EXPECT_EQ(queries, 0) << name;
    std::filesystem::remove(pathOf(name));
  }
}

}  // namespace lumowatt::freedesktop

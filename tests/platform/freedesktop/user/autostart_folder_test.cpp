#include "platform/freedesktop/user/autostart_folder.h"

#include "platform/freedesktop/panel_connection.h"
#include "platform/freedesktop/user/programs_folder.h"

namespace lumowatt::freedesktop {

namespace {

constexpr auto targetObject = "/org/freedesktop/systemd1/unit/xdg_2ddesktop_2dautostart_2etarget";

/// A session of sway without other programs, in which systemd, at the other end, has a target.
class AutostartFolderTest : public ProgramsFolder {
 protected:
  AutostartFolderTest() {
    sd_event* made = nullptr;
    EXPECT_GE(sd_event_new(&made), 0);
    loop.reset(made);
  }

  /// Asks twice: the second answer is by what systemd said to the first question.
  static bool isRead(AutostartFolder& autostart, const PanelConnection& connection) {
    autostart.isRead();
    connection.take();
    const bool isRead = autostart.isRead();
    connection.take();
    return isRead;
  }
  bool isRead() const {
    AutostartFolder autostart(connection.bus(), loop.get());
    return isRead(autostart, connection);
  }

  /// Whether it is read in a session of these names.
  bool isReadIn(const std::optional<std::string>& names) const {
    const ScopedVariable other("XDG_CURRENT_DESKTOP", names);
    return isRead();
  }

  void receive(sd_bus_message* message) {
    if (sd_bus_message_is_method_call(message, "org.freedesktop.DBus.Properties", "Get") <= 0) {
      return;
    }
    ++questions;
    const char* interface = nullptr;
    const char* property = nullptr;
    EXPECT_GT(sd_bus_message_read(message, "ss", &interface, &property), 0);
    EXPECT_STREQ(sd_bus_message_get_path(message), targetObject);
    EXPECT_STREQ(interface, "org.freedesktop.systemd1.Unit");
    EXPECT_STREQ(property, "ActiveState");
    EXPECT_EQ(sd_bus_message_get_auto_start(message), 0) << "it is not to be started for this";
    if (error != nullptr) {
      sd_bus_reply_method_errorf(message, error, "no");
    } else if (state != nullptr) {
      sd_bus_reply_method_return(message, "v", "s", state);
    } else {
      sd_bus_reply_method_return(message, "v", "u", 1U);
    }
  }

  const char* state = "inactive";  ///< null: something else than a text
  const char* error = nullptr;
  int questions = 0;
  ScopedVariable desktop{"XDG_CURRENT_DESKTOP", "sway"};
  EventLoop loop;
  PanelConnection connection{[this](sd_bus_message* message) { receive(message); }};
};

}  // namespace

TEST_F(AutostartFolderTest, OfAWindowManagerIsReadWhereTheTargetIsActive) {
  for (const char* const other : {"inactive", "activating", "deactivating", "failed", ""}) {
    state = other;
    EXPECT_FALSE(isRead()) << other;
  }
  state = "active";
  EXPECT_TRUE(isRead());
}

TEST_F(AutostartFolderTest, OfAWindowManagerIsNotReadWithoutSystemd) {
  for (const char* const none : {SD_BUS_ERROR_NAME_HAS_NO_OWNER, SD_BUS_ERROR_SERVICE_UNKNOWN}) {
    error = none;
    EXPECT_FALSE(isRead()) << none;
  }
}

TEST_F(AutostartFolderTest, IsReadUntilTheFirstAnswer) {
  AutostartFolder autostart(connection.bus(), loop.get());
  EXPECT_TRUE(autostart.isRead());
  EXPECT_TRUE(autostart.isRead());
  connection.take();
  EXPECT_FALSE(autostart.isRead());
}

TEST_F(AutostartFolderTest, AsksAgainEachTime) {
  AutostartFolder autostart(connection.bus(), loop.get());
  EXPECT_FALSE(isRead(autostart, connection));
  state = "active";
  EXPECT_FALSE(autostart.isRead()) << "the answer counts the next time";
  connection.take();
  EXPECT_TRUE(autostart.isRead());
  state = "inactive";
  connection.take();
  EXPECT_FALSE(autostart.isRead());
}

TEST_F(AutostartFolderTest, AsksOnceByItself) {
  const AutostartFolder autostart(connection.bus(), loop.get(), 0.005);
  connection.take();
  EXPECT_EQ(questions, 0);
  while (questions == 0) {
    ASSERT_GE(sd_event_run(loop.get(), UINT64_MAX), 0);
    connection.take();
  }
  EXPECT_EQ(sd_event_run(loop.get(), 20'000), 0) << "nothing else is due";
}

TEST_F(AutostartFolderTest, AsksNothingByItselfWhereAProgramMayReadIt) {
  addProgram("dex");
  const AutostartFolder autostart(connection.bus(), loop.get(), 0.005);
  ASSERT_GT(sd_event_run(loop.get(), UINT64_MAX), 0);
  connection.take();
  EXPECT_EQ(questions, 0);
}

TEST_F(AutostartFolderTest, OfADesktopNeverWakesTheLoop) {
  const ScopedVariable gnome("XDG_CURRENT_DESKTOP", "GNOME");
  const AutostartFolder autostart(connection.bus(), loop.get(), 0.005);
  EXPECT_EQ(sd_event_run(loop.get(), 20'000), 0);
}

TEST_F(AutostartFolderTest, WhatTellsNothingOfTheTargetLeavesItAsItWas) {
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

TEST_F(AutostartFolderTest, IsNotReadByTheseWindowManagers) {
  for (const char* const name :
       {"Hyprland", "Wayfire", "awesome", "bspwm", "herbstluftwm", "i3", "labwc", "qtile", "river",
        "sway", "wayfire", "wlroots", "sway:wlroots", ":labwc::wlroots:"}) {
    questions = 0;
    EXPECT_FALSE(isReadIn(name)) << name;
    EXPECT_EQ(questions, 2) << name;
  }
}

TEST_F(AutostartFolderTest, IsReadByDesktopsAndWhoIsUnknownWithoutAQuestion) {
  const std::optional<std::string> none;
  for (const auto& names :
       {none, std::optional<std::string>(""), std::optional<std::string>(":"),
        std::optional<std::string>("GNOME"), std::optional<std::string>("LXQt:labwc:wlroots"),
        std::optional<std::string>("sway:KDE"), std::optional<std::string>("niri"),
        std::optional<std::string>("Openbox"), std::optional<std::string>("swa")}) {
    EXPECT_TRUE(isReadIn(names)) << names.value_or("(none)");
  }
  EXPECT_EQ(questions, 0);
}

TEST_F(AutostartFolderTest, MayBeReadByAProgramThatIsInstalled) {
  for (const char* const name :
       {"dex", "dex-autostart", "fbautostart", "lxsession-xdg-autostart"}) {
    EXPECT_FALSE(isRead());
    addProgram(name);
    questions = 0;
    EXPECT_TRUE(isRead()) << name;
    EXPECT_EQ(questions, 0) << name;
    std::filesystem::remove(place(name));
  }
}

}  // namespace lumowatt::freedesktop

// The item in each known panel. The program recognizes a panel by the name of its tray's process.

#include "program/title_fixture.h"
#include "support/fixtures.h"

namespace lumowatt {

namespace {

enum class Form { label, tiles, wide };

struct KnownPanel {
  const char* process;
  Form form;
  int colors = menu_id::colors;  ///< id of "Colors" in the menu
};

class ItemInPanel : public TitleTest, public testing::WithParamInterface<KnownPanel> {
 protected:
  ItemInPanel() : TitleTest(GetParam().process) {}
};

/// Fixture with GNOME Shell, which gets a compact menu of few rows.
class ItemInGnomeShell : public TitleTest {
 protected:
  ItemInGnomeShell() : TitleTest("gnome-shell") {}

  bool isShown(int id) const {
    return panel->callMenu("GetProperty", "is", id, "visible").values == Json::array({true});
  }
};

/// Fixture with Cinnamon's tray, which loads icons from files and opens the menus of items that
/// were registered by an object path.
class ItemInCinnamon : public TitleTest {
 protected:
  ItemInCinnamon() : TitleTest("xapp-sn-watcher") {}

 public:
  static constexpr auto object = "/org/ayatana/NotificationItem/lumowatt";

 protected:
  Json property(const char* name) const {
    return panel->properties(object, "org.kde.StatusNotifierItem").at(name);
  }
};

/// Fixture with a bar that shows no menus, so that the item opens its menu in a launcher.
class ItemInSwaybar : public TitleTest {
 protected:
  ItemInSwaybar() : TitleTest("swaybar") {}

  /// Installs a launcher that records the lines of the menu and chooses `line`.
  void installLauncher(const std::string& line) const {
    install("rofi",
            "cat > $traces/lines.new\nmv $traces/lines.new $traces/lines\necho '" + line + "'\n");
  }

  /// Clicks on the item that was registered at `index`. Returns the name of the error; empty on
  /// success.
  std::string click(const char* method, std::size_t index = 0) const {
    sd_bus_message* const message = panel->newMethodCall(connection(index), "/StatusNotifierItem",
                                                         "org.kde.StatusNotifierItem", method);
    EXPECT_GE(sd_bus_message_append(message, "ii", 0, 0), 0);
    return panel->call(message).error;
  }
};

/// Fixture with a shell that identifies items by the titles of their tool tips.
class ItemInQuickshell : public TitleTest {
 protected:
  ItemInQuickshell() : TitleTest("quickshell") {}
};

}  // namespace

TEST_P(ItemInPanel, ShowsTheTitleOnceAndTheMenu) {
  start();
  const Form form = GetParam().form;
  if (form == Form::tiles) panel->waitForItems(2);
  panel->processLateMessages();
  EXPECT_EQ(panel->registered.size(), form == Form::tiles ? 2U : 1U);
  const std::string label = panel->property("XAyatanaLabel");
  EXPECT_EQ(label.find("98% ▼ −4.8 W") != std::string::npos, form == Form::label) << label;
  const std::string icon = panel->property("IconName");
  EXPECT_EQ(icon.starts_with('/'), form == Form::wide) << icon;
  EXPECT_EQ(iconFiles().size(), form == Form::label ? 0U : 1U);
  panel->open();
  EXPECT_EQ(panel->menuProperty(GetParam().colors, "label"), "Colors");
}

INSTANTIATE_TEST_SUITE_P(
    All, ItemInPanel,
    testing::Values(
        KnownPanel{"gnome-shell", Form::label, menu_id::compact::colors},
        KnownPanel{"mate-panel", Form::label}, KnownPanel{"notification-ar", Form::label},
        KnownPanel{"indicator-apple", Form::label}, KnownPanel{"ayatana-indicat", Form::label},
        KnownPanel{"sfwbar", Form::label}, KnownPanel{"cairo-dock", Form::label},
        KnownPanel{"waybar", Form::wide}, KnownPanel{".waybar-wrapped", Form::wide},
        KnownPanel{"kded5", Form::tiles}, KnownPanel{".kded6-wrapped", Form::tiles},
        KnownPanel{"lxqt-panel", Form::tiles}, KnownPanel{"panel-7-systray", Form::tiles},
        KnownPanel{"panel-7-sntray", Form::tiles}, KnownPanel{"swaybar", Form::tiles},
        KnownPanel{"quickshell", Form::tiles}, KnownPanel{"qs", Form::tiles},
        KnownPanel{"dde-shell", Form::tiles}, KnownPanel{"dde-dock", Form::tiles},
        KnownPanel{"gnome-flashback", Form::tiles}, KnownPanel{"sni-daemon", Form::tiles},
        KnownPanel{"enlightenment", Form::tiles}, KnownPanel{"gtk-sni-tray-st", Form::tiles},
        KnownPanel{"budgie-daemon", Form::tiles}, KnownPanel{"cosmic-applet-s", Form::tiles},
        KnownPanel{"ironbar", Form::tiles}, KnownPanel{"eww", Form::tiles},
        KnownPanel{"wf-panel", Form::tiles}, KnownPanel{"nwg-panel", Form::tiles},
        KnownPanel{"qtile", Form::tiles}, KnownPanel{"status-notifier", Form::tiles},
        KnownPanel{"unknown-panel", Form::tiles}),
    [](const auto& test) { return testName(test.param.process); });

TEST_F(ItemInGnomeShell, PutsTheReportInOneMenuItemAndCommandsInASubmenu) {
  start();
  panel->open();
  const std::string report = panel->menuProperty(menu_id::compact::report, "label");
  EXPECT_TRUE(report.starts_with("On battery\nCharge: 98% (4579 of 4635 mAh)\n")) << report;
  EXPECT_TRUE(report.ends_with(", by Fernhollow")) << report;
  EXPECT_EQ(panel->menuProperty(menu_id::compact::chart, "label"),
            "Charge over the last hour\nCollecting history…");
  EXPECT_EQ(panel->menuProperty(menu_id::compact::more, "children-display"), "submenu");
  choose(menu_id::compact::colors, "Colors");
  EXPECT_EQ(fileContents(preferences()), "color=false\n");
  choose(menu_id::compact::quit, "Quit Lumowatt");
  EXPECT_EQ(item->wait().status, 0);
}

TEST_F(ItemInGnomeShell, IsExportedAtASingleObjectPath) {
  start();
  for (const char* const object : {"/StatusNotifierItem", ItemInCinnamon::object}) {
    sd_bus_message* const message = panel->newMethodCall(
        Panel::application, object, "org.freedesktop.DBus.Properties", "GetAll");
    EXPECT_GE(sd_bus_message_append(message, "s", "org.kde.StatusNotifierItem"), 0);
    EXPECT_EQ(panel->call(message).error.empty(), object != ItemInCinnamon::object) << object;
  }
}

TEST_F(ItemInGnomeShell, UpdatesTheReportWhenTheMenuOpens) {
  start();
  panel->open();
  panel->sendEvent(menu_id::root, "closed");
  machine.set("BAT0/capacity", "40");
  EXPECT_TRUE(panel->open());
  const std::string report = panel->menuProperty(menu_id::compact::report, "label");
  EXPECT_NE(report.find("\nCharge: 40%"), std::string::npos) << report;
}

TEST_F(ItemInGnomeShell, ReplacesTheCompactMenuOnceAnotherPanelAppears) {
  start();
  panel->open();
  EXPECT_FALSE(isShown(menu_id::quit));
  replacePanel("panel-7-systray");
  panel->waitForItem();
  EXPECT_TRUE(isShown(menu_id::quit));
  EXPECT_EQ(panel->menuProperty(menu_id::quit, "label"), "Quit Lumowatt");
  replacePanel("gnome-shell");
  panel->waitForItem();
  EXPECT_FALSE(isShown(menu_id::quit));
  EXPECT_EQ(panel->menuProperty(menu_id::compact::quit, "label"), "Quit Lumowatt");
}

TEST_F(ItemInCinnamon, RegistersAnObjectPathSoThatClicksOpenTheMenu) {
  start();
  EXPECT_EQ(panel->registered, Names{object});
  EXPECT_EQ(property("Id"), "Lumowatt");
  EXPECT_EQ(property("Menu"), "/MenuBar");
}

TEST_F(ItemInCinnamon, HasAnIconFileWithoutSymbolicInItsPath) {
  start();
  const std::string icon = property("IconName");
  EXPECT_TRUE(std::filesystem::exists(icon)) << icon;
  EXPECT_EQ(icon.find("symbolic"), std::string::npos) << icon;
  machine.remove("BAT0");
  panel->open();
  panel->waitForSignal("NewIcon");
  const std::string later = property("IconName");
  EXPECT_TRUE(std::filesystem::exists(later)) << later;
  EXPECT_EQ(later.find("symbolic"), std::string::npos) << later;
}

TEST_F(ItemInCinnamon, EmitsSignalsFromTheRegisteredObject) {
  start();
  std::string path;
  sd_bus_slot* slot = nullptr;
  ASSERT_GE(sd_bus_match_signal(
                panel->bus(), &slot, nullptr, nullptr, "org.kde.StatusNotifierItem", "NewIcon",
                [](sd_bus_message* signal, void* text, sd_bus_error*) {
                  *static_cast<std::string*>(text) = sd_bus_message_get_path(signal);
                  return 0;
                },
                &path),
            0);
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  panel->waitUntil([&path] { return !path.empty(); });
  EXPECT_EQ(path, object);
  sd_bus_slot_unref(slot);
}

TEST_F(ItemInCinnamon, RegistersOnceWithARestartedTray) {
  start();
  replacePanel("xapp-sn-watcher");
  panel->waitForItem();
  panel->processLateMessages();
  EXPECT_EQ(panel->registered, Names{object});
}

TEST_F(ItemInSwaybar, OpensTheMenuInTheLauncherOnAClick) {
  installLauncher("✓ Colors");
  start();
  EXPECT_EQ(click("Activate"), "");
  const std::string lines = waitForTrace("lines");
  EXPECT_TRUE(lines.starts_with("On battery\nCharge: 98% (4579 of 4635 mAh)\n")) << lines;
  EXPECT_TRUE(lines.ends_with("\nQuit Lumowatt\n") || lines.ends_with("\nQuit Lumowatt")) << lines;
  panel->waitUntil([this] { return std::filesystem::exists(preferences()); });
  EXPECT_EQ(fileContents(preferences()), "color=false\n");
}

TEST_F(ItemInSwaybar, OpensTheMenuOnARightClickOnATile) {
  installLauncher("Percent");
  start();
  panel->waitForItems(2);
  EXPECT_EQ(click("ContextMenu", 1), "");
  panel->waitUntil([this] { return std::filesystem::exists(preferences()); });
  EXPECT_EQ(fileContents(preferences()), "mode=0\n");
}

TEST_F(ItemInSwaybar, RefusesClicksOnceAPanelThatShowsMenusAppears) {
  installLauncher("✓ Colors");
  start();
  replacePanel("kded6");
  panel->waitForItem();
  EXPECT_EQ(click("Activate"), "org.freedesktop.DBus.Error.UnknownMethod");
  EXPECT_EQ(click("ContextMenu"), "org.freedesktop.DBus.Error.UnknownMethod");
  panel->processLateMessages();
  EXPECT_FALSE(std::filesystem::exists(preferences()));
}

TEST_F(ItemInQuickshell, HasTheSameToolTipTitleForAllReadings) {
  start();
  EXPECT_EQ(panel->property("ToolTip").at(2), "Lumowatt");
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  EXPECT_EQ(panel->property("ToolTip").at(2), "Lumowatt");
  machine.remove("BAT0");
  panel->open();
  EXPECT_EQ(panel->property("ToolTip").at(2), "Lumowatt");
}

}  // namespace lumowatt

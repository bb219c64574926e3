// The item in each panel that is known, by the name of the process that its tray is.

#include "program/title_fixture.h"

namespace lumowatt {

namespace {

enum class Form { label, tiles, wide };

struct KnownPanel {
  const char* process;
  Form form;
  int colors = menu_id::colors;  ///< the id of that item of the menu
};

std::ostream& operator<<(std::ostream& stream, const KnownPanel& panel) {
  return stream << panel.process;
}

class InPanel : public TitleTest, public testing::WithParamInterface<KnownPanel> {
 protected:
  InPanel() : TitleTest(GetParam().process) {}
};

/// A panel that has room for few rows of a menu.
class InGnomeShell : public TitleTest {
 protected:
  InGnomeShell() : TitleTest("gnome-shell") {}

  bool isShown(int id) const {
    return panel->callMenu("GetProperty", "is", id, "visible").values == Json::array({true});
  }
};

/// Cinnamon's tray, where icons are files and a menu opens for an object's path.
class InCinnamon : public TitleTest {
 protected:
  InCinnamon() : TitleTest("xapp-sn-watcher") {}

 public:
  static constexpr auto object = "/org/ayatana/NotificationItem/lumowatt";

 protected:
  Json property(const char* name) const {
    return panel->properties(object, "org.kde.StatusNotifierItem").at(name);
  }
};

/// A bar that shows no menus, on X11.
class InSwaybar : public TitleTest {
 protected:
  InSwaybar() : TitleTest("swaybar") {}

  /// Installs a launcher in which that line is chosen.
  void installLauncher(const std::string& line) const {
    install("rofi",
            "cat > $traces/lines.new\nmv $traces/lines.new $traces/lines\necho '" + line + "'\n");
  }

  /// A click on the item that was registered as the `index`th; the error's name when it is refused.
  std::string click(const char* method, std::size_t index = 0) const {
    sd_bus_message* const call = panel->newCall(connection(index), "/StatusNotifierItem",
                                                "org.kde.StatusNotifierItem", method);
    EXPECT_GE(sd_bus_message_append(call, "ii", 0, 0), 0);
    return panel->answer(call).error;
  }
};

/// A shell that remembers an item by the title of its tool tip.
class InQuickshell : public TitleTest {
 protected:
  InQuickshell() : TitleTest("quickshell") {}
};

}  // namespace

TEST_P(InPanel, ShowsTheTitleOnceAndTheMenu) {
  start();
  const Form form = GetParam().form;
  if (form == Form::tiles) panel->waitForItems(2);
  panel->settle();
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
    All, InPanel,
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
        KnownPanel{"one-that-is-new", Form::tiles}));

TEST_F(InGnomeShell, TheReportIsOneItemOfTheMenuAndTheCommandsAreInASubmenu) {
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

TEST_F(InGnomeShell, TheItemIsFoundAtOneObjectAlone) {
  start();
  for (const char* const object : {"/StatusNotifierItem", InCinnamon::object}) {
    sd_bus_message* const call =
        panel->newCall(Panel::application, object, "org.freedesktop.DBus.Properties", "GetAll");
    EXPECT_GE(sd_bus_message_append(call, "s", "org.kde.StatusNotifierItem"), 0);
    EXPECT_EQ(panel->answer(call).error.empty(), object != InCinnamon::object) << object;
  }
}

TEST_F(InGnomeShell, AReportIsInTheMenuWhenItOpens) {
  start();
  panel->open();
  panel->send(menu_id::root, "closed");
  machine.set("BAT0/capacity", "40");
  EXPECT_TRUE(panel->open());
  const std::string report = panel->menuProperty(menu_id::compact::report, "label");
  EXPECT_NE(report.find("\nCharge: 40%"), std::string::npos) << report;
}

TEST_F(InGnomeShell, AnotherPanelHasTheWholeMenuBeforeItIsOpened) {
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

TEST_F(InCinnamon, TheItemIsRegisteredByAnObjectsPathSoThatAClickOpensItsMenu) {
  start();
  EXPECT_EQ(panel->registered, Names{object});
  EXPECT_EQ(property("Id"), "Lumowatt");
  EXPECT_EQ(property("Menu"), "/MenuBar");
}

TEST_F(InCinnamon, TheIconIsAFileWhosePathItDoesNotTakeForAThemesName) {
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

TEST_F(InCinnamon, ChangesAreSignaledByTheObjectThatIsRegistered) {
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

TEST_F(InCinnamon, TheItemComesBackOnceWithItsNextTray) {
  start();
  replacePanel("xapp-sn-watcher");
  panel->waitForItem();
  panel->settle();
  EXPECT_EQ(panel->registered, Names{object});
}

TEST_F(InSwaybar, AClickOpensTheMenuInTheLauncher) {
  installLauncher("✓ Colors");
  start();
  EXPECT_EQ(click("Activate"), "");
  const std::string lines = trace("lines");
  EXPECT_TRUE(lines.starts_with("On battery\nCharge: 98% (4579 of 4635 mAh)\n")) << lines;
  EXPECT_TRUE(lines.ends_with("\nQuit Lumowatt\n") || lines.ends_with("\nQuit Lumowatt")) << lines;
  panel->waitUntil([this] { return std::filesystem::exists(preferences()); });
  EXPECT_EQ(fileContents(preferences()), "color=false\n");
}

TEST_F(InSwaybar, ARightClickOnATileDoesTheSame) {
  installLauncher("Percent");
  start();
  panel->waitForItems(2);
  EXPECT_EQ(click("ContextMenu", 1), "");
  panel->waitUntil([this] { return std::filesystem::exists(preferences()); });
  EXPECT_EQ(fileContents(preferences()), "mode=0\n");
}

TEST_F(InSwaybar, AClickInAPanelThatShowsMenusIsLeftToIt) {
  installLauncher("✓ Colors");
  start();
  replacePanel("kded6");
  panel->waitForItem();
  EXPECT_EQ(click("Activate"), "org.freedesktop.DBus.Error.UnknownMethod");
  EXPECT_EQ(click("ContextMenu"), "org.freedesktop.DBus.Error.UnknownMethod");
  panel->settle();
  EXPECT_FALSE(std::filesystem::exists(preferences()));
}

TEST_F(InQuickshell, TheToolTipHasOneTitleWhateverTheReading) {
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

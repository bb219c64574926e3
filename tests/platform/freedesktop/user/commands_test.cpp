#include "platform/freedesktop/user/commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "support/environment.h"

namespace lumowatt::freedesktop {

namespace {

using Names = std::vector<std::string>;

Names names(const std::vector<Command>& commands) {
  Names all;
  all.reserve(commands.size());
  for (const Command& command : commands) all.push_back(command.front());
  return all;
}

Names settingsPrograms(const std::optional<std::string>& desktop) {
  const ScopedVariable current("XDG_CURRENT_DESKTOP", desktop);
  return names(batterySettingsCommands());
}

/// Order of the programs if the session names no known desktop. Programs that work only on their
/// own desktop are last.
const Names defaultOrder{
    "systemsettings",         "systemsettings5",        "xfce4-power-manager-settings",
    "mate-power-preferences", "cinnamon-settings",      "lxqt-config-powermanagement",
    "cosmic-settings",        "io.elementary.settings", "io.elementary.switchboard",
    "dde-control-center",     "budgie-control-center",  "gnome-control-center"};

}  // namespace

TEST(ClipboardCommands, MatchTheDisplayServer) {
  const Command x11{"xclip", "-selection", "clipboard"};
  const ScopedVariable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_EQ(clipboardCommands(),
            (std::vector<Command>{{"wl-copy", "--type", "text/plain;charset=utf-8"}, x11}));
  const ScopedVariable none("WAYLAND_DISPLAY", std::nullopt);
  EXPECT_EQ(clipboardCommands(), std::vector<Command>{x11});
}

TEST(BellCommands, PreferTheSoundThemeToASoundFile) {
  const std::string file = "/usr/share/sounds/freedesktop/stereo/bell.oga";
  EXPECT_EQ(bellCommands(),
            (std::vector<Command>{
                {"canberra-gtk-play", "--id", "bell"}, {"pw-play", file}, {"paplay", file}}));
}

TEST(PictureViewerCommands, OpenTheDefaultViewerOfTheDesktop) {
  EXPECT_EQ(pictureViewerCommands("/run/chart.png"),
            (std::vector<Command>{{"xdg-open", "/run/chart.png"},
                                  {"gio", "open", "/run/chart.png"},
                                  {"exo-open", "/run/chart.png"}}));
}

TEST(LauncherCommands, MatchTheDisplayServer) {
  const ScopedVariable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_EQ(names(launcherCommands()),
            (Names{"fuzzel", "wofi", "rofi", "tofi", "bemenu", "wmenu"}));
  const ScopedVariable none("WAYLAND_DISPLAY", std::nullopt);
  EXPECT_EQ(names(launcherCommands()), (Names{"rofi", "dmenu", "bemenu"}));
}

TEST(LauncherCommands, ShowTheProgramNameAsPrompt) {
  const ScopedVariable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_EQ(launcherCommands(),
            (std::vector<Command>{
                {"fuzzel", "--dmenu", "--lines=26", "--width=64", "--prompt=Lumowatt: "},
                {"wofi", "--dmenu", "--cache-file=/dev/null", "--insensitive", "--lines=26",
                 "--prompt=Lumowatt"},
                {"rofi", "-dmenu", "-i", "-no-custom", "-l", "26", "-p", "Lumowatt"},
                {"tofi", "--prompt-text=Lumowatt: "},
                {"bemenu", "-i", "-l", "26", "-p", "Lumowatt"},
                {"wmenu", "-i", "-l", "26", "-p", "Lumowatt"}}));
}

TEST(BatterySettingsCommands, HaveADefaultOrderOutsideOfDesktops) {
  EXPECT_EQ(settingsPrograms(std::nullopt), defaultOrder);
  EXPECT_EQ(settingsPrograms("sway"), defaultOrder);
}

TEST(BatterySettingsCommands, ListTheProgramOfTheRunningDesktopFirst) {
  const std::vector<std::pair<std::string, std::string>> firstPrograms{
      {"KDE", "systemsettings"},
      {"XFCE", "xfce4-power-manager-settings"},
      {"MATE", "mate-power-preferences"},
      {"X-Cinnamon", "cinnamon-settings"},
      {"LXQt", "lxqt-config-powermanagement"},
      {"COSMIC", "cosmic-settings"},
      {"Pantheon", "io.elementary.settings"},
      {"Deepin", "dde-control-center"},
      {"DDE", "dde-control-center"},
      {"Budgie:GNOME", "budgie-control-center"},
      {"ubuntu:GNOME", "gnome-control-center"},
      {"Unity:Unity7:ubuntu", "gnome-control-center"}};
  for (const auto& [desktop, first] : firstPrograms) {
    EXPECT_EQ(settingsPrograms(desktop).at(0), first) << desktop;
    EXPECT_EQ(settingsPrograms(desktop).size(), defaultOrder.size()) << desktop;
  }
  EXPECT_EQ(settingsPrograms("KDE"), defaultOrder);
  EXPECT_EQ(settingsPrograms("KDE:XFCE"), defaultOrder) << "in the default order";
  EXPECT_EQ(settingsPrograms("LXQt").at(1), "systemsettings");
  EXPECT_EQ(settingsPrograms("Budgie:GNOME").at(1), "gnome-control-center");
}

TEST(BatterySettingsCommands, OpenThePowerPanel) {
  const std::vector<Command> commands = batterySettingsCommands();
  for (const Command& command :
       std::vector<Command>{{"systemsettings", "kcm_powerdevilprofilesconfig"},
                            {"systemsettings5", "powerdevilprofilesconfig"},
                            {"cinnamon-settings", "power"},
                            {"cosmic-settings", "power"},
                            {"io.elementary.settings", "settings://power"},
                            {"io.elementary.switchboard", "settings://power"},
                            {"dde-control-center", "-m", "power"},
                            {"budgie-control-center", "power"},
                            {"gnome-control-center", "power"}}) {
    EXPECT_NE(std::ranges::find(commands, command), commands.end()) << command.front();
  }
}

}  // namespace lumowatt::freedesktop

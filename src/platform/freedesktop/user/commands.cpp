#include "platform/freedesktop/user/commands.h"

#include <algorithm>

#include "platform/freedesktop/user/environment.h"

namespace lumowatt::freedesktop {

namespace {

bool isWayland() { return !environmentVariable("WAYLAND_DISPLAY").empty(); }

/// Power settings panels of a desktop, and the desktop's names in $XDG_CURRENT_DESKTOP.
struct DesktopPanel {
  std::vector<std::string> names;
  std::vector<Command> commands;
};

/// Returns the panels. Panels that run only on their own desktop are last.
std::vector<DesktopPanel> desktopPanels() {
  return {
      {{"KDE"},
       {{"systemsettings", "kcm_powerdevilprofilesconfig"},
        {"systemsettings5", "powerdevilprofilesconfig"}}},
      {{"XFCE"}, {{"xfce4-power-manager-settings"}}},
      {{"MATE"}, {{"mate-power-preferences"}}},
      {{"X-Cinnamon"}, {{"cinnamon-settings", "power"}}},
      {{"LXQt"}, {{"lxqt-config-powermanagement"}}},
      {{"COSMIC"}, {{"cosmic-settings", "power"}}},
      {{"Pantheon"},
       {{"io.elementary.settings", "settings://power"},
        {"io.elementary.switchboard", "settings://power"}}},
      {{"Deepin", "DDE"}, {{"dde-control-center", "-m", "power"}}},
      {{"Budgie"}, {{"budgie-control-center", "power"}}},
      {{"GNOME", "Unity"}, {{"gnome-control-center", "power"}}},
  };
}

}  // namespace

std::vector<Command> clipboardCommands() {
  std::vector<Command> commands{{"wl-copy", "--type", "text/plain;charset=utf-8"},
                                {"xclip", "-selection", "clipboard"}};
  if (!isWayland()) commands.erase(commands.begin());
  return commands;
}

std::vector<Command> bellCommands() {
  const std::string file = "/usr/share/sounds/freedesktop/stereo/bell.oga";
  return {{"canberra-gtk-play", "--id", "bell"}, {"pw-play", file}, {"paplay", file}};
}

std::vector<Command> pictureViewerCommands(const std::string& path) {
  return {{"xdg-open", path}, {"gio", "open", path}, {"exo-open", path}};
}

std::vector<Command> launcherCommands() {
  // The longest menu, that of a charging battery, has 26 lines.
  const std::string lines = "26";
  const std::string prompt = "Lumowatt";
  const Command rofi{"rofi", "-dmenu", "-i", "-no-custom", "-l", lines, "-p", prompt};
  const Command bemenu{"bemenu", "-i", "-l", lines, "-p", prompt};
  if (!isWayland()) return {rofi, {"dmenu", "-i", "-l", lines, "-p", prompt}, bemenu};
  return {
      {"fuzzel", "--dmenu", "--lines=" + lines, "--width=64", "--prompt=" + prompt + ": "},
      // wofi moves earlier choices to the top. An empty cache preserves the order of the lines.
      {"wofi", "--dmenu", "--cache-file=/dev/null", "--insensitive", "--lines=" + lines,
       "--prompt=" + prompt},
      rofi,
      {"tofi", "--prompt-text=" + prompt + ": "},
      bemenu,
      {"wmenu", "-i", "-l", lines, "-p", prompt},
  };
}

std::vector<Command> batterySettingsCommands() {
  std::vector<DesktopPanel> panels = desktopPanels();
  std::stable_partition(panels.begin(), panels.end(), [](const DesktopPanel& panel) {
    return std::ranges::any_of(panel.names, isCurrentDesktop);
  });
  std::vector<Command> commands;
  for (const DesktopPanel& panel : panels) {
    commands.insert(commands.end(), panel.commands.begin(), panel.commands.end());
  }
  return commands;
}

}  // namespace lumowatt::freedesktop

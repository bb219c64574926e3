#include "platform/freedesktop/user/autostart_folder.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/freedesktop/user/environment.h"
#include "platform/freedesktop/user/programs.h"

namespace lumowatt::freedesktop {

namespace {

/// Window managers that do not start the programs in the autostart folder, by their names in
/// $XDG_CURRENT_DESKTOP. niri and openbox are not listed: niri starts the programs through systemd,
/// and the session of openbox starts them itself. wlroots is a library: several window managers add
/// its name to their own name, or set only its name.
constexpr std::array<std::string_view, 12> windowManagers{
    "Hyprland", "Wayfire", "awesome", "bspwm", "herbstluftwm", "i3",
    "labwc",    "qtile",   "river",   "sway",  "wayfire",      "wlroots"};

/// Tools that start the programs in the autostart folder. The configuration of a window manager
/// may run one of them, as the configurations of i3 and Raspberry Pi OS do.
constexpr std::array<std::string_view, 4> starters{"dex", "dex-autostart", "fbautostart",
                                                   "lxsession-xdg-autostart"};

bool isSessionOfWindowManager() {
  const std::vector<std::string> names = currentDesktops();
  return !names.empty() && std::ranges::all_of(names, [](const std::string& name) {
    return std::ranges::find(windowManagers, name) != windowManagers.end();
  });
}

bool hasStarter() {
  return std::ranges::any_of(starters,
                             [](std::string_view name) { return !findProgram(name).empty(); });
}

}  // namespace

AutostartFolder::AutostartFolder(sd_bus* bus, sd_event* loop, double delay)
    : bus_(bus), isWindowManagerSession_(isSessionOfWindowManager()) {
  if (!isWindowManagerSession_) return;
  firstQueryTimer_.emplace(loop, delay, [this] {
    firstQueryTimer_.reset();
    if (dependsOnSystemd()) queryTarget();
  });
}

bool AutostartFolder::isRead() {
  if (!dependsOnSystemd()) return true;
  queryTarget();
  return !isTargetInactive_;
}

bool AutostartFolder::dependsOnSystemd() const { return isWindowManagerSession_ && !hasStarter(); }

/// Queries the state of the target. Cancels a pending query.
void AutostartFolder::queryTarget() {
  BusMessage call;
  int status = sd_bus_message_new_method_call(
      bus_, Out(call), "org.freedesktop.systemd1",
      "/org/freedesktop/systemd1/unit/xdg_2ddesktop_2dautostart_2etarget",
      "org.freedesktop.DBus.Properties", "Get");
  if (status >= 0) status = sd_bus_message_set_auto_start(call.get(), 0);
  if (status >= 0) {
    status =
        sd_bus_message_append(call.get(), "ss", "org.freedesktop.systemd1.Unit", "ActiveState");
  }
  if (status >= 0) {
    sd_bus_call_async(bus_, Out(pendingCall_), call.get(), handle<&AutostartFolder::handleState>,
                      this, 0);
  }
}

int AutostartFolder::handleState(sd_bus_message* reply, sd_bus_error*) {
  const sd_bus_error* const error = sd_bus_message_get_error(reply);
  const char* state = nullptr;
  if (error != nullptr) {
    // Other errors do not indicate the state of the target.
    if (sd_bus_error_has_name(error, SD_BUS_ERROR_NAME_HAS_NO_OWNER) != 0 ||
        sd_bus_error_has_name(error, SD_BUS_ERROR_SERVICE_UNKNOWN) != 0) {
      isTargetInactive_ = true;
    }
  } else if (sd_bus_message_read(reply, "v", "s", &state) > 0) {
    isTargetInactive_ = std::string_view(state) != "active";
  }
  return 0;
}

}  // namespace lumowatt::freedesktop

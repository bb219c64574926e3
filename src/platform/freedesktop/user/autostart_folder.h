#pragma once

#include <optional>

#include "platform/freedesktop/bus/loop_timer.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Autostart folder of the user (freedesktop.org). Desktops start the programs that have an entry
/// in the folder; window managers do not. In the session of a window manager, systemd may start the
/// programs when its target xdg-desktop-autostart.target is active: the class queries the state of
/// the target asynchronously. In other sessions it sends no query.
class AutostartFolder {
 public:
  /// Queries systemd for the first time after `delay` seconds: the target becomes active only after
  /// all of its programs have started, which may include this program.
  AutostartFolder(sd_bus* bus, sd_event* loop, double delay = 10.0);

  /// Returns whether the session reads the folder; true if this is unknown. Also queries systemd
  /// again. The reply affects later calls.
  bool isRead();

 private:
  bool dependsOnSystemd() const;
  void queryTarget();
  int handleState(sd_bus_message* reply, sd_bus_error* error);

  sd_bus* bus_;
  bool isWindowManagerSession_;
  bool isTargetInactive_ = false;  ///< from the last reply; true also if systemd does not run
  BusSlot pendingCall_;
  std::optional<LoopTimer> firstQueryTimer_;
};

}  // namespace lumowatt::freedesktop

#pragma once

#include <functional>
#include <string>

#include "platform/freedesktop/bus/match.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Name that a panel's tray owns on the bus, and name of its interface (StatusNotifierWatcher,
/// freedesktop.org).
inline constexpr auto watcherName = "org.kde.StatusNotifierWatcher";

/// Watch that reports the running panel, if any, and each panel that appears later.
class PanelWatch {
 public:
  /// Calls `onAppeared` with the process name of the panel's tray from /proc/PID/comm; empty if the
  /// name is unknown.
  PanelWatch(sd_bus* bus, std::function<void(const std::string& process)> onAppeared);

 private:
  void queryProcess();
  int handleProcess(sd_bus_message* reply, sd_bus_error* error);

  sd_bus* bus_;
  std::function<void(const std::string& process)> onAppeared_;
  NameWatch names_;
  BusSlot pendingCall_;
};

}  // namespace lumowatt::freedesktop

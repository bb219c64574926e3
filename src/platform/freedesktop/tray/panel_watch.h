#pragma once

#include <functional>
#include <string>

#include "platform/freedesktop/bus/match.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// The name that a panel's tray owns on the bus, and its object and interface
/// (StatusNotifierWatcher, freedesktop.org).
inline constexpr auto watcherName = "org.kde.StatusNotifierWatcher";

/// Tells of the panel that is there, and of each that comes later.
class PanelWatch {
 public:
  /// Calls `appeared` with the name of the process that the panel's tray is, as the kernel has it;
  /// empty when that is not known.
  PanelWatch(sd_bus* bus, std::function<void(const std::string& process)> appeared);

 private:
  void askForProcess();
  int receiveProcess(sd_bus_message* reply, sd_bus_error* error);

  sd_bus* bus_;
  std::function<void(const std::string& process)> appeared_;
  NameWatch names_;
  BusSlot question_;
};

}  // namespace lumowatt::freedesktop

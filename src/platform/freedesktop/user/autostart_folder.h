#pragma once

#include <optional>

#include "platform/freedesktop/bus/loop_timer.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Tells whether the session starts what has an entry in the autostart folder (freedesktop.org).
/// Desktops do, window managers by themselves do not. There systemd may, which is asked without
/// waiting for its answer; in other sessions it is not asked.
class AutostartFolder {
 public:
  /// Asks systemd for the first time after `delay` seconds: its target is active only once all
  /// that it wants has started, this program perhaps among it.
  AutostartFolder(sd_bus* bus, sd_event* loop, double delay = 10.0);

  /// False where nothing is known to read the folder; true where that cannot be told. Asks systemd
  /// again, whose answer counts from the next call on.
  bool isRead();

 private:
  bool dependsOnSystemd() const;
  void ask();
  int receiveState(sd_bus_message* reply, sd_bus_error* error);

  sd_bus* bus_;
  bool isOfWindowManager_;
  bool isWithoutTarget_ = false;  ///< as systemd answered last, or as there is none
  BusSlot question_;
  std::optional<LoopTimer> firstQuestion_;
};

}  // namespace lumowatt::freedesktop

#pragma once

#include <systemd/sd-device.h>

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt {

using DeviceMonitor =
    std::unique_ptr<sd_device_monitor, freedesktop::Release<sd_device_monitor_unref>>;

/// Monitors the kernel's power-supply events (Documentation/power/power_supply_class.rst). The
/// kernel sends events in bursts, before the attributes have their new values.
/// Therefore the monitor calls its callback shortly after an event, and at most twice a second.
class PowerMonitor {
 public:
  /// Calls `onChanged` from the event loop. Never calls it if the events cannot be received.
  PowerMonitor(sd_event* loop, std::function<void()> onChanged);

 private:
  static int onEvent(sd_device_monitor* monitor, sd_device* device, void* self);
  static int onTimer(sd_event_source* source, std::uint64_t due, void* self);

  std::function<void()> onChanged_;
  std::uint64_t lastCall_ = 0;  // timestamp from `boottime`
  freedesktop::EventSource timer_;
  DeviceMonitor monitor_;
};

}  // namespace lumowatt

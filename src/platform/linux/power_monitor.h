#pragma once

#include <systemd/sd-device.h>

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt {

using DeviceMonitor =
    std::unique_ptr<sd_device_monitor, freedesktop::Release<sd_device_monitor_unref>>;

/// Follows the kernel's events of power supplies (Documentation/power/power_supply_class.rst). They
/// come in storms, and before the attributes have their new values: so it calls a moment after an
/// event, and at most twice a second.
class PowerMonitor {
 public:
  /// Calls `changed` from the loop; never, when the events cannot be received.
  PowerMonitor(sd_event* loop, std::function<void()> changed);

 private:
  static int received(sd_device_monitor* monitor, sd_device* device, void* self);
  static int settled(sd_event_source* source, std::uint64_t due, void* self);

  std::function<void()> changed_;
  std::uint64_t lastCall_ = 0;  // by `boottime`
  freedesktop::EventSource timer_;
  DeviceMonitor monitor_;
};

}  // namespace lumowatt

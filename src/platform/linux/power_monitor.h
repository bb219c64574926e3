#pragma once

#include <systemd/sd-device.h>

#include <cstdint>
#include <functional>
#include <memory>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt {

using DeviceMonitor =
    std::unique_ptr<sd_device_monitor, freedesktop::Release<sd_device_monitor_unref>>;

/// Tells of changes of power supplies, as the kernel's events have them
/// (Documentation/power/power_supply_class.rst). They come in storms and before the attributes are
/// what they will be, so that it tells a moment later, and not more than twice a second.
class PowerMonitor {
 public:
  /// Calls `changed` from the loop.
  PowerMonitor(sd_event* loop, std::function<void()> changed);

  /// False when the events cannot be had.
  bool isWatching() const { return isWatching_; }

 private:
  static int received(sd_device_monitor* monitor, sd_device* device, void* self);
  static int settled(sd_event_source* source, std::uint64_t due, void* self);

  std::function<void()> changed_;
  std::uint64_t lastTold_ = 0;  // by `boottime`
  freedesktop::EventSource telling_;
  DeviceMonitor monitor_;
  bool isWatching_ = false;
};

}  // namespace lumowatt

#include "platform/linux/power_monitor.h"

#include <algorithm>
#include <ctime>
#include <utility>

#include "platform/freedesktop/bus/boottime.h"

namespace lumowatt {

using freedesktop::boottime;

namespace {

// Microseconds.
constexpr std::uint64_t settlingTime = 50'000;
constexpr std::uint64_t leastInterval = 500'000;
constexpr std::uint64_t accuracy = 1'000;

}  // namespace

PowerMonitor::PowerMonitor(sd_event* loop, std::function<void()> changed)
    : changed_(std::move(changed)) {
  sd_event_source* telling = nullptr;
  if (sd_event_add_time(loop, &telling, CLOCK_BOOTTIME, 0, accuracy, settled, this) < 0) return;
  telling_.reset(telling);
  sd_event_source_set_enabled(telling, SD_EVENT_OFF);

  sd_device_monitor* monitor = nullptr;
  if (sd_device_monitor_new(&monitor) < 0) return;
  monitor_.reset(monitor);
  isWatching_ =
      sd_device_monitor_filter_add_match_subsystem_devtype(monitor, "power_supply", nullptr) >= 0 &&
      sd_device_monitor_attach_event(monitor, loop) >= 0 &&
      sd_device_monitor_start(monitor, received, this) >= 0;
}

int PowerMonitor::received(sd_device_monitor*, sd_device*, void* self) {
  auto& monitor = *static_cast<PowerMonitor*>(self);
  int state = SD_EVENT_OFF;
  sd_event_source_get_enabled(monitor.telling_.get(), &state);
  if (state != SD_EVENT_OFF) return 0;  // it will be told
  sd_event_source_set_time(monitor.telling_.get(),
                           std::max(boottime() + settlingTime, monitor.lastTold_ + leastInterval));
  sd_event_source_set_enabled(monitor.telling_.get(), SD_EVENT_ONESHOT);
  return 0;
}

int PowerMonitor::settled(sd_event_source*, std::uint64_t, void* self) {
  auto& monitor = *static_cast<PowerMonitor*>(self);
  monitor.lastTold_ = boottime();
  monitor.changed_();
  return 0;
}

}  // namespace lumowatt

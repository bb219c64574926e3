#include "platform/linux/power_monitor.h"

#include <algorithm>
#include <ctime>
#include <utility>

#include "platform/freedesktop/bus/boottime.h"

namespace lumowatt {

using freedesktop::boottime;

namespace {

// Times in microseconds. After an event, drivers need the settling time to update the attributes.
constexpr std::uint64_t settlingTime = 50'000;
constexpr std::uint64_t minInterval = 500'000;
constexpr std::uint64_t accuracy = 1'000;

}  // namespace

PowerMonitor::PowerMonitor(sd_event* loop, std::function<void()> onChanged)
    : onChanged_(std::move(onChanged)) {
  using freedesktop::Out;
  if (sd_event_add_time(loop, Out(timer_), CLOCK_BOOTTIME, 0, accuracy, onTimer, this) < 0) return;
  sd_event_source_set_enabled(timer_.get(), SD_EVENT_OFF);

  if (sd_device_monitor_new(Out(monitor_)) < 0) return;
  sd_device_monitor* const monitor = monitor_.get();
  if (sd_device_monitor_filter_add_match_subsystem_devtype(monitor, "power_supply", nullptr) >= 0 &&
      sd_device_monitor_attach_event(monitor, loop) >= 0) {
    sd_device_monitor_start(monitor, onEvent, this);
  }
}

int PowerMonitor::onEvent(sd_device_monitor*, sd_device*, void* self) {
  auto& monitor = *static_cast<PowerMonitor*>(self);
  int state = SD_EVENT_OFF;
  sd_event_source_get_enabled(monitor.timer_.get(), &state);
  if (state != SD_EVENT_OFF) return 0;  // a call is already scheduled
  sd_event_source_set_time(monitor.timer_.get(),
                           std::max(boottime() + settlingTime, monitor.lastCall_ + minInterval));
  sd_event_source_set_enabled(monitor.timer_.get(), SD_EVENT_ONESHOT);
  return 0;
}

int PowerMonitor::onTimer(sd_event_source*, std::uint64_t, void* self) {
  auto& monitor = *static_cast<PowerMonitor*>(self);
  monitor.lastCall_ = boottime();
  monitor.onChanged_();
  return 0;
}

}  // namespace lumowatt

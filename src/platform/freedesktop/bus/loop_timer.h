#pragma once

#include <cstdint>
#include <functional>

#include "menubar/desktop.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Periodic timer on an event loop, using CLOCK_BOOTTIME, which advances while the machine sleeps.
/// After missing several ticks, because of sleep or a busy loop, the timer ticks once.
class LoopTimer : public Timer {
 public:
  /// Calls `tick` every `interval` seconds. `tick` may destroy the timer.
  LoopTimer(sd_event* loop, double interval, std::function<void()> tick);

 private:
  static int onTimer(sd_event_source* source, std::uint64_t due, void* timer);

  std::uint64_t interval_;  // microseconds
  std::function<void()> tick_;
  EventSource source_;
};

}  // namespace lumowatt::freedesktop

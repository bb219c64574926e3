#pragma once

#include <cstdint>
#include <functional>

#include "menubar/desktop.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// A timer on an event loop, by a clock that counts while the machine sleeps. Of the ticks that a
/// sleep or a busy loop missed, one is made up for.
class LoopTimer : public Timer {
 public:
  /// Calls `tick` every `interval` seconds, which may end the timer.
  LoopTimer(sd_event* loop, double interval, std::function<void()> tick);

 private:
  static int fired(sd_event_source* source, std::uint64_t due, void* timer);

  std::uint64_t interval_;  // microseconds
  std::function<void()> tick_;
  EventSource source_;
};

}  // namespace lumowatt::freedesktop

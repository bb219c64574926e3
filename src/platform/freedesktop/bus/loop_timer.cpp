#include "platform/freedesktop/bus/loop_timer.h"

#include <ctime>
#include <utility>

#include "base/error_report.h"
#include "base/rounding.h"
#include "platform/freedesktop/bus/boottime.h"
#include "platform/freedesktop/bus/session_bus.h"

namespace lumowatt::freedesktop {

LoopTimer::LoopTimer(sd_event* loop, double interval, std::function<void()> tick)
    : interval_(static_cast<std::uint64_t>(roundedHalfAwayFromZero(interval * 1e6).value_or(0))),
      tick_(std::move(tick)) {
  // A tick may be late by this much, so that timers can share one wakeup of the machine.
  const std::uint64_t accuracy = interval_ / 20;
  const int status = sd_event_add_time(loop, Out(source_), CLOCK_BOOTTIME, boottime() + interval_,
                                       accuracy, &LoopTimer::onTimer, this);
  if (status < 0) reportError("cannot start a timer", busFailure(status).reason);
}

int LoopTimer::onTimer(sd_event_source* source, std::uint64_t due, void* timer) {
  const auto* const self = static_cast<LoopTimer*>(timer);
  const std::uint64_t now = boottime();
  const std::uint64_t next = due + self->interval_;
  sd_event_source_set_time(source, next > now ? next : now + self->interval_);
  sd_event_source_set_enabled(source, SD_EVENT_ONESHOT);
  const auto tick = self->tick_;  // a copy: the call may destroy the timer
  tick();
  return 0;
}

}  // namespace lumowatt::freedesktop

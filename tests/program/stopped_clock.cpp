// Library to preload that stops CLOCK_BOOTTIME at its first reading. Only timers that are already
// due expire.

#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <ctime>

namespace {

int systemTime(clockid_t clock, timespec* time) {
  return static_cast<int>(::syscall(SYS_clock_gettime, clock, time));
}

timespec currentTime() {
  timespec time{};
  systemTime(CLOCK_BOOTTIME, &time);
  return time;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time) noexcept {
  if (clock != CLOCK_BOOTTIME) return systemTime(clock, time);
  static const timespec stopped = currentTime();
  *time = stopped;
  return 0;
}

__attribute__((visibility("default"))) int timerfd_settime(int file, int flags,
                                                           const itimerspec* value,
                                                           itimerspec* old) noexcept {
  // sd-event arms its timer with a time in the first second after boot if an event is already due.
  const itimerspec disarmed{};
  const bool isDue = (flags & TFD_TIMER_ABSTIME) != 0 && value->it_value.tv_sec == 0;
  return static_cast<int>(
      ::syscall(SYS_timerfd_settime, file, flags, isDue ? value : &disarmed, old));
}

}  // extern "C"

// A library to preload: no timer fires later than at once, so that the program does only what a
// signal or a call makes it do.

#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <unistd.h>

extern "C" __attribute__((visibility("default"))) int timerfd_settime(int file, int flags,
                                                                      const itimerspec* value,
                                                                      itimerspec* old) noexcept {
  // An event loop sets an instant of the first second for what is due by now.
  const itimerspec disarmed{};
  const bool isDue = (flags & TFD_TIMER_ABSTIME) != 0 && value->it_value.tv_sec == 0;
  return static_cast<int>(
      ::syscall(SYS_timerfd_settime, file, flags, isDue ? value : &disarmed, old));
}

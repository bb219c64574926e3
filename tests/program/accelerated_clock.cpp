// Library to preload that accelerates CLOCK_BOOTTIME and the timers on it by a factor of 360: an
// hour passes in ten seconds. While the file in the environment variable SLEPT_FILE exists, the
// clock is eight hours ahead, as if the machine had been suspended.

#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace {

constexpr std::int64_t factor = 360;
constexpr std::int64_t second = 1'000'000'000;
constexpr std::int64_t sleepDuration = std::int64_t{8} * 3600 * second;

/// Calls the kernel's clock_gettime. The C library's function cannot be used: dlsym would allocate
/// memory to look it up, and AddressSanitizer reads the clock during allocations.
int systemTime(clockid_t clock, timespec* time) {
  return static_cast<int>(::syscall(SYS_clock_gettime, clock, time));
}

std::int64_t nanoseconds(const timespec& time) { return time.tv_sec * second + time.tv_nsec; }
timespec fromNanoseconds(std::int64_t time) { return {time / second, time % second}; }

std::int64_t trueTime() {
  timespec time{};
  systemTime(CLOCK_BOOTTIME, &time);
  return nanoseconds(time);
}

/// Returns the simulated duration of sleep.
std::int64_t slept() {
  const char* const file = std::getenv("SLEPT_FILE");
  return file != nullptr && ::access(file, F_OK) == 0 ? sleepDuration : 0;
}

/// Returns the time at which the program first read the clock. The acceleration begins then.
std::int64_t start() {
  static const std::int64_t start = trueTime();
  return start;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time) noexcept {
  if (clock != CLOCK_BOOTTIME) return systemTime(clock, time);
  *time = fromNanoseconds(start() + (trueTime() - start()) * factor + slept());
  return 0;
}

__attribute__((visibility("default"))) int timerfd_settime(int file, int flags,
                                                           const itimerspec* value,
                                                           itimerspec* old) noexcept {
  itimerspec slower = *value;
  const std::int64_t due = nanoseconds(value->it_value) - slept();
  if ((flags & TFD_TIMER_ABSTIME) != 0 && due > start()) {
    slower.it_value = fromNanoseconds(start() + (due - start()) / factor);
  }
  return static_cast<int>(::syscall(SYS_timerfd_settime, file, flags, &slower, old));
}

}  // extern "C"

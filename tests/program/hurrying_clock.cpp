// A library to preload: time passes 360 times as fast, an hour in ten seconds, for a program that
// asks for the time since the machine started and waits for instants of it. Once there is a file of
// the name that the variable SLEPT_FILE has, the machine has slept for eight hours.

#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace {

constexpr std::int64_t factor = 360;
constexpr std::int64_t second = 1'000'000'000;
constexpr std::int64_t night = std::int64_t{8} * 3600 * second;

/// What the library's function does. It is not looked up by dlsym, which allocates memory:
/// AddressSanitizer asks for the time while it allocates some.
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

std::int64_t slept() {
  const char* const file = std::getenv("SLEPT_FILE");
  return file != nullptr && ::access(file, F_OK) == 0 ? night : 0;
}

/// When the program asked for the first time: until then, both times are the same.
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

#include "platform/freedesktop/bus/boottime.h"

#include <ctime>

namespace lumowatt::freedesktop {

std::uint64_t boottime() {
  timespec time{};
  ::clock_gettime(CLOCK_BOOTTIME, &time);
  return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000U +
         static_cast<std::uint64_t>(time.tv_nsec) / 1'000U;
}

}  // namespace lumowatt::freedesktop

#include "platform/freedesktop/user/time_of_day.h"

namespace lumowatt::freedesktop {

double timeOfDay(std::time_t time) {
  ::tzset();  // detects changes of the time zone since the start
  std::tm local{};
  if (::localtime_r(&time, &local) == nullptr) return 0.0;
  return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec;
}

double lastMidnight(double now, std::time_t time) { return now - timeOfDay(time); }

}  // namespace lumowatt::freedesktop

#pragma once

#include <ctime>

namespace lumowatt::freedesktop {

/// What a clock shows at `time` in the user's time zone, in seconds since midnight. In UTC where
/// the zone is not known.
double timeOfDay(std::time_t time);

/// When the day of `time` began in the user's time zone, by a clock of seconds that shows `now`
/// then.
double lastMidnight(double now, std::time_t time);

}  // namespace lumowatt::freedesktop

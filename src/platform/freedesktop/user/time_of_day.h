#pragma once

#include <ctime>

namespace lumowatt::freedesktop {

/// Returns the time of day at `time` in the user's time zone, in seconds since midnight. Uses UTC
/// if the time zone is unknown.
double timeOfDay(std::time_t time);

/// Returns the last midnight before `time` in the user's time zone, as seconds of another clock.
/// That clock shows `now` at `time`.
double lastMidnight(double now, std::time_t time);

}  // namespace lumowatt::freedesktop

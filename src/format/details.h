#pragma once

#include <string>
#include <vector>

#include "telemetry/reading.h"

namespace lumowatt {

/// The report of a reading, a line each, six at least. A line about something that the reading
/// does not have is left out. No line holds a line break, unless the adapter's name does.
std::vector<std::string> details(const Reading& reading);

}  // namespace lumowatt

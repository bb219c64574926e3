#pragma once

#include <string>
#include <vector>

#include "telemetry/reading.h"

namespace lumowatt {

/// Returns the report of a reading: one string per line, at least six lines. Omits lines that
/// do not apply to the reading. No line contains a line break unless the adapter's name does.
std::vector<std::string> details(const Reading& reading);

}  // namespace lumowatt

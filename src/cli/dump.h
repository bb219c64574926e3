#pragma once

#include <string>

#include "telemetry/reading.h"

namespace lumowatt {

/// Formats a reading as 22 lines of the form key=value, for other programs. The keys, their order
/// and the words for unknown values ("unavailable" for the temperature, "unknown" for the others)
/// are a published format.
std::string dump(const Reading& reading);

}  // namespace lumowatt

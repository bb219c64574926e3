#pragma once

#include <string>

#include "telemetry/reading.h"

namespace lumowatt {

/// The reading as 22 lines of the form key=value, for other programs. The keys, their order and
/// the words for absence ("unknown", for the temperature "unavailable") are a published format.
std::string dump(const Reading& reading);

}  // namespace lumowatt

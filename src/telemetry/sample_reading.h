#pragma once

#include <optional>
#include <string_view>

#include "telemetry/reading.h"

namespace lumowatt {

/// A made-up reading for pictures: "draining", "low" or "full", spelt exactly so. Absent for
/// every other name.
std::optional<Reading> sampleReading(std::string_view name);

}  // namespace lumowatt

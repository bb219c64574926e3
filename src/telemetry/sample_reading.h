#pragma once

#include <optional>
#include <string_view>

#include "telemetry/reading.h"

namespace lumowatt {

/// Returns a fictitious reading for pictures. `name` is "draining", "low" or "full", in lower case.
/// Returns std::nullopt for any other name.
std::optional<Reading> sampleReading(std::string_view name);

}  // namespace lumowatt

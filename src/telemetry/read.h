#pragma once

#include <optional>

#include "telemetry/battery_service.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Queries `service` once and returns the reading. Returns std::nullopt if the service returns no
/// properties. If a key is missing or its value has the wrong type, the field retains its default,
/// so even an empty dictionary results in a reading.
std::optional<Reading> read(BatteryService& service);

}  // namespace lumowatt

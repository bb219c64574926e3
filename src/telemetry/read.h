#pragma once

#include <optional>

#include "telemetry/battery_service.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Takes one reading from `service`. Absent when the service has no properties to give. A key
/// that is missing or mistyped leaves its field at the default, so an empty dictionary still
/// gives a reading.
std::optional<Reading> read(BatteryService& service);

}  // namespace lumowatt

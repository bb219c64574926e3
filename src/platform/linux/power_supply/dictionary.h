#pragma once

#include "platform/linux/power_supply/apple_sensors.h"
#include "platform/linux/power_supply/power_state.h"
#include "telemetry/property.h"

namespace lumowatt::power_supply {

/// Returns the properties of the battery service for this power state. Omits unknown values.
PropertyDictionary dictionary(const PowerState& state, const MeasuredPower& measured);

}  // namespace lumowatt::power_supply

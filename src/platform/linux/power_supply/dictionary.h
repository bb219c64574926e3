#pragma once

#include "platform/linux/power_supply/apple_sensors.h"
#include "platform/linux/power_supply/power_state.h"
#include "telemetry/property.h"

namespace lumowatt::power_supply {

/// The battery service's properties for this state of the power. What is unknown is left out.
PropertyDictionary dictionary(const PowerState& state, const MeasuredPower& measured);

}  // namespace lumowatt::power_supply

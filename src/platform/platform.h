#pragma once

#include <memory>

#include "telemetry/battery_service.h"

/// What `main` asks of the machine that it runs on. Each platform defines these.
namespace lumowatt::platform {

/// The battery of this machine. Never null; a machine without one has no properties to give.
std::unique_ptr<BatteryService> batteryService();

}  // namespace lumowatt::platform

#pragma once

#include <memory>

#include "graphics/canvas.h"
#include "telemetry/battery_service.h"

/// What `main` asks of the machine that it runs on. Each platform defines these.
namespace lumowatt::platform {

/// The battery of this machine. Never null; a machine without one has no properties to give.
std::unique_ptr<BatteryService> batteryService();

/// The bitmaps of this machine. Never null; what they need is loaded for the first of them.
std::unique_ptr<BitmapFactory> bitmapFactory();

}  // namespace lumowatt::platform

#pragma once

#include <memory>

#include "base/failure.h"
#include "graphics/canvas.h"
#include "menubar/desktop.h"
#include "telemetry/battery_service.h"

/// Functions that `main` calls and each platform defines.
namespace lumowatt::platform {

/// Returns the battery of this machine. Never returns null. On a machine without a battery, the
/// service provides no properties.
std::unique_ptr<BatteryService> batteryService();

/// Returns the bitmap factory of this machine. Never returns null, even if bitmaps cannot be
/// created.
std::unique_ptr<BitmapFactory> bitmapFactory();

/// Returns the desktop of this machine. Never returns null. Fails if there is no desktop.
Result<std::unique_ptr<Desktop>> desktop();

}  // namespace lumowatt::platform

#pragma once

#include <memory>

#include "base/failure.h"
#include "graphics/canvas.h"
#include "menubar/desktop.h"
#include "telemetry/battery_service.h"

/// What `main` asks of the machine that it runs on. Each platform defines these.
namespace lumowatt::platform {

/// The battery of this machine. Never null; a machine without one has no properties to give.
std::unique_ptr<BatteryService> batteryService();

/// The bitmaps of this machine. Never null, even where none can be made.
std::unique_ptr<BitmapFactory> bitmapFactory();

/// The desktop of this machine; never null. Fails when there is none.
Result<std::unique_ptr<Desktop>> desktop();

}  // namespace lumowatt::platform

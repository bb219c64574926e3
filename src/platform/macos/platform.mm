#include "platform/platform.h"

#include "platform/macos/battery_registry.h"
#include "platform/macos/drawing/app_kit_bitmap.h"
#include "platform/macos/mac_desktop.h"

namespace lumowatt::platform {

std::unique_ptr<BatteryService> batteryService() {
  return std::make_unique<macos::BatteryRegistry>();
}

std::unique_ptr<BitmapFactory> bitmapFactory() {
  @autoreleasepool {
    return std::make_unique<macos::AppKitBitmapFactory>();
  }
}

Result<std::unique_ptr<Desktop>> desktop() {
  @autoreleasepool {
    return std::unique_ptr<Desktop>(std::make_unique<macos::MacDesktop>());
  }
}

}  // namespace lumowatt::platform

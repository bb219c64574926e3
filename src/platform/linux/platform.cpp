#include "platform/platform.h"

#include "platform/linux/drawing_module.h"
#include "platform/linux/power_supply/service.h"

namespace lumowatt::platform {

std::unique_ptr<BatteryService> batteryService() {
  return std::make_unique<power_supply::Service>("/sys/class/power_supply", "/sys/class/hwmon");
}

std::unique_ptr<BitmapFactory> bitmapFactory() { return std::make_unique<DrawingModule>(); }

}  // namespace lumowatt::platform

#include "platform/platform.h"

#include "platform/linux/power_supply/service.h"

namespace lumowatt::platform {

std::unique_ptr<BatteryService> batteryService() {
  return std::make_unique<power_supply::Service>("/sys/class/power_supply", "/sys/class/hwmon");
}

}  // namespace lumowatt::platform

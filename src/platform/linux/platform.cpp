#include "platform/platform.h"

#include "platform/linux/desktop_module.h"
#include "platform/linux/installation.h"
#include "platform/linux/loaded_bitmaps.h"
#include "platform/linux/power_supply/service.h"

namespace lumowatt::platform {

std::unique_ptr<BatteryService> batteryService() {
  return std::make_unique<power_supply::Service>("/sys/class/power_supply", "/sys/class/hwmon");
}

std::unique_ptr<BitmapFactory> bitmapFactory() { return std::make_unique<LoadedBitmaps>(); }

Result<std::unique_ptr<Desktop>> desktop() {
  const auto make = loadModule("lumowatt-desktop.so", "lumowattDesktop");
  if (!make) return make.failure();
  const std::string icons = partPath("icons", "share/lumowatt/icons");
  return std::unique_ptr<Desktop>(reinterpret_cast<decltype(&lumowattDesktop)>(*make)(
      executablePath().c_str(), icons.c_str(), bitmapFactory().release()));
}

}  // namespace lumowatt::platform

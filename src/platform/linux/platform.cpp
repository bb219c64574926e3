#include "platform/platform.h"

#include "platform/cairo/module.h"
#include "platform/linux/desktop_module.h"
#include "platform/linux/installation.h"
#include "platform/linux/power_supply/service.h"

namespace lumowatt::platform {

namespace {

/// The bitmaps of the drawing module, which is loaded for the first of them.
class LoadedBitmaps : public BitmapFactory {
 public:
  Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                       Appearance appearance) override {
    if (factory_ == nullptr) {
      const auto make = loadModule("lumowatt-drawing.so", "lumowattBitmapFactory");
      if (!make) return make.failure();
      factory_ = reinterpret_cast<decltype(&lumowattBitmapFactory)>(*make)();
    }
    return factory_->draw(picture, scale, appearance);
  }

 private:
  BitmapFactory* factory_ = nullptr;
};

}  // namespace

std::unique_ptr<BatteryService> batteryService() {
  return std::make_unique<power_supply::Service>("/sys/class/power_supply", "/sys/class/hwmon");
}

std::unique_ptr<BitmapFactory> bitmapFactory() { return std::make_unique<LoadedBitmaps>(); }

Result<std::unique_ptr<Desktop>> desktop() {
  const auto make = loadModule("lumowatt-desktop.so", "lumowattDesktop");
  if (!make) return make.failure();
  return std::unique_ptr<Desktop>(reinterpret_cast<decltype(&lumowattDesktop)>(*make)(
      executablePath().c_str(), iconFolder().c_str(), bitmapFactory().release()));
}

}  // namespace lumowatt::platform

#include "platform/platform.h"

#include "platform/cairo/module.h"
#include "platform/linux/desktop_module.h"
#include "platform/linux/installation.h"
#include "platform/linux/power_supply/service.h"

namespace lumowatt::platform {

namespace {

/// Factory of the drawing module, which is loaded when the first bitmap is rendered.
class LazyBitmapFactory : public BitmapFactory {
 public:
  Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                       Appearance appearance) override {
    if (factory_ == nullptr) {
      const auto create = loadModule("lumowatt-drawing.so", "lumowattBitmapFactory");
      if (!create) return create.failure();
      factory_ = reinterpret_cast<decltype(&lumowattBitmapFactory)>(*create)();
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

std::unique_ptr<BitmapFactory> bitmapFactory() { return std::make_unique<LazyBitmapFactory>(); }

Result<std::unique_ptr<Desktop>> desktop() {
  const auto create = loadModule("lumowatt-desktop.so", "lumowattDesktop");
  if (!create) return create.failure();
  return std::unique_ptr<Desktop>(reinterpret_cast<decltype(&lumowattDesktop)>(*create)(
      executablePath().c_str(), iconFolder().c_str(), bitmapFactory().release()));
}

}  // namespace lumowatt::platform

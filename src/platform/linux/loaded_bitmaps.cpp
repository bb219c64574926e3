#include "platform/linux/loaded_bitmaps.h"

#include "platform/cairo/module.h"
#include "platform/linux/installation.h"

namespace lumowatt {

std::unique_ptr<Bitmap> DrawingModule::draw(const Drawing& picture, double scale,
                                            Appearance appearance) {
  if (factory_ == nullptr) {
    const auto factory = reinterpret_cast<decltype(&lumowattBitmapFactory)>(
        loadModule("lumowatt-drawing.so", "lumowattBitmapFactory"));
    if (factory == nullptr) return nullptr;
    factory_ = factory();
  }
  return factory_->draw(picture, scale, appearance);
}

}  // namespace lumowatt

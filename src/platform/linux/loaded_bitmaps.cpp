#include "platform/linux/loaded_bitmaps.h"

#include "platform/cairo/module.h"
#include "platform/linux/installation.h"

namespace lumowatt {

Result<std::unique_ptr<Bitmap>> LoadedBitmaps::draw(const Drawing& picture, double scale,
                                                    Appearance appearance) {
  if (factory_ == nullptr) {
    const auto made = loadModule("lumowatt-drawing.so", "lumowattBitmapFactory");
    if (!made) return made.failure();
    factory_ = reinterpret_cast<decltype(&lumowattBitmapFactory)>(*made)();
  }
  return factory_->draw(picture, scale, appearance);
}

}  // namespace lumowatt

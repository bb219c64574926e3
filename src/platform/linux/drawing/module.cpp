#include "platform/linux/drawing/module.h"

#include <new>

#include "platform/linux/drawing/cairo_bitmap.h"

namespace lumowatt::drawing {

namespace {

class Factory : public BitmapFactory {
 public:
  std::unique_ptr<Bitmap> draw(const Drawing& picture, double scale,
                               Appearance appearance) override {
    auto bitmap = made(picture.size, scale, appearance);
    if (bitmap) {
      bitmap->canvas().drawImage({picture}, {0.0, 0.0, picture.size.width, picture.size.height});
    }
    return bitmap;
  }

 private:
  static std::unique_ptr<CairoBitmap> made(Size size, double scale, Appearance appearance) {
    try {
      auto bitmap = std::make_unique<CairoBitmap>(size, scale, appearance);
      if (bitmap->isValid()) return bitmap;
    } catch (const std::bad_alloc&) {  // the same as a bitmap that Cairo cannot make
    }
    return nullptr;
  }
};

}  // namespace

}  // namespace lumowatt::drawing

extern "C" lumowatt::BitmapFactory* lumowattBitmapFactory() {
  static lumowatt::drawing::Factory factory;
  return &factory;
}

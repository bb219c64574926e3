#include "platform/linux/drawing/module.h"

#include <malloc.h>

#include <cstddef>
#include <new>

#include "platform/linux/drawing/cairo_bitmap.h"
#include "telemetry/out_of_memory.h"

namespace lumowatt::drawing {

namespace {

/// More than the libraries take for a picture. Where memory is refused to them, Fontconfig does not
/// end or crashes, and GLib ends the process by a signal.
constexpr std::size_t roomOfLibraries = 64U << 20U;

void requireRoom() { ::operator delete(::operator new(roomOfLibraries)); }

class Factory : public BitmapFactory {
 public:
  std::unique_ptr<Bitmap> draw(const Drawing& picture, double scale,
                               Appearance appearance) override {
    requireRoom();
    auto bitmap = std::make_unique<CairoBitmap>(picture.size, scale, appearance);
    if (!bitmap->isValid()) return nullptr;
    bitmap->canvas().drawImage({picture}, {0.0, 0.0, picture.size.width, picture.size.height});
    return bitmap;
  }
};

}  // namespace

}  // namespace lumowatt::drawing

extern "C" lumowatt::BitmapFactory* lumowattBitmapFactory() {
  lumowatt::endWhenOutOfMemory();
  ::mallopt(M_ARENA_MAX, 1);  // or each of Pango's threads reserves 64 MiB of addresses
  static lumowatt::drawing::Factory factory;
  return &factory;
}

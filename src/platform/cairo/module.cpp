#include "platform/cairo/module.h"

#include <fcntl.h>

#include <cerrno>
#include <cstddef>
#include <new>
#include <utility>

#include "base/out_of_memory.h"
#include "platform/cairo/cairo_bitmap.h"
#include "platform/posix/allocator.h"
#include "platform/posix/descriptor.h"

namespace lumowatt::cairo {

namespace {

// More memory and open files than Cairo, Pango and Fontconfig need for a picture.
constexpr std::size_t libraryMemory = 64U << 20U;
constexpr int libraryFiles = 8;

/// Exits if memory is short. The libraries would not report the shortage: Fontconfig would hang or
/// crash, and GLib would terminate the process with a signal.
void requireMemory() { ::operator delete(::operator new(libraryMemory)); }

/// Fails unless `count` files can be opened. If Fontconfig cannot open a font, it ignores the font
/// and records it as unusable in the cache that all programs share.
Result<> requireFiles(int count) {
  if (count == 0) return {};
  const Descriptor file(::open("/", O_PATH | O_CLOEXEC));
  return file.isOpen() ? requireFiles(count - 1) : systemFailure(errno);
}

class Factory : public BitmapFactory {
 public:
  Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                       Appearance appearance) override {
    requireMemory();
    if (const auto files = requireFiles(libraryFiles); !files) return files.failure();
    auto bitmap = std::make_unique<CairoBitmap>(picture.size, scale, appearance);
    if (const auto valid = bitmap->check(); !valid) return valid.failure();
    bitmap->canvas().drawImage({picture}, {0.0, 0.0, picture.size.width, picture.size.height});
    return std::unique_ptr<Bitmap>(std::move(bitmap));
  }
};

}  // namespace

}  // namespace lumowatt::cairo

extern "C" lumowatt::BitmapFactory* lumowattBitmapFactory() {
  lumowatt::exitWhenOutOfMemory();
  lumowatt::useOneArena();  // Pango starts threads
  static lumowatt::cairo::Factory factory;
  return &factory;
}

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

// More than the libraries take for a picture.
constexpr std::size_t memoryOfLibraries = 64U << 20U;
constexpr int filesOfLibraries = 8;

/// Where memory is refused to them, Fontconfig does not end or crashes, and GLib ends the process
/// by a signal.
void requireMemory() { ::operator delete(::operator new(memoryOfLibraries)); }

/// A font that Fontconfig cannot open is none to it, and it notes that in the cache of all
/// programs.
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
    if (const auto files = requireFiles(filesOfLibraries); !files) return files.failure();
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
  lumowatt::useOneArena();  // since Pango starts threads
  static lumowatt::cairo::Factory factory;
  return &factory;
}

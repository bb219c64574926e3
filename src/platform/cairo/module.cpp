#include "platform/cairo/module.h"

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <new>

#include "base/out_of_memory.h"
#include "platform/cairo/cairo_bitmap.h"

namespace lumowatt::cairo {

namespace {

// More than the libraries take for a picture.
constexpr std::size_t memoryOfLibraries = 64U << 20U;
constexpr std::size_t filesOfLibraries = 8;

/// Where memory is refused to them, Fontconfig does not end or crashes, and GLib ends the process
/// by a signal.
void requireMemory() { ::operator delete(::operator new(memoryOfLibraries)); }

/// A font that Fontconfig cannot open is none to it, and it notes that in the cache of all
/// programs.
bool hasFiles() {
  std::array<int, filesOfLibraries> files{};
  for (int& file : files) file = ::open("/", O_PATH | O_CLOEXEC);
  const int error = errno;
  const bool hasAll = files.back() >= 0;
  for (const int file : files) {
    if (file >= 0) ::close(file);
  }
  if (!hasAll) std::fprintf(stderr, "lumowatt: %s\n", std::strerror(error));
  return hasAll;
}

class Factory : public BitmapFactory {
 public:
  std::unique_ptr<Bitmap> draw(const Drawing& picture, double scale,
                               Appearance appearance) override {
    requireMemory();
    if (!hasFiles()) return nullptr;
    auto bitmap = std::make_unique<CairoBitmap>(picture.size, scale, appearance);
    if (!bitmap->isValid()) return nullptr;
    bitmap->canvas().drawImage({picture}, {0.0, 0.0, picture.size.width, picture.size.height});
    return bitmap;
  }
};

}  // namespace

}  // namespace lumowatt::cairo

extern "C" lumowatt::BitmapFactory* lumowattBitmapFactory() {
  lumowatt::endWhenOutOfMemory();
  ::mallopt(M_ARENA_MAX, 1);  // or each of Pango's threads reserves 64 MiB of addresses
  static lumowatt::cairo::Factory factory;
  return &factory;
}

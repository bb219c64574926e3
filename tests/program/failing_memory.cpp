// Library to preload that simulates the end of memory. The environment variable REFUSED_FROM is the
// number of the first allocation that fails; all later ones fail, too. Redirects
// /sys/class/power_supply to the folder in the variable POWER_SUPPLY_FOLDER, because umockdev,
// which provides /sys in other tests, does not work without memory.

#include <dlfcn.h>
#include <fcntl.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdlib>
#include <cstring>

extern "C" {

// The C library's functions, by their internal names.
void* trueMalloc(size_t size) __asm__("__libc_malloc");
void* trueCalloc(size_t count, size_t size) __asm__("__libc_calloc");
void* trueRealloc(void* block, size_t size) __asm__("__libc_realloc");

}  // extern "C"

namespace {

bool isRefused() {
  static std::atomic<long> calls = 0;
  const char* const from = std::getenv("REFUSED_FROM");
  if (from == nullptr || ++calls < std::atol(from)) return false;
  errno = ENOMEM;
  return true;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) void* malloc(size_t size) noexcept {
  return isRefused() ? nullptr : trueMalloc(size);
}

__attribute__((visibility("default"))) void* calloc(size_t count, size_t size) noexcept {
  return isRefused() ? nullptr : trueCalloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* block, size_t size) noexcept {
  return isRefused() ? nullptr : trueRealloc(block, size);
}

__attribute__((visibility("default"))) int openat(int parent, const char* path, int flags, ...) {
  const char* const folder = std::getenv("POWER_SUPPLY_FOLDER");
  const bool isOther = folder == nullptr || std::strcmp(path, "/sys/class/power_supply") != 0;
  const auto next =
      reinterpret_cast<int (*)(int, const char*, int, ...)>(::dlsym(RTLD_NEXT, "openat"));
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  return next(parent, isOther ? path : folder, flags, mode);
}

}  // extern "C"

// A library to preload: reading certain files fails as a driver makes it fail. The variables
// REFUSED_NAMES (blank-separated, or "*" for all but "type") and REFUSED_ERROR (an error number)
// say which and how. No file system that a test can make would answer ENODEV.

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

namespace {

int refusedDescriptor = -1;

bool isRefused(const std::string& name) {
  const char* names = std::getenv("REFUSED_NAMES");
  if (!names) return false;
  if (std::string(names) == "*") return name != "type";
  return (" " + std::string(names) + " ").find(" " + name + " ") != std::string::npos;
}

template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int openat(int folder, const char* path, int flags, ...) {
  const int file = next<int(int, const char*, int, ...)>("openat")(folder, path, flags);
  if (file >= 0 && (flags & O_DIRECTORY) == 0 && isRefused(path)) refusedDescriptor = file;
  return file;
}

__attribute__((visibility("default"))) ssize_t read(int file, void* buffer, size_t size) {
  if (file != refusedDescriptor) {
    return next<ssize_t(int, void*, size_t)>("read")(file, buffer, size);
  }
  refusedDescriptor = -1;
  errno = std::atoi(std::getenv("REFUSED_ERROR"));
  return -1;
}
}

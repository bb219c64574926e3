// Library to preload that makes read fail for certain files, as a driver does. The environment
// variable REFUSED_NAMES contains the names of the files, separated by spaces, or "*" for all files
// except "type". REFUSED_ERROR is the error number. Tests need the library for errors such as
// ENODEV, which they cannot cause with a file system.

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

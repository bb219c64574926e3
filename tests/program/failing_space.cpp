// Library to preload that simulates a full disk: the first write to a file stores half of the
// bytes, and all later writes fail with ENOSPC.

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void* bytes,
                                                                size_t count) {
  struct stat status {};
  const bool isFile =
      file > STDERR_FILENO && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  if (isFile && (status.st_size > 0 || count < 2)) {
    errno = ENOSPC;
    return -1;
  }
  const auto next =
      reinterpret_cast<ssize_t (*)(int, const void*, size_t)>(::dlsym(RTLD_NEXT, "write"));
  return next(file, bytes, isFile ? count / 2 : count);
}

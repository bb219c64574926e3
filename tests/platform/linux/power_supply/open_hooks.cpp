#include "platform/linux/power_supply/open_hooks.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace {

int openCalls = 0;
int eventCall = 0;  // number of the call before which the event runs
std::function<void()> scheduledEvent;
bool areReadsFailing = false;

int openExisting(int folder, const char* path, int flags) {
  if (++openCalls == eventCall) std::exchange(scheduledEvent, nullptr)();
  return static_cast<int>(::syscall(SYS_openat, folder, path, flags, 0));
}

}  // namespace

// Replaces the function of the C library, for existing files only.
extern "C" int openat(int folder, const char* path, int flags, ...) {
  return openExisting(folder, path, flags);
}

// The headers of some compilers call this function instead of openat, to check the flags.
int checkedOpenat(int folder, const char* path, int flags) __asm__("__openat_2");
int checkedOpenat(int folder, const char* path, int flags) {
  return openExisting(folder, path, flags);
}

// Replaces read. Its C++ name differs because the header may define an inline function `read`,
// which checks the size of the buffer and calls __read_chk.
ssize_t replacedRead(int file, void* buffer, size_t size) __asm__("read");
ssize_t replacedRead(int file, void* buffer, size_t size) {
  if (areReadsFailing) {
    errno = ENODEV;
    return -1;
  }
  return ::syscall(SYS_read, file, buffer, size);
}

ssize_t checkedRead(int file, void* buffer, size_t size, size_t capacity) __asm__("__read_chk");
ssize_t checkedRead(int file, void* buffer, size_t size, size_t /*capacity*/) {
  return replacedRead(file, buffer, size);
}

namespace lumowatt {

void onOpen(int count, std::function<void()> event) {
  eventCall = count > 0 ? openCalls + count : 0;
  scheduledEvent = std::move(event);
}

int openCount() { return openCalls; }

void setReadsFail(bool isFailing) { areReadsFailing = isFailing; }

}  // namespace lumowatt

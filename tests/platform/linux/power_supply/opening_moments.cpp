#include "platform/linux/power_supply/opening_moments.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace {

int calls = 0;
int callOfEvent = 0;
std::function<void()> due;
bool isReadingRefused = false;

int openExisting(int folder, const char* path, int flags) {
  if (++calls == callOfEvent) std::exchange(due, nullptr)();
  return static_cast<int>(::syscall(SYS_openat, folder, path, flags, 0));
}

}  // namespace

// Like the C library's, for files that exist.
extern "C" int openat(int folder, const char* path, int flags, ...) {
  return openExisting(folder, path, flags);
}

// What the headers of some compilers call instead, where flags or sizes are checked.
int checkedOpenat(int folder, const char* path, int flags) __asm__("__openat_2");
int checkedOpenat(int folder, const char* path, int flags) {
  return openExisting(folder, path, flags);
}

// By another name here: the header may define one itself, which checks the buffer's size.
ssize_t replacedRead(int file, void* buffer, size_t size) __asm__("read");
ssize_t replacedRead(int file, void* buffer, size_t size) {
  if (isReadingRefused) {
    errno = ENODEV;
    return -1;
  }
  return ::syscall(SYS_read, file, buffer, size);
}

ssize_t checkedRead(int file, void* buffer, size_t size, size_t room) __asm__("__read_chk");
ssize_t checkedRead(int file, void* buffer, size_t size, size_t /*room*/) {
  return replacedRead(file, buffer, size);
}

namespace lumowatt {

void atOpening(int count, std::function<void()> event) {
  callOfEvent = count > 0 ? calls + count : 0;
  due = std::move(event);
}

int openings() { return calls; }

void refuseReading(bool refused) { isReadingRefused = refused; }

}  // namespace lumowatt

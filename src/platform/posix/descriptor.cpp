#include "platform/posix/descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <utility>

namespace lumowatt {

bool Descriptor::write(std::string_view contents) const {
  while (!contents.empty()) {
    const ssize_t written = ::write(number_, contents.data(), contents.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    contents.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool Descriptor::close() {
  if (!isOpen()) return true;
  return ::close(std::exchange(number_, -1)) == 0;
}

}  // namespace lumowatt

#include "platform/posix/descriptor.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

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

Listing listFolder(const Descriptor& folder) {
  const int duplicate = ::fcntl(folder.number(), F_DUPFD_CLOEXEC, 0);
  DIR* const stream = duplicate >= 0 ? ::fdopendir(duplicate) : nullptr;
  if (stream == nullptr) {
    const int error = errno;
    if (duplicate >= 0) ::close(duplicate);
    return {.names = {}, .error = error};
  }
  Listing listing;
  // At the end of the folder, readdir leaves errno as it was.
  for (errno = 0; const dirent* const entry = ::readdir(stream); errno = 0) {
    if (entry->d_name[0] != '.') listing.names.emplace_back(entry->d_name);
  }
  listing.error = errno;
  ::closedir(stream);
  std::ranges::sort(listing.names);
  return listing;
}

}  // namespace lumowatt

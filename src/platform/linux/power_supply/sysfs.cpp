#include "platform/linux/power_supply/sysfs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <utility>

#include "base/failure.h"
#include "base/text.h"

namespace lumowatt::sysfs {

namespace {

/// Throws if the error, with which something could not be opened, says nothing about the file.
void requireNoShortage(int error) {
  if (error == EMFILE || error == ENFILE || error == ENOMEM) throw systemFailure(error);
}

Descriptor openFolder(int parent, const char* path) {
  Descriptor folder(::openat(parent, path, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.isOpen()) requireNoShortage(errno);
  return folder;
}

std::vector<std::string> namesIn(const Descriptor& folder) {
  if (!folder.isOpen()) return {};
  auto [names, error] = listFolder(folder);
  requireNoShortage(error);
  return std::move(names);
}

/// What gives no text at all may be a pipe that nobody writes to.
bool isRegular(int file) {
  struct stat status {};
  return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

Class::Class(const std::string& path)
    : folder_(openFolder(AT_FDCWD, path.c_str())), deviceNames_(namesIn(folder_)) {}

Device::Device(const Class& devices, std::string name)
    : classFolder_(devices.folder_.number()),
      name_(std::move(name)),
      folder_(openFolder(classFolder_, name_.c_str())),
      attributes_(namesIn(folder_)) {}

std::optional<std::string> Device::text(const char* attribute) {
  if (!std::ranges::binary_search(attributes_, attribute)) return std::nullopt;
  // Not blocking, in case something else than an attribute lies there.
  const Descriptor file(::openat(folder_.number(), attribute,
                                 O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.isOpen()) {
    requireNoShortage(errno);
    return std::nullopt;
  }
  char buffer[1024];
  const ssize_t length = ::read(file.number(), buffer, sizeof buffer);
  if (length < 0 && errno == ENODEV) refused_ = true;
  const bool complete = length >= 0 && static_cast<std::size_t>(length) < sizeof buffer &&
                        (length > 0 || isRegular(file.number()));
  if (!complete) return std::nullopt;
  answered_ = true;
  return std::string(trimmed({buffer, static_cast<std::size_t>(length)}));
}

std::optional<std::int64_t> Device::number(const char* attribute) {
  const auto value = text(attribute);
  return value ? parseInteger(*value) : std::nullopt;
}

bool Device::isListed() const {
  struct stat held {};
  struct stat listed {};
  return folder_.isOpen() && ::fstat(folder_.number(), &held) == 0 &&
         ::fstatat(classFolder_, name_.c_str(), &listed, 0) == 0 && held.st_dev == listed.st_dev &&
         held.st_ino == listed.st_ino;
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
  // std::from_chars takes a "-" but no "+".
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

}  // namespace lumowatt::sysfs

#include "platform/linux/power_supply/sysfs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>

namespace lumowatt::sysfs {

namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\n\v\f\r";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// After a file could not be opened, or a folder read: throws if that says nothing about the file.
void requireNoShortage() {
  if (errno == EMFILE || errno == ENFILE || errno == ENOMEM) throw Shortage{errno};
}

/// What gives no text at all may be a pipe that nobody writes to.
bool isRegular(int file) {
  struct stat status {};
  return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

Class::Class(const std::string& path) : folder_(::opendir(path.c_str())) {
  if (!folder_) {
    requireNoShortage();
    return;
  }
  // At the end of the folder, readdir leaves errno as it was.
  for (errno = 0; const dirent* entry = ::readdir(folder_.get()); errno = 0) {
    if (entry->d_name[0] != '.') deviceNames_.emplace_back(entry->d_name);
  }
  requireNoShortage();
  std::sort(deviceNames_.begin(), deviceNames_.end());
}

Device::Device(const Class& devices, const std::string& name)
    : classFolder_(devices.folder_ ? ::dirfd(devices.folder_.get()) : -1),
      name_(name),
      folder_(::openat(classFolder_, name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {
  if (folder_ < 0) requireNoShortage();
}

Device::~Device() {
  if (folder_ >= 0) ::close(folder_);
}

std::optional<std::string> Device::text(const char* attribute) {
  if (folder_ < 0) return std::nullopt;
  // Not blocking, in case something else than an attribute lies there.
  const int file = ::openat(folder_, attribute, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (file < 0) {
    requireNoShortage();
    return std::nullopt;
  }
  char buffer[1024];
  const ssize_t length = ::read(file, buffer, sizeof buffer);
  if (length < 0 && errno == ENODEV) refused_ = true;
  const bool complete = length >= 0 && static_cast<std::size_t>(length) < sizeof buffer &&
                        (length > 0 || isRegular(file));
  ::close(file);
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
  return folder_ >= 0 && ::fstat(folder_, &held) == 0 &&
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

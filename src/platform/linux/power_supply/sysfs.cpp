#include "platform/linux/power_supply/sysfs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <utility>

#include "base/failure.h"
#include "base/text.h"

namespace lumowatt::sysfs {

namespace {

/// Throws if `error` (a value of errno) is a shortage of file descriptors or memory, which says
/// nothing about the file.
void requireNoShortage(int error) {
  if (error == EMFILE || error == ENFILE || error == ENOMEM) throw systemFailure(error);
}

int openFolder(int parent, const char* path) {
  const int folder = ::openat(parent, path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder == -1) requireNoShortage(errno);
  return folder;
}

/// Returns the names in a folder, except those that begin with a dot. Returns an empty list if the
/// folder is not open. Calls getdents(2) directly, because the C library's readdir(3) allocates a
/// buffer that is larger than all data read.
std::vector<std::string> namesIn(const Descriptor& folder) {
  struct Entry {
    std::uint64_t inode;
    std::int64_t offset;
    std::uint16_t length;  // of the whole entry
    std::uint8_t type;
    char name;  // first byte of the null-terminated name
  };
  std::vector<std::string> names;
  alignas(Entry) char buffer[1024];
  while (const long length = ::syscall(SYS_getdents64, folder.number(), buffer, sizeof buffer)) {
    if (length == -1) {
      requireNoShortage(errno);
      break;
    }
    for (const char* at = buffer; at < buffer + length;) {
      // The kernel aligns the entries.
      const auto* const entry = static_cast<const Entry*>(static_cast<const void*>(at));
      if (entry->name != '.') names.emplace_back(at + offsetof(Entry, name));
      at += entry->length;
    }
  }
  return names;
}

/// Returns whether the file is a regular file. Reading an empty regular file returns no data, as
/// does reading a pipe without a writer.
bool isRegular(int file) {
  struct stat status {};
  return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

Class::Class(const std::string& path)
    : folder_(openFolder(AT_FDCWD, path.c_str())), deviceNames_(namesIn(folder_)) {
  std::sort(deviceNames_.begin(), deviceNames_.end());
}

Device::Device(const Class& devices, std::string name)
    : classFolder_(devices.folder_.number()),
      name_(std::move(name)),
      folder_(openFolder(classFolder_, name_.c_str())) {}

void Device::listAttributes() { attributes_ = namesIn(folder_); }

std::optional<std::string> Device::text(const char* attribute) {
  if (attributes_ && std::ranges::find(*attributes_, attribute) == attributes_->end()) {
    return std::nullopt;
  }
  // Opens without blocking, in case the file is not an attribute but a pipe, for example.
  const Descriptor file(
      ::openat(folder_.number(), attribute, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.isOpen()) {
    requireNoShortage(errno);
    return std::nullopt;
  }
  char buffer[1024];
  const ssize_t length = ::read(file.number(), buffer, sizeof buffer);
  if (length == -1) {
    if (errno == ENODEV) hasFailed_ = true;
    return std::nullopt;
  }
  const bool isComplete =
      static_cast<std::size_t>(length) < sizeof buffer && (length > 0 || isRegular(file.number()));
  if (!isComplete) return std::nullopt;
  hasSucceeded_ = true;
  return std::string(trimmed({buffer, static_cast<std::size_t>(length)}));
}

std::optional<std::int64_t> Device::number(const char* attribute) {
  const auto value = text(attribute);
  return value ? parseInteger(*value) : std::nullopt;
}

bool Device::isListed() const {
  struct stat opened {};
  struct stat listed {};
  return ::fstat(folder_.number(), &opened) == 0 &&
         ::fstatat(classFolder_, name_.c_str(), &listed, 0) == 0 &&
         opened.st_dev == listed.st_dev && opened.st_ino == listed.st_ino;
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
  // std::from_chars accepts "-" but not "+".
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

}  // namespace lumowatt::sysfs

#include "platform/freedesktop/tray/icon_folder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>

#include "platform/freedesktop/user/environment.h"
#include "platform/posix/descriptor.h"

namespace lumowatt::freedesktop {

namespace {

constexpr std::string_view fileType = ".svg";

constexpr mode_t iconFolderMode = 0700;
constexpr mode_t iconFileMode = 0600;

/// Returns the 64-bit FNV-1a hash in hexadecimal digits.
std::string hashOf(std::string_view contents) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char letter : contents) {
    hash ^= static_cast<unsigned char>(letter);
    hash *= 0x100000001b3;
  }
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), hash, 16).ptr;
  return {digits.data(), end};
}

/// Opens a folder. Fails if the path is a symbolic link.
int openFolder(const std::string& path) {
  return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

bool contains(const IconFolder::Names& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

}  // namespace

IconFolder::IconFolder(std::string_view prefix, std::string_view suffix)
    : prefix_(prefix), suffix_(suffix) {
  if (const std::string runtime = runtimeFolder(); !runtime.empty()) path_ = runtime + "/lumowatt";
  removeAllExcept({});
}

IconFolder::~IconFolder() {
  removeAllExcept({});
  ::rmdir(path_.c_str());
}

Result<IconFolder::Names> IconFolder::replaceIcons(const std::vector<std::string>& svgs) {
  Names names;
  for (const std::string& svg : svgs) {
    names.push_back(prefix_ + hashOf(svg) + suffix_);
    const bool isPresent =
        contains(names_, names.back()) && ::access(file(names.back()).c_str(), F_OK) == 0;
    if (isPresent) continue;
    if (const Result<> written = write(names.back(), svg); !written) {
      removeAllExcept({});
      return written.failure();
    }
  }
  if (names != names_) removeAllExcept(names);
  return names;
}

Result<> IconFolder::write(const std::string& name, std::string_view svg) const {
  if (path_.empty()) return Failure{"the session has no runtime folder"};
  ::mkdir(path_.c_str(), iconFolderMode);
  const Descriptor folder(openFolder(path_));
  if (!folder.isOpen()) return systemFailure(errno);
  const std::string file = name + std::string(fileType);
  ::unlinkat(folder.number(), file.c_str(), 0);  // could be a symbolic link
  Descriptor icon(::openat(folder.number(), file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                           iconFileMode));
  if (icon.isOpen() && icon.write(svg) && icon.close()) return {};
  const int error = errno;
  ::unlinkat(folder.number(), file.c_str(), 0);
  return systemFailure(error);
}

void IconFolder::removeAllExcept(const Names& names) {
  names_ = names;
  const int folder = openFolder(path_);
  DIR* const listing = ::fdopendir(folder);
  if (listing == nullptr) {
    if (folder >= 0) ::close(folder);
    return;
  }
  while (const dirent* const entry = ::readdir(listing)) {
    std::string_view name = entry->d_name;
    if (!name.starts_with(prefix_) || !name.ends_with(fileType)) continue;
    name.remove_suffix(fileType.size());
    if (!contains(names, name)) ::unlinkat(folder, entry->d_name, 0);
  }
  ::closedir(listing);
}

}  // namespace lumowatt::freedesktop

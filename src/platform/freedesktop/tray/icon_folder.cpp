#include "platform/freedesktop/tray/icon_folder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <memory>

#include "platform/freedesktop/user/text.h"
#include "platform/posix/descriptor.h"

namespace lumowatt::freedesktop {

namespace {

constexpr std::string_view suffix = ".svg";

constexpr mode_t newFolder = 0700;
constexpr mode_t newFile = 0600;

/// The 64-bit FNV-1a hash, in hexadecimal digits.
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

/// A folder, never through a symbolic link.
int openFolder(const std::string& path) {
  return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

struct Close {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

bool contains(const IconFolder::Names& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

}  // namespace

IconFolder::IconFolder(std::string_view prefix) : prefix_(prefix) {
  const std::string runtime = environmentVariable("XDG_RUNTIME_DIR");
  if (runtime.starts_with('/')) path_ = runtime + "/lumowatt";
  keep({});
}

IconFolder::~IconFolder() {
  keep({});
  ::rmdir(path_.c_str());
}

std::optional<IconFolder::Names> IconFolder::hold(const std::vector<std::string>& svgs) {
  Names names;
  for (const std::string& svg : svgs) {
    names.push_back(prefix_ + hashOf(svg) + "-symbolic");
    const bool isThere =
        contains(names_, names.back()) && ::access(file(names.back()).c_str(), F_OK) == 0;
    if (isThere || write(names.back(), svg)) continue;
    keep({});
    return std::nullopt;
  }
  if (names != names_) keep(names);
  return names;
}

bool IconFolder::write(const std::string& name, std::string_view svg) const {
  ::mkdir(path_.c_str(), newFolder);
  const Descriptor folder(openFolder(path_));
  const std::string file = name + ".svg";
  ::unlinkat(folder.number(), file.c_str(), 0);  // whatever it is, it is not to be followed
  Descriptor icon(
      ::openat(folder.number(), file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFile));
  if (icon.isOpen() && icon.write(svg) && icon.close()) return true;
  ::unlinkat(folder.number(), file.c_str(), 0);
  return false;
}

/// Removes all icons but those with these names.
void IconFolder::keep(const Names& names) {
  names_ = names;
  const int descriptor = openFolder(path_);
  const std::unique_ptr<DIR, Close> folder(::fdopendir(descriptor));
  if (!folder) {
    if (descriptor >= 0) ::close(descriptor);
    return;
  }
  while (const dirent* const entry = ::readdir(folder.get())) {
    std::string_view file = entry->d_name;
    if (!file.starts_with(prefix_) || !file.ends_with(suffix)) continue;
    file.remove_suffix(suffix.size());
    if (!contains(names, file)) ::unlinkat(::dirfd(folder.get()), entry->d_name, 0);
  }
}

}  // namespace lumowatt::freedesktop

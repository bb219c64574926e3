#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/failure.h"

/// Small files of the user: files of this program, and settings of the desktop.
namespace lumowatt::freedesktop {

/// Size of the largest file that is read, in bytes.
inline constexpr std::size_t userFileLimit = 65536;

/// Contents of a regular file of at most `userFileLimit` bytes.
struct FileContents {
  bool exists = false;
  /// Empty if the file cannot be read, is too large or is not a regular file.
  std::optional<std::string> text = std::nullopt;
};

/// Reads a file. Never blocks on a pipe or a device.
FileContents readUserFile(const std::string& path);

/// Writes a file with `contents` to `path` atomically: on failure an existing file is unchanged.
/// Creates missing folders. If `path` is a symbolic link, replaces the file that the link refers
/// to. A replaced file retains its permissions. A new file is accessible only to the user. Fails if
/// `path` is empty.
Result<> replaceUserFile(const std::string& path, std::string_view contents);

}  // namespace lumowatt::freedesktop

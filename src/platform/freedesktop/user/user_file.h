#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/failure.h"

/// The user's small files: this program's, and settings of the desktop.
namespace lumowatt::freedesktop {

/// The largest file that is read, in bytes.
inline constexpr std::size_t userFileLimit = 65536;

/// What a regular file within that limit holds.
struct FileContents {
  bool isThere = false;
  std::optional<std::string> text =
      std::nullopt;  ///< absent: it cannot be read, or is no such file
};

/// Reads a file, without ever waiting for a pipe or a device.
FileContents readUserFile(const std::string& path);

/// Puts a file with `contents` at `path`, with the folders on the way to it, all of it or nothing:
/// the file that is there stays as it is on failure. A file at the end of a symbolic link is
/// replaced itself, and keeps its permissions; a new one is the user's alone. Fails with an empty
/// path.
Result<> replaceUserFile(const std::string& path, std::string_view contents);

}  // namespace lumowatt::freedesktop

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumowatt {

/// Writes `contents` to the file at `path`, which may also be a device or a pipe. A file that is
/// there is overwritten in place. "/dev/stdout" is the standard output as it stands: where that is
/// a file, what is in it stays, and what is written later follows.
///
/// Returns the system's description of what went wrong; absent when all is written.
std::optional<std::string> writeFile(const std::string& path, std::string_view contents);

}  // namespace lumowatt

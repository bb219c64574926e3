#pragma once

#include <string>
#include <string_view>

#include "base/failure.h"

namespace lumowatt {

/// Writes all of `text` to the standard output. Fails if the device is full, the pipe has no reader
/// or the descriptor is closed.
Result<> writeToStandardOutput(std::string_view text);

/// Writes `contents` to the file at `path`, which may also be a device or a pipe. Overwrites an
/// existing file in place. For "/dev/stdout", writes to the standard output at its current position
/// and does not truncate a file to which the standard output is redirected.
Result<> writeFile(const std::string& path, std::string_view contents);

}  // namespace lumowatt

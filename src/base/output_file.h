#pragma once

#include <string>
#include <string_view>

#include "base/failure.h"

namespace lumowatt {

/// Writes all of `text` to the standard output. Fails on a full device, a pipe that nobody reads, a
/// closed descriptor.
Result<> writeToStandardOutput(std::string_view text);

/// Writes `contents` to the file at `path`, which may also be a device or a pipe. A file that is
/// there is overwritten in place. "/dev/stdout" is the standard output as it stands: where that is
/// a file, what is in it stays, and what is written later follows.
Result<> writeFile(const std::string& path, std::string_view contents);

}  // namespace lumowatt

#pragma once

#include <string_view>

namespace lumowatt {

/// Writes all of `text` to the standard output. False when it could not be written (a full
/// device, a pipe that nobody reads, a closed descriptor); the reason is then on standard error.
bool writeToStandardOutput(std::string_view text);

}  // namespace lumowatt

#pragma once

#include <string_view>

namespace lumowatt {

/// Reports an error with `reportError` and exits the process with status 1. Reserved for arithmetic
/// results that are out of range. Every other error is returned as a `Failure`.
[[noreturn]] void fatal(std::string_view what, std::string_view reason);

}  // namespace lumowatt

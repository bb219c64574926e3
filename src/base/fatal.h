#pragma once

#include <string_view>

namespace lumowatt {

/// Reports an error as `reportError` does, and ends the process with status 1. For an arithmetic
/// result that no later step could use; everything else is an ordinary failure.
[[noreturn]] void fatal(std::string_view what, std::string_view reason);

}  // namespace lumowatt

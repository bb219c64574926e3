#pragma once

#include <string_view>

namespace lumowatt {

/// Ends the process with status 1 after "lumowatt: " and `message` on standard error. For an
/// arithmetic result that no later step could use; everything else is an ordinary failure.
[[noreturn]] void fatal(std::string_view message);

}  // namespace lumowatt

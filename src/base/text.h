#pragma once

#include <string_view>

namespace lumowatt {

/// Returns `text` without leading and trailing white space, as defined by the C locale.
std::string_view trimmed(std::string_view text);

}  // namespace lumowatt

#pragma once

#include <string_view>

namespace lumowatt {

/// The text without the white space of the C locale at either end.
std::string_view trimmed(std::string_view text);

}  // namespace lumowatt

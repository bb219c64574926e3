#pragma once

#include <string>
#include <string_view>

namespace lumowatt::freedesktop {

/// A variable of this process's environment; empty when it is not set.
std::string environmentVariable(const char* name);

/// Without the blanks, tabs and carriage returns at either end.
std::string_view trimmed(std::string_view text);

}  // namespace lumowatt::freedesktop

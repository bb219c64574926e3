#pragma once

#include <string>
#include <string_view>

namespace lumowatt {

/// Returns `bytes` as one line of printable UTF-8, which may be empty. Replaces each ASCII tab or
/// line break with a blank, then removes the blanks at both ends. Drops invalid UTF-8, invisible
/// characters and other line breaks.
std::string printable(std::string_view bytes);

}  // namespace lumowatt

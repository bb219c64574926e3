#pragma once

#include <string>
#include <string_view>

namespace lumowatt {

/// `bytes` as one line of printable UTF-8: without what is not UTF-8, not visible or a line
/// break. White space inside becomes a blank; at the ends it is dropped. May be empty.
std::string printable(std::string_view bytes);

}  // namespace lumowatt

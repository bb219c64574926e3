#pragma once

#include <string_view>

#include "menubar/menu.h"

namespace lumowatt::fuzz {

/// A menu as letters, one an item: "l" a line, "c" a command, "t" a check mark, "r" a radio mark,
/// "v" a chart, "V" one that cannot be chosen, "s" a submenu, "-" a separator. A digit is added to
/// the title of the item before it, and radio marks after a submenu are in it. Never empty, as no
/// application's menu is.
Menu menuOf(std::string_view text);

}  // namespace lumowatt::fuzz

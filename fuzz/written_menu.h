#pragma once

#include <string_view>

#include "menubar/menu.h"

namespace lumowatt::fuzz {

/// A menu as letters, one an item: "l" a line, "c" a command, "t" a toggle, "r" a choice, "v" a
/// view,
/// "-" a separator; capitals are disabled. A digit is added to the title of the item before it, and
/// what is in round brackets is below that item. Never empty, as no application's menu is.
Menu menuOf(std::string_view text);

}  // namespace lumowatt::fuzz

#pragma once

#include <string_view>

#include "menubar/menu.h"

namespace lumowatt::fuzz {

/// Parses a menu from letters, one for each item: "l" is a line, "c" a command, "t" a check mark,
/// "r" a radio mark, "v" a chart, "V" a disabled chart, "s" a submenu and "-" a separator. A digit
/// is appended to the title of the preceding item. Radio marks that follow a submenu become its
/// items. The result is never empty, as in every application.
Menu parseMenu(std::string_view text);

}  // namespace lumowatt::fuzz

#pragma once

#include "menubar/menu.h"

namespace lumowatt::freedesktop {

/// Returns the menu with fewer rows, for panels with high rows. Joins consecutive lines into one
/// item, separated by line breaks. Moves lines above the chart into the chart's item. Moves
/// lines above a command into the first item if that item is a line. In each group, moves commands
/// and marks after a submenu into another submenu, "More", because such panels open only one
/// submenu at a time.
Menu compactMenu(const Menu& menu);

}  // namespace lumowatt::freedesktop

#pragma once

#include "menubar/menu.h"

namespace lumowatt::freedesktop {

/// Returns the same menu in fewer rows, for panels with high ones. Lines that are only read are one
/// item, with line breaks; those above the chart are in its item, and those above a command in the
/// first. What can be chosen after a submenu in its group is in a second one, "More": such a panel
/// opens one of them at a time.
Menu compactMenu(const Menu& menu);

}  // namespace lumowatt::freedesktop

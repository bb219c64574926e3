#pragma once

#include <set>
#include <string>
#include <string_view>

#include "platform/linux/desktop/menu_layout.h"
#include "platform/linux/desktop/sd.h"

/// The items of a menu as messages of the com.canonical.dbusmenu interface have them.
namespace lumowatt::desktop {

/// The properties that somebody asks for, by their names; none means all of them.
using PropertyNames = std::set<std::string, std::less<>>;

/// Adds the item's properties, a{sv}, without those that have the interface's default.
void addProperties(MessageWriter& message, const MenuEntry& entry, const PropertyNames& names = {});

/// Adds one property of the item, v. False when there is none of that name; nothing is added then.
bool addProperty(MessageWriter& message, const MenuEntry& entry, std::string_view name);

/// Adds the item with what is below it, (ia{sv}av), `depth` levels deep; negative for all of them.
void addLayout(MessageWriter& message, const MenuEntry& entry, int depth,
               const PropertyNames& names);

}  // namespace lumowatt::desktop

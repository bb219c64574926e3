#pragma once

#include <bitset>
#include <string_view>

#include "platform/freedesktop/bus/sd.h"
#include "platform/freedesktop/menu/layout.h"

/// The items of a menu as messages of the com.canonical.dbusmenu interface have them.
namespace lumowatt::freedesktop {

/// Some of the properties that items have.
using PropertySet = std::bitset<9>;

/// Reads the names of the properties that somebody asks for, as; none means all of them, and one
/// that no item has means nothing. Negative when there are no names, as sd-bus has its errors.
int readPropertySet(sd_bus_message* message, PropertySet& set);

/// Adds the item's properties, a{sv}, without those that have the interface's default.
void addProperties(MessageWriter& message, const MenuEntry& entry,
                   const PropertySet& set = PropertySet().set());

/// Adds one property of the item, v. False when there is none of that name; nothing is added then.
bool addProperty(MessageWriter& message, const MenuEntry& entry, std::string_view name);

/// Adds the item with what is below it, (ia{sv}av), `depth` levels deep; negative for all of them.
void addLayout(MessageWriter& message, const MenuEntry& entry, int depth, const PropertySet& set);

}  // namespace lumowatt::freedesktop

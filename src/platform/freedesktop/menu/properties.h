#pragma once

#include <bitset>
#include <string_view>

#include "platform/freedesktop/bus/sd.h"
#include "platform/freedesktop/menu/layout.h"

/// Encoding of menu items in messages of the com.canonical.dbusmenu interface.
namespace lumowatt::freedesktop {

/// Set of properties of an item.
using PropertySet = std::bitset<9>;

/// Reads the names of the requested properties (signature "as"). An empty list requests all
/// properties. Ignores unknown names. Returns a negative errno if the message has no such list.
int readPropertySet(sd_bus_message* message, PropertySet& set);

/// Appends the properties of the item that are in `set` (signature "a{sv}"). Omits properties that
/// have the interface's default and cannot change.
void addProperties(MessageWriter& message, const MenuEntry& entry,
                   const PropertySet& set = PropertySet().set());

/// Appends the property `name` of the item (signature "v"). Appends nothing and returns false if
/// there is no such property.
bool addProperty(MessageWriter& message, const MenuEntry& entry, std::string_view name);

/// Appends the item and the items below it (signature "(ia{sv}av)"), down to `depth` levels; all
/// levels if negative.
void addLayout(MessageWriter& message, const MenuEntry& entry, int depth, const PropertySet& set);

}  // namespace lumowatt::freedesktop

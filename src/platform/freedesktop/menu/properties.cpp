#include "platform/freedesktop/menu/properties.h"

#include <algorithm>
#include <array>

namespace lumowatt::freedesktop {

namespace {

using Toggle = MenuEntry::Toggle;

/// Property of an item.
struct Property {
  std::string_view name;                 ///< in the interface
  bool (*isIncluded)(const MenuEntry&);  ///< whether lists of properties include the property
  void (*add)(MessageWriter&, const MenuEntry&);
};

/// Includes the property even with its default value, because the value can change later.
bool always(const MenuEntry&) { return true; }

bool isStandard(const MenuEntry& entry) { return !entry.isSeparator; }
bool isToggle(const MenuEntry& entry) { return entry.toggle != Toggle::none; }

const char* toggleType(const MenuEntry& entry) {
  if (entry.toggle == Toggle::none) return "";
  return entry.toggle == Toggle::radio ? "radio" : "checkmark";
}

/// Appends the shortcut as a list of key combinations, each a list of modifiers and a key.
void addShortcut(MessageWriter& message, const MenuEntry& entry) {
  message.begin('v', "aas");
  message.begin('a', "as");
  if (entry.shortcut != 0) {
    message.add("as", 2, "Control", std::string(1, entry.shortcut).c_str());
  }
  message.end();
  message.end();
}

constexpr std::array<Property, PropertySet().size()> properties{{
    {"type", [](const MenuEntry& entry) { return entry.isSeparator; },
     [](MessageWriter& message, const MenuEntry& entry) {
       message.add("v", "s", entry.isSeparator ? "separator" : "standard");
     }},
    {"label", isStandard,
     [](MessageWriter& message, const MenuEntry& entry) {
       message.add("v", "s", entry.label.c_str());
     }},
    {"accessible-desc", [](const MenuEntry& entry) { return !entry.description.empty(); },
     [](MessageWriter& message, const MenuEntry& entry) {
       message.add("v", "s", entry.description.c_str());
     }},
    {"enabled", isStandard,
     [](MessageWriter& message, const MenuEntry& entry) {
       message.add("v", "b", static_cast<int>(entry.isEnabled));
     }},
    {"visible", always,
     [](MessageWriter& message, const MenuEntry& entry) {
       message.add("v", "b", static_cast<int>(entry.isVisible));
     }},
    {"toggle-type", isToggle,
     [](MessageWriter& message, const MenuEntry& entry) {
       message.add("v", "s", toggleType(entry));
     }},
    {"toggle-state", isToggle,
     [](MessageWriter& message, const MenuEntry& entry) {
       message.add("v", "i", static_cast<int>(entry.isOn));
     }},
    {"shortcut", [](const MenuEntry& entry) { return entry.shortcut != 0; }, addShortcut},
    {"children-display", [](const MenuEntry& entry) { return !entry.children.empty(); },
     [](MessageWriter& message, const MenuEntry& entry) {
       message.add("v", "s", entry.children.empty() ? "" : "submenu");
     }},
}};

}  // namespace

int readPropertySet(sd_bus_message* message, PropertySet& set) {
  set.reset();
  bool isEmpty = true;
  int status = sd_bus_message_enter_container(message, 'a', "s");
  const char* name = nullptr;
  while (status >= 0 && (status = sd_bus_message_read(message, "s", &name)) > 0) {
    isEmpty = false;
    for (std::size_t i = 0; i < properties.size(); ++i) {
      if (properties[i].name == name) set.set(i);
    }
  }
  if (isEmpty) set.set();
  return status < 0 ? status : sd_bus_message_exit_container(message);
}

void addProperties(MessageWriter& message, const MenuEntry& entry, const PropertySet& set) {
  message.begin('a', "{sv}");
  for (std::size_t i = 0; i < properties.size(); ++i) {
    if (!set[i] || !properties[i].isIncluded(entry)) continue;
    message.begin('e', "sv");
    message.add("s", properties[i].name.data());
    properties[i].add(message, entry);
    message.end();
  }
  message.end();
}

bool addProperty(MessageWriter& message, const MenuEntry& entry, std::string_view name) {
  const auto* const property = std::ranges::find(properties, name, &Property::name);
  if (property == properties.end()) return false;
  property->add(message, entry);
  return true;
}

void addLayout(MessageWriter& message, const MenuEntry& entry, int depth, const PropertySet& set) {
  message.begin('r', "ia{sv}av");
  message.add("i", entry.id);
  addProperties(message, entry, set);
  message.begin('a', "v");
  if (depth != 0) {
    for (const MenuEntry& child : entry.children) {
      message.begin('v', "(ia{sv}av)");
      addLayout(message, child, depth - 1, set);
      message.end();
    }
  }
  message.end();
  message.end();
}

}  // namespace lumowatt::freedesktop

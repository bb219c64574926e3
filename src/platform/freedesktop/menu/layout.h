#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "menubar/menu.h"

namespace lumowatt::freedesktop {

/// Item of the menu, with the properties of the com.canonical.dbusmenu interface.
struct MenuEntry {
  enum class Toggle { none, checkmark, radio };

  std::int32_t id = 0;
  std::string label = {};        ///< with underscores doubled; "_" marks an access key
  std::string description = {};  ///< for screen readers; if empty, they read the label
  bool isSeparator = false;
  bool isEnabled = true;
  bool isVisible = true;
  Toggle toggle = Toggle::none;
  bool isOn = false;
  char shortcut = 0;  ///< letter pressed with the Control key; 0 if none
  std::vector<MenuEntry> children = {};

  friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

/// Menu as presented to panels, with stable ids. The id of an item is derived from its group, which
/// is delimited by separators, and from its position in the group. Items that have been removed
/// from the menu remain in the layout, invisible.
class MenuLayout {
 public:
  MenuLayout() { root_.id = 0; }

  struct Change {
    bool isStructural = false;            ///< whether items were added or removed
    std::vector<MenuEntry> entries = {};  ///< changed items in their new state, without children
  };

  /// Replaces the presented menu. Returns the changes.
  Change present(const Menu& menu);

  /// Returns the root item, whose id is 0 and whose children are the items of the menu.
  const MenuEntry& root() const { return root_; }

  /// Returns the item with the id; null if there is no such item.
  const MenuEntry* find(std::int32_t id) const;

  /// Calls `visit` with the root item and then with each item below it, parents before children.
  void forEach(const std::function<void(const MenuEntry&)>& visit) const;

  /// Returns the choice of the item with the id. Returns std::nullopt if there is no such item, or
  /// if the item is invisible, disabled or without a choice.
  std::optional<Choice> choice(std::int32_t id) const;

 private:
  /// Stores the choices of the item and of the items below it.
  void addChoices(const MenuEntry& entry, const MenuItem& item);

  MenuEntry root_;
  std::vector<std::pair<std::int32_t, Choice>>
      choices_;  ///< choices of the presented menu with the ids of their items
};

}  // namespace lumowatt::freedesktop

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "menubar/menu.h"

namespace lumowatt::freedesktop {

/// An item as the com.canonical.dbusmenu interface has it.
struct MenuEntry {
  enum class Toggle { none, checkmark, radio };

  std::int32_t id = 0;
  std::string label = {};        ///< with access keys marked by an underscore, a plain one doubled
  std::string description = {};  ///< what a screen reader says; empty: the label
  bool isSeparator = false;
  bool isEnabled = true;
  bool isVisible = true;
  Toggle toggle = Toggle::none;
  bool isOn = false;
  char shortcut = 0;  ///< a letter, with the Control key; 0 for none
  std::vector<MenuEntry> children = {};

  friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

/// The menu as it is presented to panels, which want ids that stay: an item has its id by the group
/// between separators that it is in and its place there. One that the menu no longer has stays
/// too, invisible.
class MenuLayout {
 public:
  MenuLayout() { root_.id = 0; }

  struct Change {
    bool isStructural = false;            ///< there are other items than before
    std::vector<MenuEntry> entries = {};  ///< those that differ, as they are now, without children
  };

  /// Presents the menu from now on. Returns what that changed.
  Change present(const Menu& menu);

  /// The whole layout, as the children of an item of id 0.
  const MenuEntry& root() const { return root_; }

  /// The item of that id; null when there is none.
  const MenuEntry* find(std::int32_t id) const;

  /// Calls `visit` with each item, from that of id 0 on.
  void forEach(const std::function<void(const MenuEntry&)>& visit) const;

  /// The choice that the item of that id offers; absent unless it can be seen and chosen now.
  std::optional<Choice> choice(std::int32_t id) const;

 private:
  /// Notes what the item and those below it offer.
  void addChoices(const MenuEntry& entry, const MenuItem& item);

  MenuEntry root_;
  std::vector<std::pair<std::int32_t, Choice>>
      choices_;  ///< of the present menu, by the items' ids
};

}  // namespace lumowatt::freedesktop

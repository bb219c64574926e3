#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "menubar/menu.h"

namespace lumowatt::freedesktop {

/// An item as the com.canonical.dbusmenu interface has it.
struct MenuEntry {
  enum class Toggle { none, checkmark, radio };

  std::int32_t id = 0;
  std::string label = {};  ///< with access keys marked by an underscore, a plain one doubled
  bool isSeparator = false;
  bool isEnabled = true;
  bool isVisible = true;
  Toggle toggle = Toggle::none;
  bool isOn = false;
  char shortcut = 0;  ///< a letter, with the Control key; 0 for none
  std::vector<MenuEntry> children = {};

  friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

/// What a user can choose: a choice of the application's, or the chart, to see it in a picture.
using Choosable = std::variant<Choice, const MenuChart*>;

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
  Change present(Menu menu);

  /// The whole layout, as the children of an item of id 0.
  const MenuEntry& root() const { return root_; }

  /// The item of that id; null when there is none.
  const MenuEntry* find(std::int32_t id) const;

  /// Calls `visit` with each item, from that of id 0 on.
  void forEach(const std::function<void(const MenuEntry&)>& visit) const;

  /// What the item of that id offers; null unless it can be seen and chosen now.
  const Choosable* choosable(std::int32_t id) const;

 private:
  MenuEntry root_;
  Menu menu_;                                                  ///< the present one
  std::vector<std::pair<std::int32_t, Choosable>> choosable_;  ///< of its items, by their ids
};

}  // namespace lumowatt::freedesktop

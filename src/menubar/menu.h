#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "graphics/attributed_string.h"
#include "graphics/image.h"

namespace lumowatt {

/// What choosing an item does.
enum class Action {
  none,
  pick,
  toggleColor,
  toggleAnimate,
  copyDetails,
  toggleLogin,
  openSettings,
  terminate,  ///< ends the application: the desktop's own command
};

/// An image in an item, without scaling, in a container that is the item.
struct ImageView {
  Rect frame;  ///< in the container
  Image image;
};

struct ItemView {
  Rect frame;
  ImageView content;
};

/// An item of a menu, with what the menu shows of it.
struct MenuItem {
  std::string title = {};
  std::optional<AttributedString> attributedTitle = std::nullopt;  ///< shown in the title's place
  Action action = Action::none;
  std::string keyEquivalent = {};  ///< one character, with the Command key; empty for none
  std::int64_t tag = 0;
  bool isOn = false;      ///< has a check mark
  bool isEnabled = true;  ///< false: dimmed. Without an action and a submenu it is dimmed as well
  bool isSeparator = false;
  std::vector<MenuItem> submenu = {};
  std::optional<ItemView> view = std::nullopt;  ///< shown in the item's place
};

using Menu = std::vector<MenuItem>;

}  // namespace lumowatt

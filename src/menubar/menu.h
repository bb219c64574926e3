#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "graphics/attributed_string.h"
#include "graphics/image.h"

namespace lumowatt {

enum class Action {
  pick,  ///< selects the display mode whose number is the tag of the choice
  toggleColor,
  toggleAnimate,
  copyDetails,
  toggleLogin,
  openSettings,
  // Actions that the desktop performs itself:
  showChart,  ///< shows the picture of the chart, if the menu shows the chart as text
  terminate,  ///< quits the application
};

/// Effect of choosing a menu item.
struct Choice {
  Action action;
  std::int64_t tag = 0;
};

struct MenuSeparator {};

/// Dimmed line of text that cannot be chosen.
struct MenuLine {
  std::string title;
  std::optional<AttributedString> attributedTitle = std::nullopt;  ///< replaces the title if set
};

/// Image in the container view of a menu item, drawn without scaling.
struct ImageView {
  Rect frame;  ///< in the coordinates of the container
  Image image;
};

/// Container view that replaces a menu item.
struct ItemView {
  Rect frame;
  ImageView content;
};

/// Properties of the desktop that the picture of the chart depends on.
struct ChartContext {
  Color accent;     ///< the user's accent color
  double midnight;  ///< start of the local day on the time scale of `Desktop::now`
};

/// Chart of the history, in a form for each kind of desktop.
struct MenuChart {
  ItemView view;            ///< for menus that show views
  std::string text;         ///< line for menus without views
  std::string description;  ///< of `text`, for screen readers
  bool isEnabled;           ///< whether `text` can be chosen to show the picture
  std::function<Drawing(const ChartContext&)> picture;  ///< shown when `text` is chosen
};

struct MenuCommand {
  std::string title;
  Choice choice;
  std::string keyEquivalent = {};  ///< one character, pressed with the Command key; or empty
};

struct MenuCheckMark {
  std::string title;
  Choice choice;
  bool isOn;
};

/// Item of a group in which exactly one item is on.
struct MenuRadioMark {
  std::string title;
  Choice choice;
  bool isOn;
};

struct Submenu;

using MenuItem = std::variant<MenuSeparator, MenuLine, MenuChart, MenuCommand, MenuCheckMark,
                              MenuRadioMark, Submenu>;
using Menu = std::vector<MenuItem>;

struct Submenu {
  std::string title;
  Menu items;
};

/// Returns the choice of a menu item; null if the item cannot be chosen.
const Choice* choiceOf(const MenuItem& item);

}  // namespace lumowatt

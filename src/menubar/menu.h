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
  pick,  ///< picks the display mode that is the choice's tag
  toggleColor,
  toggleAnimate,
  copyDetails,
  toggleLogin,
  openSettings,
  // What a desktop does itself:
  showChart,  ///< shows the chart's picture, where the menu has a line of text for it
  terminate,  ///< ends the application
};

/// What choosing an item does.
struct Choice {
  Action action;
  std::int64_t tag = 0;
};

struct MenuSeparator {};

/// A line that is only read, dimmed.
struct MenuLine {
  std::string title;
  std::optional<AttributedString> attributedTitle = std::nullopt;  ///< shown in the title's place
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

/// What the chart's picture has of the desktop that shows it.
struct ChartSetting {
  Color accent;     ///< the user's
  double midnight;  ///< when clocks showed 0:00 last, as `Desktop::now` counts
};

/// The chart, as each kind of desktop can show it.
struct MenuChart {
  ItemView view;                                        ///< shown in the item's place
  std::string text;                                     ///< a line for menus without pictures
  std::string description;                              ///< what a screen reader says of that line
  bool isEnabled;                                       ///< whether there is a picture to choose
  std::function<Drawing(const ChartSetting&)> picture;  ///< shown when such a line is chosen
};

struct MenuCommand {
  std::string title;
  Choice choice;
  std::string keyEquivalent = {};  ///< one character, with the Command key; empty for none
};

struct MenuCheckMark {
  std::string title;
  Choice choice;
  bool isOn;
};

/// One of several items of which one is on.
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

/// The choice that the item offers; null for one that offers none.
const Choice* choiceOf(const MenuItem& item);

}  // namespace lumowatt

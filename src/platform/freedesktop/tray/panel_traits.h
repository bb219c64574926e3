#pragma once

#include <string_view>

namespace lumowatt::freedesktop {

/// How a panel shows the title of an item.
enum class TitleForm {
  label,  ///< as text beside the icon
  tiles,  ///< not at all: the item has more icons there, which are text
  wide,   ///< in the icon, which may be wider than it is high
};

/// What panels do differently.
struct PanelTraits {
  TitleForm form = TitleForm::tiles;

  /// A label stands close to the icon, unless it begins with a blank.
  bool joinsLabel = false;
  /// A new item stands on the left of those before it.
  bool addsOnTheLeft = false;
  /// It shows no menus: a click asks the item to open its own.
  bool hasNoMenus = false;
  /// An item is remembered by the title of its tool tip, which therefore does not change.
  bool remembersToolTips = false;
  /// Only an item that is registered by an object's path has its menu opened by a left click.
  bool registersPaths = false;
  /// The rows of a menu are so high that it fits the screen only when the report is one of them.
  bool hasHighRows = false;
};

/// The traits of the panel whose tray is a process of that name, as the kernel has it in
/// /proc/PID/comm. A panel that is not known shows icons and no labels.
PanelTraits panelTraits(std::string_view process);

}  // namespace lumowatt::freedesktop

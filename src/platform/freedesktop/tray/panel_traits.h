#pragma once

#include <string_view>

namespace lumowatt::freedesktop {

/// Form in which a panel shows the title of an item.
enum class TitleForm {
  label,  ///< as text beside the icon
  tiles,  ///< as further icons that show text, because the panel shows no labels
  wide,   ///< as part of the icon, because the panel accepts icons that are wider than high
};

/// Differences between panels.
struct PanelTraits {
  TitleForm form = TitleForm::tiles;

  /// Whether the panel adds no space between icon and label; the label must begin with a space.
  bool needsLabelSpacing = false;
  /// Whether the panel adds new items to the left of the existing items.
  bool addsOnTheLeft = false;
  /// Whether the panel shows no menus. On a click, such a panel calls a method of the item instead.
  bool hasNoMenus = false;
  /// Whether the panel identifies items by their tool tip's title, which therefore must not change.
  bool remembersToolTips = false;
  /// Whether a left click opens the menu only for items that are registered by an object path.
  bool registersPaths = false;
  /// Whether menu rows are so high that the menu fits the screen only with the report in one row.
  bool hasHighRows = false;
};

/// Returns the traits of the panel whose tray has the process name `process`, as reported in
/// /proc/PID/comm. Unknown panels are assumed to show icons and no labels.
PanelTraits panelTraits(std::string_view process);

}  // namespace lumowatt::freedesktop

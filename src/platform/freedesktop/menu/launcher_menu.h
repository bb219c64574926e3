#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "menubar/menu.h"
#include "platform/freedesktop/bus/sd.h"
#include "platform/freedesktop/user/child.h"

namespace lumowatt::freedesktop {

/// Line of the launcher's list for an item of the menu.
struct LauncherLine {
  std::string text;                             ///< without control characters
  std::optional<Choice> choice = std::nullopt;  ///< empty if the line cannot be chosen
};

/// Returns the lines of the menu in order. The lines of a submenu follow the submenu's title. The
/// line of a checked item begins with "✓", or with "•" for a radio item.
std::vector<LauncherLine> launcherLines(const Menu& menu);

/// Menu in the user's launcher (fuzzel, rofi, dmenu, ...), for panels that show no menus.
class LauncherMenu {
 public:
  /// `choose` is called with the choice of each line that the user selects.
  LauncherMenu(sd_event* loop, std::function<void(const Choice&)> choose);

  /// Shows the menu in the first installed launcher. Does nothing and returns true while a launcher
  /// is open. If no launcher can be started, sounds the bell, reports the reason on the standard
  /// error and returns false.
  bool show(const Menu& menu);

 private:
  void finish(std::string_view output);

  sd_event* loop_;
  std::function<void(const Choice&)> choose_;
  std::vector<LauncherLine> lines_;
  std::unique_ptr<CapturedProgram> launcher_;  // null unless open
};

}  // namespace lumowatt::freedesktop

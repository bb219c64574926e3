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

/// A line that stands for an item of the menu.
struct LauncherLine {
  std::string text;                             ///< without control characters
  std::optional<Choice> choice = std::nullopt;  ///< absent for one that is only read
};

/// The menu as lines in order, those of a submenu below its title. What is on has a mark before it.
std::vector<LauncherLine> launcherLines(const Menu& menu);

/// The menu in the user's launcher (fuzzel, rofi, dmenu, ...), for panels that show none.
class LauncherMenu {
 public:
  /// Calls `choose` with what the chosen line offers.
  LauncherMenu(sd_event* loop, std::function<void(const Choice&)> choose);

  /// Opens the first launcher that is installed with the menu. Nothing happens while one is open.
  /// False when none can be started: then the bell sounds, and the reason is on the standard error.
  bool show(const Menu& menu);

 private:
  void finish(std::string_view answer);

  sd_event* loop_;
  std::function<void(const Choice&)> choose_;
  std::vector<LauncherLine> lines_;
  std::unique_ptr<ReadProgram> launcher_;  // while it is open
};

}  // namespace lumowatt::freedesktop

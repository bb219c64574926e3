#include "platform/freedesktop/tray/panel_traits.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace lumowatt::freedesktop {

namespace {

struct Row {
  std::string_view process;  ///< "#" for a number
  PanelTraits traits;
};

constexpr auto rows = std::to_array<Row>({
    {"gnome-shell", {.form = TitleForm::label, .joinsLabel = true, .hasHighRows = true}},
    {"mate-panel", {.form = TitleForm::label, .joinsLabel = true}},
    {"notification-area-applet", {.form = TitleForm::label, .joinsLabel = true}},  // MATE's
    {"indicator-applet", {.form = TitleForm::label}},                              // MATE's
    {"ayatana-indicator", {.form = TitleForm::label}},  // in panels of Budgie, MATE and Xfce
    {"sfwbar", {.form = TitleForm::label}},
    {"cairo-dock", {.form = TitleForm::label}},
    {"waybar", {.form = TitleForm::wide}},
    {"xapp-sn-watcher", {.form = TitleForm::wide, .registersPaths = true}},  // Cinnamon
    {"panel-#-systray", {.addsOnTheLeft = true}},  // Xfce, whose trays are processes of their own
    {"swaybar", {.addsOnTheLeft = true, .hasNoMenus = true}},
    {"qtile", {.hasNoMenus = true}},
    {"ironbar", {.hasNoMenus = true}},
    {"dde-shell", {.hasNoMenus = true}},  // Deepin
    {"dde-dock", {.hasNoMenus = true}},
    {"quickshell", {.remembersToolTips = true}},
    {"qs", {.remembersToolTips = true}},
});

// What is longer the kernel cuts off (TASK_COMM_LEN in linux/sched.h).
constexpr std::size_t longestName = 15;

// NixOS starts a program "name" by a script, and calls it ".name-wrapped".
constexpr std::string_view wrappedSuffix = "-wrapped";

/// What follows the beginnings of both that match: the rest of `process`, and that of the pattern.
struct Rest {
  std::string_view process;
  std::string_view pattern;
};

Rest skipCommonPart(std::string_view process, std::string_view pattern) {
  while (!pattern.empty() && !process.empty()) {
    if (pattern.front() == '#') {
      const std::size_t digits = std::min(process.find_first_not_of("0123456789"), process.size());
      if (digits == 0) break;
      process.remove_prefix(digits);
    } else if (process.front() == pattern.front()) {
      process.remove_prefix(1);
    } else {
      break;
    }
    pattern.remove_prefix(1);
  }
  return {process, pattern};
}

bool matches(std::string_view process, std::string_view pattern) {
  const bool isCut = process.size() == longestName;
  const bool isWrapped = process.starts_with('.');
  Rest rest = skipCommonPart(process.substr(isWrapped ? 1 : 0), pattern);
  if (isWrapped && rest.pattern.empty()) rest = skipCommonPart(rest.process, wrappedSuffix);
  return rest.process.empty() && (rest.pattern.empty() || isCut);
}

}  // namespace

PanelTraits panelTraits(std::string_view process) {
  const auto* const row = std::ranges::find_if(
      rows, [process](const Row& known) { return matches(process, known.process); });
  return row == rows.end() ? PanelTraits{} : row->traits;
}

}  // namespace lumowatt::freedesktop

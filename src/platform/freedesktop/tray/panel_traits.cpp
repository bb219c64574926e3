#include "platform/freedesktop/tray/panel_traits.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace lumowatt::freedesktop {

namespace {

struct Row {
  std::string_view process;  ///< "#" matches a number
  PanelTraits traits;
};

constexpr auto rows = std::to_array<Row>({
    {"gnome-shell", {.form = TitleForm::label, .needsLabelSpacing = true, .hasHighRows = true}},
    {"mate-panel", {.form = TitleForm::label, .needsLabelSpacing = true}},
    {"notification-area-applet", {.form = TitleForm::label, .needsLabelSpacing = true}},  // MATE's
    {"indicator-applet", {.form = TitleForm::label}},                                     // MATE's
    {"ayatana-indicator", {.form = TitleForm::label}},  // in panels of Budgie, MATE and Xfce
    {"sfwbar", {.form = TitleForm::label}},
    {"cairo-dock", {.form = TitleForm::label}},
    {"waybar", {.form = TitleForm::wide}},
    {"xapp-sn-watcher", {.form = TitleForm::wide, .registersPaths = true}},  // Cinnamon
    {"panel-#-systray", {.addsOnTheLeft = true}},  // Xfce, where each tray is a process
    {"swaybar", {.addsOnTheLeft = true, .hasNoMenus = true}},
    {"qtile", {.hasNoMenus = true}},
    {"ironbar", {.hasNoMenus = true}},
    {"dde-shell", {.hasNoMenus = true}},  // Deepin
    {"dde-dock", {.hasNoMenus = true}},
    {"quickshell", {.remembersToolTips = true}},
    {"qs", {.remembersToolTips = true}},
});

// The kernel truncates longer names (TASK_COMM_LEN in linux/sched.h).
constexpr std::size_t maxNameLength = 15;

// On NixOS, a script "name" starts the program, which is named ".name-wrapped".
constexpr std::string_view wrappedSuffix = "-wrapped";

/// Remainders of a process name and of a pattern after their common beginning.
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
  const bool isTruncated = process.size() == maxNameLength;
  const bool isWrapped = process.starts_with('.');
  Rest rest = skipCommonPart(process.substr(isWrapped ? 1 : 0), pattern);
  if (isWrapped && rest.pattern.empty()) rest = skipCommonPart(rest.process, wrappedSuffix);
  return rest.process.empty() && (rest.pattern.empty() || isTruncated);
}

}  // namespace

PanelTraits panelTraits(std::string_view process) {
  const auto* const row = std::ranges::find_if(
      rows, [process](const Row& known) { return matches(process, known.process); });
  return row == rows.end() ? PanelTraits{} : row->traits;
}

}  // namespace lumowatt::freedesktop

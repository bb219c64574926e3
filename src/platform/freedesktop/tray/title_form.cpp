#include "platform/freedesktop/tray/title_form.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace lumowatt::freedesktop {

namespace {

struct Row {
  std::string_view process;  ///< "#" for a number
  TitleForm form;
};

constexpr auto rows = std::to_array<Row>({
    {"kded5", TitleForm::tiles},  // KDE Plasma
    {"kded6", TitleForm::tiles},
    {"lxqt-panel", TitleForm::tiles},
    {"panel-#-systray", TitleForm::tiles},  // Xfce, whose trays are processes of their own
    {"waybar", TitleForm::wide},
});

// What is longer the kernel cuts off (TASK_COMM_LEN in linux/sched.h).
constexpr std::size_t longestName = 15;

bool matches(std::string_view process, std::string_view pattern) {
  const bool isCut = process.size() == longestName;
  for (const char letter : pattern) {
    if (letter == '#') {
      const std::size_t end = process.find_first_not_of("0123456789");
      if (end == 0 || end == std::string_view::npos) return false;
      process.remove_prefix(end);
    } else if (process.empty()) {
      return isCut;
    } else if (process.front() == letter) {
      process.remove_prefix(1);
    } else {
      return false;
    }
  }
  return process.empty();
}

}  // namespace

TitleForm titleForm(std::string_view process) {
  const auto* const row = std::ranges::find_if(
      rows, [process](const Row& known) { return matches(process, known.process); });
  return row == rows.end() ? TitleForm::label : row->form;
}

}  // namespace lumowatt::freedesktop

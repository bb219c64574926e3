#include "platform/linux/desktop/title_form.h"

#include <algorithm>
#include <array>

namespace lumowatt::desktop {

namespace {

struct Row {
  std::string_view process;  ///< how its name begins
  TitleForm form;
};

constexpr std::array<Row, 4> rows{{
    {"kded", TitleForm::tiles},  // KDE Plasma: kded5, kded6
    {"lxqt-panel", TitleForm::tiles},
    {"panel-", TitleForm::tiles},  // Xfce: panel-8-systray, by the number of the applet
    {"waybar", TitleForm::wide},
}};

}  // namespace

TitleForm titleForm(std::string_view process) {
  const auto* const row = std::ranges::find_if(
      rows, [process](const Row& known) { return process.starts_with(known.process); });
  return row == rows.end() ? TitleForm::label : row->form;
}

}  // namespace lumowatt::desktop

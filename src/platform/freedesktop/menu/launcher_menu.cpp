#include "platform/freedesktop/menu/launcher_menu.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "base/error_report.h"
#include "platform/freedesktop/user/commands.h"

namespace lumowatt::freedesktop {

namespace {

/// Visitor that appends the lines of a menu item.
class LineMaker {
 public:
  explicit LineMaker(std::vector<LauncherLine>& lines) : lines_(lines) {}

  void operator()(const MenuSeparator&) const {}
  void operator()(const MenuLine& line) const { add(line.title); }
  void operator()(const MenuChart& chart) const {
    add(chart.text, chart.isEnabled ? std::optional(Choice{Action::showChart}) : std::nullopt);
  }
  void operator()(const MenuCommand& command) const { add(command.title, command.choice); }
  void operator()(const MenuCheckMark& mark) const {
    add((mark.isOn ? "✓ " : "") + mark.title, mark.choice);
  }
  void operator()(const MenuRadioMark& mark) const {
    add((mark.isOn ? "• " : "") + mark.title, mark.choice);
  }
  void operator()(const Submenu& submenu) const {
    add(submenu.title);
    for (const MenuItem& item : submenu.items) std::visit(*this, item);
  }

 private:
  /// Appends a line, with spaces instead of control characters: launchers treat some control
  /// characters as the end of the line or as syntax.
  void add(std::string text, std::optional<Choice> choice = std::nullopt) const {
    const auto isControl = [](unsigned char letter) { return letter < ' ' || letter == 0x7F; };
    std::ranges::replace_if(text, isControl, ' ');
    lines_.push_back({std::move(text), choice});
  }

  std::vector<LauncherLine>& lines_;
};

}  // namespace

std::vector<LauncherLine> launcherLines(const Menu& menu) {
  std::vector<LauncherLine> lines;
  for (const MenuItem& item : menu) std::visit(LineMaker(lines), item);
  return lines;
}

LauncherMenu::LauncherMenu(sd_event* loop, std::function<void(const Choice&)> choose)
    : loop_(loop), choose_(std::move(choose)) {}

bool LauncherMenu::show(const Menu& menu) {
  if (launcher_) return true;
  lines_ = launcherLines(menu);
  std::string input;
  for (const LauncherLine& line : lines_) input.append(line.text).append("\n");
  launcher_ = CapturedProgram::start(
      loop_, launcherCommands(), input,
      [this](const std::optional<std::string>& output) { finish(output.value_or("")); });
  if (launcher_) return true;
  lines_ = {};
  reportError("cannot show the menu", "no launcher such as fuzzel, rofi or dmenu can be started");
  startDetached(loop_, bellCommands());
  return false;
}

void LauncherMenu::finish(std::string_view output) {
  if (output.ends_with('\n')) output.remove_suffix(1);
  const auto line = std::ranges::find_if(lines_, [output](const LauncherLine& candidate) {
    return candidate.choice && candidate.text == output;
  });
  const std::optional<Choice> choice = line == lines_.end() ? std::nullopt : line->choice;
  lines_ = {};
  launcher_.reset();
  if (choice) choose_(*choice);
}

}  // namespace lumowatt::freedesktop

#include "platform/freedesktop/menu/compact_menu.h"

#include <string>
#include <utility>
#include <variant>

namespace lumowatt::freedesktop {

namespace {

/// Visitor that copies the items of a menu into a menu with fewer rows.
class Compaction {
 public:
  void operator()(const MenuSeparator& separator) {
    endGroup();
    menu_.emplace_back(separator);
  }
  void operator()(const MenuLine& line) {
    const std::string above = removeLineAbove();
    menu_.emplace_back(MenuLine{above.empty() ? line.title : above + "\n" + line.title});
  }
  void operator()(MenuChart chart) {
    const std::string above = removeLineAbove();
    if (!above.empty()) chart.text.insert(0, above + "\n");
    menu_.emplace_back(std::move(chart));
  }
  void operator()(const Submenu& submenu) {
    menu_.emplace_back(submenu);
    hasSubmenu_ = true;
  }
  template <typename Choosable>
  void operator()(const Choosable& item) {
    addToReport(removeLineAbove());
    (hasSubmenu_ ? more_ : menu_).emplace_back(item);
  }

  Menu finish() && {
    endGroup();
    return std::move(menu_);
  }

 private:
  /// Removes the last item if it is a line, and returns its title; otherwise returns "".
  std::string removeLineAbove() {
    auto* const line = menu_.empty() ? nullptr : std::get_if<MenuLine>(&menu_.back());
    if (line == nullptr) return "";
    std::string title = std::move(line->title);
    menu_.pop_back();
    return title;
  }

  void addToReport(const std::string& line) {
    if (line.empty()) return;
    auto* const report = menu_.empty() ? nullptr : std::get_if<MenuLine>(&menu_.front());
    if (report == nullptr) {
      menu_.emplace_back(MenuLine{line});
    } else {
      report->title.append("\n").append(line);
    }
  }

  void endGroup() {
    if (!more_.empty()) menu_.emplace_back(Submenu{"More", std::exchange(more_, {})});
    hasSubmenu_ = false;
  }

  Menu menu_;
  Menu more_;                // items for the submenu "More" of the current group
  bool hasSubmenu_ = false;  // whether the current group contains a submenu so far
};

}  // namespace

Menu compactMenu(const Menu& menu) {
  Compaction compaction;
  for (const MenuItem& item : menu) std::visit(compaction, item);
  return std::move(compaction).finish();
}

}  // namespace lumowatt::freedesktop

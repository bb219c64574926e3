#include "written_menu.h"

#include <optional>

namespace lumowatt::fuzz {

namespace {

constexpr std::size_t mostLetters = 60;  // so that ids of items and of those below them differ

/// The item of a letter; absent for another sign.
std::optional<MenuItem> itemOf(char letter) {
  MenuItem item{.title = std::string("item ") + letter, .isEnabled = letter >= 'a'};
  switch (letter) {
    case '-':
      return MenuItem{.isSeparator = true};
    case 'l':
    case 'L':
      return item;
    case 'c':
    case 'C':
      item.action = Action::copyDetails;
      item.keyEquivalent = "c";
      return item;
    case 't':
    case 'T':
      item.action = Action::toggleColor;
      return item;
    case 'r':
    case 'R':
      item.action = Action::pick;
      item.isOn = true;
      return item;
    case 'v':
    case 'V':
      item.view = ItemView{.frame = {}, .content = {.frame = {}, .image = {Symbol{}}}};
      return item;
    default:
      return std::nullopt;
  }
}

}  // namespace

Menu menuOf(std::string_view text) {
  Menu menu;
  bool isBelow = false;
  for (const char letter : text.substr(0, mostLetters)) {
    Menu& list = isBelow ? menu.back().submenu : menu;
    if (letter == '(') isBelow = !menu.empty() && !menu.back().isSeparator;
    if (letter == ')') isBelow = false;
    if (letter >= '0' && letter <= '9' && !list.empty()) list.back().title += letter;
    const auto item = itemOf(letter);
    if (item && !(isBelow && item->isSeparator)) list.push_back(*item);
  }
  if (menu.empty()) menu.push_back({.title = "none"});
  return menu;
}

}  // namespace lumowatt::fuzz

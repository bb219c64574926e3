#include "menu_parser.h"

#include <optional>
#include <utility>

namespace lumowatt::fuzz {

namespace {

// Limits the number of items: in larger menus, ids of items and of submenu items would collide.
constexpr std::size_t maxLetters = 60;

/// Returns the item for a letter. The title of the item starts with `tag`. If the item is a choice,
/// `tag` is also the tag of the choice. Returns nothing for other characters.
std::optional<MenuItem> parseItem(char letter, std::int64_t tag) {
  const std::string title = std::to_string(tag) + " item " + letter;
  switch (letter) {
    case '-':
      return MenuSeparator{};
    case 'l':
      return MenuLine{title};
    case 'c':
      return MenuCommand{title, {Action::copyDetails, tag}, "c"};
    case 't':
      return MenuCheckMark{title, {Action::toggleColor, tag}, false};
    case 'r':
      return MenuRadioMark{title, {Action::pick, tag}, true};
    case 's':
      return Submenu{title, {}};
    case 'v':
    case 'V':
      return MenuChart{.view = {},
                       .text = "",
                       .description = title,
                       .isEnabled = letter == 'v',
                       .picture = nullptr};
    default:
      return std::nullopt;
  }
}

void addToTitle(MenuItem& item, char digit) {
  std::visit(
      [digit](auto& kind) {
        if constexpr (requires { kind.title; }) kind.title += digit;
      },
      item);
}

}  // namespace

Menu parseMenu(std::string_view text) {
  Menu menu;
  std::int64_t tag = 0;
  for (const char letter : text.substr(0, maxLetters)) {
    auto* const submenu = menu.empty() ? nullptr : std::get_if<Submenu>(&menu.back());
    if (letter >= '0' && letter <= '9' && !menu.empty()) addToTitle(menu.back(), letter);
    auto item = parseItem(letter, tag);
    if (!item) continue;
    ++tag;
    if (std::holds_alternative<MenuRadioMark>(*item) && submenu != nullptr) {
      submenu->items.push_back(std::move(*item));
    } else {
      menu.push_back(std::move(*item));
    }
  }
  if (menu.empty()) menu.emplace_back(MenuLine{"none"});
  return menu;
}

}  // namespace lumowatt::fuzz

#include "platform/freedesktop/menu/layout.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>
#include <variant>

namespace lumowatt::freedesktop {

namespace {

constexpr std::int32_t groupSize = 100;

std::string escapeUnderscores(std::string_view text) {
  std::string label;
  for (const char letter : text) label.append(letter == '_' ? 2 : 1, letter);
  return label;
}

/// Visitor that returns the entry of a menu item.
struct EntryMaker {
  std::int32_t id;

  MenuEntry operator()(const MenuSeparator&) const { return {.id = id, .isSeparator = true}; }
  MenuEntry operator()(const MenuLine& line) const {
    return {.id = id, .label = escapeUnderscores(line.title), .isEnabled = false};
  }
  MenuEntry operator()(const MenuChart& chart) const {
    return {.id = id,
            .label = escapeUnderscores(chart.text),
            .description = chart.description,
            .isEnabled = chart.isEnabled};
  }
  MenuEntry operator()(const MenuCommand& command) const {
    const std::string& key = command.keyEquivalent;
    return {.id = id,
            .label = escapeUnderscores(command.title),
            .shortcut = key.empty() ? '\0' : key.front()};
  }
  MenuEntry operator()(const MenuCheckMark& mark) const {
    return toggle(mark.title, MenuEntry::Toggle::checkmark, mark.isOn);
  }
  MenuEntry operator()(const MenuRadioMark& mark) const {
    return toggle(mark.title, MenuEntry::Toggle::radio, mark.isOn);
  }
  MenuEntry operator()(const Submenu& submenu) const {
    MenuEntry entry{
        .id = id, .label = escapeUnderscores(submenu.title), .isEnabled = !submenu.items.empty()};
    std::int32_t child = (id + groupSize) * groupSize;  // greater than the ids of top-level items
    for (const MenuItem& item : submenu.items) {
      entry.children.push_back(std::visit(EntryMaker{++child}, item));
    }
    return entry;
  }

 private:
  MenuEntry toggle(std::string_view title, MenuEntry::Toggle type, bool isOn) const {
    return {.id = id, .label = escapeUnderscores(title), .toggle = type, .isOn = isOn};
  }
};

/// Returns the items of a menu with their ids, in order: 1, 2, ... in the first group, 100 for the
/// separator after it, 101, 102, ... in the second group. Omits the items after the 99th of a
/// group.
std::vector<std::pair<std::int32_t, const MenuItem*>> numberItems(const Menu& menu) {
  std::vector<std::pair<std::int32_t, const MenuItem*>> items;
  std::int32_t group = 0;
  std::int32_t position = 0;
  for (const MenuItem& item : menu) {
    if (std::holds_alternative<MenuSeparator>(item)) {
      ++group;
      position = 0;
      items.emplace_back(group * groupSize, &item);
    } else if (++position < groupSize) {
      items.emplace_back(group * groupSize + position, &item);
    }
  }
  return items;
}

const MenuEntry* findBelow(const MenuEntry& parent, std::int32_t id) {
  for (const MenuEntry& child : parent.children) {
    if (child.id == id) return &child;
    if (const MenuEntry* const found = findBelow(child, id)) return found;
  }
  return nullptr;
}

void visitAll(const MenuEntry& entry, const std::function<void(const MenuEntry&)>& visit) {
  visit(entry);
  for (const MenuEntry& child : entry.children) visitAll(child, visit);
}

MenuEntry withoutChildren(MenuEntry entry) {
  entry.children.clear();
  return entry;
}

/// Adds the differences between the children of `before` and the children of `now` to `change`.
void compare(const MenuEntry& before, const MenuEntry& now, MenuLayout::Change& change) {
  if (now.children.size() != before.children.size()) change.isStructural = true;
  for (const MenuEntry& child : now.children) {
    const auto old = std::ranges::find(before.children, child.id, &MenuEntry::id);
    if (old == before.children.end()) {
      change.isStructural = true;
      continue;
    }
    if (withoutChildren(*old) != withoutChildren(child)) {
      change.entries.push_back(withoutChildren(child));
    }
    compare(*old, child, change);
  }
}

}  // namespace

MenuLayout::Change MenuLayout::present(const Menu& menu) {
  choices_.clear();
  const MenuEntry before = std::exchange(root_, MenuEntry{.id = 0});
  std::map<std::int32_t, MenuEntry> entries;
  for (const MenuEntry& old : before.children) {
    entries[old.id] = old;
    entries[old.id].isVisible = false;
  }
  for (const auto& [id, item] : numberItems(menu)) {
    entries[id] = std::visit(EntryMaker{id}, *item);
    addChoices(entries[id], *item);
  }
  for (auto& [id, entry] : entries) root_.children.push_back(std::move(entry));

  Change change;
  compare(before, root_, change);
  return change;
}

void MenuLayout::addChoices(const MenuEntry& entry, const MenuItem& item) {
  if (const Choice* const choice = choiceOf(item)) choices_.emplace_back(entry.id, *choice);
  const auto* const chart = std::get_if<MenuChart>(&item);
  if (chart != nullptr && chart->isEnabled) {
    choices_.emplace_back(entry.id, Choice{Action::showChart});
  }
  if (const auto* const submenu = std::get_if<Submenu>(&item)) {
    for (std::size_t i = 0; i < submenu->items.size(); ++i) {
      addChoices(entry.children[i], submenu->items[i]);
    }
  }
}

const MenuEntry* MenuLayout::find(std::int32_t id) const {
  return id == root_.id ? &root_ : findBelow(root_, id);
}

void MenuLayout::forEach(const std::function<void(const MenuEntry&)>& visit) const {
  visitAll(root_, visit);
}

std::optional<Choice> MenuLayout::choice(std::int32_t id) const {
  const auto found = std::ranges::find(choices_, id, [](const auto& each) { return each.first; });
  return found != choices_.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace lumowatt::freedesktop

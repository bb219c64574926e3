#include "platform/freedesktop/menu/layout.h"

#include <algorithm>
#include <utility>

namespace lumowatt::freedesktop {

namespace {

constexpr std::int32_t groupSize = 100;

std::string withoutAccessKeys(std::string_view text) {
  std::string label;
  for (const char letter : text) label.append(letter == '_' ? 2 : 1, letter);
  return label;
}

MenuEntry::Toggle toggle(Action action) {
  switch (action) {
    case Action::pick:
      return MenuEntry::Toggle::radio;
    case Action::toggleColor:
    case Action::toggleAnimate:
    case Action::toggleLogin:
      return MenuEntry::Toggle::checkmark;
    default:
      return MenuEntry::Toggle::none;
  }
}

MenuEntry entryOf(const MenuItem& item, std::int32_t id, std::string_view chart) {
  MenuEntry entry{.id = id};
  if (item.isSeparator) {
    entry.isSeparator = true;
    return entry;
  }
  entry.label = withoutAccessKeys(item.view ? chart : item.title);
  const bool leadsSomewhere =
      item.action != Action::none || !item.submenu.empty() || item.view.has_value();
  entry.isEnabled = item.isEnabled && leadsSomewhere;
  entry.toggle = toggle(item.action);
  entry.isOn = item.isOn;
  if (!item.keyEquivalent.empty()) entry.shortcut = item.keyEquivalent.front();
  std::int32_t child = (id + groupSize) * groupSize;  // beyond the ids of the menu itself
  for (const MenuItem& choice : item.submenu) {
    entry.children.push_back(entryOf(choice, ++child, chart));
  }
  return entry;
}

/// The items of a menu with their ids, in order: 1, 2, ... in the first group, 100 the separator
/// after it, 101, 102, ... in the second. A group of 100 items or more ends at its 99th.
std::map<std::int32_t, const MenuItem*> numbered(const Menu& menu) {
  std::map<std::int32_t, const MenuItem*> items;
  std::int32_t group = 0;
  std::int32_t place = 0;
  for (const MenuItem& item : menu) {
    if (item.isSeparator) {
      ++group;
      place = 0;
      items[group * groupSize] = &item;
    } else if (++place < groupSize) {
      items[group * groupSize + place] = &item;
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

/// Notes how the children of `now` differ from those of `before`.
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

MenuLayout::Change MenuLayout::present(const Menu& menu, std::string_view chart) {
  const MenuEntry before = std::exchange(root_, MenuEntry{.id = 0});
  items_.clear();
  std::map<std::int32_t, MenuEntry> entries;
  for (const MenuEntry& old : before.children) {
    entries[old.id] = old;
    entries[old.id].isVisible = false;
  }
  for (const auto& [id, item] : numbered(menu)) {
    entries[id] = entryOf(*item, id, chart);
    items_[id] = *item;
    if (!item->isEnabled) continue;  // nobody gets to what is below it
    for (std::size_t i = 0; i < item->submenu.size(); ++i) {
      items_[entries[id].children[i].id] = item->submenu[i];
    }
  }
  for (auto& [id, entry] : entries) root_.children.push_back(std::move(entry));

  Change change;
  compare(before, root_, change);
  return change;
}

const MenuEntry* MenuLayout::find(std::int32_t id) const {
  return id == root_.id ? &root_ : findBelow(root_, id);
}

void MenuLayout::forEach(const std::function<void(const MenuEntry&)>& visit) const {
  visitAll(root_, visit);
}

const MenuItem* MenuLayout::choosable(std::int32_t id) const {
  const MenuEntry* const entry = find(id);
  const auto item = items_.find(id);
  if (entry == nullptr || item == items_.end()) return nullptr;
  const bool canBe = entry->isEnabled && !entry->isSeparator && item->second.submenu.empty();
  return canBe ? &item->second : nullptr;
}

}  // namespace lumowatt::freedesktop

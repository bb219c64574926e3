#include "platform/freedesktop/menu/layout.h"

#include <gtest/gtest.h>

#include <set>

#include "menubar/status_menu.h"

namespace lumowatt::freedesktop {

namespace {

using Ids = std::vector<std::int32_t>;

MenuContents contents() {
  return {.reading = {},
          .history = {},
          .preferences = {.animate = false},
          .opensAtLogin = false,
          .version = "1.0.0"};
}

/// Returns the menu of a reading with seven lines instead of the usual six.
Menu longerMenu() {
  MenuContents menu = contents();
  menu.reading.temperatureC = 30.0;
  return statusMenu(menu);
}

Menu menuWithChart() {
  MenuContents menu = contents();
  menu.history = {{0.0, 50}, {30.0, 51}};
  return statusMenu(menu);
}

Ids ids(const std::vector<MenuEntry>& entries) {
  Ids all;
  all.reserve(entries.size());
  for (const MenuEntry& entry : entries) all.push_back(entry.id);
  return all;
}

class MenuLayoutTest : public testing::Test {
 protected:
  const MenuEntry& entry(std::int32_t id) const {
    static const MenuEntry none;
    const MenuEntry* const found = layout.find(id);
    EXPECT_NE(found, nullptr) << id;
    return found != nullptr ? *found : none;
  }

  MenuLayout layout;
};

}  // namespace

TEST_F(MenuLayoutTest, IsInitiallyEmpty) {
  EXPECT_EQ(layout.root().id, 0);
  EXPECT_TRUE(layout.root().children.empty());
  EXPECT_EQ(layout.find(0), &layout.root());
  EXPECT_EQ(layout.find(1), nullptr);
}

TEST_F(MenuLayoutTest, NumbersItemsByGroupAndPosition) {
  const auto change = layout.present(statusMenu(contents()));
  EXPECT_TRUE(change.isStructural);
  EXPECT_EQ(ids(layout.root().children), (Ids{1, 2, 3, 4, 5, 6, 100, 101, 102, 200, 201, 202, 203,
                                              204, 205, 206, 300, 301, 302}));
  EXPECT_EQ(ids(entry(201).children), (Ids{30101, 30102, 30103, 30104}));
}

TEST_F(MenuLayoutTest, PresentsEachKindOfItem) {
  layout.present(statusMenu(contents()));
  using Toggle = MenuEntry::Toggle;
  EXPECT_EQ(entry(1), (MenuEntry{.id = 1, .label = "On battery", .isEnabled = false}));
  EXPECT_EQ(entry(100), (MenuEntry{.id = 100, .isSeparator = true}));
  EXPECT_EQ(entry(101),
            (MenuEntry{.id = 101, .label = "Charge over the last hour", .isEnabled = false}));
  EXPECT_EQ(entry(102), (MenuEntry{.id = 102,
                                   .label = "Collecting history…",
                                   .description = "Charge over the last hour: collecting history",
                                   .isEnabled = false}));
  EXPECT_TRUE(entry(201).isEnabled);
  EXPECT_EQ(entry(30101), (MenuEntry{.id = 30101, .label = "Percent", .toggle = Toggle::radio}));
  EXPECT_EQ(entry(30102), (MenuEntry{.id = 30102,
                                     .label = "Percent and battery power",
                                     .toggle = Toggle::radio,
                                     .isOn = true}));
  EXPECT_EQ(entry(202),
            (MenuEntry{.id = 202, .label = "Colors", .toggle = Toggle::checkmark, .isOn = true}));
  EXPECT_EQ(entry(203),
            (MenuEntry{.id = 203, .label = "Charging animation", .toggle = Toggle::checkmark}));
  EXPECT_EQ(entry(204), (MenuEntry{.id = 204, .label = "Copy details", .shortcut = 'c'}));
  EXPECT_EQ(entry(206), (MenuEntry{.id = 206, .label = "Battery settings…"}));
  EXPECT_EQ(entry(302), (MenuEntry{.id = 302, .label = "Quit Lumowatt", .shortcut = 'q'}));
}

TEST_F(MenuLayoutTest, VisitsParentsBeforeChildren) {
  layout.present(
      {Submenu{"first", {MenuRadioMark{"below", {Action::pick}, false}}}, MenuLine{"second"}});
  Ids visited;
  layout.forEach([&](const MenuEntry& visitedEntry) { visited.push_back(visitedEntry.id); });
  EXPECT_EQ(visited, (Ids{0, 1, 10101, 2}));
}

TEST_F(MenuLayoutTest, DoublesUnderscores) {
  layout.present({MenuCommand{"a_b__c", {Action::copyDetails}}});
  EXPECT_EQ(entry(1).label, "a__b____c");
}

TEST_F(MenuLayoutTest, ReportsNoChangesForAnUnchangedMenu) {
  layout.present(statusMenu(contents()));
  const MenuEntry before = layout.root();
  const auto change = layout.present(statusMenu(contents()));
  EXPECT_FALSE(change.isStructural);
  EXPECT_TRUE(change.entries.empty());
  EXPECT_EQ(layout.root(), before);
}

TEST_F(MenuLayoutTest, ReportsChangedItems) {
  layout.present(statusMenu(contents()));
  MenuContents menu = contents();
  menu.preferences.useColor = false;
  menu.preferences.mode = Mode::all;
  menu.reading.percent = 50;
  menu.history = {{0.0, 50}, {60.0, 50}};
  const auto change = layout.present(statusMenu(menu));
  EXPECT_FALSE(change.isStructural);
  EXPECT_EQ(ids(change.entries), (Ids{2, 102, 30102, 30104, 202}));
  EXPECT_EQ(change.entries[0].label, "Charge: 50% (0 of 0 mAh)");
  EXPECT_FALSE(change.entries[2].isOn);
  EXPECT_TRUE(change.entries[3].isOn);
}

TEST_F(MenuLayoutTest, AddsAnItemForANewLineAndPreservesOtherIds) {
  layout.present(statusMenu(contents()));
  const auto change = layout.present(longerMenu());
  EXPECT_TRUE(change.isStructural);
  EXPECT_TRUE(change.entries.empty());
  EXPECT_EQ(ids(layout.root().children).at(6), 7);
  EXPECT_EQ(entry(7).label, "Temperature: 30.0 °C");
  EXPECT_EQ(entry(204).label, "Copy details");
}

TEST_F(MenuLayoutTest, HidesTheItemOfARemovedLineUntilTheLineReappears) {
  layout.present(longerMenu());
  auto change = layout.present(statusMenu(contents()));
  EXPECT_FALSE(change.isStructural);
  EXPECT_EQ(ids(change.entries), Ids{7});
  EXPECT_FALSE(entry(7).isVisible);
  change = layout.present(longerMenu());
  EXPECT_FALSE(change.isStructural);
  EXPECT_EQ(ids(change.entries), Ids{7});
  EXPECT_TRUE(entry(7).isVisible);
}

TEST_F(MenuLayoutTest, HidesAllItemsExceptTheMessageIfThereIsNoBattery) {
  layout.present(statusMenu(contents()));
  layout.present(statusMenuWithoutBattery());
  for (const MenuEntry& child : layout.root().children) {
    EXPECT_EQ(child.isVisible, child.id == 1) << child.id;
  }
  EXPECT_EQ(entry(1).label, "No battery found");
  EXPECT_FALSE(entry(1).isEnabled);
  for (const MenuEntry& child : layout.root().children) {
    EXPECT_FALSE(layout.choice(child.id)) << child.id;
  }
  EXPECT_FALSE(layout.choice(30102)) << "below an invisible item";
}

TEST_F(MenuLayoutTest, EnablesTheChartOnceThereAreSamples) {
  layout.present(statusMenu(contents()));
  EXPECT_FALSE(entry(102).isEnabled);
  EXPECT_FALSE(layout.choice(102));
  layout.present(menuWithChart());
  EXPECT_TRUE(entry(102).isEnabled);
  EXPECT_EQ(entry(102).description, "Charge over the last hour: from 50 to 51 percent");
  EXPECT_EQ(layout.choice(102)->action, Action::showChart);
}

TEST_F(MenuLayoutTest, OffersChoicesForEnabledItemsOnly) {
  layout.present(menuWithChart());
  std::set<std::int32_t> choosable;
  for (std::int32_t id = -10; id < 40000; ++id) {
    if (layout.choice(id)) choosable.insert(id);
  }
  EXPECT_EQ(choosable, (std::set<std::int32_t>{102, 202, 203, 204, 205, 206, 302, 30101, 30102,
                                               30103, 30104}));
  EXPECT_EQ(layout.choice(204)->action, Action::copyDetails);
  EXPECT_EQ(layout.choice(30104)->tag, 3);
}

TEST_F(MenuLayoutTest, DisablesASubmenuWithoutItems) {
  layout.present({Submenu{"Choices", {}}});
  EXPECT_FALSE(entry(1).isEnabled);
}

TEST_F(MenuLayoutTest, OmitsItemsAfterThe99thOfAGroup) {
  Menu menu(150, MenuCommand{"Command", {Action::terminate}});
  menu.emplace_back(MenuSeparator{});
  menu.emplace_back(MenuCommand{"Quit", {Action::terminate}});
  layout.present(menu);
  EXPECT_EQ(layout.root().children.size(), 99U + 2U);
  EXPECT_TRUE(entry(100).isSeparator);
  EXPECT_FALSE(layout.choice(100));
  EXPECT_EQ(entry(101).label, "Quit");
}

}  // namespace lumowatt::freedesktop

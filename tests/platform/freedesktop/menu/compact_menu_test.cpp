#include "platform/freedesktop/menu/compact_menu.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "platform/freedesktop/menu/example_menu.h"
#include "platform/freedesktop/menu/layout.h"

namespace lumowatt::freedesktop {

namespace {

using Texts = std::vector<std::string>;

/// Returns the labels of the rows in the compact form of a menu. The rows of a submenu follow the
/// submenu's label.
Texts rows(const Menu& menu) {
  MenuLayout layout;
  layout.present(compactMenu(menu));
  Texts texts;
  layout.forEach([&](const MenuEntry& entry) {
    if (entry.id != 0) texts.push_back(entry.isSeparator ? "-" : entry.label);
  });
  return texts;
}

}  // namespace

TEST(CompactMenu, ConsistsOfReportChartTwoSubmenusAndQuit) {
  EXPECT_EQ(rows(exampleMenu),
            (Texts{"64%, discharging\nCycle count: 12\nLumowatt 1.0, by Fernhollow", "-",
                   "Charge over the last hour\n▁▂▃ 60–64%", "-", "Menu bar shows", "Percent",
                   "Percent and battery power", "More", "Colors", "Charging animation",
                   "Copy details", "-", "Quit Lumowatt"}));
}

TEST(CompactMenu, OffersTheSameChoicesAsTheMenu) {
  std::multiset<std::pair<Action, std::int64_t>> offered;
  std::multiset<std::pair<Action, std::int64_t>> offeredCompact;
  MenuLayout whole;
  MenuLayout compact;
  whole.present(exampleMenu);
  compact.present(compactMenu(exampleMenu));
  const auto insertChoices = [](const MenuLayout& layout, auto& choices) {
    layout.forEach([&](const MenuEntry& entry) {
      if (const auto choice = layout.choice(entry.id)) choices.emplace(choice->action, choice->tag);
    });
  };
  insertChoices(whole, offered);
  insertChoices(compact, offeredCompact);
  EXPECT_EQ(offered.size(), 7U);
  EXPECT_EQ(offeredCompact, offered);
}

TEST(CompactMenu, PreservesCheckMarksAndTheDescriptionOfTheChart) {
  MenuLayout layout;
  layout.present(compactMenu(
      {MenuChart{
           .view = {}, .text = "▁▂", .description = "words", .isEnabled = true, .picture = {}},
       MenuSeparator{}, Submenu{"first", {}}, MenuCheckMark{"on", {Action::toggleColor}, true}}));
  const std::vector<MenuEntry>& entries = layout.root().children;
  ASSERT_EQ(entries.size(), 4U);
  EXPECT_EQ(entries[0].description, "words");
  ASSERT_EQ(entries[3].children.size(), 1U);
  EXPECT_EQ(entries[3].children[0].toggle, MenuEntry::Toggle::checkmark);
  EXPECT_TRUE(entries[3].children[0].isOn);
}

TEST(CompactMenu, PreservesCommandsAndSingleLines) {
  EXPECT_EQ(rows({MenuLine{"No battery found"}}), Texts{"No battery found"});
  EXPECT_EQ(rows({MenuCommand{"Copy", {Action::copyDetails}}, MenuLine{"about"},
                  MenuCommand{"Quit", {Action::terminate}}}),
            (Texts{"Copy", "about", "Quit"}));
  EXPECT_EQ(rows({}), Texts{});
}

}  // namespace lumowatt::freedesktop

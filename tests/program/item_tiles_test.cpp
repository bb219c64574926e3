// The title as tiles, in panels that show only icons.

#include <algorithm>
#include <csignal>

#include "program/title_fixture.h"
#include "support/open_counter.h"

namespace lumowatt {

namespace {

/// Counts the curves in an icon's paths.
std::ptrdiff_t curveCount(const std::string& svg) { return std::ranges::count(svg, 'C'); }

/// Fixture for the tiles of the title.
class TitleTiles : public TilesTest {};

}  // namespace

TEST_F(TitleTiles, AreSeparateItemsBesideTheGlyph) {
  startWithTile();
  ASSERT_EQ(panel->registered.size(), 2U);
  EXPECT_EQ(panel->property("Id", connection(0)), "Lumowatt");
  EXPECT_EQ(panel->property("Title", connection(0)), "Lumowatt");
  EXPECT_EQ(panel->property("IconName", connection(0)), "lumowatt-battery-100percent-symbolic");
  EXPECT_EQ(panel->property("Id", connection(1)), "Lumowatt");
  EXPECT_EQ(panel->property("Title", connection(1)), "Lumowatt title");
  EXPECT_EQ(panel->property("IconThemePath", connection(1)), icons().string());
  EXPECT_EQ(iconFiles(), Names{icon(1)});
  EXPECT_EQ(pathCount(iconContents(1)), 2);
}

TEST_F(TitleTiles, AreRegisteredOnceThePanelHasReadThePreviousItem) {
  user.write("config/lumowatt/preferences", "mode=3\n");
  panel->readsItems = false;
  start();
  const OpenCounter counter;
  counter.watch(machine.powerSupplyFolder() / "BAT0");
  panel->property("Title", connection(0));
  EXPECT_EQ(panel->registered.size(), 1U);
  panel->property("IconName", connection(0));
  panel->waitForItems(2);
  panel->property("Title", connection(1));
  EXPECT_EQ(panel->registered.size(), 2U);
  icon(1);
  panel->waitForItems(3);
  EXPECT_TRUE(counter.opened().empty()) << "registration does not wait for the next reading";
}

TEST_F(TitleTiles, AreRegisteredEvenIfThePanelDoesNotReadThem) {
  user.write("config/lumowatt/preferences", "mode=3\n");
  panel->readsItems = false;
  start();
  panel->waitForItems(3);
}

TEST_F(TitleTiles, HaveTheSameTextsAsTheGlyph) {
  startWithTile();
  for (const char* property : {"ToolTip", "XAyatanaLabel", "IconAccessibleDesc", "Category",
                               "Status", "ItemIsMenu", "Menu"}) {
    EXPECT_EQ(panel->property(property, connection(1)), panel->property(property, connection(0)))
        << property;
  }
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  EXPECT_EQ(panel->property("ToolTip", connection(1)).at(2), "98% ▼ −6.1 W");
  EXPECT_EQ(panel->property("IconAccessibleDesc", connection(1)),
            "Battery 98 percent, On battery, −6.1 W");
}

TEST_F(TitleTiles, HaveTheSameMenuAsTheGlyph) {
  startWithTile();
  const auto layout = [this](std::size_t index) {
    sd_bus_message* const message =
        panel->newMethodCall(connection(index), "/MenuBar", "com.canonical.dbusmenu", "GetLayout");
    EXPECT_GE(sd_bus_message_append(message, "iias", 0, -1, 0), 0);
    return panel->call(message).values.at(1);
  };
  EXPECT_EQ(layout(1), layout(0));
  EXPECT_EQ(layout(1).at(2).size(), 22U);
}

TEST_F(TitleTiles, ReplaceTheirIconWhenTheTextChanges) {
  startWithTile();
  const std::string before = icon(1);
  panel->clearSignals();
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  panel->waitForSignal("NewIcon");
  EXPECT_NE(icon(1), before);
  EXPECT_EQ(iconFiles(), Names{icon(1)}) << "the previous icon is removed";
  const auto tileSignals = panel->signalNames(connection(1));
  EXPECT_EQ(std::ranges::count(tileSignals, "NewIcon"), 1);
  const auto glyphSignals = panel->signalNames(connection(0));
  EXPECT_EQ(std::ranges::count(glyphSignals, "NewIcon"), 0);
}

TEST_F(TitleTiles, ReuseTheIconNameOfAnEarlierText) {
  startWithTile();
  const std::string before = icon(1);
  for (const char* power : {"6100000", "4830000"}) {
    panel->clearSignals();
    machine.set("BAT0/power_now", power);
    panel->open();
    panel->waitForSignal("NewIcon");
  }
  EXPECT_EQ(icon(1), before);
}

TEST_F(TitleTiles, EmitNoSignalsWhenNothingChanged) {
  startWithTile();
  panel->open();
  panel->clearSignals();
  panel->open();
  panel->open();
  EXPECT_EQ(panel->signalNames(), Names{});
}

TEST_F(TitleTiles, ChangeImmediatelyWithTheMode) {
  startWithTile();
  std::vector<std::string> icons{icon(1)};
  for (const int mode : {menu_id::percent, menu_id::percentTime, menu_id::percentPower}) {
    panel->clearSignals();
    chooseMode(mode);
    panel->waitForSignal("NewIcon");
    icons.push_back(icon(1));
    EXPECT_EQ(panel->registered.size(), 2U);
  }
  EXPECT_NE(icons[1], icons[0]);
  EXPECT_NE(icons[2], icons[0]);
  EXPECT_NE(icons[2], icons[1]);
  EXPECT_EQ(icons[3], icons[0]);
}

TEST_F(TitleTiles, AreTwoIfTheTitleShowsAllFigures) {
  startWithTile();
  chooseMode(menu_id::allFigures);
  panel->waitForItems(3);
  EXPECT_EQ(panel->property("Id", connection(2)), "Lumowatt") << "the same id for all items";
  EXPECT_EQ(panel->property("Title", connection(2)), "Lumowatt title 2");
  Names expected{icon(1), icon(2)};
  Names actual = iconFiles();
  std::ranges::sort(expected);
  std::ranges::sort(actual);
  EXPECT_EQ(actual, expected);
  EXPECT_EQ(panel->property("ToolTip", connection(2)), panel->property("ToolTip"));

  chooseMode(menu_id::percentPower);
  panel->waitUntil([this] { return !isConnected(2); });
  EXPECT_TRUE(isConnected(1));
  EXPECT_EQ(iconFiles(), Names{icon(1)});
}

TEST_F(TitleTiles, ShowTheTitleInTheToolTipAndNotInTheLabel) {
  startWithTile();
  EXPECT_EQ(panel->property("XAyatanaLabel"), "");
  EXPECT_EQ(panel->property("XAyatanaLabelGuide"), "");
  EXPECT_EQ(panel->property("ToolTip").at(2), "98% ▼ −4.8 W");
}

TEST_F(TitleTiles, ReadFromLeftToRightInPanelsThatAddOnTheLeft) {
  machine.set("BAT0/capacity", "11");
  startWithTile();
  chooseMode(menu_id::allFigures);
  panel->waitForItems(3);
  const std::string first = iconContents(2);
  const std::string second = iconContents(1);
  replacePanel("kded6");
  panel->waitForItems(3);
  EXPECT_EQ(iconContents(1), first);
  EXPECT_EQ(iconContents(2), second);
  // In the tile with "11%" and the arrow, only the percent sign has curves. In the tile with "−4.8"
  // and "10:14", most digits have curves.
  EXPECT_LT(curveCount(first), curveCount(second));
}

TEST_F(TitleTiles, CanBeRemovedByAChoiceFromTheirOwnMenu) {
  startWithTile();
  chooseMode(menu_id::allFigures);
  panel->waitForItems(3);
  sd_bus_message* const message =
      panel->newMethodCall(connection(2), "/MenuBar", "com.canonical.dbusmenu", "AboutToShow");
  EXPECT_GE(sd_bus_message_append(message, "i", 0), 0);
  EXPECT_EQ(panel->call(message).error, "");
  sd_bus_message* const choice =
      panel->newMethodCall(connection(2), "/MenuBar", "com.canonical.dbusmenu", "Event");
  EXPECT_GE(sd_bus_message_append(choice, "isvu", menu_id::percent, "clicked", "i", 0, 0U), 0);
  EXPECT_EQ(panel->call(choice).error, "");
  panel->waitUntil([this] { return !isConnected(2); });
  EXPECT_TRUE(item->isRunning());
  EXPECT_EQ(fileContents(preferences()), "mode=0\n");
}

TEST_F(TitleTiles, UpdateTheCheckmarkInTheMenusOfAllTiles) {
  startWithTile();
  const auto isChecked = [this](std::size_t index) {
    sd_bus_message* const message = panel->newMethodCall(connection(index), "/MenuBar",
                                                         "com.canonical.dbusmenu", "GetProperty");
    EXPECT_GE(sd_bus_message_append(message, "is", menu_id::colors, "toggle-state"), 0);
    return panel->call(message).values.at(0) == 1;
  };
  EXPECT_TRUE(isChecked(1));
  choose(menu_id::colors, "Colors");  // in the menu of the glyph
  EXPECT_FALSE(isChecked(0));
  EXPECT_FALSE(isChecked(1));
}

TEST_F(TitleTiles, UpdateTheirMenusWhenTheGlyphsMenuOpens) {
  startWithTile();
  const auto rowsOf = [this](std::size_t index) {
    sd_bus_message* const message =
        panel->newMethodCall(connection(index), "/MenuBar", "com.canonical.dbusmenu", "GetLayout");
    EXPECT_GE(sd_bus_message_append(message, "iias", 0, 1, 0), 0);
    return panel->call(message).values.at(1).at(2).size();
  };
  const auto before = rowsOf(1);
  machine.set("BAT0/temp", "301");
  panel->open();  // the menu of the glyph
  panel->waitUntil([&] { return rowsOf(1) == before + 1; });
}

TEST_F(TitleTiles, HaveTheColorOfTheTrendUnlessColorsAreOff) {
  machine.set("BAT0/power_now", "21000000");
  startWithTile();
  EXPECT_NE(iconContents(1).find("#e07600"), std::string::npos);
  panel->clearSignals();
  choose(menu_id::colors, "Colors");
  panel->waitForSignal("NewIcon");
  EXPECT_EQ(iconContents(1).find("#e07600"), std::string::npos);
}

TEST_F(TitleTiles, AreUnregisteredWithoutABattery) {
  startWithTile();
  machine.remove("BAT0");
  panel->open();
  panel->waitUntil([this] { return !isConnected(1); });
  EXPECT_EQ(iconFiles(), Names{});
  EXPECT_EQ(panel->property("XAyatanaLabel"), "");
  EXPECT_EQ(panel->property("ToolTip").at(2), "No battery");
  EXPECT_EQ(panel->property("IconName"), "lumowatt-battery-slash-symbolic");
}

TEST_F(TitleTiles, AreRegisteredWithAPanelThatAppearsLater) {
  panel.reset();
  start();
  const BusPeer other(session);
  other.waitUntil([&other] { return other.isOwned(Panel::application); });
  replacePanel("kded6");
  panel->waitForItems(2);
  EXPECT_EQ(panel->property("Title", connection(1)), "Lumowatt title");
}

TEST_F(TitleTiles, AreRegisteredAgainWithAnotherIconPanel) {
  startWithTile();
  replacePanel("lxqt-panel");
  panel->waitForItems(2);
  EXPECT_EQ(panel->property("Title", connection(1)), "Lumowatt title");
  EXPECT_EQ(iconFiles(), Names{icon(1)});
}

TEST_F(TitleTiles, AreReplacedByTheLabelInALabelPanel) {
  startWithTile();
  const std::string tile = panel->registered[1];
  replacePanel("gnome-shell");
  panel->waitForItem();
  panel->waitUntil([&] { return !panel->isOwned(tile.c_str()); });
  panel->processLateMessages();
  EXPECT_EQ(panel->registered.size(), 1U);
  EXPECT_EQ(iconFiles(), Names{});
  EXPECT_EQ(panel->property("Id"), "Lumowatt");
}

TEST_F(TitleTiles, AreReplacedByAWideIconInWaybar) {
  startWithTile();
  const std::string tile = panel->registered[1];
  replacePanel("waybar");
  panel->waitForItem();
  panel->waitUntil([&] { return !panel->isOwned(tile.c_str()); });
  panel->processLateMessages();
  EXPECT_EQ(panel->registered.size(), 1U);
  EXPECT_TRUE(panel->property("IconName").get<std::string>().starts_with(icons().string()));
}

TEST_F(TitleTiles, LeaveNoFilesAfterTerminationSignals) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    startWithTile();
    EXPECT_EQ(iconFiles().size(), 1U);
    item->send(signal);
    expectResult(item->wait(), "", 0);
    EXPECT_FALSE(std::filesystem::exists(icons()));
    stop();
  }
}

TEST_F(TitleTiles, LeaveNoFilesAfterQuit) {
  startWithTile();
  choose(menu_id::quit, "Quit Lumowatt");
  expectResult(item->wait(), "", 0);
  EXPECT_FALSE(std::filesystem::exists(icons()));
}

TEST_F(TitleTiles, LeaveNoFilesAfterTheSessionBusDisconnects) {
  startWithTile();
  session.kill();
  expectResult(item->wait(), "error=session bus lost\n", 1);
  EXPECT_FALSE(std::filesystem::exists(icons()));
}

TEST_F(TitleTiles, LeaveCurrentFilesWhenKilledAndRemoveThemOnRestart) {
  startWithTile();
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  panel->waitForSignal("NewIcon");
  const Names present{icon(1)};
  item->send(SIGKILL);
  item->wait();
  EXPECT_EQ(iconFiles(), present);
  stop();
  machine.set("BAT0/power_now", "7200000");
  startWithTile();
  EXPECT_EQ(iconFiles(), Names{icon(1)});
  EXPECT_NE(icon(1), present[0]);
}

}  // namespace lumowatt

#include <filesystem>
#include <set>

#include "program/item_fixture.h"
#include "program/menu_ids.h"
#include "support/open_counter.h"

namespace lumowatt {

namespace {

Json separatorItem() { return {{"type", "separator"}, {"visible", true}}; }

Json line(const char* label) { return {{"label", label}, {"enabled", false}, {"visible", true}}; }

Json command(const char* label) { return {{"label", label}, {"enabled", true}, {"visible", true}}; }

Json with(Json item, const char* property, Json value) {
  item[property] = std::move(value);
  return item;
}

Json toggle(const char* label, const char* type, int state) {
  return with(with(command(label), "toggle-type", type), "toggle-state", state);
}

/// Returns the property "shortcut" for the Control key and another key.
Json controlKey(const char* key) { return Json::array({Json::array({"Control", key})}); }

/// Returns an item and its children in the form of GetLayout's reply.
Json node(int id, Json properties, Json children = Json::array()) {
  return {id, std::move(properties), std::move(children)};
}

/// Returns the expected menu of the unchanged machine.
Json expectedLayout() {
  const Json report{node(1, line("On battery")),
                    node(2, line("Charge: 98% (4579 of 4635 mAh)")),
                    node(3, line("Time to empty: 10 h 14 min")),
                    node(4, line("Battery power: −4.8 W  (12.23 V, -0.395 A)")),
                    node(5, line("Rate now: −8.5% per hour")),
                    node(6, line("System use: 4.8 W")),
                    node(7, line("Capacity vs design, raw: 105% (4635 of 4400 mAh)")),
                    node(8, line("Apple’s own health figure uses its own method and can differ.")),
                    node(9, line("Cycle count: 0"))};
  const Json modeItems{node(menu_id::percent, toggle("Percent", "radio", 0)),
                       node(menu_id::percentPower, toggle("Percent and battery power", "radio", 1)),
                       node(menu_id::percentTime, toggle("Percent and time", "radio", 0)),
                       node(menu_id::allFigures, toggle("Percent, power and time", "radio", 0))};
  const Json rest{
      node(menu_id::firstSeparator, separatorItem()),
      node(menu_id::chartHeader, line("Charge over the last hour")),
      node(menu_id::chart, with(line("Collecting history…"), "accessible-desc",
                                "Charge over the last hour: collecting history")),
      node(menu_id::secondSeparator, separatorItem()),
      node(menu_id::modes, with(command("Menu bar shows"), "children-display", "submenu"),
           modeItems),
      node(menu_id::colors, toggle("Colors", "checkmark", 1)),
      node(menu_id::animation, toggle("Charging animation", "checkmark", 1)),
      node(menu_id::copyDetails, with(command("Copy details"), "shortcut", controlKey("c"))),
      node(menu_id::openAtLogin, toggle("Open at login", "checkmark", 0)),
      node(menu_id::settings, command("Battery settings…")),
      node(menu_id::thirdSeparator, separatorItem()),
      node(menu_id::about, line("Lumowatt 1.0.0, by Fernhollow")),
      node(menu_id::quit, with(command("Quit Lumowatt"), "shortcut", controlKey("q")))};
  Json all = report;
  all.insert(all.end(), rest.begin(), rest.end());
  return node(menu_id::root, with(command(""), "children-display", "submenu"), all);
}

/// Fixture for a panel that does not report when the menu closes. The test accelerates the clock.
class UnclosedItemMenu : public ItemTest {};

/// Fixture for the menu that the item exports on the bus.
class ItemMenu : public ItemTest {
 protected:
  void SetUp() override { start(); }

  Json wholeLayout() const { return panel->callMenu("GetLayout", "iias", 0, -1, 0).values.at(1); }

  /// Changes the power twice, and expects signals of the new tool tip but none of the menu.
  void expectUnchangedByReadings() {
    for (const char* const power : {"6100000", "7200000"}) {
      panel->clearSignals();
      machine.set("BAT0/power_now", power);
      panel->waitForSignal("NewToolTip");
    }
    EXPECT_FALSE(panel->hasReceived("ItemsPropertiesUpdated"));
  }

  /// Returns the ids in a list of pairs of an id and properties.
  static std::set<int> ids(const Json& items) {
    std::set<int> all;
    for (const Json& item : items) all.insert(item.at(0).get<int>());
    return all;
  }

  std::string label() const { return panel->property("XAyatanaLabel"); }
};

}  // namespace

TEST_F(ItemMenu, HasThePropertiesOfTheDbusmenuInterface) {
  EXPECT_EQ(panel->properties("/MenuBar", "com.canonical.dbusmenu"),
            (Json{{"Version", 3},
                  {"TextDirection", "ltr"},
                  {"Status", "normal"},
                  {"IconThemePath", Json::array()}}));
}

TEST_F(ItemMenu, IsCompleteBeforeTheFirstAboutToShow) {
  EXPECT_EQ(wholeLayout(), expectedLayout());
}

TEST_F(ItemMenu, IsCompleteAfterAboutToShow) {
  EXPECT_TRUE(panel->open());
  EXPECT_EQ(panel->signalNames(), Names{"LayoutUpdated"});
  EXPECT_EQ(wholeLayout(), expectedLayout());
}

TEST_F(ItemMenu, ReturnsTheLayoutDownToTheRequestedDepth) {
  const auto items = [this](int parent, int depth) {
    return panel->callMenu("GetLayout", "iias", parent, depth, 0).values.at(1).at(2);
  };
  EXPECT_EQ(items(menu_id::root, 0).size(), 0U);
  EXPECT_EQ(items(menu_id::root, 1).size(), 22U);
  EXPECT_EQ(items(menu_id::root, 1).at(13),
            node(menu_id::modes, expectedLayout().at(2).at(13).at(1)));
  EXPECT_EQ(items(menu_id::root, 2), expectedLayout().at(2));
  EXPECT_EQ(items(menu_id::root, 2'000'000'000), expectedLayout().at(2));
  EXPECT_EQ(items(menu_id::modes, -1).size(), 4U);
  EXPECT_EQ(items(menu_id::modes, 1).size(), 4U);
  EXPECT_EQ(items(menu_id::colors, -1).size(), 0U);
}

TEST_F(ItemMenu, RejectsNegativeDepthsOtherThanMinusOne) {
  EXPECT_EQ(panel->callMenu("GetLayout", "iias", 0, -2, 0).error, invalidArguments);
  EXPECT_EQ(panel->callMenu("GetLayout", "iias", 0, INT32_MIN, 0).error, invalidArguments);
}

TEST_F(ItemMenu, ReturnsOnlyTheRequestedPropertiesInALayout) {
  const Json layout =
      panel
          ->callMenu("GetLayout", "iias", menu_id::colors, -1, 3, "label", "toggle-state", "nosuch")
          .values.at(1);
  EXPECT_EQ(layout, node(menu_id::colors, {{"label", "Colors"}, {"toggle-state", 1}}));
}

TEST_F(ItemMenu, RejectsLayoutRequestsForUnknownItems) {
  for (const int id : {-1, 99, 103, 30105, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(panel->callMenu("GetLayout", "iias", id, -1, 0).error, invalidArguments) << id;
  }
}

TEST_F(ItemMenu, ReturnsThePropertiesOfAGroupOfItems) {
  const Json items = panel
                         ->callMenu("GetGroupProperties", "aias", 4, menu_id::colors, 12345,
                                    menu_id::firstSeparator, menu_id::colors, 0)
                         .values.at(0);
  EXPECT_EQ(items, (Json{{menu_id::firstSeparator, separatorItem()},
                         {menu_id::colors, toggle("Colors", "checkmark", 1)}}));
  const Json labels = panel
                          ->callMenu("GetGroupProperties", "aias", 2, menu_id::about,
                                     menu_id::firstSeparator, 1, "label")
                          .values.at(0);
  EXPECT_EQ(labels, (Json{{menu_id::firstSeparator, Json::object()},
                          {menu_id::about, {{"label", "Lumowatt 1.0.0, by Fernhollow"}}}}));
}

TEST_F(ItemMenu, ReturnsAllItemsForAnEmptyGroup) {
  const Json items = panel->callMenu("GetGroupProperties", "aias", 0, 0).values.at(0);
  EXPECT_EQ(items.size(), 1U + 22U + 4U);
  EXPECT_EQ(items.at(0).at(0), menu_id::root);
}

TEST_F(ItemMenu, ReturnsSingleProperties) {
  EXPECT_EQ(panel->menuProperty(menu_id::colors, "label"), "Colors");
  EXPECT_EQ(panel->menuProperty(menu_id::colors, "type"), "standard");
  EXPECT_EQ(panel->menuProperty(menu_id::copyDetails, "shortcut"), controlKey("c"));
  EXPECT_EQ(panel->menuProperty(menu_id::colors, "shortcut"), Json::array());
  EXPECT_EQ(panel->menuProperty(menu_id::colors, "children-display"), "");
  EXPECT_EQ(panel->callMenu("GetProperty", "is", menu_id::colors, "icon-data").error,
            invalidArguments);
  EXPECT_EQ(panel->callMenu("GetProperty", "is", 103, "label").error, invalidArguments);
}

TEST_F(ItemMenu, EnablesAndDescribesTheChartOnceItHasSamples) {
  EXPECT_EQ(panel->menuProperty(menu_id::chart, "enabled"), false);
  stop();
  startWithChart();
  EXPECT_EQ(panel->menuProperty(menu_id::chart, "accessible-desc"),
            "Charge over the last hour: from 98 to 98 percent");
}

TEST_F(ItemMenu, DescribesOnlyTheChart) {
  EXPECT_EQ(panel->menuProperty(menu_id::colors, "accessible-desc"), "");
}

TEST_F(ItemMenu, IsUpdatedAtEachOpening) {
  panel->open();
  for (const auto& [power, expected] :
       {std::pair("6100000", "Battery power: −6.1 W  (12.23 V, -0.499 A)"),
        std::pair("7200000", "Battery power: −7.2 W  (12.23 V, -0.589 A)")}) {
    panel->clearSignals();
    machine.set("BAT0/power_now", power);
    EXPECT_TRUE(panel->open());
    // The signal is emitted before the reply, for panels that do not wait for the reply.
    const Json update = panel->signal("ItemsPropertiesUpdated");
    EXPECT_EQ(ids(update.at(0)), (std::set{3, 4, 5, 6}));
    EXPECT_EQ(update.at(0).at(1), (Json{menu_id::powerLine, line(expected)}));
    EXPECT_EQ(update.at(1), Json::array()) << "no property was reset to its default";
    EXPECT_FALSE(panel->hasReceived("LayoutUpdated"));
    EXPECT_EQ(panel->menuProperty(menu_id::powerLine, "label"), expected);
    EXPECT_EQ(wholeLayout().at(2).at(menu_id::powerLine - 1),
              node(menu_id::powerLine, line(expected)));
  }
}

TEST_F(ItemMenu, EmitsNoSignalIfOpeningChangesNothing) {
  panel->open();
  panel->clearSignals();
  EXPECT_FALSE(panel->open());
  EXPECT_EQ(panel->signalNames(), Names{});
}

TEST_F(ItemMenu, DoesNotChangeWhileOpen) {
  panel->open();
  const Json before = wholeLayout();
  expectUnchangedByReadings();
  EXPECT_EQ(wholeLayout(), before);
}

TEST_F(ItemMenu, DefersANewLineUntilItIsClosed) {
  panel->open();
  EXPECT_EQ(panel->sendEvent(menu_id::modes, "closed"), "") << "a submenu";
  panel->clearSignals();
  machine.set("BAT0/temp", "301");
  panel->waitForSignal("NewToolTip");
  EXPECT_FALSE(panel->hasReceived("LayoutUpdated"));
  EXPECT_EQ(panel->sendEvent(menu_id::root, "closed"), "");
  panel->waitForSignal("LayoutUpdated");
  EXPECT_EQ(panel->menuProperty(10, "label"), "Temperature: 30.1 °C");
}

TEST_F(UnclosedItemMenu, CountsAsClosedAfterAMinute) {
  item = startProcess(LUMOWATT_ACCELERATED_CLOCK);
  panel->waitForItem();
  panel->open();
  panel->clearSignals();
  machine.set("BAT0/temp", "301");
  panel->waitForSignal("LayoutUpdated");
  EXPECT_EQ(panel->menuProperty(10, "label"), "Temperature: 30.1 °C");
}

TEST_F(ItemMenu, ChangesWhileOpenWhenAnItemIsChosen) {
  panel->open();
  panel->clearSignals();
  EXPECT_EQ(panel->click(menu_id::colors), "");
  EXPECT_TRUE(panel->hasReceived("ItemsPropertiesUpdated"));
}

TEST_F(ItemMenu, UpdatesFiguresOnlyAtTheNextOpening) {
  panel->open();
  EXPECT_EQ(panel->sendEvent(menu_id::root, "closed"), "");
  expectUnchangedByReadings();
}

TEST_F(ItemMenu, CountsAsClosedAfterAChoice) {
  panel->open();
  EXPECT_EQ(panel->click(menu_id::percent), "");
  panel->clearSignals();
  machine.set("BAT0/temp", "301");
  panel->waitForSignal("LayoutUpdated");
  EXPECT_EQ(panel->menuProperty(10, "label"), "Temperature: 30.1 °C");
}

TEST_F(ItemMenu, EmitsNoSignalBeforeTheFirstRequest) {
  machine.set("BAT0/temp", "301");
  panel->waitForSignal("NewToolTip");
  EXPECT_FALSE(panel->hasReceived("LayoutUpdated"));
}

TEST_F(ItemMenu, IsNotUpdatedWhenASubmenuIsAboutToShow) {
  panel->open();
  panel->sendEvent(menu_id::root, "closed");
  panel->clearSignals();
  machine.set("BAT0/power_now", "6100000");
  EXPECT_EQ(panel->callMenu("AboutToShow", "i", menu_id::modes).values, Json::array({false}));
  EXPECT_EQ(panel->callMenu("AboutToShowGroup", "ai", 1, menu_id::modes).error, "");
  EXPECT_FALSE(panel->hasReceived("ItemsPropertiesUpdated"));
}

TEST_F(ItemMenu, UpdatesItsRowsWithoutAnExtraReading) {
  panel->open();
  panel->sendEvent(menu_id::root, "closed");
  panel->clearSignals();
  const OpenCounter counter;
  counter.watch(machine.powerSupplyFolder() / "BAT0");
  machine.set("BAT0/temp", "301");
  panel->waitForSignal("LayoutUpdated");
  EXPECT_EQ(counter.opened().count("energy_full"), 1U);
}

TEST_F(ItemMenu, AddsAnItemForANewLineAndHidesItLater) {
  panel->open();
  const auto revision = [this] {
    return panel->callMenu("GetLayout", "iias", 0, 0, 0).values.at(0).get<unsigned>();
  };
  const unsigned before = revision();
  panel->clearSignals();
  machine.set("BAT0/temp", "301");
  EXPECT_TRUE(panel->open());
  EXPECT_EQ(panel->signal("LayoutUpdated"), (Json{before + 1, menu_id::root}));
  EXPECT_EQ(revision(), before + 1);
  EXPECT_EQ(panel->menuProperty(10, "visible"), true);
  EXPECT_EQ(panel->menuProperty(menu_id::colors, "label"), "Colors");

  machine.remove("BAT0/temp");
  panel->open();
  EXPECT_EQ(panel->menuProperty(10, "visible"), false);
}

TEST_F(ItemMenu, SignalsAddedAndRemovedRowsBeforeItIsOpened) {
  EXPECT_EQ(wholeLayout(), expectedLayout());
  machine.set("BAT0/temp", "301");
  panel->waitForSignal("LayoutUpdated");
  EXPECT_EQ(panel->menuProperty(10, "label"), "Temperature: 30.1 °C");
  panel->clearSignals();
  machine.remove("BAT0/temp");
  panel->waitForSignal("ItemsPropertiesUpdated");
  EXPECT_EQ(panel->menuProperty(10, "visible"), false);
}

TEST_F(ItemMenu, AcceptsAboutToShowOnlyForExistingItems) {
  EXPECT_EQ(panel->callMenu("AboutToShow", "i", 0).error, "");
  EXPECT_EQ(panel->callMenu("AboutToShow", "i", menu_id::modes).values, Json::array({false}));
  for (const int id : {-1, 99, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(panel->callMenu("AboutToShow", "i", id).error, invalidArguments) << id;
  }
}

TEST_F(ItemMenu, AboutToShowGroupReturnsChangedAndUnknownItems) {
  using Lists = std::vector<std::vector<int>>;
  EXPECT_EQ(panel->callMenu("AboutToShowGroup", "ai", 3, 0, menu_id::modes, 99).values,
            Json(Lists{{0}, {99}}));
  EXPECT_EQ(panel->callMenu("AboutToShowGroup", "ai", 1, 0).values, Json(Lists{{}, {}}));
  EXPECT_EQ(panel->callMenu("AboutToShowGroup", "ai", 0).values, Json(Lists{{}, {}}));
  EXPECT_EQ(panel->callMenu("AboutToShowGroup", "ai", 2, 98, 99).error, invalidArguments);
}

TEST_F(ItemMenu, HasOneLineWithoutABattery) {
  stop();
  machine.remove("BAT0");
  start();
  EXPECT_EQ(wholeLayout(), node(menu_id::root, with(command(""), "children-display", "submenu"),
                                Json::array({node(1, line("No battery found"))})));
}

TEST_F(ItemMenu, IsUnchangedWhenTheBatteryIsRemoved) {
  panel->open();
  machine.remove("BAT0");
  EXPECT_FALSE(panel->open());
  EXPECT_EQ(label(), "No battery");
  EXPECT_EQ(wholeLayout(), expectedLayout());
}

}  // namespace lumowatt

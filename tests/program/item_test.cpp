#include <csignal>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

namespace {

/// Fixture for the item that is registered with panels.
class StatusItem : public ItemTest {};

constexpr auto unknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";

}  // namespace

TEST_F(StatusItem, RegistersTheNameOfItsConnection) {
  start();
  ASSERT_EQ(panel->registered.size(), 1U);
  EXPECT_TRUE(panel->registered[0].starts_with(":1.")) << panel->registered[0];
}

TEST_F(StatusItem, WaitsForAPanel) {
  panel.reset();
  start();
  const BusPeer other(session);
  other.waitUntil([&other] { return other.isOwned("com.fernhollow.Lumowatt"); });
  panel = std::make_unique<Panel>(session);
  panel->waitForItem();
  EXPECT_EQ(panel->property("XAyatanaLabel"), "98% ▼ −4.8 W");
}

TEST_F(StatusItem, RegistersWithEachNewPanel) {
  start();
  for (int i = 0; i < 5; ++i) {
    panel.reset();
    panel = std::make_unique<Panel>(session);
    panel->waitForItem();
    EXPECT_EQ(panel->registered.size(), 1U);
    EXPECT_EQ(panel->property("Id"), "Lumowatt");
  }
}

TEST_F(StatusItem, ExportsAllPropertiesOfTheInterface) {
  start();
  const std::string icons = std::filesystem::path(LUMOWATT_PROGRAM).parent_path() / "icons";
  const Json expected{
      {"Category", "Hardware"},
      {"Id", "Lumowatt"},
      {"Title", "Lumowatt"},
      {"Status", "Active"},
      {"WindowId", 0},
      {"IconPixmap", Json::array()},
      {"OverlayIconName", ""},
      {"OverlayIconPixmap", Json::array()},
      {"AttentionIconName", ""},
      {"AttentionIconPixmap", Json::array()},
      {"AttentionMovieName", ""},
      {"IconThemePath", icons},
      {"IconName", "lumowatt-battery-100percent-symbolic"},
      {"IconAccessibleDesc", "Battery 98 percent, On battery, −4.8 W"},
      {"XAyatanaLabel", "98% ▼ −4.8 W"},
      {"XAyatanaLabelGuide", "88% ▼ −8.8 W"},
      {"ToolTip",
       {"", Json::array(), "98% ▼ −4.8 W",
        "On battery\n"
        "Charge: 98% (4579 of 4635 mAh)\n"
        "Time to empty: 10 h 14 min\n"
        "Battery power: −4.8 W  (12.23 V, -0.395 A)\n"
        "Rate now: −8.5% per hour\n"
        "System use: 4.8 W\n"
        "Capacity vs design, raw: 105% (4635 of 4400 mAh)\n"
        "Apple’s own health figure uses its own method and can differ.\n"
        "Cycle count: 0"}},
      {"ItemIsMenu", true},
      {"Menu", "/MenuBar"},
  };
  EXPECT_EQ(panel->properties("/StatusNotifierItem", "org.kde.StatusNotifierItem"), expected);
  EXPECT_TRUE(std::filesystem::exists(icons + "/lumowatt-battery-100percent-symbolic.svg"));
}

TEST_F(StatusItem, OmitsActivateSoThatPanelsOpenTheMenu) {
  start();
  EXPECT_EQ(panel->callItem("Activate", "ii", 0, 0).error, unknownMethod);
  EXPECT_EQ(panel->callItem("ContextMenu", "ii", 0, 0).error, unknownMethod);
}

TEST_F(StatusItem, AcceptsAndIgnoresScrollingAndMiddleClicks) {
  start();
  EXPECT_EQ(panel->callItem("SecondaryActivate", "ii", 3, 4).error, "");
  EXPECT_EQ(panel->callItem("XAyatanaSecondaryActivate", "u", 5U).error, "");
  EXPECT_EQ(panel->callItem("Scroll", "is", -120, "vertical").error, "");
  EXPECT_EQ(panel->callItem("Scroll", "s", "vertical").error,
            "org.freedesktop.DBus.Error.InvalidArgs");
}

TEST_F(StatusItem, ShowsTextBesideAStruckThroughGlyphWithoutABattery) {
  machine.remove("BAT0");
  start();
  EXPECT_EQ(panel->property("XAyatanaLabel"), "No battery");
  EXPECT_EQ(panel->property("IconName"), "lumowatt-battery-slash-symbolic");
  EXPECT_EQ(panel->property("ToolTip"), (Json{"", Json::array(), "No battery", ""}));
}

TEST_F(StatusItem, ToolTipContainsNoMarkupCharacters) {
  machine.set("AC/online", "1");
  machine.set("AC/type", "USB");
  machine.set("AC/model_name", "A&B <b>");
  machine.set("AC/manufacturer", "<Maker>");
  machine.set("BAT0/status", "Charging");
  start();
  const std::string text = panel->property("ToolTip").at(3);
  EXPECT_NE(text.find("‹Maker› A+B ‹b›"), std::string::npos) << text;
  EXPECT_EQ(text.find_first_of("&<>"), std::string::npos) << text;
}

TEST_F(StatusItem, EmitsNoSignalsWhenNothingChanged) {
  start();
  panel->open();
  panel->open();
  EXPECT_EQ(panel->signalNames(), Names{"LayoutUpdated"});
}

TEST_F(StatusItem, EmitsASignalForEachChangedProperty) {
  start();
  panel->open();
  panel->clearSignals();
  machine.set("BAT0/power_now", "6100000");
  panel->open();
  panel->waitForSignal("NewToolTip");
  EXPECT_EQ(panel->signalNames(), (Names{"ItemsPropertiesUpdated", "NewIconAccessibleDesc",
                                         "XAyatanaNewLabel", "NewToolTip"}));
  EXPECT_EQ(panel->signal("XAyatanaNewLabel"), (Json{"98% ▼ −6.1 W", "88% ▼ −8.8 W"}));
  EXPECT_EQ(panel->property("XAyatanaLabel"), "98% ▼ −6.1 W");
}

TEST_F(StatusItem, EmitsNewToolTipWhenOnlyItsTitleChanges) {
  start();
  panel->open();
  EXPECT_EQ(panel->click(menu_id::percent), "");
  panel->waitForSignal("NewToolTip");
  EXPECT_EQ(panel->property("ToolTip").at(2), "98% ▼");
}

TEST_F(StatusItem, EmitsNewIconOnlyAtANewLevel) {
  start();
  machine.set("BAT0/capacity", "90");
  panel->open();
  panel->waitForSignal("NewToolTip");
  EXPECT_FALSE(panel->hasReceived("NewIcon"));
  machine.set("BAT0/capacity", "50");
  panel->open();
  panel->waitForSignal("NewIcon");
  EXPECT_EQ(panel->property("IconName"), "lumowatt-battery-50percent-symbolic");
}

TEST_F(StatusItem, SignalsChangesWithoutARequest) {
  start();
  machine.set("BAT0/power_now", "6100000");
  panel->waitForSignal("XAyatanaNewLabel");
  EXPECT_EQ(panel->property("XAyatanaLabel"), "98% ▼ −6.1 W");
}

TEST_F(StatusItem, AnimatesItsIconWhileCharging) {
  machine.set("AC/online", "1");
  machine.set("BAT0/status", "Charging");
  machine.set("BAT0/capacity", "50");
  start();
  Names icons{panel->property("IconName")};
  while (icons.size() < 4) {
    panel->clearSignals();
    panel->waitForSignal("NewIcon");
    icons.push_back(panel->property("IconName"));
  }
  // The animation starts at the lowest of its levels (25, 50, 75, 100) above 50 − 12 percent.
  EXPECT_EQ(icons,
            (Names{"lumowatt-battery-50percent-green", "lumowatt-battery-75percent-green",
                   "lumowatt-battery-100percent-green", "lumowatt-battery-50percent-green"}));
}

}  // namespace lumowatt

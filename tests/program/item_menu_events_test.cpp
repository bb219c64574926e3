#include <filesystem>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

namespace {

/// Fixture for the events that panels send to the menu.
class MenuEvents : public ItemTest {
 protected:
  void SetUp() override { start(); }

  std::string label() const { return panel->property("XAyatanaLabel"); }
};

}  // namespace

TEST_F(MenuEvents, ChoosingAModeUpdatesTheLabelImmediately) {
  const std::pair<int, const char*> expected[] = {{menu_id::percent, "98% ▼"},
                                                  {menu_id::percentTime, "98% ▼ 10:14"},
                                                  {menu_id::allFigures, "98% ▼ −4.8 W · 10:14"},
                                                  {menu_id::percentPower, "98% ▼ −4.8 W"}};
  panel->open();
  for (const auto& [id, title] : expected) {
    EXPECT_EQ(panel->click(id), "");
    EXPECT_EQ(label(), title);
    for (int other = menu_id::percent; other <= menu_id::allFigures; ++other) {
      EXPECT_EQ(panel->menuProperty(other, "toggle-state"), other == id ? 1 : 0);
    }
  }
}

TEST_F(MenuEvents, ChoosingColorsOrAnimationTogglesAndStoresThem) {
  machine.set("BAT0/capacity", "9");
  panel->open();
  EXPECT_EQ(panel->property("IconName"), "lumowatt-battery-0percent-red");
  choose(menu_id::colors, "Colors");
  EXPECT_EQ(panel->property("IconName"), "lumowatt-battery-0percent-symbolic");
  EXPECT_EQ(panel->menuProperty(menu_id::colors, "toggle-state"), 0);
  choose(menu_id::animation, "Charging animation");
  EXPECT_EQ(panel->menuProperty(menu_id::animation, "toggle-state"), 0);
  EXPECT_EQ(fileContents(preferences()), "color=false\nanimate=false\n");
  choose(menu_id::colors, "Colors");
  EXPECT_EQ(panel->property("IconName"), "lumowatt-battery-0percent-red");
  EXPECT_EQ(fileContents(preferences()), "color=true\nanimate=false\n");
}

TEST_F(MenuEvents, ChoosingQuitExitsCleanlyAfterTheReply) {
  panel->open();
  choose(menu_id::quit, "Quit Lumowatt");
  const ProcessResult result = item->wait();
  expectResult(result, "", 0);
}

TEST_F(MenuEvents, AreIgnoredWhenTheyChooseNothing) {
  panel->open();
  panel->clearSignals();
  for (const int id :
       {menu_id::root, menu_id::statusLine, menu_id::powerLine, menu_id::firstSeparator,
        menu_id::chartHeader, menu_id::chart, menu_id::modes, menu_id::about}) {
    EXPECT_EQ(panel->click(id), "") << id;
  }
  for (const char* const event : {"hovered", "opened", "closed", "x-shop", "", "CLICKED"}) {
    EXPECT_EQ(panel->sendEvent(menu_id::percent, event), "") << event;
    EXPECT_EQ(panel->sendEvent(menu_id::quit, event), "") << event;
  }
  EXPECT_TRUE(item->isRunning());
  EXPECT_EQ(label(), "98% ▼ −4.8 W");
  EXPECT_FALSE(std::filesystem::exists(preferences()));
  EXPECT_EQ(panel->signalNames(), Names{});
}

TEST_F(MenuEvents, FailForUnknownItems) {
  EXPECT_EQ(panel->click(menu_id::colors), invalidArguments) << "before the menu was requested";
  panel->open();
  for (const int id : {-1, 10, 99, 103, 30105, 30201, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(panel->click(id), invalidArguments) << id;
  }
}

TEST_F(MenuEvents, FailForWrongArgumentTypesAndUnknownMethods) {
  panel->open();
  EXPECT_EQ(panel->callMenu("Event", "is", menu_id::colors, "clicked").error, invalidArguments);
  EXPECT_EQ(panel->callMenu("Event", "ssvu", "x", "clicked", "i", 0, 0U).error, invalidArguments);
  EXPECT_EQ(panel->callMenu("NoSuchMethod").error, "org.freedesktop.DBus.Error.UnknownMethod");
}

TEST_F(MenuEvents, AreIgnoredForItemsOfAnEarlierMenu) {
  panel->open();
  machine.set("BAT0/temp", "301");
  panel->open();
  machine.remove("BAT0/temp");
  panel->open();
  panel->clearSignals();
  EXPECT_EQ(panel->click(10), "");
  EXPECT_FALSE(panel->hasReceived("ItemsPropertiesUpdated"));
}

TEST_F(MenuEvents, EventGroupAppliesOnlyTheFirstChoice) {
  panel->open();
  const Reply reply = panel->callMenu("EventGroup", "a(isvu)", 5,                 //
                                      99, "clicked", "i", 0, 0U,                  //
                                      menu_id::powerLine, "clicked", "i", 0, 0U,  //
                                      menu_id::percent, "clicked", "s", "", 0U,   //
                                      menu_id::quit, "clicked", "i", 0, 0U,       //
                                      menu_id::percentTime, "clicked", "i", 0, 0U);
  EXPECT_EQ(reply.values, Json::array({Json::array({99})}));
  EXPECT_EQ(label(), "98% ▼");
  EXPECT_TRUE(item->isRunning());
}

TEST_F(MenuEvents, EventGroupFailsIfAllItemsAreUnknown) {
  panel->open();
  EXPECT_EQ(panel
                ->callMenu("EventGroup", "a(isvu)", 2, 98, "clicked", "i", 0, 0U, 99, "clicked",
                           "i", 0, 0U)
                .error,
            invalidArguments);
  EXPECT_EQ(panel->callMenu("EventGroup", "a(isvu)", 0).values, Json::array({Json::array()}));
}

}  // namespace lumowatt

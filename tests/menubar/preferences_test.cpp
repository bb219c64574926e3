// The preferences as the application reads and writes them.

#include "menubar/app_fixture.h"

namespace lumowatt {

using StoredPreferences = AppTest;
using Store = std::map<std::string, std::string, std::less<>>;

TEST_F(StoredPreferences, OfAFreshStoreAreTheDefaults) {
  EXPECT_EQ(app->preferences().mode, Mode::percentPower);
  EXPECT_TRUE(app->preferences().useColor);
  EXPECT_TRUE(app->preferences().animate);
  EXPECT_TRUE(desktop.store.empty()) << "reading writes nothing";
}

TEST_F(StoredPreferences, AModeIsItsNumber) {
  for (const Mode mode : allModes) {
    desktop.store["mode"] = std::to_string(static_cast<int>(mode));
    EXPECT_EQ(app->preferences().mode, mode);
  }
}

TEST_F(StoredPreferences, AModeOutOfRangeIsTheDefaultAndStaysInTheStore) {
  for (const char* number : {"4", "99", "-1"}) {
    desktop.store["mode"] = number;
    EXPECT_EQ(app->preferences().mode, Mode::percentPower) << number;
    EXPECT_EQ(desktop.store, (Store{{"mode", number}}));
  }
}

TEST_F(StoredPreferences, AModeThatIsNoNumberIsPercent) {
  desktop.store["mode"] = "banana";
  EXPECT_EQ(app->preferences().mode, Mode::percent);
}

TEST_F(StoredPreferences, AStoredFalseIsOffAlthoughAbsentMeansOn) {
  desktop.store["color"] = "false";
  EXPECT_FALSE(app->preferences().useColor);
  EXPECT_TRUE(app->preferences().animate);
  desktop.store["animate"] = "false";
  EXPECT_FALSE(app->preferences().animate);
  desktop.store["color"] = "true";
  EXPECT_TRUE(app->preferences().useColor);
}

TEST_F(StoredPreferences, SettingStoresUnderTheKeys) {
  app->setMode(Mode::all);
  app->setUseColor(false);
  app->setAnimate(true);
  EXPECT_EQ(desktop.store, (Store{{"mode", "3"}, {"color", "false"}, {"animate", "true"}}));
  EXPECT_EQ(app->preferences().mode, Mode::all);
}

TEST_F(StoredPreferences, AreReadAfreshAtEveryUse) {
  app->refresh();
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W");
  desktop.store["mode"] = "0";
  app->refresh();
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼");
}

}  // namespace lumowatt

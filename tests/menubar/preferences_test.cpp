// The preferences as the application reads and writes them.

#include "menubar/app_fixture.h"

namespace lumowatt {

using Preferences = AppTest;
using Store = std::map<std::string, std::string, std::less<>>;

TEST_F(Preferences, OfAFreshStoreAreTheDefaults) {
  EXPECT_EQ(app->mode(), Mode::percentPower);
  EXPECT_TRUE(app->useColor());
  EXPECT_TRUE(app->animate());
  EXPECT_TRUE(desktop.preferences.empty()) << "reading writes nothing";
}

TEST_F(Preferences, AModeIsItsNumber) {
  for (const Mode mode : allModes) {
    desktop.preferences["mode"] = std::to_string(static_cast<int>(mode));
    EXPECT_EQ(app->mode(), mode);
  }
}

TEST_F(Preferences, AModeOutOfRangeIsTheDefaultAndStaysInTheStore) {
  for (const char* number : {"4", "99", "-1"}) {
    desktop.preferences["mode"] = number;
    EXPECT_EQ(app->mode(), Mode::percentPower) << number;
    EXPECT_EQ(desktop.preferences, (Store{{"mode", number}}));
  }
}

TEST_F(Preferences, AModeThatIsNoNumberIsPercent) {
  desktop.preferences["mode"] = "banana";
  EXPECT_EQ(app->mode(), Mode::percent);
}

TEST_F(Preferences, AStoredFalseIsOffAlthoughAbsentMeansOn) {
  desktop.preferences["color"] = "false";
  EXPECT_FALSE(app->useColor());
  EXPECT_TRUE(app->animate());
  desktop.preferences["animate"] = "false";
  EXPECT_FALSE(app->animate());
  desktop.preferences["color"] = "true";
  EXPECT_TRUE(app->useColor());
}

TEST_F(Preferences, SettingStoresUnderTheKeys) {
  app->setMode(Mode::all);
  app->setUseColor(false);
  app->setAnimate(true);
  EXPECT_EQ(desktop.preferences, (Store{{"mode", "3"}, {"color", "false"}, {"animate", "true"}}));
  EXPECT_EQ(app->mode(), Mode::all);
}

TEST_F(Preferences, AreReadAfreshAtEveryUse) {
  app->refresh();
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W");
  desktop.preferences["mode"] = "0";
  app->refresh();
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼");
}

}  // namespace lumowatt

// The display modes, and the preferences that the application reads and writes.

#include "menubar/preferences.h"

#include <limits>

#include "menubar/app_fixture.h"

namespace lumowatt {

using PreferenceStore = AppTest;
using Store = std::map<std::string, std::string, std::less<>>;

TEST_F(PreferenceStore, ReturnsTheDefaultsWhenEmpty) {
  EXPECT_EQ(app->preferences().mode, Mode::percentPower);
  EXPECT_TRUE(app->preferences().useColor);
  EXPECT_TRUE(app->preferences().animate);
  EXPECT_TRUE(desktop.store.empty()) << "reading the preferences does not write them";
}

TEST_F(PreferenceStore, ReturnsTheModeWithTheStoredNumber) {
  for (const Mode mode : allModes) {
    desktop.store["mode"] = std::to_string(static_cast<int>(mode));
    EXPECT_EQ(app->preferences().mode, mode);
  }
}

TEST_F(PreferenceStore, ReturnsTheDefaultModeForAStoredNumberOutOfRange) {
  for (const char* number : {"4", "99", "-1"}) {
    desktop.store["mode"] = number;
    EXPECT_EQ(app->preferences().mode, Mode::percentPower) << number;
    EXPECT_EQ(desktop.store, (Store{{"mode", number}}));
  }
}

TEST_F(PreferenceStore, ReturnsThePercentModeForAValueThatIsNotANumber) {
  desktop.store["mode"] = "banana";
  EXPECT_EQ(app->preferences().mode, Mode::percent);
}

TEST_F(PreferenceStore, DistinguishesAStoredFalseFromAnAbsentValue) {
  desktop.store["color"] = "false";
  EXPECT_FALSE(app->preferences().useColor);
  EXPECT_TRUE(app->preferences().animate);
  desktop.store["animate"] = "false";
  EXPECT_FALSE(app->preferences().animate);
  desktop.store["color"] = "true";
  EXPECT_TRUE(app->preferences().useColor);
}

TEST_F(PreferenceStore, ContainsSetValuesUnderTheirKeys) {
  app->setMode(Mode::all);
  app->setUseColor(false);
  app->setAnimate(true);
  EXPECT_EQ(desktop.store, (Store{{"mode", "3"}, {"color", "false"}, {"animate", "true"}}));
  EXPECT_EQ(app->preferences().mode, Mode::all);
}

TEST_F(PreferenceStore, IsReadOnEveryRefresh) {
  app->refresh();
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼ −8.3 W");
  desktop.store["mode"] = "0";
  app->refresh();
  EXPECT_EQ(desktop.plainTitle(), " 64% ▼");
}

TEST(Mode, HasANumberForEachCase) {
  EXPECT_EQ(modeOf(0), Mode::percent);
  EXPECT_EQ(modeOf(1), Mode::percentPower);
  EXPECT_EQ(modeOf(2), Mode::percentTime);
  EXPECT_EQ(modeOf(3), Mode::all);
}

TEST(Mode, DoesNotExistForOtherNumbers) {
  for (const std::int64_t number :
       {std::int64_t{4}, std::int64_t{99}, std::int64_t{-1},
        std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
    EXPECT_EQ(modeOf(number), std::nullopt) << number;
  }
}

TEST(Mode, HasALabelForTheMenu) {
  EXPECT_EQ(label(Mode::percent), "Percent");
  EXPECT_EQ(label(Mode::percentPower), "Percent and battery power");
  EXPECT_EQ(label(Mode::percentTime), "Percent and time");
  EXPECT_EQ(label(Mode::all), "Percent, power and time");
}

TEST(Mode, ShowsTheExtrasListedInItsLabel) {
  const auto shows = [](Mode mode) {
    const TitleExtras extras = titleExtras(mode);
    return std::pair(extras.power, extras.time);
  };
  EXPECT_EQ(shows(Mode::percent), std::pair(false, false));
  EXPECT_EQ(shows(Mode::percentPower), std::pair(true, false));
  EXPECT_EQ(shows(Mode::percentTime), std::pair(false, true));
  EXPECT_EQ(shows(Mode::all), std::pair(true, true));
}

}  // namespace lumowatt

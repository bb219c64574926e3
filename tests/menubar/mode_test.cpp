#include "menubar/mode.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumowatt {

TEST(Mode, HasANumberForEachCase) {
  EXPECT_EQ(modeOf(0), Mode::percent);
  EXPECT_EQ(modeOf(1), Mode::percentPower);
  EXPECT_EQ(modeOf(2), Mode::percentTime);
  EXPECT_EQ(modeOf(3), Mode::all);
}

TEST(Mode, OtherNumbersHaveNone) {
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

TEST(Mode, ShowsWhatItsLabelSays) {
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

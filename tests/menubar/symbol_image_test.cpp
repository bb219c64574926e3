// The glyph in the button of the item.

#include <limits>

#include "menubar/app_fixture.h"

namespace lumowatt {

namespace {

class SymbolImage : public AppTest {
 protected:
  /// Returns the glyph for a battery after the given number of animation ticks.
  std::string glyph(const BatteryState& state, int ticks = 0) {
    refreshWith(state);
    desktop.advanceTime(0.7 * ticks + 0.01);
    return desktop.symbol();
  }

  static BatteryState chargingAt(std::int64_t percent) {
    return {.percent = percent, .watts = 20.0, .external = true, .charging = true};
  }
};

}  // namespace

TEST_F(SymbolImage, ShowsTheLevelOnBattery) {
  EXPECT_EQ(glyph({.percent = 64}), "battery.75percent template");
  EXPECT_EQ(glyph({.percent = 16}), "battery.25percent orange");
  EXPECT_EQ(glyph({.percent = 8}), "battery.0percent red");
}

TEST_F(SymbolImage, ShowsTheLevelOnPowerWhenNeitherChargingNorFull) {
  EXPECT_EQ(glyph({.percent = 80, .watts = 0.0, .external = true}), "battery.75percent template");
}

TEST_F(SymbolImage, ShowsTheBoltWhenFullOnPower) {
  EXPECT_EQ(glyph({.percent = 100, .watts = 0.0, .external = true, .full = true}),
            "battery.100percent.bolt green");
}

TEST_F(SymbolImage, ShowsTheLevelWhenFullWithoutPower) {
  EXPECT_EQ(glyph({.percent = 100, .watts = 0.0, .full = true}), "battery.100percent template");
}

TEST_F(SymbolImage, ShowsTheBoltWhenChargingAtOneHundredPercent) {
  EXPECT_EQ(glyph(chargingAt(100)), "battery.100percent.bolt green");
}

/// Levels that the animation shows for a charge.
struct Frames {
  std::int64_t percent;
  std::vector<int> levels;  ///< percentages of the first five frames
};

class AnimatedSymbolImage : public SymbolImage, public testing::WithParamInterface<Frames> {};

TEST_P(AnimatedSymbolImage, RepeatsTheLevelsUpToFullInGreen) {
  refreshWith(chargingAt(GetParam().percent));
  for (const int level : GetParam().levels) {
    EXPECT_EQ(desktop.symbol(), "battery." + std::to_string(level) + "percent green");
    desktop.advanceTime(0.7);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Percentages, AnimatedSymbolImage,
    testing::Values(Frames{5, {25, 50, 75, 100, 25}}, Frames{14, {25, 50, 75, 100, 25}},
                    Frames{36, {25, 50, 75, 100, 25}}, Frames{37, {50, 75, 100, 50, 75}},
                    Frames{40, {50, 75, 100, 50, 75}}, Frames{61, {50, 75, 100, 50, 75}},
                    Frames{62, {75, 100, 75, 100, 75}}, Frames{86, {75, 100, 75, 100, 75}},
                    Frames{87, {100, 100, 100, 100, 100}}, Frames{99, {100, 100, 100, 100, 100}}),
    [](const auto& test) { return std::to_string(test.param.percent); });

TEST_F(SymbolImage, IsATemplateWhenColorsAreOff) {
  app->setUseColor(false);
  EXPECT_EQ(glyph({.percent = 8}), "battery.0percent template");
  EXPECT_EQ(glyph({.percent = 100, .watts = 0.0, .external = true, .full = true}),
            "battery.100percent.bolt template");
}

TEST_F(SymbolImage, AnimatesInGreenEvenWhenColorsAreOff) {
  app->setUseColor(false);
  EXPECT_EQ(glyph(chargingAt(40)), "battery.50percent green");
}

TEST_F(SymbolImage, ShowsTheBoltWhenChargingWithReducedMotion) {
  desktop.reducedMotion = true;
  EXPECT_EQ(glyph(chargingAt(40), 2), "battery.100percent.bolt green");
}

TEST_F(SymbolImage, ShowsTheBoltWhenChargingWithoutTheAnimation) {
  app->setAnimate(false);
  EXPECT_EQ(glyph(chargingAt(40), 2), "battery.100percent.bolt green");
}

TEST_F(SymbolImage, HasTheSameDescriptionForALevelABoltAndAnAnimation) {
  const auto description = [this] {
    return desktop.buttonContents.image->accessibilityDescription;
  };
  refreshWith({.percent = 57});
  EXPECT_EQ(description(), "Battery 57 percent");
  refreshWith(chargingAt(57));
  EXPECT_EQ(description(), "Battery 57 percent");
  desktop.reducedMotion = true;
  refreshWith(chargingAt(57));
  EXPECT_EQ(description(), "Battery 57 percent");
}

TEST_F(SymbolImage, ShowsAFullBatteryAboveOneHundredPercentWhileAnimated) {
  // `app->last()` decides whether the glyph is animated. The reading that is passed to
  // `symbolImage` decides which frame is shown.
  refreshWith(chargingAt(50));
  Reading reading = *app->last();
  reading.percent = 112;
  const auto image = app->symbolImage(reading, {});
  EXPECT_EQ(std::get<Symbol>(image->content).name, "battery.100percent");
  EXPECT_EQ(image->accessibilityDescription, "Battery 112 percent");
}

TEST_F(SymbolImage, ExitsTheProcessIfThePercentageIsTooSmall) {
  refreshWith(chargingAt(50));
  Reading reading = *app->last();
  reading.percent = std::numeric_limits<std::int64_t>::min() + 11;
  EXPECT_EXIT(app->symbolImage(reading, {}), testing::ExitedWithCode(1),
              "^lumowatt: cannot animate the battery: its percentage is too small\n$");
  reading.percent = std::numeric_limits<std::int64_t>::min() + 12;
  EXPECT_EQ(std::get<Symbol>(app->symbolImage(reading, {})->content).name, "battery.25percent");
}

}  // namespace lumowatt

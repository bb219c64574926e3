// The glyph that the application shows.

#include <limits>

#include "menubar/app_fixture.h"

namespace lumowatt {

namespace {

class SymbolImage : public AppTest {
 protected:
  /// The glyph of a battery, after a number of ticks of the animation.
  std::string glyph(const BatteryState& state, int ticks = 0) {
    show(state);
    desktop.pass(0.7 * ticks + 0.01);
    return desktop.symbol();
  }

  static BatteryState chargingAt(std::int64_t percent) {
    return {.percent = percent, .watts = 20.0, .external = true, .charging = true};
  }
};

}  // namespace

TEST_F(SymbolImage, OnBatteryIsTheLevel) {
  EXPECT_EQ(glyph({.percent = 64}), "battery.75percent template");
  EXPECT_EQ(glyph({.percent = 16}), "battery.25percent orange");
  EXPECT_EQ(glyph({.percent = 8}), "battery.0percent red");
}

TEST_F(SymbolImage, OnPowerButNeitherChargingNorFullIsTheLevelWithoutABolt) {
  EXPECT_EQ(glyph({.percent = 80, .watts = 0.0, .external = true}), "battery.75percent template");
}

TEST_F(SymbolImage, FullOnPowerIsTheBolt) {
  EXPECT_EQ(glyph({.percent = 100, .watts = 0.0, .external = true, .full = true}),
            "battery.100percent.bolt green");
}

TEST_F(SymbolImage, FullWithoutPowerIsTheLevel) {
  EXPECT_EQ(glyph({.percent = 100, .watts = 0.0, .full = true}), "battery.100percent template");
}

TEST_F(SymbolImage, ChargingAtAHundredIsTheBolt) {
  EXPECT_EQ(glyph(chargingAt(100)), "battery.100percent.bolt green");
}

struct Frames {
  std::int64_t percent;
  std::vector<int> levels;  ///< of the first five frames
};

class AnimatedSymbolImage : public SymbolImage, public testing::WithParamInterface<Frames> {};

TEST_P(AnimatedSymbolImage, StepsFromAboveTheChargeLessTwelveToFullInGreen) {
  show(chargingAt(GetParam().percent));
  for (const int level : GetParam().levels) {
    EXPECT_EQ(desktop.symbol(), "battery." + std::to_string(level) + "percent green");
    desktop.pass(0.7);
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

TEST_F(SymbolImage, WithoutColorsTheLevelIsATemplate) {
  app->setUseColor(false);
  EXPECT_EQ(glyph({.percent = 8}), "battery.0percent template");
  EXPECT_EQ(glyph({.percent = 100, .watts = 0.0, .external = true, .full = true}),
            "battery.100percent.bolt template");
}

TEST_F(SymbolImage, WithoutColorsTheAnimationIsGreenAllTheSame) {
  app->setUseColor(false);
  EXPECT_EQ(glyph(chargingAt(40)), "battery.50percent green");
}

TEST_F(SymbolImage, WithReducedMotionChargingIsTheBolt) {
  desktop.reducedMotion = true;
  EXPECT_EQ(glyph(chargingAt(40), 2), "battery.100percent.bolt green");
}

TEST_F(SymbolImage, WithoutTheAnimationChargingIsTheBolt) {
  app->setAnimate(false);
  EXPECT_EQ(glyph(chargingAt(40), 2), "battery.100percent.bolt green");
}

TEST_F(SymbolImage, HasTheSameDescriptionInEveryVariant) {
  const auto description = [this] { return desktop.shown.image->accessibilityDescription; };
  show({.percent = 57});
  EXPECT_EQ(description(), "Battery 57 percent");
  show(chargingAt(57));
  EXPECT_EQ(description(), "Battery 57 percent");
  desktop.reducedMotion = true;
  show(chargingAt(57));
  EXPECT_EQ(description(), "Battery 57 percent");
}

TEST_F(SymbolImage, AboveAHundredAndTwelveWhileAnimatedIsFull) {
  // The animation is decided by the last reading, the frame by the one that is shown.
  show(chargingAt(50));
  Reading reading = *app->last();
  reading.percent = 112;
  const auto image = app->symbolImage(reading, {});
  EXPECT_EQ(std::get<Symbol>(image->content).name, "battery.100percent");
  EXPECT_EQ(image->accessibilityDescription, "Battery 112 percent");
}

TEST_F(SymbolImage, APercentageThatCannotBeReducedByTwelveIsFatal) {
  show(chargingAt(50));
  Reading reading = *app->last();
  reading.percent = std::numeric_limits<std::int64_t>::min() + 11;
  EXPECT_EXIT(app->symbolImage(reading, {}), testing::ExitedWithCode(1),
              "^lumowatt: cannot animate the battery: its percentage is too small\n$");
  reading.percent = std::numeric_limits<std::int64_t>::min() + 12;
  EXPECT_EQ(std::get<Symbol>(app->symbolImage(reading, {})->content).name, "battery.25percent");
}

}  // namespace lumowatt

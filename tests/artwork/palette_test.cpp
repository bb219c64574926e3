#include "artwork/palette.h"

#include <gtest/gtest.h>

namespace lumowatt::artwork {

TEST(Palette, CalibratedColorsDoNotDependOnTheAppearance) {
  for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
    // The components are rounded to multiples of 1/255: 25.5, 20.4, 38.25 and 237.15 of 255.
    EXPECT_EQ(resolved(CalibratedRgb{0.1, 0.08, 0.15}, appearance),
              (Rgba{26 / 255.0, 20 / 255.0, 38 / 255.0, 1.0}));
    EXPECT_EQ(resolved(CalibratedWhite{0.93}, appearance),
              (Rgba{237 / 255.0, 237 / 255.0, 237 / 255.0, 1.0}));
    EXPECT_EQ(resolved(white, appearance), (Rgba{1.0, 1.0, 1.0, 1.0}));
  }
}

TEST(Palette, SystemColorsDifferBetweenLightAndDark) {
  for (const SystemColor color :
       {SystemColor::green, SystemColor::orange, SystemColor::red, SystemColor::accent,
        SystemColor::label, SystemColor::secondaryLabel, SystemColor::separator}) {
    EXPECT_NE(resolved(color, Appearance::light), resolved(color, Appearance::dark))
        << static_cast<int>(color);
  }
}

TEST(Palette, TextIsBlackOnLightAndWhiteOnDarkBackgrounds) {
  for (const SystemColor color :
       {SystemColor::label, SystemColor::secondaryLabel, SystemColor::separator}) {
    EXPECT_EQ(resolved(color, Appearance::light).red, 0.0);
    EXPECT_EQ(resolved(color, Appearance::dark).red, 1.0);
  }
}

TEST(Palette, WindowIsNearlyWhiteInLightAndNearlyBlackInDark) {
  EXPECT_EQ(resolved(SystemColor::windowBackground, Appearance::light),
            (Rgba{250 / 255.0, 250 / 255.0, 250 / 255.0, 1.0}));
  EXPECT_EQ(resolved(SystemColor::windowBackground, Appearance::dark),
            (Rgba{36 / 255.0, 36 / 255.0, 36 / 255.0, 1.0}));
}

TEST(Palette, SecondaryTextIsFainterThanTextAndSeparatorsAreFaintest) {
  for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
    const double label = resolved(SystemColor::label, appearance).alpha;
    const double secondary = resolved(secondaryLabel, appearance).alpha;
    const double line = resolved(separator, appearance).alpha;
    EXPECT_LT(label, 1.0);
    EXPECT_LT(secondary, label);
    EXPECT_LT(line, secondary);
    EXPECT_GT(line, 0.0);
  }
}

TEST(Palette, TintsAreOpaque) {
  for (const SystemColor color :
       {SystemColor::green, SystemColor::orange, SystemColor::red, SystemColor::accent}) {
    for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
      EXPECT_EQ(resolved(color, appearance).alpha, 1.0) << static_cast<int>(color);
    }
  }
}

TEST(Palette, TintsAreBrighterOnDarkBackgrounds) {
  for (const SystemColor color :
       {SystemColor::green, SystemColor::orange, SystemColor::red, SystemColor::accent}) {
    const auto sum = [color](Appearance appearance) {
      const Rgba shade = resolved(color, appearance);
      return shade.red + shade.green + shade.blue;
    };
    EXPECT_GT(sum(Appearance::dark), sum(Appearance::light)) << static_cast<int>(color);
  }
}

TEST(Palette, GreenOrangeAndRedHaveTheirHues) {
  for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
    const Rgba green = resolved(systemGreen, appearance);
    EXPECT_GT(green.green, 2 * green.red);
    EXPECT_GT(green.green, 2 * green.blue);
    const Rgba orange = resolved(systemOrange, appearance);
    EXPECT_EQ(orange.red, 1.0);
    EXPECT_GT(orange.green, 0.5);
    EXPECT_LT(orange.blue, 0.1);
    const Rgba red = resolved(systemRed, appearance);
    EXPECT_EQ(red.red, 1.0);
    EXPECT_LT(red.green, 0.3);
    EXPECT_EQ(red.alpha, 1.0);
  }
}

}  // namespace lumowatt::artwork

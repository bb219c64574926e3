// Tests of drawing symbols on the canvas.

#include "platform/cairo/cairo_canvas.h"

#include <gtest/gtest.h>

#include <array>

#include "platform/cairo/render_helpers.h"

namespace lumowatt::cairo {

TEST(CairoCanvas, CentersATintedSymbolInItsRectangle) {
  const Symbol symbol{.name = "battery.100percent", .tint = red, .pointSize = 16.0};
  const Picture picture = drawnInImage(
      {40.0, 40.0}, true,
      [&](Canvas& canvas) {
        canvas.drawImage({symbol}, {4.0, 6.0, 26.0, 22.0});
      },
      4.0);
  const Rect bounds = inkBounds(picture);
  // The symbol is 16 units wide, so a unit is 26 / 16 points. The body is 10 units high.
  EXPECT_EQ(bounds.minX(), 4 * 4.0);
  EXPECT_EQ(bounds.maxX(), 4 * 30.0);
  EXPECT_NEAR((bounds.minY() + bounds.maxY()) / 2, 4 * 17.0, 0.5);
  EXPECT_NEAR(bounds.height, 4 * 10 * 26.0 / 16.0, 1.0);
  EXPECT_EQ(picture.at(4 * 14, 4 * 17), redPixel);
}

TEST(CairoCanvas, ScalesASymbolToTheHeightOfAWideRectangle) {
  const Symbol symbol{.name = "battery.100percent.bolt", .tint = red};
  const Picture picture = drawnInImage({100.0, 27.0}, true, [&](Canvas& canvas) {
    canvas.drawImage({symbol}, {0.0, 0.0, 100.0, 27.0});
  });
  // Symbols are up to 13.5 units high, so a unit is 2 points. This symbol is 32 of the 100 points
  // wide. Its height of 10 units is 20 of the 27 points.
  const Rect bounds = inkBounds(picture);
  EXPECT_EQ(bounds.minX(), 34.0);
  EXPECT_EQ(bounds.maxX(), 66.0);
  EXPECT_NEAR(bounds.height, 20.0, 1.0);
}

TEST(CairoCanvas, DrawsASymbolUprightWhetherOrNotFlipped) {
  const Symbol symbol{.name = "battery.100percent.bolt", .tint = red};
  const auto picture = [&](bool flipped) {
    return drawnInImage({64.0, 64.0}, flipped, [&](Canvas& canvas) {
      canvas.drawImage({symbol}, {0.0, 0.0, 64.0, 64.0});
    });
  };
  const Picture flipped = picture(true);
  const Picture upright = picture(false);
  for (int x = 0; x < 64; ++x) {
    for (int y = 0; y < 64; ++y) EXPECT_LE(difference(flipped.at(x, y), upright.at(x, y)), 2);
  }
  // The bolt is a hole. Its upper tip is right of the center, and its lower tip is left of the
  // center.
  for (const auto& [hole, filled, y] : {std::array{32, 23, 20}, std::array{23, 32, 43}}) {
    EXPECT_EQ(flipped.at(hole, y), transparentPixel);
    EXPECT_EQ(flipped.at(filled, y), redPixel);
  }
}

TEST(CairoCanvas, DrawsTheHolesOfASymbol) {
  const auto middle = [](const char* name) {
    return drawn({64.0, 64.0},
                 [&](Canvas& canvas) {
                   canvas.drawImage({Symbol{.name = name, .tint = red}}, {0.0, 0.0, 64.0, 64.0});
                 })
        .at(28, 32);
  };
  EXPECT_EQ(middle("battery.0percent"), transparentPixel);
  EXPECT_EQ(middle("battery.25percent"), transparentPixel);
  EXPECT_EQ(middle("battery.75percent"), redPixel);
}

TEST(CairoCanvas, DrawsATemplateInTheTextColor) {
  const Symbol symbol{.name = "battery.100percent", .isTemplate = true};
  const auto middle = [&](Appearance appearance) {
    return drawn(
               {64.0, 64.0},
               [&](Canvas& canvas) {
                 canvas.drawImage({symbol}, {0.0, 0.0, 64.0, 64.0});
               },
               1.0, appearance)
        .at(28, 32);
  };
  EXPECT_EQ(middle(Appearance::light), (Pixel{0, 0, 0, 217}));
  EXPECT_EQ(middle(Appearance::dark), (Pixel{255, 255, 255, 217}));
}

TEST(CairoCanvas, OmitsAnUnknownSymbol) {
  const Picture picture = drawn({8.0, 8.0}, [](Canvas& canvas) {
    canvas.drawImage({Symbol{.name = "battery.30percent", .tint = red}}, {0.0, 0.0, 8.0, 8.0});
  });
  EXPECT_EQ(picture.coverage(), 0.0);
}

}  // namespace lumowatt::cairo

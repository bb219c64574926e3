// Tests how the canvas draws filled areas, lines and images, by the pixels of a bitmap.

#include "platform/cairo/cairo_canvas.h"

#include <gtest/gtest.h>

#include "platform/cairo/render_helpers.h"

namespace lumowatt::cairo {

TEST(CairoCanvas, IsInitiallyTransparent) {
  const Picture picture = drawn({4.0, 3.0}, [](Canvas&) {});
  EXPECT_EQ(picture.width(), 4);
  EXPECT_EQ(picture.height(), 3);
  EXPECT_EQ(picture.coverage(), 0.0);
}

TEST(CairoCanvas, HasItsOriginAtTheBottomLeft) {
  const Picture picture = drawn({10.0, 20.0}, [](Canvas& canvas) {
    canvas.fill({1.0, 2.0, 3.0, 4.0}, red);
  });
  EXPECT_EQ(inkBounds(picture), (Rect{1.0, 14.0, 3.0, 4.0}));
  EXPECT_EQ(picture.at(1, 14), redPixel);
  EXPECT_EQ(picture.at(3, 17), redPixel);
}

TEST(CairoCanvas, HasItsOriginAtTheTopLeftInAFlippedImage) {
  const Picture picture = drawnInImage({10.0, 20.0}, true, [](Canvas& canvas) {
    canvas.fill({1.0, 2.0, 3.0, 4.0}, red);
  });
  EXPECT_EQ(inkBounds(picture), (Rect{1.0, 2.0, 3.0, 4.0}));
}

TEST(CairoCanvas, ScalesPointsToPixels) {
  const Picture picture = drawn(
      {10.0, 20.0},
      [](Canvas& canvas) {
        canvas.fill({1.0, 2.0, 3.0, 4.0}, red);
      },
      2.0);
  EXPECT_EQ(picture.width(), 20);
  EXPECT_EQ(picture.height(), 40);
  EXPECT_EQ(inkBounds(picture), (Rect{2.0, 28.0, 6.0, 8.0}));
}

TEST(CairoCanvas, DrawsNestedImagesUprightWhetherOrNotFlipped) {
  // Returns a drawing whose lower half is red and whose upper half is blue.
  const auto halves = [](bool flipped) {
    return Image{Drawing{
        .size = {2.0, 4.0}, .flipped = flipped, .draw = [flipped](Canvas& canvas, const Rect&) {
          canvas.fill({0.0, flipped ? 2.0 : 0.0, 2.0, 2.0}, red);
          canvas.fill({0.0, flipped ? 0.0 : 2.0, 2.0, 2.0}, blue);
        }}};
  };
  for (const bool outer : {false, true}) {
    for (const bool inner : {false, true}) {
      const Picture picture = drawnInImage({10.0, 10.0}, outer, [&](Canvas& canvas) {
        canvas.drawImage(halves(inner), {4.0, 3.0, 2.0, 4.0});
        canvas.fill({0.0, 0.0, 1.0, 1.0}, red);  // in the restored coordinates of the outer image
      });
      EXPECT_EQ(picture.at(4, 3), bluePixel) << outer << inner;
      EXPECT_EQ(picture.at(5, 4), bluePixel) << outer << inner;
      EXPECT_EQ(picture.at(4, 5), redPixel) << outer << inner;
      EXPECT_EQ(picture.at(5, 6), redPixel) << outer << inner;
      EXPECT_EQ(picture.at(0, outer ? 0 : 9), redPixel) << outer << inner;
      EXPECT_EQ(picture.coverage(), 9.0) << outer << inner;
    }
  }
}

TEST(CairoCanvas, RestoresItsOrientationAfterANestedImage) {
  // An image with the opposite orientation must not affect the text and the symbol drawn after it.
  const auto picture = [](bool flipped, bool withImage) {
    return drawnInImage({80.0, 40.0}, flipped, [&](Canvas& canvas) {
      const Drawing other{
          .size = {1.0, 1.0}, .flipped = !flipped, .draw = [](Canvas&, const Rect&) {}};
      if (withImage) canvas.drawImage({other}, {0.0, 0.0, 1.0, 1.0});
      canvas.drawText({{"Lp", systemFont(20.0), red}}, {2.0, 4.0});
      canvas.drawImage({Symbol{.name = "battery.100percent.bolt", .tint = red}},
                       {40.0, 0.0, 40.0, 40.0});
    });
  };
  for (const bool flipped : {false, true}) {
    const Picture with = picture(flipped, true);
    const Picture without = picture(flipped, false);
    EXPECT_GT(without.coverage(), 100.0);
    for (int x = 0; x < 80; ++x) {
      for (int y = 0; y < 40; ++y) EXPECT_EQ(with.at(x, y), without.at(x, y));
    }
  }
}

TEST(CairoCanvas, StretchesADrawingToItsRectangle) {
  const Image image{
      Drawing{.size = {2.0, 2.0}, .flipped = true, .draw = [](Canvas& canvas, const Rect& rect) {
                EXPECT_EQ(rect, (Rect{0.0, 0.0, 2.0, 2.0}));
                canvas.fill({1.0, 0.0, 1.0, 1.0}, red);
              }}};
  const Picture picture = drawnInImage({20.0, 20.0}, true, [&](Canvas& canvas) {
    canvas.drawImage(image, {2.0, 4.0, 8.0, 12.0});
  });
  EXPECT_EQ(inkBounds(picture), (Rect{6.0, 4.0, 4.0, 6.0}));
}

TEST(CairoCanvas, OmitsAnImageWithAnEmptySizeOrRectangle) {
  const auto image = [](Size size) {
    return Image{Drawing{.size = size, .flipped = true, .draw = [](Canvas&, const Rect&) {
                           FAIL() << "an empty image is drawn";
                         }}};
  };
  const Picture picture = drawn({4.0, 4.0}, [&](Canvas& canvas) {
    canvas.drawImage(image({0.0, 5.0}), {0.0, 0.0, 4.0, 4.0});
    canvas.drawImage(image({5.0, 0.0}), {0.0, 0.0, 4.0, 4.0});
    canvas.drawImage(image({5.0, 5.0}), {0.0, 0.0, 0.0, 4.0});
    canvas.drawImage(image({5.0, 5.0}), {0.0, 0.0, 4.0, 0.0});
    canvas.drawImage({Symbol{.name = "battery.50percent"}}, {0.0, 0.0, 0.0, 0.0});
    canvas.fill({0.0, 0.0, 1.0, 1.0}, red);
  });
  EXPECT_EQ(picture.coverage(), 1.0);
}

TEST(CairoCanvas, RoundsTheCornersOfARectangle) {
  const Picture picture = drawn({40.0, 30.0}, [](Canvas& canvas) {
    canvas.fillRoundedRect({0.0, 0.0, 40.0, 30.0}, 10.0, red);
  });
  for (const int x : {0, 1, 38, 39}) {
    for (const int y : {0, 1, 28, 29}) {
      EXPECT_EQ(picture.at(x, y), transparentPixel) << x << " " << y;
    }
  }
  EXPECT_EQ(picture.at(0, 15), redPixel);
  EXPECT_EQ(picture.at(39, 15), redPixel);
  EXPECT_EQ(picture.at(20, 0), redPixel);
  EXPECT_EQ(picture.at(20, 29), redPixel);
  EXPECT_EQ(picture.at(4, 4), redPixel);  // 8.5 from the center of the corner at (10, 10)
  // Each corner loses the part of a square of 10 outside of its quarter circle: 100 - 25 pi.
  EXPECT_NEAR(picture.coverage(), 40 * 30 - (400 - 314.16), 2.0);
}

TEST(CairoCanvas, LimitsTheCornerRadiusToHalfOfTheShorterSide) {
  const Picture picture = drawn({40.0, 20.0}, [](Canvas& canvas) {
    canvas.fillRoundedRect({0.0, 0.0, 40.0, 20.0}, 99.0, red);
  });
  EXPECT_NEAR(picture.coverage(), 20 * 20 + 314.16, 2.0);
}

TEST(CairoCanvas, FillsAPathWithTheGivenOpacity) {
  // A triangle that is half of the square from (2, 2) to (8, 8).
  const Path path{MoveTo{{2.0, 2.0}}, LineTo{{8.0, 2.0}}, LineTo{{2.0, 8.0}}, ClosePath{}};
  const auto filled = [&](const Color& color, double opacity) {
    return drawnInImage({10.0, 10.0}, true,
                        [&](Canvas& canvas) { canvas.fillPath(path, color, opacity); });
  };
  EXPECT_EQ(inkBounds(filled(red, 1.0)), (Rect{2.0, 2.0, 6.0, 6.0}));
  EXPECT_EQ(filled(red, 1.0).at(3, 3), redPixel);
  EXPECT_EQ(filled(red, 1.0).at(6, 6), transparentPixel);
  EXPECT_NEAR(filled(red, 1.0).coverage(), 18.0, 0.5);
  EXPECT_EQ(filled(red, 0.2).at(3, 3), (Pixel{255, 0, 0, 51}));
  // The opacity multiplies the alpha of a translucent color, here black with an alpha of 10
  // percent.
  EXPECT_EQ(filled(separator, 0.5).at(3, 3), (Pixel{0, 0, 0, 13}));
  EXPECT_EQ(filled(red, 0.0).coverage(), 0.0);
}

TEST(CairoCanvas, StrokesALineWithFlatEnds) {
  const Path path{MoveTo{{2.0, 5.0}}, LineTo{{8.0, 5.0}}};
  const Picture picture =
      drawn({10.0, 10.0}, [&](Canvas& canvas) { canvas.stroke(path, {.width = 2.0}, red); });
  EXPECT_EQ(inkBounds(picture), (Rect{2.0, 4.0, 6.0, 2.0}));
  EXPECT_EQ(picture.at(2, 4), redPixel);
}

TEST(CairoCanvas, StrokesALineWithRoundEnds) {
  const Path path{MoveTo{{20.0, 20.0}}, LineTo{{60.0, 20.0}}};
  const Picture picture = drawn({80.0, 40.0}, [&](Canvas& canvas) {
    canvas.stroke(path, {.width = 20.0, .cap = LineCap::round}, red);
  });
  EXPECT_EQ(inkBounds(picture), (Rect{10.0, 10.0, 60.0, 20.0}));
  EXPECT_NEAR(picture.coverage(), 40 * 20 + 314.16, 2.0);
}

TEST(CairoCanvas, StrokesMiteredAndRoundCorners) {
  const Path path{MoveTo{{10.0, 10.0}}, LineTo{{30.0, 10.0}}, LineTo{{30.0, 30.0}}};
  const auto corner = [&](LineJoin join) {
    return drawnInImage(
               {40.0, 40.0}, true,
               [&](Canvas& canvas) { canvas.stroke(path, {.width = 10.0, .join = join}, red); })
        .at(34, 5);
  };
  EXPECT_EQ(corner(LineJoin::miter), redPixel);
  EXPECT_EQ(corner(LineJoin::round), transparentPixel);
}

TEST(CairoCanvas, StrokesCurvesAndClosesFigures) {
  const Path path{MoveTo{{10.0, 10.0}}, CurveTo{{10.0, 40.0}, {40.0, 40.0}, {40.0, 10.0}},
                  ClosePath{}};
  const Picture picture = drawnInImage(
      {50.0, 50.0}, true, [&](Canvas& canvas) { canvas.stroke(path, {.width = 2.0}, red); });
  // The middle of the curve is at three quarters of the distance to its control points.
  EXPECT_EQ(picture.at(25, 32), redPixel);
  EXPECT_EQ(picture.at(25, 10), redPixel) << "the line that closes the figure";
  EXPECT_EQ(picture.at(25, 20), transparentPixel);
}

TEST(CairoCanvas, ResolvesColorsForItsAppearance) {
  const auto filled = [](const Color& color, Appearance appearance) {
    return drawn(
               {1.0, 1.0},
               [&](Canvas& canvas) {
                 canvas.fill({0.0, 0.0, 1.0, 1.0}, color);
               },
               1.0, appearance)
        .at(0, 0);
  };
  EXPECT_EQ(filled(CalibratedRgb{0.1, 0.08, 0.15}, Appearance::dark), (Pixel{26, 20, 38, 255}));
  EXPECT_EQ(filled(CalibratedWhite{0.93}, Appearance::light), (Pixel{237, 237, 237, 255}));
  EXPECT_EQ(filled(SystemColor::green, Appearance::light), (Pixel{40, 205, 65, 255}));
  EXPECT_EQ(filled(SystemColor::green, Appearance::dark), (Pixel{50, 215, 75, 255}));
  EXPECT_EQ(filled(separator, Appearance::light), (Pixel{0, 0, 0, 26}));
  EXPECT_EQ(filled(separator, Appearance::dark), (Pixel{255, 255, 255, 26}));
}

}  // namespace lumowatt::cairo

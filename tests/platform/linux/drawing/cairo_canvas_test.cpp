// What the canvas draws, seen in the pixels of a bitmap.

#include "platform/linux/drawing/cairo_canvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "platform/linux/drawing/cairo_bitmap.h"
#include "support/picture.h"

namespace lumowatt::drawing {

namespace {

constexpr Color red = CalibratedRgb{1.0, 0.0, 0.0};
constexpr Color blue = CalibratedRgb{0.0, 0.0, 1.0};
constexpr Color black = CalibratedWhite{0.0};
constexpr Pixel redPixel{255, 0, 0, 255};
constexpr Pixel bluePixel{0, 0, 255, 255};
constexpr Pixel nothing{0, 0, 0, 0};

/// A bitmap after `draw`, at one pixel to a point unless told otherwise.
Picture drawn(Size size, const std::function<void(Canvas&)>& draw, double scale = 1.0,
              Appearance appearance = Appearance::light) {
  CairoBitmap bitmap(size, scale, appearance);
  EXPECT_TRUE(bitmap.isValid());
  draw(bitmap.canvas());
  return Picture(bitmap.encodePng().value());
}

/// The same within an image that fills the bitmap.
Picture drawnInImage(Size size, bool flipped, const std::function<void(Canvas&)>& draw,
                     double scale = 1.0) {
  const Drawing drawing{
      .size = size, .flipped = flipped, .draw = [&](Canvas& canvas, const Rect&) { draw(canvas); }};
  return drawn(
      size,
      [&](Canvas& canvas) {
        canvas.drawImage({drawing}, {0.0, 0.0, size.width, size.height});
      },
      scale);
}

Size measured(const AttributedString& text) {
  CairoBitmap bitmap({1.0, 1.0}, 1.0, Appearance::light);
  return bitmap.canvas().textSize(text);
}

Rect whole(const Picture& picture) {
  return {0.0, 0.0, static_cast<double>(picture.width()), static_cast<double>(picture.height())};
}

Rect ink(const Picture& picture) { return picture.inkBounds(whole(picture), nothing); }

}  // namespace

TEST(CairoCanvas, IsTransparentAtFirst) {
  const Picture picture = drawn({4.0, 3.0}, [](Canvas&) {});
  EXPECT_EQ(picture.width(), 4);
  EXPECT_EQ(picture.height(), 3);
  EXPECT_EQ(picture.coverage(), 0.0);
}

TEST(CairoCanvas, FillsARectangleWithTheOriginAtTheBottomLeft) {
  const Picture picture = drawn({10.0, 20.0}, [](Canvas& canvas) {
    canvas.fill({1.0, 2.0, 3.0, 4.0}, red);
  });
  EXPECT_EQ(ink(picture), (Rect{1.0, 14.0, 3.0, 4.0}));
  EXPECT_EQ(picture.at(1, 14), redPixel);
  EXPECT_EQ(picture.at(3, 17), redPixel);
}

TEST(CairoCanvas, HasTheOriginOfAFlippedImageAtTheTopLeft) {
  const Picture picture = drawnInImage({10.0, 20.0}, true, [](Canvas& canvas) {
    canvas.fill({1.0, 2.0, 3.0, 4.0}, red);
  });
  EXPECT_EQ(ink(picture), (Rect{1.0, 2.0, 3.0, 4.0}));
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
  EXPECT_EQ(ink(picture), (Rect{2.0, 28.0, 6.0, 8.0}));
}

TEST(CairoCanvas, PutsImagesOfEitherKindIntoImagesOfEitherKindUpright) {
  // A drawing whose lower half is red and whose upper half is blue.
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
        canvas.fill({0.0, 0.0, 1.0, 1.0}, red);  // the space outside is as it was
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

TEST(CairoCanvas, AnImageInAnotherLeavesTheSpaceAsItWas) {
  // Text and a symbol after an image of the other kind look as they do without it.
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
  EXPECT_EQ(ink(picture), (Rect{6.0, 4.0, 4.0, 6.0}));
}

TEST(CairoCanvas, LeavesOutAnImageWithoutASizeOrARectangleToFill) {
  const auto image = [](Size size) {
    return Image{Drawing{.size = size, .flipped = true, .draw = [](Canvas&, const Rect&) {
                           FAIL() << "there is nothing to be drawn";
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
    for (const int y : {0, 1, 28, 29}) EXPECT_EQ(picture.at(x, y), nothing) << x << " " << y;
  }
  EXPECT_EQ(picture.at(0, 15), redPixel);
  EXPECT_EQ(picture.at(39, 15), redPixel);
  EXPECT_EQ(picture.at(20, 0), redPixel);
  EXPECT_EQ(picture.at(20, 29), redPixel);
  EXPECT_EQ(picture.at(4, 4), redPixel);  // 8.5 from the corner's centre at (10, 10)
  // A square of 10 loses what its quarter circle leaves: 100 - 25 pi, four times.
  EXPECT_NEAR(picture.coverage(), 40 * 30 - (400 - 314.16), 2.0);
}

TEST(CairoCanvas, ARadiusOfMoreThanHalfMakesRoundEnds) {
  const Picture picture = drawn({40.0, 20.0}, [](Canvas& canvas) {
    canvas.fillRoundedRect({0.0, 0.0, 40.0, 20.0}, 99.0, red);
  });
  EXPECT_NEAR(picture.coverage(), 20 * 20 + 314.16, 2.0);
}

TEST(CairoCanvas, StrokesALineOfItsWidthWithFlatEnds) {
  const Path path{MoveTo{{2.0, 5.0}}, LineTo{{8.0, 5.0}}};
  const Picture picture =
      drawn({10.0, 10.0}, [&](Canvas& canvas) { canvas.stroke(path, {.width = 2.0}, red); });
  EXPECT_EQ(ink(picture), (Rect{2.0, 4.0, 6.0, 2.0}));
  EXPECT_EQ(picture.at(2, 4), redPixel);
}

TEST(CairoCanvas, StrokesALineWithRoundEnds) {
  const Path path{MoveTo{{20.0, 20.0}}, LineTo{{60.0, 20.0}}};
  const Picture picture = drawn({80.0, 40.0}, [&](Canvas& canvas) {
    canvas.stroke(path, {.width = 20.0, .cap = LineCap::round}, red);
  });
  EXPECT_EQ(ink(picture), (Rect{10.0, 10.0, 60.0, 20.0}));
  EXPECT_NEAR(picture.coverage(), 40 * 20 + 314.16, 2.0);
}

TEST(CairoCanvas, StrokesCornersMiteredOrRound) {
  const Path path{MoveTo{{10.0, 10.0}}, LineTo{{30.0, 10.0}}, LineTo{{30.0, 30.0}}};
  const auto corner = [&](LineJoin join) {
    return drawnInImage(
               {40.0, 40.0}, true,
               [&](Canvas& canvas) { canvas.stroke(path, {.width = 10.0, .join = join}, red); })
        .at(34, 5);
  };
  EXPECT_EQ(corner(LineJoin::miter), redPixel);
  EXPECT_EQ(corner(LineJoin::round), nothing);
}

TEST(CairoCanvas, StrokesCurvesAndClosesFigures) {
  const Path path{MoveTo{{10.0, 10.0}}, CurveTo{{10.0, 40.0}, {40.0, 40.0}, {40.0, 10.0}},
                  ClosePath{}};
  const Picture picture = drawnInImage(
      {50.0, 50.0}, true, [&](Canvas& canvas) { canvas.stroke(path, {.width = 2.0}, red); });
  // In the middle the curve is at three quarters of the way to its control points.
  EXPECT_EQ(picture.at(25, 32), redPixel);
  EXPECT_EQ(picture.at(25, 10), redPixel) << "the line that closes it";
  EXPECT_EQ(picture.at(25, 20), nothing);
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

// Text

TEST(CairoCanvas, PutsTextBelowAndRightOfItsOriginInAFlippedSpace) {
  const AttributedString text{{"Hxg", systemFont(20.0), red}};
  const Picture picture = drawnInImage({100.0, 60.0}, true, [&](Canvas& canvas) {
    canvas.drawText(text, {10.0, 20.0});
  });
  const Size size = measured(text);
  const Rect found = ink(picture);
  EXPECT_GE(found.minX(), 9.0);
  EXPECT_LE(found.minX(), 14.0);
  EXPECT_GT(found.minY(), 20.0);
  EXPECT_LE(found.maxX(), 10.0 + size.width + 1.0);
  EXPECT_LE(found.maxY(), 20.0 + size.height + 1.0);
}

TEST(CairoCanvas, PutsTextAboveAndRightOfItsOriginInASpaceThatIsNotFlipped) {
  // The box of the text is the same, from its bottom left corner: the same pixels as flipped.
  const AttributedString text{{"Hxg", systemFont(20.0), red}};
  const Size size = measured(text);
  const Picture flipped = drawnInImage({100.0, 60.0}, true, [&](Canvas& canvas) {
    canvas.drawText(text, {10.0, 20.0});
  });
  const Picture upright = drawnInImage({100.0, 60.0}, false, [&](Canvas& canvas) {
    canvas.drawText(text, {10.0, 60.0 - 20.0 - size.height});
  });
  EXPECT_EQ(ink(upright), ink(flipped));
  EXPECT_NEAR(upright.coverage(), flipped.coverage(), 0.01 * flipped.coverage());
}

TEST(CairoCanvas, MeasuresTextAsItDrawsIt) {
  // Full blocks cover their boxes: the ink is as wide as what was measured.
  const AttributedString text{{"██████", systemFont(15.0), red}};
  const Size size = measured(text);
  const Picture picture = drawnInImage(
      {200.0, 60.0}, true,
      [&](Canvas& canvas) {
        canvas.drawText(text, {10.0, 20.0});
      },
      4.0);
  EXPECT_NEAR(ink(picture).width / 4.0, size.width, 1.0);
}

TEST(CairoCanvas, CountsBlanksAtTheEndsOfText) {
  const auto width = [](const char* text) { return measured({{text, systemFont(13.0)}}).width; };
  EXPECT_GT(width("a "), width("a") + 2.0);
  EXPECT_GT(width(" a"), width("a") + 2.0);
  EXPECT_GT(width("a  b"), width("a b") + 2.0);
  EXPECT_EQ(width(""), 0.0);
}

TEST(CairoCanvas, MonospacedDigitsAreEquallyWide) {
  const auto width = [](const char* text) {
    return measured({{text, monospacedDigitFont(15.0)}}).width;
  };
  const double zero = width("0");
  EXPECT_GT(zero, 5.0);
  for (const char* digit : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    EXPECT_EQ(width(digit), zero) << digit;
  }
  EXPECT_NEAR(width("−11.1 W"), width("−88.8 W"), 0.01);
}

TEST(CairoCanvas, TextGrowsWithItsFontsSize) {
  const Size small = measured({{"Battery", systemFont(10.0)}});
  const Size large = measured({{"Battery", systemFont(20.0)}});
  EXPECT_NEAR(large.width, 2 * small.width, 0.5);
  EXPECT_NEAR(large.height, 2 * small.height, 0.5);
}

TEST(CairoCanvas, BoldTextHasMoreInk) {
  const auto coverage = [](const Font& font) {
    return drawnInImage({200.0, 40.0}, true,
                        [&](Canvas& canvas) {
                          canvas.drawText({{"On battery", font, red}}, {5.0, 5.0});
                        })
        .coverage();
  };
  EXPECT_GT(coverage(boldSystemFont(14.0)), 1.2 * coverage(systemFont(14.0)));
}

TEST(CairoCanvas, RunsStandBehindEachOtherInTheirOwnFontsAndColors) {
  const AttributedString text{{"HH", systemFont(20.0), red}, {"HH", boldSystemFont(20.0), blue}};
  const double first = measured({text[0]}).width;
  EXPECT_NEAR(measured(text).width, first + measured({text[1]}).width, 0.01);
  const Picture picture = drawnInImage({120.0, 40.0}, true, [&](Canvas& canvas) {
    canvas.drawText(text, {0.0, 0.0});
  });
  for (int x = 0; x < picture.width(); ++x) {
    for (int y = 0; y < picture.height(); ++y) {
      const Pixel pixel = picture.at(x, y);
      if (pixel.alpha < 50) continue;
      EXPECT_EQ(pixel.red > 200, x < first) << x;
      EXPECT_EQ(pixel.blue > 200, x >= static_cast<int>(first)) << x;
    }
  }
}

TEST(CairoCanvas, ABaselineOffsetRaisesARun) {
  const auto top = [](double offset) {
    const Picture picture = drawnInImage(
        {60.0, 60.0}, true,
        [&](Canvas& canvas) {
          const TextRun plain{"H", systemFont(20.0), red};
          TextRun raised{"H", systemFont(10.0), blue};
          raised.baselineOffset = offset;
          canvas.drawText({plain, raised}, {5.0, 5.0});
        },
        4.0);
    // The raised run is the one on the right.
    const double left = std::ceil(4.0 * (5.0 + measured({{"H", systemFont(20.0)}}).width));
    return picture.inkBounds({left, 0.0, 240.0 - left, 240.0}, nothing).minY();
  };
  EXPECT_NEAR(top(0.0) - top(1.5), 4.0 * 1.5, 1.0);
  EXPECT_NEAR(top(-2.0) - top(0.0), 4.0 * 2.0, 1.0);
}

TEST(CairoCanvas, TextWithoutAColorIsBlack) {
  const auto picture = [](std::optional<Color> color) {
    return drawnInImage({40.0, 40.0}, true, [&](Canvas& canvas) {
      canvas.drawText({{"█", systemFont(20.0), color}}, {5.0, 5.0});
    });
  };
  const Picture plain = picture(std::nullopt);
  const Rect found = ink(plain);
  EXPECT_EQ(plain.at(static_cast<int>(found.x + found.width / 2),
                     static_cast<int>(found.y + found.height / 2)),
            (Pixel{0, 0, 0, 255}));
  EXPECT_EQ(found, ink(picture(black)));
}

TEST(CairoCanvas, FaintTextIsFaint) {
  const Picture picture = drawnInImage({40.0, 40.0}, true, [&](Canvas& canvas) {
    canvas.drawText({{"█", systemFont(20.0), secondaryLabel}}, {5.0, 5.0});
  });
  const Rect found = ink(picture);
  EXPECT_EQ(picture.at(static_cast<int>(found.x + found.width / 2),
                       static_cast<int>(found.y + found.height / 2)),
            (Pixel{0, 0, 0, 128}));
}

TEST(CairoCanvas, TextStaysOnOneLine) {
  const Size one = measured({{"a b", systemFont(13.0)}});
  const Size broken = measured({{"a\nb\r\n\u2029c", systemFont(13.0)}});
  EXPECT_EQ(broken.height, one.height);
  EXPECT_GT(broken.width, one.width / 2);
}

// Symbols

TEST(CairoCanvas, DrawsASymbolInItsTintInTheMiddleOfItsRectangle) {
  const Symbol symbol{.name = "battery.100percent", .tint = red, .pointSize = 16.0};
  const Picture picture = drawnInImage(
      {40.0, 40.0}, true,
      [&](Canvas& canvas) {
        canvas.drawImage({symbol}, {4.0, 6.0, 26.0, 22.0});
      },
      4.0);
  const Rect found = ink(picture);
  // 16 units wide: a unit is 26 / 16 points. The body is 7.46 units high.
  EXPECT_EQ(found.minX(), 4 * 4.0);
  EXPECT_EQ(found.maxX(), 4 * 30.0);
  EXPECT_NEAR((found.minY() + found.maxY()) / 2, 4 * 17.0, 0.5);
  EXPECT_NEAR(found.height, 4 * 7.46 * 26.0 / 16.0, 2.0);
  EXPECT_EQ(picture.at(4 * 14, 4 * 17), redPixel);
}

TEST(CairoCanvas, DrawsASymbolAsLargeAsTheHeightAllows) {
  const Symbol symbol{.name = "battery.100percent.bolt", .tint = red};
  const Picture picture = drawnInImage({100.0, 31.0}, true, [&](Canvas& canvas) {
    canvas.drawImage({symbol}, {0.0, 0.0, 100.0, 31.0});
  });
  // 12.4 units high: a unit is 2.5 points, the width 40 of the 100.
  const Rect found = ink(picture);
  EXPECT_EQ(found.minX(), 30.0);
  EXPECT_EQ(found.maxX(), 70.0);
  EXPECT_LE(found.height, 31.0);
  EXPECT_GE(found.height, 29.0);
}

TEST(CairoCanvas, DrawsASymbolUprightInEitherSpace) {
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
  // The bolt's upper tip leans to the right, the lower one to the left.
  const Rect top = flipped.inkBounds({0.0, 0.0, 64.0, 12.0}, nothing);
  const Rect bottom = flipped.inkBounds({0.0, 52.0, 64.0, 12.0}, nothing);
  EXPECT_GT(top.minX(), bottom.maxX());
}

TEST(CairoCanvas, ASymbolHasTheHolesOfItsShape) {
  const auto middle = [](const char* name) {
    return drawn({64.0, 64.0},
                 [&](Canvas& canvas) {
                   canvas.drawImage({Symbol{.name = name, .tint = red}}, {0.0, 0.0, 64.0, 64.0});
                 })
        .at(28, 32);
  };
  EXPECT_EQ(middle("battery.0percent"), nothing);
  EXPECT_EQ(middle("battery.25percent"), nothing);
  EXPECT_EQ(middle("battery.75percent"), redPixel);
}

TEST(CairoCanvas, DrawsATemplateInTheColorOfText) {
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

TEST(CairoCanvas, LeavesOutASymbolThatItDoesNotKnow) {
  const Picture picture = drawn({8.0, 8.0}, [](Canvas& canvas) {
    canvas.drawImage({Symbol{.name = "battery.30percent", .tint = red}}, {0.0, 0.0, 8.0, 8.0});
  });
  EXPECT_EQ(picture.coverage(), 0.0);
}

}  // namespace lumowatt::drawing

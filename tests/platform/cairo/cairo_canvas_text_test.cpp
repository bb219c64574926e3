// Text on the canvas: where it stands, how wide it is, what it looks like.

#include "platform/cairo/cairo_canvas.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/cairo/drawn.h"

namespace lumowatt::cairo {

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

namespace {

/// A dash so large that its middle is all ink, in whichever font.
Picture dash(std::optional<Color> color) {
  return drawnInImage({150.0, 150.0}, true, [&](Canvas& canvas) {
    canvas.drawText({{"—", systemFont(100.0), color}}, {5.0, 5.0});
  });
}

Pixel middle(const Picture& picture) {
  const Rect found = ink(picture);
  return picture.at(static_cast<int>(found.x + found.width / 2),
                    static_cast<int>(found.y + found.height / 2));
}

}  // namespace

TEST(CairoCanvas, TextWithoutAColorIsBlack) {
  EXPECT_EQ(middle(dash(std::nullopt)), (Pixel{0, 0, 0, 255}));
  EXPECT_EQ(ink(dash(std::nullopt)), ink(dash(black)));
}

TEST(CairoCanvas, FaintTextIsFaint) {
  EXPECT_EQ(middle(dash(secondaryLabel)), (Pixel{0, 0, 0, 128}));
}

TEST(CairoCanvas, TextStaysOnOneLine) {
  const Size one = measured({{"a b", systemFont(13.0)}});
  const Size broken = measured({{"a\nb\r\n\u2029c", systemFont(13.0)}});
  EXPECT_EQ(broken.height, one.height);
  EXPECT_GT(broken.width, one.width / 2);
}

}  // namespace lumowatt::cairo

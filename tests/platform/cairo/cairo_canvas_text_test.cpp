// Tests of the position, the size and the appearance of text on the canvas.

#include "platform/cairo/cairo_canvas.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/cairo/render_helpers.h"

namespace lumowatt::cairo {

TEST(CairoCanvas, DrawsTextBelowItsOriginInAFlippedImage) {
  const AttributedString text{{"Hxg", systemFont(20.0), red}};
  const Picture picture = drawnInImage({100.0, 60.0}, true, [&](Canvas& canvas) {
    canvas.drawText(text, {10.0, 20.0});
  });
  const Size size = measureText(text);
  const Rect bounds = inkBounds(picture);
  EXPECT_GE(bounds.minX(), 9.0);
  EXPECT_LE(bounds.minX(), 14.0);
  EXPECT_GT(bounds.minY(), 20.0);
  EXPECT_LE(bounds.maxX(), 10.0 + size.width + 1.0);
  EXPECT_LE(bounds.maxY(), 20.0 + size.height + 1.0);
}

TEST(CairoCanvas, DrawsTextAboveItsOriginInAnImageThatIsNotFlipped) {
  // Here the origin is the bottom left corner of the box. The box is at the same place as in the
  // flipped image, so the pixels must be the same.
  const AttributedString text{{"Hxg", systemFont(20.0), red}};
  const Size size = measureText(text);
  const Picture flipped = drawnInImage({100.0, 60.0}, true, [&](Canvas& canvas) {
    canvas.drawText(text, {10.0, 20.0});
  });
  const Picture upright = drawnInImage({100.0, 60.0}, false, [&](Canvas& canvas) {
    canvas.drawText(text, {10.0, 60.0 - 20.0 - size.height});
  });
  EXPECT_EQ(inkBounds(upright), inkBounds(flipped));
  EXPECT_NEAR(upright.coverage(), flipped.coverage(), 0.01 * flipped.coverage());
}

TEST(CairoCanvas, MeasuresTheWidthThatTextIsDrawnWith) {
  // Full blocks cover their boxes, so the covered pixels are as wide as the measured text.
  const AttributedString text{{"██████", systemFont(15.0), red}};
  const Size size = measureText(text);
  const Picture picture = drawnInImage(
      {200.0, 60.0}, true,
      [&](Canvas& canvas) {
        canvas.drawText(text, {10.0, 20.0});
      },
      4.0);
  EXPECT_NEAR(inkBounds(picture).width / 4.0, size.width, 1.0);
}

TEST(CairoCanvas, MeasuresLeadingAndTrailingSpacesOfText) {
  const auto width = [](const char* text) { return measureText({{text, systemFont(13.0)}}).width; };
  EXPECT_GT(width("a "), width("a") + 2.0);
  EXPECT_GT(width(" a"), width("a") + 2.0);
  EXPECT_GT(width("a  b"), width("a b") + 2.0);
  EXPECT_EQ(width(""), 0.0);
}

TEST(CairoCanvas, MonospacedDigitsHaveTheSameWidth) {
  const auto width = [](const char* text) {
    return measureText({{text, monospacedDigitFont(15.0)}}).width;
  };
  const double zero = width("0");
  EXPECT_GT(zero, 5.0);
  for (const char* digit : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    EXPECT_EQ(width(digit), zero) << digit;
  }
  EXPECT_NEAR(width("−11.1 W"), width("−88.8 W"), 0.01);
}

TEST(CairoCanvas, TextSizeIsProportionalToTheFontSize) {
  const Size small = measureText({{"Battery", systemFont(10.0)}});
  const Size large = measureText({{"Battery", systemFont(20.0)}});
  EXPECT_NEAR(large.width, 2 * small.width, 0.5);
  EXPECT_NEAR(large.height, 2 * small.height, 0.5);
}

TEST(CairoCanvas, BoldTextCoversMorePixels) {
  const auto coverage = [](const Font& font) {
    return drawnInImage({200.0, 40.0}, true,
                        [&](Canvas& canvas) {
                          canvas.drawText({{"On battery", font, red}}, {5.0, 5.0});
                        })
        .coverage();
  };
  EXPECT_GT(coverage(boldSystemFont(14.0)), 1.2 * coverage(systemFont(14.0)));
}

TEST(CairoCanvas, DrawsRunsSideBySideInTheirFontsAndColors) {
  const AttributedString text{{"HH", systemFont(20.0), red}, {"HH", boldSystemFont(20.0), blue}};
  const double first = measureText({text[0]}).width;
  EXPECT_NEAR(measureText(text).width, first + measureText({text[1]}).width, 0.01);
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

TEST(CairoCanvas, BaselineOffsetRaisesARun) {
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
    // The raised run starts at the end of the plain run.
    const double left = std::ceil(4.0 * (5.0 + measureText({{"H", systemFont(20.0)}}).width));
    return picture.inkBounds({left, 0.0, 240.0 - left, 240.0}, transparentPixel).minY();
  };
  EXPECT_NEAR(top(0.0) - top(1.5), 4.0 * 1.5, 1.0);
  EXPECT_NEAR(top(-2.0) - top(0.0), 4.0 * 2.0, 1.0);
}

namespace {

/// Draws a dash that is large enough to cover the pixel in its middle in any font.
Picture drawDash(std::optional<Color> color) {
  return drawnInImage({150.0, 150.0}, true, [&](Canvas& canvas) {
    canvas.drawText({{"—", systemFont(100.0), color}}, {5.0, 5.0});
  });
}

Pixel middlePixel(const Picture& picture) {
  const Rect bounds = inkBounds(picture);
  return picture.at(static_cast<int>(bounds.x + bounds.width / 2),
                    static_cast<int>(bounds.y + bounds.height / 2));
}

}  // namespace

TEST(CairoCanvas, DrawsTextWithoutAColorInBlack) {
  EXPECT_EQ(middlePixel(drawDash(std::nullopt)), (Pixel{0, 0, 0, 255}));
  EXPECT_EQ(inkBounds(drawDash(std::nullopt)), inkBounds(drawDash(black)));
}

TEST(CairoCanvas, DrawsTextInATranslucentColor) {
  EXPECT_EQ(middlePixel(drawDash(secondaryLabel)), (Pixel{0, 0, 0, 128}));
}

TEST(CairoCanvas, LaysOutTextWithLineBreaksOnOneLine) {
  const Size one = measureText({{"a b", systemFont(13.0)}});
  const Size broken = measureText({{"a\nb\r\n\u2029c", systemFont(13.0)}});
  EXPECT_EQ(broken.height, one.height);
  EXPECT_GT(broken.width, one.width / 2);
}

}  // namespace lumowatt::cairo

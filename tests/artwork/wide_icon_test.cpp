#include "artwork/wide_icon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "artwork/battery.h"
#include "graphics/symbol.h"
#include "support/files.h"
#include "support/picture.h"
#include "support/process.h"
#include "support/rendered.h"

namespace lumowatt::artwork {

namespace {

const Symbol battery{.name = std::string(symbol::battery75), .isTemplate = true};
const Symbol tinted{.name = std::string(symbol::battery75), .tint = systemOrange};

const Symbol noSymbol;

TextRun run(const char* text, std::optional<Color> color = std::nullopt) {
  return {.text = text, .font = monospacedDigitFont(12.0), .color = color};
}

const AttributedString title{run(" 64%"), run(" ▼", SystemColor::secondaryLabel),
                             run(" −8.3 W · 2:15")};

/// Renders an icon at the given height and preserves its aspect ratio, as panels do.
Picture rendered(const std::string& icon, int height) {
  const TemporaryFolder folder;
  folder.write("icon.svg", icon);
  const std::string png = folder.path() / "icon.png";
  const auto result = runProcess({"rsvg-convert", "-h", std::to_string(height),
                                  "--keep-aspect-ratio", "-o", png, folder.path() / "icon.svg"});
  EXPECT_EQ(result.status, 0) << result.errors;
  return Picture(fileContents(png));
}

/// Returns whether a pixel in the columns from `start` to before `end` has about the given color.
bool hasInk(const Picture& picture, int start, int end, const Pixel& color, int tolerance = 2) {
  for (int x = start; x < end; ++x) {
    for (int y = 0; y < picture.height(); ++y) {
      const Pixel pixel = picture.at(x, y);
      const Pixel opaque{pixel.red, pixel.green, pixel.blue, 255};
      if (pixel.alpha > 200 && difference(opaque, color) <= tolerance) return true;
    }
  }
  return false;
}

// Colors of the palette for a dark background.
constexpr Pixel white{255, 255, 255, 255};
constexpr Pixel green{0x32, 0xd7, 0x4b, 255};
constexpr Pixel orange{0xff, 0x9f, 0x0a, 255};
constexpr Pixel red{0xff, 0x45, 0x3a, 255};

// Backgrounds of panels: black, white, the clock and the tray in waybar's default style, and gray.
constexpr std::array<Pixel, 5> backgrounds{{{0, 0, 0, 255},
                                            {255, 255, 255, 255},
                                            {0x64, 0x72, 0x7d, 255},
                                            {0x29, 0x80, 0xb9, 255},
                                            {128, 128, 128, 255}}};

/// Returns the color of a pixel blended with an opaque background.
Pixel blend(const Pixel& background, const Pixel& pixel) {
  const auto mixed = [&](int above, int below) {
    return (above * pixel.alpha + below * (255 - pixel.alpha) + 127) / 255;
  };
  return {mixed(pixel.red, background.red), mixed(pixel.green, background.green),
          mixed(pixel.blue, background.blue), 255};
}

constexpr double legibleContrast = 4.5;

/// Returns the color of the plate, at a pixel left of the symbol and the title.
Pixel plateColor(const Picture& picture) { return picture.at(1, picture.height() / 2); }

/// Returns the smallest rectangle that contains all light pixels.
Rect lightBounds(const Picture& picture) {
  Rect bounds{1.0 * picture.width(), 1.0 * picture.height(), 0.0, 0.0};
  Point end{0.0, 0.0};
  for (int x = 0; x < picture.width(); ++x) {
    for (int y = 0; y < picture.height(); ++y) {
      if (picture.at(x, y).green < 128) continue;
      bounds.x = std::min(bounds.x, 1.0 * x);
      bounds.y = std::min(bounds.y, 1.0 * y);
      end = {std::max(end.x, x + 1.0), std::max(end.y, y + 1.0)};
    }
  }
  bounds.width = end.x - bounds.x;
  bounds.height = end.y - bounds.y;
  return bounds;
}

}  // namespace

TEST(WideIcon, IsValidXmlWithoutTextElements) {
  const TemporaryFolder folder;
  const std::string icon = wideIcon(battery, title);
  folder.write("icon.svg", icon);
  const auto result = runProcess({"xmllint", "--noout", folder.path() / "icon.svg"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(icon.find("<text"), std::string::npos);
}

TEST(WideIcon, MatchesItsReferencePicture) {
  const AttributedString everyCharacter{run(" 0123456789%"), run(" ▲▼•", systemGreen),
                                        run(" W+−-.·:", SystemColor::secondaryLabel),
                                        run(" Nabertoy", systemRed)};
  expectLooksLike(wideIcon(tinted, everyCharacter), "wide-icon");
}

TEST(WideIcon, ShowsTheGlyphAndTheTitleSideBySide) {
  for (const int height : {16, 22, 64}) {
    const Picture picture = rendered(wideIcon(battery, title), height);
    EXPECT_GT(picture.width(), 5 * height);
    constexpr int blurred = 70;  // tolerance for lines that are about as thick as a pixel
    EXPECT_TRUE(hasInk(picture, 0, height, white)) << height;
    EXPECT_TRUE(hasInk(picture, height * 5 / 4, 2 * height, white, blurred)) << height;
    EXPECT_TRUE(hasInk(picture, picture.width() - height * 3 / 4, picture.width(), white, blurred))
        << height;
  }
}

TEST(WideIcon, ShowsTheTitleNoBatteryCompletely) {
  const Symbol missing{.name = std::string(noBattery)};
  constexpr int height = 64;
  const Picture glyph = rendered(wideIcon(missing, {}), height);
  const Picture picture = rendered(wideIcon(missing, {run(" No battery")}), height);
  EXPECT_GT(picture.width(), glyph.width() + 2 * height);
  EXPECT_TRUE(hasInk(picture, glyph.width(), picture.width(), white));
  for (int x = 0; x < picture.width(); ++x) {
    EXPECT_LT(picture.at(x, height - 1).green, 128)
        << "the descender of the y must end above this row, at " << x;
  }
}

TEST(WideIcon, WidthDoesNotDependOnTheDigits) {
  const int width = rendered(wideIcon(battery, title), 64).width();
  for (const char* text : {" −1.1 W · 1:11", " +8.8 W · 8:88"}) {
    EXPECT_EQ(rendered(wideIcon(battery, {title[0], title[1], run(text)}), 64).width(), width);
  }
  EXPECT_LT(rendered(wideIcon(battery, {title[0], title[1]}), 64).width(), width);
}

TEST(WideIcon, UsesTheColorsOfTheSymbolAndOfTheRuns) {
  const AttributedString charging{run(" 64%"), run(" ▲", systemGreen), run(" +8.3 W")};
  const Picture picture = rendered(wideIcon(tinted, charging), 64);
  constexpr int glyphEnd = 76;  // the margin and the symbol
  EXPECT_TRUE(hasInk(picture, 0, glyphEnd, orange));
  EXPECT_FALSE(hasInk(picture, glyphEnd, picture.width(), orange));
  EXPECT_TRUE(hasInk(picture, glyphEnd, picture.width(), green));
  EXPECT_TRUE(hasInk(picture, glyphEnd, picture.width(), white));
}

TEST(WideIcon, TextAndTintsAreLegibleOnAnyBackground) {
  struct Case {
    std::optional<Color> color;
    Pixel expected{};
  };
  for (const auto& [color, expected] :
       {Case{std::nullopt, white}, Case{secondaryLabel, white}, Case{SystemColor::label, white},
        Case{systemGreen, green}, Case{systemOrange, orange}, Case{systemRed, red}}) {
    const Symbol symbol{.name = std::string(symbol::battery100), .tint = color};
    const Picture glyph = rendered(wideIcon(symbol, {}), 64);
    const Picture text = rendered(wideIcon(noSymbol, {run("▼", color)}), 64);
    EXPECT_TRUE(hasInk(glyph, 0, glyph.width(), expected));
    EXPECT_TRUE(hasInk(text, 0, text.width(), expected));
    for (const Pixel& background : backgrounds) {
      EXPECT_GE(contrast(expected, blend(background, plateColor(text))), legibleContrast)
          << expected << " on " << background;
    }
  }
}

TEST(WideIcon, DigitsAreLegibleAtSixteenPixelsOnAnyBackground) {
  for (const char* digit : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    const Picture picture = rendered(wideIcon(noSymbol, {run(digit)}), 16);
    for (const Pixel& background : backgrounds) {
      const Pixel dark = blend(background, plateColor(picture));
      int legiblePixels = 0;
      for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
          const Pixel seen = blend(background, picture.at(x, y));
          const bool isLighter = luminance(seen) > luminance(dark);
          if (isLighter && y >= 3 && y < 13 && contrast(seen, dark) >= legibleContrast) {
            ++legiblePixels;
          }
        }
      }
      EXPECT_GE(legiblePixels, 10) << digit << " on " << background;
    }
  }
}

TEST(WideIcon, LooksSimilarOnWhiteAndOnBlack) {
  // The round corners are transparent and therefore not compared.
  for (const int height : {16, 22, 64}) {
    const Picture picture = rendered(wideIcon(battery, title), height);
    const int corner = height / 4 + 1;
    for (int x = corner; x < picture.width() - corner; ++x) {
      for (int y = 0; y < height; ++y) {
        const Pixel pixel = picture.at(x, y);
        EXPECT_LE(difference(blend(backgrounds[0], pixel), blend(backgrounds[1], pixel)), 32)
            << "at " << x << " " << y << " of " << height;
      }
    }
  }
}

TEST(WideIcon, HasAPlateWithRoundCorners) {
  const Picture picture = rendered(wideIcon(battery, title), 64);
  for (const int x : {0, picture.width() - 1}) {
    for (const int y : {0, 63}) EXPECT_EQ(picture.at(x, y).alpha, 0) << x << " " << y;
    EXPECT_GT(picture.at(x, 32).alpha, 200) << x;
  }
}

TEST(WideIcon, HasTheSameMarginOnBothSides) {
  const Picture picture = rendered(wideIcon(noSymbol, {run("0%0")}), 64);
  const Rect ink = lightBounds(picture);
  EXPECT_NEAR(ink.minX(), picture.width() - ink.maxX(), 1.0);
  EXPECT_GE(ink.minX(), 10.0);
}

TEST(WideIcon, ArrowsAreWiderThanDigitsAtSixteenPixels) {
  for (const char* arrow : {"▲", "▼"}) {
    const Rect ink = lightBounds(rendered(wideIcon(noSymbol, {run(arrow)}), 16));
    EXPECT_GE(ink.width, 6.0) << arrow;
    EXPECT_GE(ink.height, 5.0) << arrow;
    EXPECT_GT(ink.width, lightBounds(rendered(wideIcon(noSymbol, {run("0")}), 16)).width);
  }
}

TEST(WideIcon, DotDiffersFromAZeroAtSixteenPixels) {
  const auto center = [](const Picture& picture) { return picture.at(picture.width() / 2, 8); };
  const Picture dot = rendered(wideIcon(noSymbol, {run("•")}), 16);
  const Picture zero = rendered(wideIcon(noSymbol, {run("0")}), 16);
  EXPECT_EQ(center(dot), white);
  EXPECT_GE(contrast(white, blend(backgrounds[1], center(zero))), legibleContrast);
  EXPECT_EQ(lightBounds(dot).width, lightBounds(dot).height);
  EXPECT_LE(lightBounds(dot).height, 0.6 * lightBounds(zero).height);
}

TEST(WideIcon, MiddleDotIsCenteredVertically) {
  const Picture picture = rendered(wideIcon(noSymbol, {run("·")}), 64);
  const Rect ink = lightBounds(picture);
  EXPECT_NEAR(ink.minY() + ink.height / 2.0, 32.0, 3.0);
}

TEST(WideIcon, ShowsOnlyTheTitleWithoutASymbol) {
  const Picture picture = rendered(wideIcon(noSymbol, {run("64%")}), 64);
  EXPECT_LT(picture.width(), 2 * 64);
  EXPECT_TRUE(hasInk(picture, 0, 30, white));
}

TEST(WideIcon, OmitsARunWithUnsupportedCharacters) {
  EXPECT_EQ(wideIcon(battery, {run(" 64%"), run(" nan W")}), wideIcon(battery, {run(" 64%")}));
}

}  // namespace lumowatt::artwork

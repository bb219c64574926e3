#include "artwork/wide_icon.h"

#include <gtest/gtest.h>

#include "artwork/battery.h"
#include "graphics/symbol.h"
#include "support/files.h"
#include "support/picture.h"
#include "support/process.h"

namespace lumowatt::artwork {

namespace {

const Symbol battery{.name = std::string(symbol::battery75), .isTemplate = true};
const Symbol tinted{.name = std::string(symbol::battery75), .tint = systemOrange};

TextRun run(const char* text, std::optional<Color> color = std::nullopt) {
  return {.text = text, .font = monospacedDigitFont(12.0), .color = color};
}

const AttributedString title{run(" 64%"), run(" ▼", SystemColor::secondaryLabel),
                             run(" −8.3 W · 2:15")};

/// The icon as panels scale it, to a height, with its own proportions.
Picture rendered(const std::string& icon, int height) {
  const TemporaryFolder folder;
  folder.write("icon.svg", icon);
  const std::string png = folder.path() / "icon.png";
  const auto result = runProcess({"rsvg-convert", "-h", std::to_string(height),
                                  "--keep-aspect-ratio", "-o", png, folder.path() / "icon.svg"});
  EXPECT_EQ(result.status, 0) << result.errors;
  return Picture(fileContents(png));
}

/// Whether a pixel of the columns from `start` up to `end` has that colour, more or less.
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

// Those that the palette has for a dark background.
constexpr Pixel white{255, 255, 255, 255};
constexpr Pixel green{0x32, 0xd7, 0x4b, 255};
constexpr Pixel orange{0xff, 0x9f, 0x0a, 255};

}  // namespace

TEST(WideIcon, IsValidAndOfPathsAlone) {
  const TemporaryFolder folder;
  const std::string icon = wideIcon(battery, title);
  folder.write("icon.svg", icon);
  const auto result = runProcess({"xmllint", "--noout", folder.path() / "icon.svg"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(icon.find("<text"), std::string::npos);
}

TEST(WideIcon, HasTheGlyphAndTheTitleSideBySide) {
  for (const int height : {16, 22, 64}) {
    const Picture picture = rendered(wideIcon(battery, title), height);
    EXPECT_GT(picture.width(), 5 * height);
    constexpr int blurred = 70;  // where lines are about as thick as a pixel
    EXPECT_TRUE(hasInk(picture, 0, height, white)) << height;
    EXPECT_TRUE(hasInk(picture, height + 1, 2 * height, white, blurred)) << height;
    EXPECT_TRUE(hasInk(picture, picture.width() - height / 2, picture.width(), white, blurred))
        << height;
  }
}

TEST(WideIcon, IsAsWideAsItsTitleWhateverTheDigits) {
  const int width = rendered(wideIcon(battery, title), 64).width();
  for (const char* text : {" −1.1 W · 1:11", " +8.8 W · 8:88"}) {
    EXPECT_EQ(rendered(wideIcon(battery, {title[0], title[1], run(text)}), 64).width(), width);
  }
  EXPECT_LT(rendered(wideIcon(battery, {title[0], title[1]}), 64).width(), width);
}

TEST(WideIcon, HasTheColorsOfTheGlyphAndOfTheRuns) {
  const AttributedString charging{run(" 64%"), run(" ▲", systemGreen), run(" +8.3 W")};
  const Picture picture = rendered(wideIcon(tinted, charging), 64);
  EXPECT_TRUE(hasInk(picture, 0, 64, orange));
  EXPECT_FALSE(hasInk(picture, 64, picture.width(), orange));
  EXPECT_TRUE(hasInk(picture, 64, picture.width(), green));
  EXPECT_TRUE(hasInk(picture, 64, picture.width(), white));
}

TEST(WideIcon, HasADarkEdgeThatLightGroundShows) {
  const Picture picture = rendered(wideIcon(battery, title), 64);
  int dark = 0;
  for (int x = 0; x < picture.width(); ++x) {
    for (int y = 0; y < picture.height(); ++y) {
      const Pixel pixel = picture.at(x, y);
      if (pixel.alpha > 150 && pixel.red < 10) ++dark;
    }
  }
  EXPECT_GT(dark, 20 * 64);
}

TEST(WideIcon, TheDotBetweenFiguresIsInTheMiddle) {
  // What the dot adds to a blank of the same width.
  const Picture picture = rendered(wideIcon(std::nullopt, {run("·")}), 64);
  const Rect ink = picture.inkBounds({0.0, 0.0, 1.0 * picture.width(), 64.0}, {0, 0, 0, 0});
  EXPECT_NEAR(ink.minY() + ink.height / 2.0, 32.0, 3.0);
}

TEST(WideIcon, WithoutASymbolIsTheTitle) {
  const Picture picture = rendered(wideIcon(std::nullopt, {run("64%")}), 64);
  EXPECT_LT(picture.width(), 2 * 64);
  EXPECT_TRUE(hasInk(picture, 0, 30, white));
}

TEST(WideIcon, LeavesOutARunThatCannotBeDrawn) {
  EXPECT_EQ(wideIcon(battery, {run(" 64%"), run(" nan W")}), wideIcon(battery, {run(" 64%")}));
}

}  // namespace lumowatt::artwork

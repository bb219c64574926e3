// Tests of the names, the contents and the rendering of icons.

#include "artwork/svg.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>

#include "artwork/battery.h"
#include "artwork/icon.h"
#include "graphics/symbol.h"
#include "support/files.h"
#include "support/fixtures.h"
#include "support/picture.h"
#include "support/process.h"
#include "support/rendered.h"

namespace lumowatt::artwork {

namespace {

constexpr std::array levels{symbol::battery0, symbol::battery25, symbol::battery50,
                            symbol::battery75, symbol::battery100};

/// A temporary folder that contains every icon.
struct IconFolder {
  TemporaryFolder folder{memoryFolder()};

  IconFolder() {
    for (const Icon& icon : everyIcon()) folder.write(icon.fileName(), icon.contents());
  }
};

std::string fileOf(const Icon& icon) {
  static const IconFolder icons;
  return icons.folder.path() / icon.fileName();
}

/// Renders the template of a symbol in the color of `Ink::unknown`, at `size` by `size` pixels.
Picture rendered(std::string_view name, int size) {
  return lumowatt::rendered(fileOf({name}), size);
}

Pixel pixel(std::string_view hex) {
  const auto component = [hex](std::size_t at) {
    return static_cast<int>(std::strtol(std::string(hex.substr(at, 2)).c_str(), nullptr, 16));
  };
  return {component(1), component(3), component(5), 255};
}

/// Returns the alpha values of a column of pixels from top to bottom, each from 0 to 1.
std::vector<double> column(const Picture& picture, int x) {
  std::vector<double> alphas;
  alphas.reserve(static_cast<std::size_t>(picture.height()));
  for (int y = 0; y < picture.height(); ++y) alphas.push_back(picture.at(x, y).alpha / 255.0);
  return alphas;
}

/// Returns the alpha values of a row of pixels from left to right, each from 0 to 1.
std::vector<double> row(const Picture& picture, int y) {
  std::vector<double> alphas;
  alphas.reserve(static_cast<std::size_t>(picture.width()));
  for (int x = 0; x < picture.width(); ++x) alphas.push_back(picture.at(x, y).alpha / 255.0);
  return alphas;
}

/// Returns a character for each run of covered ('#') or free ('.') pixels. Ignores pixels that are
/// partly covered.
std::string summarizeRuns(const std::vector<double>& alphas) {
  std::string kinds;
  for (const double alpha : alphas) {
    const char kind = alpha > 0.8 ? '#' : alpha < 0.2 ? '.' : '\0';
    if (kind != '\0' && (kinds.empty() || kinds.back() != kind)) kinds += kind;
  }
  return kinds;
}

/// Expects each alpha value to equal the expected value, apart from rounding by the renderer.
void expectAlphas(const std::vector<double>& alphas, const std::vector<double>& expected) {
  ASSERT_EQ(alphas.size(), expected.size());
  for (std::size_t i = 0; i < alphas.size(); ++i) EXPECT_NEAR(alphas[i], expected[i], 0.03) << i;
}

}  // namespace

TEST(Decimal, RoundsToThousandthsWithoutTrailingZeros) {
  EXPECT_EQ(decimal(0.0), "0");
  EXPECT_EQ(decimal(22.0), "22");
  EXPECT_EQ(decimal(0.75), "0.75");
  EXPECT_EQ(decimal(1.005), "1.005");
  EXPECT_EQ(decimal(12.3456), "12.346");
  EXPECT_EQ(decimal(0.0004), "0");
  EXPECT_EQ(decimal(100.0), "100");
}

TEST(Decimal, HasASignForNegativeFractionsButNotForZero) {
  EXPECT_EQ(decimal(-0.25), "-0.25");
  EXPECT_EQ(decimal(-3.5), "-3.5");
  EXPECT_EQ(decimal(-0.0004), "0");
}

TEST(Svg, MultipliesItsDisplaySizeByTheMagnification) {
  const std::string icon = svg({22.0, 11.5}, "<path/>", Ink::unknown, 4.0);
  const std::string start =
      R"(<svg xmlns="http://www.w3.org/2000/svg" width="88" height="46" viewBox="0 0 22 11.5">)";
  EXPECT_EQ(icon.substr(0, start.size()), start);
  EXPECT_NE(icon.find("<path/>"), std::string::npos);
}

TEST(IconName, ContainsTheSymbolAndTheTint) {
  EXPECT_EQ(iconName("battery.25percent", std::nullopt), "lumowatt-battery-25percent-symbolic");
  EXPECT_EQ(iconName("battery.25percent", SystemColor::green), "lumowatt-battery-25percent-green");
  EXPECT_EQ(iconName("battery.100percent.bolt", SystemColor::orange),
            "lumowatt-battery-100percent-bolt-orange");
  EXPECT_EQ(iconName("battery.0percent", SystemColor::red), "lumowatt-battery-0percent-red");
}

TEST(IconName, IgnoresAColorWithoutIcons) {
  EXPECT_EQ(iconName("battery.0percent", SystemColor::accent),
            "lumowatt-battery-0percent-symbolic");
}

TEST(IconName, OfATemplateContainsTheInkBeforeSymbolic) {
  EXPECT_EQ(iconName("battery.25percent", std::nullopt, Ink::unknown),
            "lumowatt-battery-25percent-symbolic");
  EXPECT_EQ(iconName("battery.25percent", std::nullopt, Ink::dark),
            "lumowatt-battery-25percent-dark-symbolic");
  EXPECT_EQ(iconName("battery.slash", std::nullopt, Ink::light),
            "lumowatt-battery-slash-light-symbolic");
  EXPECT_EQ(iconName("battery.25percent", SystemColor::accent, Ink::light),
            "lumowatt-battery-25percent-light-symbolic");
}

TEST(IconName, OfATintedIconDoesNotDependOnTheInk) {
  for (const IconInk& ink : iconInks) {
    EXPECT_EQ(iconName("battery.25percent", SystemColor::green, ink.ink),
              "lumowatt-battery-25percent-green");
  }
}

TEST(Icons, AreValidXml) {
  std::vector<std::string> command{"xmllint", "--noout"};
  for (const Icon& icon : everyIcon()) command.push_back(fileOf(icon));
  const auto result = runProcess(command);
  EXPECT_EQ(result.status, 0) << result.errors;
}

TEST(Icons, TemplatesHaveTheStyleSheetThatPanelsRecolor) {
  for (const Icon& icon : templateIcons()) {
    const std::string contents = icon.contents();
    EXPECT_NE(contents.find(R"(<style type="text/css" id="current-color-scheme">)"
                            ".ColorScheme-Text{color:" +
                            std::string(icon.color()) + "}</style>"),
              std::string::npos)
        << icon;
    EXPECT_NE(contents.find(R"(<path class="ColorScheme-Text" fill="currentColor")"),
              std::string::npos)
        << icon;
  }
}

TEST(Icons, TintedIconsContainTheirColor) {
  for (const IconTint& tint : iconTints) {
    const std::string contents = Icon{.name = symbol::battery50, .tint = tint.color}.contents();
    EXPECT_NE(contents.find("<path fill=\"" + std::string(tint.value) + "\""), std::string::npos);
    EXPECT_EQ(contents.find("currentColor"), std::string::npos);
  }
}

TEST(Icons, TintsAndUnknownInkContrastWithLightAndDarkPanels) {
  for (const std::string_view color :
       {iconTints[0].value, iconTints[1].value, iconTints[2].value, colorOf(Ink::unknown)}) {
    EXPECT_GE(contrast(pixel(color), pixel("#ffffff")), 3.0) << color;
    EXPECT_GE(contrast(pixel(color), pixel("#2d2d2d")), 3.0) << color;
    EXPECT_GE(contrast(pixel(color), pixel("#000000")), 3.0) << color;
  }
}

TEST(Icons, KnownInksContrastWithPanelsOfTheirColorScheme) {
  // White, Adwaita, Breeze, Clearlooks (LXQt), and the darkest colors of the gradients of Light and
  // Silver (LXQt).
  for (const char* panel : {"#ffffff", "#ebebeb", "#eff0f1", "#edeceb", "#c0c0c0", "#adadad"}) {
    EXPECT_GE(contrast(pixel(colorOf(Ink::dark)), pixel(panel)), 4.5) << panel;
  }
  // Black, Adwaita, Breeze, and the lightest colors of the gradients of Ambiance and Kvantum
  // (LXQt).
  for (const char* panel : {"#000000", "#2e3436", "#31363b", "#515048", "#505050"}) {
    EXPECT_GE(contrast(pixel(colorOf(Ink::light)), pixel(panel)), 4.5) << panel;
  }
}

class RenderedIcon : public testing::TestWithParam<int> {};

TEST_P(RenderedIcon, HasItsColorAndIsTransparentElsewhere) {
  const int size = GetParam();
  for (const Icon& icon : everyIcon()) {
    const Pixel color = pixel(icon.color());
    const Picture picture = lumowatt::rendered(fileOf(icon), size);
    ASSERT_EQ(picture.width(), size);
    ASSERT_EQ(picture.height(), size);
    int opaque = 0;
    for (int y = 0; y < size; ++y) {
      for (int x = 0; x < size; ++x) {
        const Pixel found = picture.at(x, y);
        if (found.alpha == 255) ++opaque;
        if (found.alpha < 128) continue;  // rounding distorts the colors of faint pixels
        EXPECT_LE(difference({found.red, found.green, found.blue, 255}, color), 2) << icon;
      }
    }
    EXPECT_GT(opaque, 0) << icon;
    for (const int corner : {0, size - 1}) {
      EXPECT_EQ(picture.at(corner, 0).alpha, 0) << icon;
      EXPECT_EQ(picture.at(corner, size - 1).alpha, 0) << icon;
    }
  }
}

TEST_P(RenderedIcon, FillGrowsByAQuarterPerLevel) {
  const int size = GetParam();
  std::vector<double> coverage;
  coverage.reserve(levels.size());
  for (const std::string_view name : levels) {
    coverage.push_back(rendered(name, size).coverage());
  }
  const double full = coverage.back() - coverage.front();
  EXPECT_GT(full, 0.1 * size * size);
  for (std::size_t i = 1; i < levels.size(); ++i) {
    const double share = (coverage[i] - coverage.front()) / full;
    EXPECT_NEAR(share, static_cast<double>(i) / 4.0, 0.02) << levels[i];
  }
}

TEST_P(RenderedIcon, IsCenteredVertically) {
  const int size = GetParam();
  for (const std::string_view name : levels) {
    const Picture picture = rendered(name, size);
    for (int x = 0; x < size; ++x) {
      const std::vector<double> alphas = column(picture, x);
      for (std::size_t y = 0; y < alphas.size(); ++y) {
        EXPECT_NEAR(alphas[y], alphas[alphas.size() - 1 - y], 0.02) << name << " " << x << " " << y;
      }
    }
  }
}

TEST_P(RenderedIcon, WithTheBoltCoversEqualAreasAboveAndBelowTheMiddle) {
  const int size = GetParam();
  const Picture picture = rendered(symbol::battery100Bolt, size);
  double above = 0.0;
  double below = 0.0;
  for (int x = 0; x < size; ++x) {
    for (int y = 0; y < size / 2; ++y) {
      above += picture.at(x, y).alpha;
      below += picture.at(x, size - 1 - y).alpha;
    }
  }
  EXPECT_NEAR(above / below, 1.0, 0.01);
}

INSTANTIATE_TEST_SUITE_P(Sizes, RenderedIcon, testing::Values(16, 22, 64),
                         testing::PrintToStringParamName());

// A middle column of a full battery consists of empty pixels, the outline, a gap, the fill, a gap,
// the outline and empty pixels. A middle row consists of the outline, a gap, the fill, a gap, the
// outline and the terminal.

TEST(Icons, HaveSharpEdgesAtSixteenPixels) {
  const Picture full = rendered(symbol::battery100, 16);
  expectAlphas(column(full, 7), {0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1, 0, 0, 0});
  expectAlphas(row(full, 7), {1, 1, 0, 1, 1, 1, 1, 1, 1, 1, 1, 0, 1, 1, 1, 1});
}

TEST(Icons, HaveNearlySharpEdgesAtTwentyTwoPixels) {
  // A unit is 1.375 pixels. The edges that are 2, 3 and 5 units from the middle are therefore 2.75,
  // 4.125 and 6.875 pixels from the middle.
  const Picture full = rendered(symbol::battery100, 22);
  expectAlphas(column(full, 9), {0, 0, 0,    0, 0.875, 1, 0.875, 0, 0.75, 1, 1,
                                 1, 1, 0.75, 0, 0.875, 1, 0.875, 0, 0,    0, 0});
  // The edges that are 2, 3, 11 and 12 units from the left are at 2.75, 4.125, 15.125 and 16.5
  // pixels.
  expectAlphas(row(full, 10),
               {1, 1, 0.75, 0, 0.875, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0.125, 0.5, 1, 1, 1, 1, 1});
}

class IconReference : public testing::TestWithParam<std::string_view> {};

TEST_P(IconReference, MatchesTheRenderedIcon) {
  const Icon icon{GetParam()};
  expectLooksLike(icon.contents(), iconName(icon.name, icon.tint));
}

INSTANTIATE_TEST_SUITE_P(Symbols, IconReference, testing::ValuesIn(symbolNames()),
                         [](const auto& test) { return testName(std::string(test.param)); });

TEST(Icons, BoltIsAHoleInAFilledBattery) {
  // In the middle row, the terminal adjoins the body.
  const Picture picture = rendered(symbol::battery100Bolt, 64);
  EXPECT_EQ(summarizeRuns(row(picture, 32)), "#.#");
  EXPECT_EQ(summarizeRuns(column(picture, 28)), ".#.#.");
}

TEST(Icons, BoltIsVisibleAtSixteenPixels) {
  // The area of the bolt is 17.4 square units, which are pixels at this size. More than half of
  // them must be free.
  const Picture picture = rendered(symbol::battery100Bolt, 16);
  int free = 0;
  for (int y = 4; y < 12; ++y) {
    for (int x = 2; x < 12; ++x) {
      if (picture.at(x, y).alpha < 64) ++free;
    }
  }
  EXPECT_GE(free, 9);
}

TEST(Icons, NoBatteryHasASlashWithAGapOnEitherSide) {
  const Picture picture = rendered(noBattery, 64);
  EXPECT_EQ(summarizeRuns(row(picture, 32)), "#.#.#") << "outline, slash, outline";
  EXPECT_EQ(summarizeRuns(row(picture, 16)), ".#.#.") << "slash and outline in the upper part";
  EXPECT_EQ(summarizeRuns(row(picture, 48)), ".#.#.") << "outline and slash in the lower part";
}

TEST(Icons, NoBatteryDiffersFromAnEmptyOneAtSixteenPixels) {
  // Adjacent levels differ by eight pixels.
  const Picture empty = rendered(symbol::battery0, 16);
  EXPECT_NEAR(alphaDistance(empty, rendered(symbol::battery25, 16)), 8.0, 0.2);
  EXPECT_GT(alphaDistance(empty, rendered(noBattery, 16)), 3 * 8.0);
}

TEST(Icons, TemplatesCanBeRecoloredByAStyleSheet) {
  // GTK recolors icons by a style sheet that sets the fill of the shapes.
  const TemporaryFolder folder;
  folder.write("style.css", "path { fill: #ff0000 !important; }");
  const std::string png = folder.path() / "icon.png";
  const auto result = runProcess({"rsvg-convert", "--stylesheet", folder.path() / "style.css", "-w",
                                  "64", "-h", "64", "-o", png, fileOf({symbol::battery100})});
  ASSERT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(Picture(fileContents(png)).at(20, 32), (Pixel{255, 0, 0, 255}));
}

}  // namespace lumowatt::artwork

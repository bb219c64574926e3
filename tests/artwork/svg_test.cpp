// The icons as the build makes them: names, form, and what a panel's renderer makes of them.

#include "artwork/svg.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <set>

#include "artwork/battery.h"
#include "graphics/symbol.h"
#include "support/files.h"
#include "support/fixtures.h"
#include "support/picture.h"
#include "support/process.h"
#include "support/rendered.h"

namespace lumowatt::artwork {

namespace {

const std::filesystem::path icons = LUMOWATT_ICONS;

constexpr std::array levels{symbol::battery0, symbol::battery25, symbol::battery50,
                            symbol::battery75, symbol::battery100};

using Tint = std::optional<SystemColor>;

std::vector<Tint> tints() {
  std::vector<Tint> all{std::nullopt};
  for (const IconTint& tint : iconTints) all.emplace_back(tint.color);
  return all;
}

std::string file(std::string_view name, Tint tint) {
  return icons / (iconName(name, tint) + ".svg");
}

/// An icon as it is rendered at a size.
Picture rendered(std::string_view name, Tint tint, int size) {
  return lumowatt::rendered(file(name, tint), size);
}

Pixel pixel(std::string_view hex) {
  const auto component = [hex](std::size_t at) {
    return static_cast<int>(std::strtol(std::string(hex.substr(at, 2)).c_str(), nullptr, 16));
  };
  return {component(1), component(3), component(5), 255};
}

/// The relative luminance of WCAG 2.
double luminance(const Pixel& color) {
  const auto linear = [](int component) {
    const double share = component / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double contrast(const Pixel& a, const Pixel& b) {
  const double la = luminance(a) + 0.05;
  const double lb = luminance(b) + 0.05;
  return std::max(la, lb) / std::min(la, lb);
}

/// How opaque the pixels of a column are, from the top, each from 0 to 1.
std::vector<double> column(const Picture& picture, int x) {
  std::vector<double> alphas(static_cast<std::size_t>(picture.height()));
  int y = 0;
  for (double& alpha : alphas) alpha = picture.at(x, y++).alpha / 255.0;
  return alphas;
}

}  // namespace

TEST(Decimal, IsAsShortAsThousandthsCanBe) {
  EXPECT_EQ(decimal(0.0), "0");
  EXPECT_EQ(decimal(22.0), "22");
  EXPECT_EQ(decimal(0.75), "0.75");
  EXPECT_EQ(decimal(1.005), "1.005");
  EXPECT_EQ(decimal(12.3456), "12.346");
  EXPECT_EQ(decimal(0.0004), "0");
  EXPECT_EQ(decimal(100.0), "100");
}

TEST(Decimal, HasItsSignAlsoBelowOne) {
  EXPECT_EQ(decimal(-0.25), "-0.25");
  EXPECT_EQ(decimal(-3.5), "-3.5");
  EXPECT_EQ(decimal(-0.0004), "0");
}

TEST(IconName, TellsTheSymbolAndTheTint) {
  EXPECT_EQ(iconName("battery.25percent", std::nullopt), "lumowatt-battery-25percent-symbolic");
  EXPECT_EQ(iconName("battery.25percent", SystemColor::green), "lumowatt-battery-25percent-green");
  EXPECT_EQ(iconName("battery.100percent.bolt", SystemColor::orange),
            "lumowatt-battery-100percent-bolt-orange");
  EXPECT_EQ(iconName("battery.0percent", SystemColor::red), "lumowatt-battery-0percent-red");
}

TEST(IconName, AColorWithoutIconsCountsAsNone) {
  EXPECT_EQ(iconName("battery.0percent", SystemColor::accent),
            "lumowatt-battery-0percent-symbolic");
}

TEST(Icons, AreThereForEverySymbolAndTintAndNoMore) {
  std::set<std::string> expected;
  for (const std::string_view name : symbol::all) {
    for (const Tint& tint : tints()) expected.insert(iconName(name, tint) + ".svg");
  }
  EXPECT_EQ(expected.size(), 6U * 4U);
  // The application's own.
  expected.insert({"com.fernhollow.Lumowatt.svg", "com.fernhollow.Lumowatt-symbolic.svg"});
  std::set<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(icons)) {
    found.insert(entry.path().filename());
  }
  EXPECT_EQ(found, expected);
}

TEST(Icons, AreValid) {
  std::vector<std::string> command{"xmllint", "--noout"};
  for (const std::string_view name : symbol::all) {
    for (const Tint& tint : tints()) command.push_back(file(name, tint));
  }
  const auto result = runProcess(command);
  EXPECT_EQ(result.status, 0) << result.errors;
}

TEST(Icons, ATemplateHasTheFormThatPanelsColor) {
  for (const std::string_view name : symbol::all) {
    const std::string contents = fileContents(file(name, std::nullopt));
    EXPECT_NE(contents.find(R"(<style type="text/css" id="current-color-scheme">)"
                            ".ColorScheme-Text{color:#909090}</style>"),
              std::string::npos);
    EXPECT_NE(contents.find(R"(<path class="ColorScheme-Text" fill="currentColor")"),
              std::string::npos);
  }
}

TEST(Icons, ATintedOneHasItsColorInIt) {
  for (const IconTint& tint : iconTints) {
    const std::string contents = fileContents(file(symbol::battery50, tint.color));
    EXPECT_NE(contents.find("<path fill=\"" + std::string(tint.value) + "\""), std::string::npos);
    EXPECT_EQ(contents.find("currentColor"), std::string::npos);
  }
}

TEST(Icons, StandOutFromLightAndFromDarkPanels) {
  for (const char* color : {iconTints[0].value.data(), iconTints[1].value.data(),
                            iconTints[2].value.data(), "#909090"}) {
    EXPECT_GE(contrast(pixel(color), pixel("#ffffff")), 3.0) << color;
    EXPECT_GE(contrast(pixel(color), pixel("#2d2d2d")), 3.0) << color;
    EXPECT_GE(contrast(pixel(color), pixel("#000000")), 3.0) << color;
  }
}

class RenderedIcon : public testing::TestWithParam<int> {};

TEST_P(RenderedIcon, HasItsTintAndIsTransparentElsewhere) {
  const int size = GetParam();
  for (const std::string_view name : symbol::all) {
    for (const Tint& tint : tints()) {
      const auto known = std::ranges::find(iconTints, tint, &IconTint::color);
      const Pixel color = pixel(known == iconTints.end() ? "#909090" : known->value);
      const Picture picture = rendered(name, tint, size);
      ASSERT_EQ(picture.width(), size);
      ASSERT_EQ(picture.height(), size);
      int opaque = 0;
      for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
          const Pixel found = picture.at(x, y);
          if (found.alpha == 255) ++opaque;
          if (found.alpha < 128) continue;  // what is faint has lost its color to rounding
          EXPECT_LE(difference({found.red, found.green, found.blue, 255}, color), 2) << name;
        }
      }
      // The outline of the empty battery is thinner than a pixel at the smallest size.
      if (name != symbol::battery0 || size >= 22) {
        EXPECT_GT(opaque, 0) << name;
      }
      for (const int corner : {0, size - 1}) {
        EXPECT_EQ(picture.at(corner, 0).alpha, 0) << name;
        EXPECT_EQ(picture.at(corner, size - 1).alpha, 0) << name;
      }
    }
  }
}

TEST_P(RenderedIcon, ItsFillGrowsWithTheLevelByQuarters) {
  const int size = GetParam();
  std::vector<double> coverage;
  coverage.reserve(levels.size());
  for (const std::string_view name : levels) {
    coverage.push_back(rendered(name, std::nullopt, size).coverage());
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
    const Picture picture = rendered(name, std::nullopt, size);
    for (int x = 0; x < size; ++x) {
      const std::vector<double> alphas = column(picture, x);
      for (std::size_t y = 0; y < alphas.size(); ++y) {
        EXPECT_NEAR(alphas[y], alphas[alphas.size() - 1 - y], 0.02) << name << " " << x << " " << y;
      }
    }
  }
}

TEST_P(RenderedIcon, WithTheBoltCoversAsMuchAboveTheMiddleAsBelow) {
  const int size = GetParam();
  const Picture picture = rendered(symbol::battery100Bolt, std::nullopt, size);
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

INSTANTIATE_TEST_SUITE_P(Sizes, RenderedIcon, testing::Values(16, 22, 64));

TEST(Icons, AreSharpAtSixteenAndTwentyTwoPixels) {
  // From the top down the middle of a full battery: nothing, the outline's row, a gap, the fill.
  const std::vector<double> at16 = column(rendered(symbol::battery100, std::nullopt, 16), 7);
  EXPECT_LE(at16[3], 0.15);
  EXPECT_GE(at16[4], 0.7);
  EXPECT_LE(at16[5], 0.15);
  EXPECT_GE(at16[6], 0.95);
  EXPECT_GE(at16[7], 0.95);

  const std::vector<double> at22 = column(rendered(symbol::battery100, std::nullopt, 22), 9);
  EXPECT_LE(at22[5], 0.15);
  EXPECT_GE(at22[6], 0.85);
  EXPECT_LE(at22[7], 0.15);
  EXPECT_GE(at22[8], 0.85);
  EXPECT_GE(at22[9], 0.95);
}

class IconReference : public testing::TestWithParam<std::string_view> {};

TEST_P(IconReference, IsWhatTheIconLooksLike) {
  const std::string name = iconName(GetParam(), std::nullopt);
  const Picture picture = rendered(GetParam(), std::nullopt, 64);
  const Picture reference(fileContents(fixturePath("pictures", name + ".png")));
  ASSERT_EQ(reference.width(), 64);
  ASSERT_EQ(reference.height(), 64);
  int different = 0;
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      if (std::abs(picture.at(x, y).alpha - reference.at(x, y).alpha) > 24) ++different;
    }
  }
  EXPECT_EQ(different, 0);
}

INSTANTIATE_TEST_SUITE_P(Symbols, IconReference, testing::ValuesIn(symbol::all),
                         [](const auto& test) { return testName(std::string(test.param)); });

TEST(Icons, TheBoltIsCutFreeOfTheFill) {
  // Along the middle row: the outline, a gap, fill, a gap, the bolt, and the same again.
  const Picture picture = rendered(symbol::battery100Bolt, std::nullopt, 64);
  std::string runs;
  for (int x = 0; x < 64; ++x) {
    const int alpha = picture.at(x, 32).alpha;
    const char kind = alpha > 200 ? '#' : alpha < 50 ? '.' : '\0';
    if (kind != '\0' && (runs.empty() || runs.back() != kind)) runs += kind;
  }
  EXPECT_EQ(runs, "#.#.#.#.#.#") << "outline, fill, bolt, fill, outline, terminal";
}

TEST(Icons, ThePanelsColorReplacesATemplatesGrey) {
  // As GTK does it: a style sheet that sets the fill of the shapes.
  const TemporaryFolder folder;
  folder.write("style.css", "path { fill: #ff0000 !important; }");
  const std::string png = folder.path() / "icon.png";
  const auto result =
      runProcess({"rsvg-convert", "--stylesheet", folder.path() / "style.css", "-w", "64", "-h",
                  "64", "-o", png, file(symbol::battery100, std::nullopt)});
  ASSERT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(Picture(fileContents(png)).at(20, 32), (Pixel{255, 0, 0, 255}));
}

}  // namespace lumowatt::artwork

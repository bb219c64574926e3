// Tests the pixels of the snapshots that the built executable writes.

#include <gtest/gtest.h>

#include <utility>

#include "program/program.h"
#include "support/fixtures.h"
#include "support/picture.h"

namespace lumowatt {

namespace {

constexpr Pixel background{26, 20, 38, 255};
constexpr Pixel strip{43, 36, 59, 255};
constexpr Pixel panel{51, 43, 69, 255};
constexpr Pixel white{255, 255, 255, 255};

/// Expects that every pixel of `area`, which is measured in pixels, has this color.
void expectPlain(const Picture& picture, const Rect& area, const Pixel& color) {
  EXPECT_EQ(picture.inkBounds(area, color), Rect{})
      << "in the area from " << area.x << ", " << area.y;
}

bool containsColor(const Picture& picture, const Rect& area, const Pixel& color) {
  for (int y = static_cast<int>(area.minY()); y < static_cast<int>(area.maxY()); ++y) {
    for (int x = static_cast<int>(area.minX()); x < static_cast<int>(area.maxX()); ++x) {
      if (picture.at(x, y) == color) return true;
    }
  }
  return false;
}

struct ExpectedSample {
  std::string sample;
  Pixel tint;  // of the glyph
};

std::ostream& operator<<(std::ostream& stream, const ExpectedSample& expected) {
  return stream << expected.sample;
}

}  // namespace

class SampleSnapshot : public testing::TestWithParam<ExpectedSample> {};

TEST_P(SampleSnapshot, PlacesEveryElementCorrectly) {
  const std::string png = snapshot({"--sample", GetParam().sample});
  EXPECT_EQ(pixelsPerMeter(png), 5669U) << "144 pixels per inch";
  const Picture picture(png);
  // The report of each sample has ten lines. The picture is therefore 366 points tall, and the
  // panel extends from 48 to 310 points.
  ASSERT_EQ(picture.width(), 1120);
  ASSERT_EQ(picture.height(), 732);

  // The empty parts of the strip, left of the glyph and right of the title, and the background
  // around the panel.
  expectPlain(picture, {0, 0, 700, 68}, strip);
  expectPlain(picture, {1072, 0, 48, 68}, strip);
  expectPlain(picture, {0, 68, 1120, 28}, background);
  expectPlain(picture, {0, 96, 48, 524}, background);
  expectPlain(picture, {1072, 96, 48, 524}, background);
  expectPlain(picture, {0, 620, 1120, 52}, background);
  expectPlain(picture, {0, 704, 1120, 28}, background);

  // The edges of the panel, and its corners with a radius of 20 pixels.
  expectPlain(picture, {48, 116, 30, 484}, panel);
  expectPlain(picture, {1020, 116, 52, 484}, panel);
  expectPlain(picture, {68, 96, 984, 20}, panel);
  for (const int x : {48, 1071}) {
    for (const int y : {96, 619}) EXPECT_EQ(picture.at(x, y), background) << x << ", " << y;
  }

  // Ten lines of text. Each begins 40 points from the left.
  for (int line = 0; line < 10; ++line) {
    const Rect text = picture.inkBounds({48, 120.0 + 48 * line, 1024, 40}, panel);
    EXPECT_GE(text.minX(), 78) << line;
    EXPECT_LE(text.minX(), 86) << line;
    EXPECT_GT(text.width, 100) << line;
  }

  // The caption's first letter begins 24 points from the left.
  const Rect caption = picture.inkBounds({0, 672, 1120, 32}, background);
  EXPECT_GE(caption.minX(), 48);
  EXPECT_LE(caption.minX(), 52);
  EXPECT_GT(caption.width, 300);

  // The title's box ends 24 points from the right. The last letter may end up to 3 points earlier.
  const Rect item = picture.inkBounds({0, 0, 1120, 68}, strip);
  EXPECT_LE(item.maxX(), 1072);
  EXPECT_GE(item.maxX(), 1072 - 6);

  // The glyph is the first part of the item. It is 26 points wide, has its tint and is vertically
  // centered in the strip.
  const Rect glyph = picture.inkBounds({item.x, 0, 52, 68}, strip);
  EXPECT_NEAR(glyph.width, 52, 1);
  EXPECT_NEAR(glyph.y + glyph.height / 2, 34, 1);
  EXPECT_TRUE(containsColor(picture, glyph, GetParam().tint));
  EXPECT_TRUE(containsColor(picture, {item.x + 60, 0, 1072 - item.x - 60, 68}, white))
      << "the title";
  expectPlain(picture, {item.x + 53, 0, 7, 68}, strip);
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleSnapshot,
                         testing::Values(ExpectedSample{"draining", white},
                                         ExpectedSample{"low", {255, 159, 10, 255}},
                                         ExpectedSample{"full", {50, 215, 75, 255}}),
                         [](const auto& test) { return test.param.sample; });

TEST_P(SampleSnapshot, MatchesTheReferencePictureInEveryPart) {
  const std::string font =
      runProcess({"fc-match", "--format=%{family} %{fontversion}", "Inter"}).output;
  // fc-match prints a font version multiplied by 65,536.
  if (!font.starts_with("Inter ") || std::stol(font.substr(6)) >> 16 != 3) {
    GTEST_SKIP()
        << "the reference was drawn with version 3 of the font Inter, the installed font is "
        << font;
  }
  const Picture picture(snapshot({"--sample", GetParam().sample}));
  const Picture reference(
      fileContents(fixturePath("pictures", "snapshot-" + GetParam().sample + ".png")));
  ASSERT_EQ(picture.width(), reference.width());
  ASSERT_EQ(picture.height(), reference.height());

  // The parts are the glyph, the title, the caption and each line of the report.
  const double left = reference.inkBounds({0, 0, 1120, 68}, strip).x;
  std::vector<std::pair<Rect, Pixel>> parts{{{left, 0, 56, 68}, strip},
                                            {{left + 56, 0, 1120 - left - 56, 68}, strip},
                                            {{0, 672, 1120, 32}, background}};
  for (int line = 0; line < 10; ++line) {
    parts.push_back({{48, 112.0 + 48 * line, 1024, 48}, panel});
  }
  for (const auto& [area, color] : parts) {
    int different = 0;
    for (int y = static_cast<int>(area.minY()); y < static_cast<int>(area.maxY()); ++y) {
      for (int x = static_cast<int>(area.minX()); x < static_cast<int>(area.maxX()); ++x) {
        if (difference(picture.at(x, y), reference.at(x, y)) > 64) ++different;
      }
    }
    // Other versions of the libraries place letters slightly differently.
    const int ink = reference.inkCount(area, color);
    EXPECT_GT(ink, 300) << area;
    EXPECT_LT(different, ink / 10) << area;
  }
}

TEST(ProgramSnapshot, FillsTheGlyphToTheBatteryLevel) {
  // The glyph is 16 units wide, and a unit is 3.25 pixels. In the low sample a quarter is filled:
  // from the left, the outline ends at 2 units, the fill extends from 3 to 5 units, and the rest is
  // empty up to 12 units.
  const Picture picture(snapshot({"--sample", "low"}));
  const int left = static_cast<int>(picture.inkBounds({0, 0, 1120, 68}, strip).x);
  const Pixel orange{255, 159, 10, 255};
  for (const int x : {3, 11, 15, 41}) EXPECT_EQ(picture.at(left + x, 34), orange) << x;
  for (const int x : {8, 18, 28, 37}) EXPECT_EQ(picture.at(left + x, 34), strip) << x;
}

TEST(ProgramSnapshot, HasNoCaptionForTheMachinesBattery) {
  const Picture picture(snapshot({}));
  const int height = picture.height();
  EXPECT_EQ((height / 2 - 126) % 24, 0);
  expectPlain(picture, {0, height - 112.0, 1120, 112}, background);
  EXPECT_EQ(picture.at(560, height - 113), panel) << "the panel's last row";
}

TEST(ProgramSnapshot, ShowsTheMachinesBatteryWithoutASampleName) {
  EXPECT_EQ(snapshot({"--sample"}), snapshot({}));
}

TEST(ProgramSnapshot, HasAGreenGlyphWithABoltWhileCharging) {
  const Picture picture(snapshot({}, "20-framework-13-charging-plugged"));
  const int left = static_cast<int>(picture.inkBounds({0, 0, 1120, 68}, strip).x);
  // A unit is 3.25 pixels. The bolt is a hole around the middle of the glyph's body, at 7 units. In
  // this row of pixels, the hole extends 2.6 units to the left and to the right.
  const Pixel green{50, 215, 75, 255};
  for (const int x : {3, 8, 37, 48}) EXPECT_EQ(picture.at(left + x, 34), green) << x;
  for (const int x : {18, 22, 27}) EXPECT_EQ(picture.at(left + x, 34), strip) << x;
}

TEST(ProgramSnapshot, DoesNotDependOnTheLocaleOrTheTheme) {
  const Machine machine(anyMachine);
  const TemporaryFolder folder;
  Environment environment = machine.environment();
  for (const char* name : {"LC_ALL", "LANG", "LANGUAGE"}) {
    environment.emplace_back(name, "de_DE.UTF-8");
  }
  environment.emplace_back("GTK_THEME", "Adwaita:light");
  const std::string path = folder.path() / "out.png";
  const auto result = runProcess({LUMOWATT_PROGRAM, "--snapshot", path}, environment);
  expectResult(result, "wrote " + path + "\n", 0);
  EXPECT_EQ(fileContents(path), snapshot({}));
}

}  // namespace lumowatt

// Tests of the contents and the rendering of tile icons.

#include "artwork/tile_icon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>

#include "support/files.h"
#include "support/process.h"
#include "support/rendered.h"

namespace lumowatt::artwork {

namespace {

constexpr Pixel transparent{0, 0, 0, 0};

/// Renders the icon of a tile at a width and height of `size` pixels.
Picture renderTile(const Tile& tile, int size) {
  const TemporaryFolder folder;
  folder.write("tile.svg", tileIcon(tile));
  return lumowatt::rendered(folder.path() / "tile.svg", size);
}

/// Returns the smallest rectangle that contains all pixels that are not transparent.
Rect inkBounds(const Picture& picture) {
  return picture.inkBounds({0.0, 0.0, 1.0 * picture.width(), 1.0 * picture.height()}, transparent);
}

/// Returns the covered part of a row of pixels, in pixels.
double rowCoverage(const Picture& picture, int y) {
  double sum = 0.0;
  for (int x = 0; x < picture.width(); ++x) sum += picture.at(x, y).alpha / 255.0;
  return sum;
}

TileRow percentageWithMark(const std::string& percent, const char* mark,
                           std::optional<SystemColor> color = std::nullopt) {
  return {.text = percent, .mark = TileMark{mark, color}};
}

/// Returns the smallest rectangle that contains all green pixels in the upper half of a tile, or
/// all other covered pixels in that half if `isGreen` is false.
Rect upperInkBounds(const Picture& picture, bool isGreen) {
  Rect bounds{1.0 * picture.width(), 1.0 * picture.height(), 0.0, 0.0};
  Point end{0.0, 0.0};
  for (int y = 0; y < picture.height() / 2; ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const Pixel pixel = picture.at(x, y);
      if (pixel.alpha < 128 || (pixel.green > pixel.red + 50) != isGreen) continue;
      bounds.x = std::min(bounds.x, 1.0 * x);
      bounds.y = std::min(bounds.y, 1.0 * y);
      end = {std::max(end.x, x + 1.0), std::max(end.y, y + 1.0)};
    }
  }
  bounds.width = end.x - bounds.x;
  bounds.height = end.y - bounds.y;
  return bounds;
}

const std::vector<Tile> tilesOfAllKinds{{{"64%"}, {"▼"}},
                                        {{"64%"}, {"−8.3"}},
                                        {{"100%"}, {"+12.3"}},
                                        {percentageWithMark("5", "▲"), {"2:15"}},
                                        {percentageWithMark("64", "▼"), {"2:15"}},
                                        {percentageWithMark("100", "▼"), {"10:45"}},
                                        {percentageWithMark("38", "•"), {"0:00"}},
                                        {{"−8.3"}, {"2:15"}},
                                        {{"−8.3"}, {"10:05"}},
                                        {{"78%"}, {"−120"}},
                                        {{"49%"}, {"•"}},
                                        {{"23%"}, {"−6.7"}}};

}  // namespace

TEST(TileIcon, IsValidXml) {
  for (const Tile& tile : tilesOfAllKinds) {
    const TemporaryFolder folder;
    folder.write("tile.svg", tileIcon(tile));
    const auto result = runProcess({"xmllint", "--noout", folder.path() / "tile.svg"});
    EXPECT_EQ(result.status, 0) << result.errors;
  }
}

TEST(TileIcon, MatchesItsReferencePictures) {
  expectLooksLike(tileIcon({{"64%"}}), "tile-of-one-row");
  expectLooksLike(tileIcon({{"64%"}, {"+8.3", SystemColor::green}}), "tile-of-two-rows");
  expectLooksLike(tileIcon({{"64%"}, {"▼"}}), "tile-with-a-mark-below");
  expectLooksLike(tileIcon({{"64%"}, {"▲"}}), "tile-with-a-mark-upward");
  expectLooksLike(tileIcon({{"64%"}, {"•"}}), "tile-with-a-dot");
  expectLooksLike(tileIcon({percentageWithMark("64", "▼", SystemColor::red), {"2:15"}}),
                  "tile-with-a-mark-beside");
}

TEST(TileIcon, ConsistsOfPathsThatPanelsRecolor) {
  const std::string icon = tileIcon({{"64%"}, {"−8.3"}});
  EXPECT_NE(icon.find(R"(<style type="text/css" id="current-color-scheme">)"
                      ".ColorScheme-Text{color:#909090}</style>"),
            std::string::npos);
  EXPECT_NE(icon.find(R"(<path class="ColorScheme-Text" fill="currentColor")"), std::string::npos);
  EXPECT_EQ(icon.find("<text"), std::string::npos);
}

TEST(TileIcon, UsesTheGivenInk) {
  for (const auto& [ink, name, value] : iconInks) {
    const std::string icon = tileIcon({{"64%"}, {"+8.3", SystemColor::green}}, ink);
    EXPECT_NE(icon.find(".ColorScheme-Text{color:" + std::string(value) + "}"), std::string::npos)
        << name;
    EXPECT_NE(icon.find(R"(<path fill="#26a650")"), std::string::npos) << "the tint";
  }
}

class RenderedTile : public testing::TestWithParam<int> {};

TEST_P(RenderedTile, CharactersAreVisibleAndDistinct) {
  std::map<std::string, Picture> pictures;
  for (const char* text : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    const auto picture = pictures.emplace(text, renderTile({{text}, {text}}, GetParam())).first;
    EXPECT_GT(picture->second.coverage(), 0.06 * GetParam() * GetParam()) << text;
  }
  for (const char* text : {"%", "−", "+", "W", "▲", "▼", "•"}) {
    const auto picture = pictures.emplace(text, renderTile({{text}, {text}}, GetParam())).first;
    EXPECT_GT(picture->second.coverage(), 0.02 * GetParam() * GetParam()) << text;
  }
  for (const auto& [text, picture] : pictures) {
    for (const auto& [other, otherPicture] : pictures) {
      if (text == other) continue;
      EXPECT_GT(alphaDistance(picture, otherPicture), 0.012 * GetParam() * GetParam())
          << text << " and " << other;
    }
  }
}

TEST_P(RenderedTile, PointAndColonAreVisibleBetweenDigitsAndDistinct) {
  const auto coverage = [](const char* text) {
    return renderTile({{text}, {text}}, GetParam()).coverage() / (GetParam() * GetParam());
  };
  EXPECT_GT(coverage("1.1"), coverage("11") + 0.01);
  EXPECT_GT(coverage("1:1"), coverage("1.1") + 0.01);
}

TEST_P(RenderedTile, HasTwoRowsSeparatedByAGap) {
  for (const Tile& tile : tilesOfAllKinds) {
    const Picture picture = renderTile(tile, GetParam());
    std::string runs;
    for (int y = 0; y < GetParam(); ++y) {
      const char kind = rowCoverage(picture, y) < 0.15 ? '.' : '#';
      if (runs.empty() || runs.back() != kind) runs += kind;
    }
    const std::size_t start = runs.find('#');
    EXPECT_EQ(runs.substr(start, 3), "#.#") << tile[0].text << " " << tile[1].text << " " << runs;
  }
}

TEST_P(RenderedTile, FillsTheHeightAndIsCenteredHorizontally) {
  for (const Tile& tile : tilesOfAllKinds) {
    const Rect extent = inkBounds(renderTile(tile, GetParam()));
    EXPECT_GE(extent.height, 0.9 * GetParam()) << tile[0].text << " " << tile[1].text;
    // Equal margins on the left and on the right show that nothing is cut off.
    EXPECT_NEAR(extent.minX(), GetParam() - extent.maxX(), 0.13 * GetParam())
        << tile[0].text << " " << tile[1].text;
  }
}

TEST_P(RenderedTile, LayoutDoesNotDependOnTheDigits) {
  // The percent sign and the minus sign do not move, apart from rounding by the renderer.
  const Picture reference = renderTile({{"88%"}, {"−8.8"}}, GetParam());
  const int side = GetParam();
  for (const char digit : std::string("0123456789")) {
    std::string percent = "88%";
    std::string power = "−8.8";
    std::ranges::replace(percent, '8', digit);
    std::ranges::replace(power, '8', digit);
    const Picture picture = renderTile({{percent}, {power}}, side);
    for (int y = 0; y < side; ++y) {
      for (int x = 0; x < side; ++x) {
        const bool isPercent = y < side / 2 && x >= side * 14 / 22;
        const bool isSign = y > side * 12 / 22 && x < side * 5 / 22;
        if (!isPercent && !isSign) continue;
        EXPECT_NEAR(picture.at(x, y).alpha, reference.at(x, y).alpha, 8)
            << digit << " at " << x << " " << y;
      }
    }
  }
}

TEST_P(RenderedTile, MarkBesideThePercentageDoesNotChangeTheTime) {
  for (const char* time : {"2:15", "10:45"}) {
    const Picture plain = renderTile({{"64%"}, {time}}, GetParam());
    const Picture withMark = renderTile({percentageWithMark("64", "▼"), {time}}, GetParam());
    for (int y = GetParam() * 12 / 22; y < GetParam(); ++y) {
      for (int x = 0; x < GetParam(); ++x) {
        EXPECT_EQ(withMark.at(x, y), plain.at(x, y)) << time << " at " << x << " " << y;
      }
    }
  }
}

TEST_P(RenderedTile, NarrowsARowThatIsTooWide) {
  const Rect extent = inkBounds(renderTile({{"100%"}, {"−123456.7"}}, GetParam()));
  EXPECT_GE(extent.width, 0.9 * GetParam());
  const Rect wide = inkBounds(renderTile({{"−1:-15"}}, GetParam()));
  EXPECT_GE(wide.minX(), 0.0);
  EXPECT_GE(wide.width, 0.9 * GetParam());
}

INSTANTIATE_TEST_SUITE_P(Sizes, RenderedTile, testing::Values(16, 22, 44),
                         testing::PrintToStringParamName());

// Renders the 16-pixel icon enlarged 22 times: a pixel of the icon is 22 pixels wide in the
// picture.
class MarkBesidePercentage : public testing::TestWithParam<std::string> {
 protected:
  static constexpr double pixel = 22.0;

  static Picture render(const char* mark) {
    const TileRow row = percentageWithMark(GetParam(), mark, SystemColor::green);
    return renderTile({row, {"2:15"}}, 16 * 22);
  }
};

TEST_P(MarkBesidePercentage, IsAtLeastAPixelAwayFromTheNumber) {
  for (const char* mark : {"▲", "▼", "•"}) {
    const Picture tile = render(mark);
    EXPECT_GE(upperInkBounds(tile, true).minX() - upperInkBounds(tile, false).maxX(), pixel)
        << mark;
  }
}

TEST_P(MarkBesidePercentage, IsLargeEnoughToBeSeenAsAnArrow) {
  for (const char* mark : {"▲", "▼"}) {
    const Picture tile = render(mark);
    const Rect arrow = upperInkBounds(tile, true);
    const auto digits = static_cast<double>(GetParam().size());
    EXPECT_GE(arrow.width, 1.2 * upperInkBounds(tile, false).width / digits) << mark;
    EXPECT_GE(arrow.width, 4 * pixel) << mark;
    EXPECT_GE(arrow.height, 4 * pixel) << mark;
  }
}

TEST_P(MarkBesidePercentage, StaysWithinTheTile) {
  const Picture tile = render("▼");
  EXPECT_GE(upperInkBounds(tile, false).minX(), 0.25 * pixel);
  EXPECT_LE(upperInkBounds(tile, true).maxX(), 15.75 * pixel);
}

INSTANTIATE_TEST_SUITE_P(Percentages, MarkBesidePercentage, testing::Values("5", "64", "100"),
                         [](const auto& test) { return test.param; });

TEST(TileIcon, DrawsTheArrowInItsOwnColor) {
  const auto hasGreen = [](const TileRow& row) {
    return upperInkBounds(renderTile({row, {"2:15"}}, 44), true).width > 0.0;
  };
  EXPECT_TRUE(hasGreen(percentageWithMark("64", "▲", SystemColor::green)));
  EXPECT_FALSE(hasGreen(percentageWithMark("64", "▲")));
  const TileRow greenText{.text = "64", .color = SystemColor::green, .mark = TileMark{"▲", {}}};
  EXPECT_GT(upperInkBounds(renderTile({greenText, {"2:15"}}, 44), false).minX(), 22.0);
}

TEST(TileIcon, OmitsAnUnsupportedMark) {
  EXPECT_EQ(tileIcon({percentageWithMark("64", "x"), {"2:15"}}), tileIcon({{"64"}, {"2:15"}}));
}

TEST(TileIcon, StyleSheetRecolorsTemplatesButNotTints) {
  // GTK recolors icons by a style sheet that sets the fill of the shapes.
  const TemporaryFolder folder;
  folder.write("style.css", "path { fill: #0000ff !important; }");
  folder.write("tile.svg", tileIcon({{"88%"}, {"+28.2", SystemColor::green}}));
  const std::string png = folder.path() / "icon.png";
  const auto result = runProcess({"rsvg-convert", "--stylesheet", folder.path() / "style.css", "-w",
                                  "88", "-h", "88", "-o", png, folder.path() / "tile.svg"});
  ASSERT_EQ(result.status, 0) << result.errors;
  const Picture picture(fileContents(png));
  int blue = 0;
  int green = 0;
  for (int y = 0; y < 88; ++y) {
    for (int x = 0; x < 88; ++x) {
      const Pixel pixel = picture.at(x, y);
      if (pixel.alpha < 255) continue;
      ++(y < 44 ? blue : green);
      EXPECT_EQ(pixel, y < 44 ? (Pixel{0, 0, 255, 255}) : (Pixel{0x26, 0xa6, 0x50, 255}));
    }
  }
  EXPECT_GT(blue, 300);
  EXPECT_GT(green, 300);
}

TEST(TileIcon, OmitsARowWithUnsupportedCharacters) {
  EXPECT_EQ(tileIcon({{"64%"}, {"−nan"}}).find("d=\"\""), std::string::npos);
  EXPECT_GT(renderTile({{"64%"}, {"−nan"}}, 22).coverage(), 20.0);
  EXPECT_EQ(inkBounds(renderTile({{"nan"}}, 22)).width, 0.0);
}

TEST(TileIcon, IsEmptyWithoutRows) { EXPECT_EQ(renderTile(Tile{}, 22).coverage(), 0.0); }

}  // namespace lumowatt::artwork

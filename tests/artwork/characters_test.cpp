#include "artwork/characters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <string>

namespace lumowatt::artwork {

namespace {

constexpr Lettering lettering{.height = 10.0, .width = 5.0, .gap = 1.0, .weight = 1.5};

double width(std::string_view text) { return outline(text, lettering).value().width; }

/// Visits each point of a path, including the control points of its curves.
template <typename Visit>
void forEachPoint(const Path& path, Visit visit) {
  for (const auto& element : path) {
    if (const auto* const move = std::get_if<MoveTo>(&element)) visit(move->to);
    if (const auto* const line = std::get_if<LineTo>(&element)) visit(line->to);
    if (const auto* const curve = std::get_if<CurveTo>(&element)) {
      visit(curve->control1);
      visit(curve->control2);
      visit(curve->to);
    }
  }
}

/// Returns the smallest rectangle that contains all points of the outline of a text.
Rect inkBounds(std::string_view text, const Lettering& style = lettering) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  Point low{infinity, infinity};
  Point high{-infinity, -infinity};
  forEachPoint(outline(text, style).value().area, [&](const Point& point) {
    low = {std::min(low.x, point.x), std::min(low.y, point.y)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y)};
  });
  return {low.x, low.y, high.x - low.x, high.y - low.y};
}

std::ptrdiff_t figureCount(std::string_view text) {
  const Path area = outline(text, lettering).value().area;
  return std::ranges::count_if(
      area, [](const auto& element) { return std::holds_alternative<MoveTo>(element); });
}

/// Returns a name for the tests of a character: a letter or digit itself, otherwise its UTF-8
/// bytes.
std::string characterName(std::string_view character) {
  if (character.size() == 1 && std::isalnum(character.front()) != 0) return std::string(character);
  std::string name = "Bytes";
  for (const char byte : character) {
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02X", static_cast<unsigned char>(byte));
    name += digits.data();
  }
  return name;
}

}  // namespace

class Character : public testing::TestWithParam<std::string_view> {};

TEST_P(Character, StaysWithinItsBox) {
  const TextOutline text = outline(GetParam(), lettering).value();
  ASSERT_FALSE(text.area.empty());
  // The square ends of slanting lines extend a little beyond the box.
  constexpr double tolerance = 0.5;
  forEachPoint(text.area, [&text](const Point& point) {
    EXPECT_GE(point.x, -tolerance);
    EXPECT_LE(point.x, text.width + tolerance);
    EXPECT_GE(point.y, -tolerance);
    EXPECT_LE(point.y, lettering.height + tolerance);
  });
}

INSTANTIATE_TEST_SUITE_P(All, Character,
                         testing::Values("0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "%", "−",
                                         "-", "+", ".", ":", "·", "W", "▲", "▼", "•", "N", "a", "b",
                                         "e", "o", "r", "t"),
                         [](const auto& test) { return characterName(test.param); });

TEST(Characters, DigitsHaveTheSameWidth) {
  for (const char* digit : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    EXPECT_EQ(width(digit), lettering.width) << digit;
  }
}

TEST(Characters, SignsHaveTheSameWidthAndSoDoMarks) {
  EXPECT_EQ(width("−"), width("+"));
  EXPECT_EQ(width("-"), width("+"));
  EXPECT_EQ(width("▲"), width("▼"));
  EXPECT_EQ(width("▲"), width("•"));
}

TEST(Characters, ArrowsAreWiderThanDigitsAndThanTheirHeight) {
  for (const char* arrow : {"▲", "▼"}) {
    EXPECT_GE(inkBounds(arrow).width, 1.5 * lettering.width) << arrow;
    EXPECT_GE(inkBounds(arrow).width, 1.2 * inkBounds(arrow).height) << arrow;
    EXPECT_GE(inkBounds(arrow).height, 0.5 * lettering.height) << arrow;
  }
}

TEST(Characters, ArrowsAndDotDoNotDependOnTheDigitWidth) {
  Lettering narrow = lettering;
  narrow.width /= 2.0;
  for (const char* mark : {"▲", "▼", "•"}) {
    EXPECT_EQ(outline(mark, narrow).value().area, outline(mark, lettering).value().area) << mark;
    EXPECT_EQ(outline(mark, narrow).value().width, width(mark)) << mark;
  }
}

TEST(Characters, DotIsAFilledCircleSmallerThanAZero) {
  const Rect dot = inkBounds("•");
  EXPECT_EQ(dot.width, dot.height);
  EXPECT_LE(dot.height, 0.6 * inkBounds("0").height);
  EXPECT_EQ(figureCount("•"), 1);
  EXPECT_EQ(figureCount("0"), 2) << "an outer edge and a hole";
}

TEST(Characters, LowercaseLettersAreLowerThanDigitsAndYDescends) {
  const double digitTop = inkBounds("8").y;
  for (const char* letter : {"a", "e", "o", "r", "y"}) {
    EXPECT_GT(inkBounds(letter).y, digitTop + 0.2 * lettering.height) << letter;
  }
  for (const char* letter : {"N", "b"}) EXPECT_LT(inkBounds(letter).y, digitTop + 0.1) << letter;
  const Rect withDescender = inkBounds("y");
  EXPECT_GT(withDescender.y + withDescender.height, 1.1 * lettering.height);
  EXPECT_LT(withDescender.y + withDescender.height, 1.3 * lettering.height);
}

TEST(Characters, LettersOfTheTextNoBatteryHaveDistinctOutlines) {
  const std::string letters = "Nobatery";
  for (std::size_t i = 0; i < letters.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_NE(outline(letters.substr(i, 1), lettering).value().area,
                outline(letters.substr(j, 1), lettering).value().area)
          << letters[i] << letters[j];
    }
  }
}

TEST(Characters, AreSeparatedByTheGap) {
  EXPECT_EQ(width("64"), 5.0 + 1.0 + 5.0);
  EXPECT_EQ(width("8:0"), 5.0 + 1.0 + width(":") + 1.0 + 5.0);
  const Path both = outline("11", lettering).value().area;
  const Path first = outline("1", lettering).value().area;
  ASSERT_EQ(both.size(), 2 * first.size());
  const Point start = std::get<MoveTo>(first[0]).to;
  EXPECT_EQ(std::get<MoveTo>(both[first.size()]).to, (Point{start.x + 6.0, start.y}));
}

TEST(Characters, SpaceHasAWidthButNoArea) {
  EXPECT_TRUE(outline(" ", lettering).value().area.empty());
  EXPECT_GT(width("1 1"), width("11"));
  EXPECT_GT(width(" 1"), width("1"));
}

TEST(Characters, EmptyTextHasNoWidth) {
  const auto [area, width] = outline("", lettering).value();
  EXPECT_TRUE(area.empty());
  EXPECT_EQ(width, 0.0);
}

TEST(Characters, TextWithAnUnsupportedCharacterHasNoOutline) {
  for (const char* text : {"nan", "12x", "x12", "5 %\n", "−inf", "\xe2\x88", "５"}) {
    EXPECT_FALSE(outline(text, lettering)) << text;
  }
}

}  // namespace lumowatt::artwork

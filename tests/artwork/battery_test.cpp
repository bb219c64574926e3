#include "artwork/battery.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "artwork/symbol_names.h"
#include "graphics/symbol.h"

namespace lumowatt::artwork {

namespace {

/// Returns the points of a path, including the control points of its curves.
std::vector<Point> points(const Path& path) {
  std::vector<Point> all;
  for (const auto& element : path) {
    if (const auto* move = std::get_if<MoveTo>(&element)) all.push_back(move->to);
    if (const auto* line = std::get_if<LineTo>(&element)) all.push_back(line->to);
    if (const auto* curve = std::get_if<CurveTo>(&element)) {
      all.insert(all.end(), {curve->control1, curve->control2, curve->to});
    }
  }
  return all;
}

std::ptrdiff_t figureCount(const Path& path) {
  return std::ranges::count_if(
      path, [](const auto& element) { return std::holds_alternative<ClosePath>(element); });
}

}  // namespace

TEST(SymbolPath, LiesWithinTheBoundsForEveryName) {
  for (const std::string_view name : symbolNames()) {
    const auto path = symbolPath(name);
    ASSERT_TRUE(path) << name;
    for (const Point& point : points(*path)) {
      EXPECT_GE(point.x, bounds.minX()) << name;
      EXPECT_LE(point.x, bounds.maxX()) << name;
      EXPECT_GE(point.y, bounds.minY()) << name;
      EXPECT_LE(point.y, bounds.maxY()) << name;
    }
  }
}

TEST(SymbolPath, ReturnsNothingForOtherNames) {
  for (const char* name :
       {"", "battery", "battery.100percent.bolt.", "BATTERY.0PERCENT", "slash"}) {
    EXPECT_FALSE(symbolPath(name)) << name;
  }
}

TEST(SymbolPath, ConsistsOfClosedFigures) {
  for (const std::string_view name : symbolNames()) {
    const Path path = symbolPath(name).value();
    bool isOpen = false;
    for (const auto& element : path) {
      const bool begins = std::holds_alternative<MoveTo>(element);
      EXPECT_NE(isOpen, begins) << name
                                << ": figures must start with MoveTo and end with ClosePath";
      isOpen = !std::holds_alternative<ClosePath>(element);
    }
    EXPECT_FALSE(isOpen) << name;
  }
}

TEST(SymbolPath, ConsistsOfTwoOutlineEdgesAndAFillForALevelAboveZero) {
  EXPECT_EQ(figureCount(symbolPath(symbol::battery0).value()), 2);
  EXPECT_EQ(figureCount(symbolPath(symbol::battery25).value()), 3);
  EXPECT_EQ(figureCount(symbolPath(symbol::battery100).value()), 3);
}

TEST(SymbolPath, ConsistsOfBodyAndBoltWhileCharging) {
  EXPECT_EQ(figureCount(symbolPath(symbol::battery100Bolt).value()), 2);
}

TEST(SymbolPath, ConsistsOfTheSlashAndTwoOutlinePartsForNoBattery) {
  EXPECT_EQ(figureCount(symbolPath(noBattery).value()), 3);
}

TEST(SymbolPath, NoBatteryIsNotInTheListOfSymbols) {
  // macOS provides the symbols in the list by name, and has none with this name.
  EXPECT_EQ(std::ranges::find(symbol::all, noBattery), symbol::all.end());
}

TEST(SymbolPath, BoundsAreCenteredInTheSquare) {
  EXPECT_DOUBLE_EQ(bounds.minX() + bounds.maxX(), gridSize);
  EXPECT_DOUBLE_EQ(bounds.minY() + bounds.maxY(), gridSize);
}

}  // namespace lumowatt::artwork

#include "artwork/battery.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "artwork/symbol_names.h"
#include "graphics/symbol.h"

namespace lumowatt::artwork {

namespace {

/// The points of a path, those that control its curves included.
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

std::ptrdiff_t figures(const Path& path) {
  return std::ranges::count_if(
      path, [](const auto& element) { return std::holds_alternative<ClosePath>(element); });
}

}  // namespace

TEST(SymbolPath, EverySymbolAndNoBatteryHaveOneWithinTheBounds) {
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

TEST(SymbolPath, NoOtherNameHasOne) {
  for (const char* name :
       {"", "battery", "battery.100percent.bolt.", "BATTERY.0PERCENT", "slash"}) {
    EXPECT_FALSE(symbolPath(name)) << name;
  }
}

TEST(SymbolPath, EveryFigureIsClosed) {
  for (const std::string_view name : symbolNames()) {
    const Path path = symbolPath(name).value();
    bool open = false;
    for (const auto& element : path) {
      const bool begins = std::holds_alternative<MoveTo>(element);
      EXPECT_NE(open, begins) << name << ": a figure begins where the last one ended";
      open = !std::holds_alternative<ClosePath>(element);
    }
    EXPECT_FALSE(open) << name;
  }
}

TEST(SymbolPath, TheFiguresAreTheOutlinesTwoEdgesAndTheFill) {
  EXPECT_EQ(figures(symbolPath(symbol::battery0).value()), 2);
  EXPECT_EQ(figures(symbolPath(symbol::battery25).value()), 3);
  EXPECT_EQ(figures(symbolPath(symbol::battery100).value()), 3);
}

TEST(SymbolPath, TheFiguresOfABoltAreTheBodyAndTheBolt) {
  EXPECT_EQ(figures(symbolPath(symbol::battery100Bolt).value()), 2);
}

TEST(SymbolPath, TheFiguresOfNoBatteryAreTheSlashAndAPieceOfTheOutlineOnEitherSide) {
  EXPECT_EQ(figures(symbolPath(noBattery).value()), 3);
}

TEST(SymbolPath, NoBatteryIsNotAmongTheSymbols) {
  // A Mac is asked for those by their names, and has none of that name.
  EXPECT_EQ(std::ranges::find(symbol::all, noBattery), symbol::all.end());
}

TEST(SymbolPath, TheBoundsLieInTheMiddleOfTheSquare) {
  EXPECT_DOUBLE_EQ(bounds.minX() + bounds.maxX(), gridSize);
  EXPECT_DOUBLE_EQ(bounds.minY() + bounds.maxY(), gridSize);
}

}  // namespace lumowatt::artwork

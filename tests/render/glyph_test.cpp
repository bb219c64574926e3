#include "render/glyph.h"

#include <gtest/gtest.h>

#include <limits>

#include "graphics/symbol.h"

namespace lumowatt {

TEST(LevelSymbol, ChangesAtTwelveAndThirteen) {
  EXPECT_EQ(levelSymbol(12), "battery.0percent");
  EXPECT_EQ(levelSymbol(13), "battery.25percent");
}

TEST(LevelSymbol, ChangesAtThirtySevenAndThirtyEight) {
  EXPECT_EQ(levelSymbol(37), "battery.25percent");
  EXPECT_EQ(levelSymbol(38), "battery.50percent");
}

TEST(LevelSymbol, ChangesAtSixtyTwoAndSixtyThree) {
  EXPECT_EQ(levelSymbol(62), "battery.50percent");
  EXPECT_EQ(levelSymbol(63), "battery.75percent");
}

TEST(LevelSymbol, ChangesAtEightySevenAndEightyEight) {
  EXPECT_EQ(levelSymbol(87), "battery.75percent");
  EXPECT_EQ(levelSymbol(88), "battery.100percent");
}

TEST(LevelSymbol, HasOneForNumbersThatAreNoPercentage) {
  EXPECT_EQ(levelSymbol(-5), "battery.0percent");
  EXPECT_EQ(levelSymbol(250), "battery.100percent");
  EXPECT_EQ(levelSymbol(std::numeric_limits<std::int64_t>::min()), "battery.0percent");
  EXPECT_EQ(levelSymbol(std::numeric_limits<std::int64_t>::max()), "battery.100percent");
}

TEST(Tinted, WithAColorIsThatSymbolInThatColor) {
  const auto image = tinted("battery.50percent", systemOrange, "Battery 44 percent");
  ASSERT_TRUE(image);
  EXPECT_EQ(image->accessibilityDescription, "Battery 44 percent");
  const auto& symbol = std::get<Symbol>(image->content);
  EXPECT_EQ(symbol.name, "battery.50percent");
  EXPECT_EQ(symbol.tint, std::optional(systemOrange));
  EXPECT_FALSE(symbol.isTemplate);
  EXPECT_EQ(symbol.pointSize, std::nullopt);
}

TEST(Tinted, WithoutAColorIsATemplate) {
  const auto image = tinted("battery.100percent.bolt", std::nullopt, "Battery 90 percent");
  ASSERT_TRUE(image);
  const auto& symbol = std::get<Symbol>(image->content);
  EXPECT_EQ(symbol.tint, std::nullopt);
  EXPECT_TRUE(symbol.isTemplate);
}

TEST(Tinted, KnowsEverySymbolAndNoOther) {
  for (const std::string_view name : symbol::all) {
    EXPECT_TRUE(tinted(name, std::nullopt, "")) << name;
  }
  for (const char* name : {"", "battery", "battery.30percent", "Battery.50percent"}) {
    EXPECT_FALSE(tinted(name, systemRed, "")) << name;
  }
}

}  // namespace lumowatt

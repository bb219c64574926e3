#include "render/glyph.h"

#include <gtest/gtest.h>

#include <limits>

#include "graphics/symbol.h"

namespace lumowatt {

TEST(LevelSymbol, ChangesBetweenTwelveAndThirteenPercent) {
  EXPECT_EQ(levelSymbol(12), "battery.0percent");
  EXPECT_EQ(levelSymbol(13), "battery.25percent");
}

TEST(LevelSymbol, ChangesBetweenThirtySevenAndThirtyEightPercent) {
  EXPECT_EQ(levelSymbol(37), "battery.25percent");
  EXPECT_EQ(levelSymbol(38), "battery.50percent");
}

TEST(LevelSymbol, ChangesBetweenSixtyTwoAndSixtyThreePercent) {
  EXPECT_EQ(levelSymbol(62), "battery.50percent");
  EXPECT_EQ(levelSymbol(63), "battery.75percent");
}

TEST(LevelSymbol, ChangesBetweenEightySevenAndEightyEightPercent) {
  EXPECT_EQ(levelSymbol(87), "battery.75percent");
  EXPECT_EQ(levelSymbol(88), "battery.100percent");
}

TEST(LevelSymbol, AcceptsPercentagesOutsideZeroToOneHundred) {
  EXPECT_EQ(levelSymbol(-5), "battery.0percent");
  EXPECT_EQ(levelSymbol(250), "battery.100percent");
  EXPECT_EQ(levelSymbol(std::numeric_limits<std::int64_t>::min()), "battery.0percent");
  EXPECT_EQ(levelSymbol(std::numeric_limits<std::int64_t>::max()), "battery.100percent");
}

TEST(AnimatedSymbol, RepeatsTheLevelsAboveTheChargeMinusTwelve) {
  const auto levels = [](std::int64_t percent) {
    std::vector<std::string_view> names;
    for (std::int64_t frame = 0; frame < 5; ++frame) {
      names.push_back(animatedSymbol(percent, frame));
    }
    return names;
  };
  using Names = std::vector<std::string_view>;
  constexpr std::string_view quarter = "battery.25percent";
  constexpr std::string_view half = "battery.50percent";
  constexpr std::string_view most = "battery.75percent";
  constexpr std::string_view full = "battery.100percent";
  for (const std::int64_t percent : {std::numeric_limits<std::int64_t>::min() + 12,
                                     std::int64_t{-38}, std::int64_t{5}, std::int64_t{36}}) {
    EXPECT_EQ(levels(percent), (Names{quarter, half, most, full, quarter})) << percent;
  }
  for (const std::int64_t percent : {37, 61}) {
    EXPECT_EQ(levels(percent), (Names{half, most, full, half, most})) << percent;
  }
  for (const std::int64_t percent : {62, 86}) {
    EXPECT_EQ(levels(percent), (Names{most, full, most, full, most})) << percent;
  }
  for (const std::int64_t percent : {std::int64_t{87}, std::int64_t{99}, std::int64_t{111},
                                     std::int64_t{112}, std::numeric_limits<std::int64_t>::max()}) {
    EXPECT_EQ(levels(percent), (Names{full, full, full, full, full})) << percent;
  }
}

TEST(AnimatedSymbol, ExitsTheProcessIfThePercentageIsTooSmall) {
  EXPECT_EXIT(animatedSymbol(std::numeric_limits<std::int64_t>::min() + 11, 0),
              testing::ExitedWithCode(1),
              "^lumowatt: cannot animate the battery: its percentage is too small\n$");
}

TEST(NextFrame, IncrementsTheFrame) {
  EXPECT_EQ(nextFrame(0), 1);
  EXPECT_EQ(nextFrame(std::numeric_limits<std::int64_t>::max() - 1),
            std::numeric_limits<std::int64_t>::max());
}

TEST(NextFrame, ExitsWhenTheFrameOverflows) {
  EXPECT_EXIT(nextFrame(std::numeric_limits<std::int64_t>::max()), testing::ExitedWithCode(1),
              "^lumowatt: cannot animate the battery: the frame number overflows\n$");
}

TEST(TintedSymbol, HasTheRequestedNameAndColor) {
  const auto image = tinted("battery.50percent", systemOrange, "Battery 44 percent");
  ASSERT_TRUE(image);
  EXPECT_EQ(image->accessibilityDescription, "Battery 44 percent");
  const auto& symbol = std::get<Symbol>(image->content);
  EXPECT_EQ(symbol.name, "battery.50percent");
  EXPECT_EQ(symbol.tint, std::optional(systemOrange));
  EXPECT_FALSE(symbol.isTemplate);
  EXPECT_EQ(symbol.pointSize, std::nullopt);
}

TEST(TintedSymbol, IsATemplateWithoutAColor) {
  const auto image = tinted("battery.100percent.bolt", std::nullopt, "Battery 90 percent");
  ASSERT_TRUE(image);
  const auto& symbol = std::get<Symbol>(image->content);
  EXPECT_EQ(symbol.tint, std::nullopt);
  EXPECT_TRUE(symbol.isTemplate);
}

TEST(TintedSymbol, IsReturnedForKnownNamesOnly) {
  for (const std::string_view name : symbol::all) {
    EXPECT_TRUE(tinted(name, std::nullopt, "")) << name;
  }
  for (const char* name : {"", "battery", "battery.30percent", "Battery.50percent"}) {
    EXPECT_FALSE(tinted(name, systemRed, "")) << name;
  }
}

}  // namespace lumowatt

#include "tools/app_icon.h"

#include <gtest/gtest.h>

#include "support/files.h"
#include "support/rendered.h"

namespace lumowatt::artwork {

namespace {

const std::string file = LUMOWATT_ICONS "/com.fernhollow.Lumowatt.svg";

}  // namespace

TEST(AppIcon, MatchesTheGeneratedFile) { EXPECT_EQ(fileContents(file), appIcon()); }

TEST(AppIcon, ShowsABatteryWithAGreenBoltOnADarkSquare) {
  const int side = 512;
  const Picture icon = rendered(file, side);
  EXPECT_EQ(icon.at(25, 256).alpha, 0);  // the margin is 50 pixels
  EXPECT_EQ(icon.at(60, 256).alpha, 255);
  EXPECT_EQ(icon.at(56, 56).alpha, 0);  // a round corner
  EXPECT_EQ(icon.at(256, 60).alpha, 255);
  EXPECT_EQ(icon.at(256, 455).alpha, 255);
  const Pixel bolt{0x12, 0x9a, 0x50, 255};
  const Pixel body{0xf4, 0xf1, 0xfa, 255};
  // The symbol starts at pixel 96 and consists of 16 units of 20 pixels. The center of the body is
  // at unit 7, and half its width is 7 units. The bolt extends 3.6 units from the center.
  EXPECT_EQ(icon.at(96 + 140, 256), bolt);
  EXPECT_EQ(icon.at(96 + 40, 256), body);   // left of the bolt
  EXPECT_EQ(icon.at(96 + 240, 256), body);  // right of the bolt
  EXPECT_EQ(icon.at(96 + 300, 256), body);  // the terminal
}

}  // namespace lumowatt::artwork

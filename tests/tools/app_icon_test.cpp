#include "tools/app_icon.h"

#include <gtest/gtest.h>

#include "support/files.h"
#include "support/rendered.h"

namespace lumowatt::artwork {

namespace {

const std::string file = LUMOWATT_ICONS "/com.fernhollow.Lumowatt.svg";

}  // namespace

TEST(AppIcon, IsAmongTheIconsOfTheBuild) { EXPECT_EQ(fileContents(file), appIcon()); }

TEST(AppIcon, IsABatteryWithAGreenBoltOnADarkSquareWithMargins) {
  const int side = 512;
  const Picture icon = rendered(file, side);
  EXPECT_EQ(icon.at(25, 256).alpha, 0);  // the margin is 50 pixels
  EXPECT_EQ(icon.at(60, 256).alpha, 255);
  EXPECT_EQ(icon.at(56, 56).alpha, 0);  // a round corner
  EXPECT_EQ(icon.at(256, 60).alpha, 255);
  EXPECT_EQ(icon.at(256, 455).alpha, 255);
  const Pixel bolt{0x3d, 0xdc, 0x84, 255};
  const Pixel body{0xf4, 0xf1, 0xfa, 255};
  // The body's centre is at 6.96 of 16 units of 20 pixels each, from 96.
  EXPECT_EQ(icon.at(96 + 139, 256), bolt);
  EXPECT_EQ(icon.at(96 + 8, 256), body);    // the middle of the outline's left side
  EXPECT_EQ(icon.at(96 + 310, 256), body);  // the terminal
}

}  // namespace lumowatt::artwork

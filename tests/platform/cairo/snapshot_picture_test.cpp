// Test of the pixels of a snapshot with the shortest possible report.

#include <gtest/gtest.h>

#include "platform/cairo/module.h"
#include "render/snapshot.h"
#include "support/files.h"
#include "support/picture.h"

namespace lumowatt::cairo {

namespace {

constexpr Pixel backgroundPixel{26, 20, 38, 255};
constexpr Pixel stripPixel{43, 36, 59, 255};
constexpr Pixel panelPixel{51, 43, 69, 255};

/// Expects all pixels in the area to have the given color.
void expectPlain(const Picture& picture, const Rect& area, const Pixel& color) {
  EXPECT_EQ(picture.inkBounds(area, color), Rect{}) << "in " << area;
}

}  // namespace

TEST(SnapshotPicture, HasTheExpectedLayoutWithSixLines) {
  // If only the charge is known, the report consists of the status, charge, time to empty, battery
  // power, system use and cycle count. The picture is 270 points high. The panel extends from 48 to
  // 214 points.
  Reading reading;
  reading.percent = 64;
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  ASSERT_TRUE(writeSnapshot(reading, path, true, *lumowattBitmapFactory()));
  const Picture picture(fileContents(path));
  ASSERT_EQ(picture.width(), 1120);
  ASSERT_EQ(picture.height(), 540);

  // The strip left of the glyph and right of the title, and the background around the panel.
  expectPlain(picture, {0, 0, 700, 68}, stripPixel);
  expectPlain(picture, {1072, 0, 48, 68}, stripPixel);
  expectPlain(picture, {0, 68, 1120, 28}, backgroundPixel);
  expectPlain(picture, {0, 96, 48, 332}, backgroundPixel);
  expectPlain(picture, {1072, 96, 48, 332}, backgroundPixel);
  expectPlain(picture, {0, 428, 1120, 52}, backgroundPixel);
  expectPlain(picture, {0, 512, 1120, 28}, backgroundPixel);

  // The edges of the panel, and its corners, which are rounded by 20 pixels.
  expectPlain(picture, {48, 116, 30, 292}, panelPixel);
  expectPlain(picture, {1020, 116, 52, 292}, panelPixel);
  expectPlain(picture, {68, 96, 984, 20}, panelPixel);
  expectPlain(picture, {68, 408, 984, 20}, panelPixel);
  for (const int x : {48, 1071}) {
    for (const int y : {96, 427}) EXPECT_EQ(picture.at(x, y), backgroundPixel) << x << ", " << y;
  }

  // Six lines of text, 40 points from the left and 24 points apart. The top of the capital letters
  // is a few pixels below the top of the line.
  for (int line = 0; line < 6; ++line) {
    const int top = 120 + 48 * line;
    const Rect text = picture.inkBounds({48, static_cast<double>(top), 1024, 36}, panelPixel);
    EXPECT_GE(text.minX(), 78) << line;
    EXPECT_LE(text.minX(), 86) << line;
    EXPECT_GT(text.width, 100) << line;
    EXPECT_GE(text.minY(), top + 2) << line;
    EXPECT_LE(text.minY(), top + 12) << line;
    expectPlain(picture, {78, top + 36.0, 942, 12}, panelPixel);
  }

  // The caption, 24 points from the left and 30 from the bottom.
  const Rect caption = picture.inkBounds({0, 480, 1120, 32}, backgroundPixel);
  EXPECT_GE(caption.minX(), 48);
  EXPECT_LE(caption.minX(), 52);
  EXPECT_GT(caption.width, 300);
  EXPECT_GE(caption.minY(), 482);
  EXPECT_LE(caption.minY(), 492);
}

}  // namespace lumowatt::cairo

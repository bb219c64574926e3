#include "platform/cairo/cairo_bitmap.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/cairo/module.h"
#include "support/picture.h"

namespace lumowatt::cairo {

namespace {

std::string encodeEmptyBitmap(Size size, double scale) {
  return CairoBitmap(size, scale, Appearance::light).encodePng().value_or("");
}

std::unique_ptr<Bitmap> createBitmap(double width, double height, double scale = 1.0) {
  const Drawing nothing{
      .size = {width, height}, .flipped = false, .draw = [](Canvas&, const Rect&) {}};
  auto bitmap = lumowattBitmapFactory()->draw(nothing, scale, Appearance::dark);
  return bitmap ? std::move(*bitmap) : nullptr;
}

}  // namespace

TEST(CairoBitmap, RoundsItsSizeDownToWholePixels) {
  const Picture picture(encodeEmptyBitmap({10.0, 3.3}, 2.0));
  EXPECT_EQ(picture.width(), 20);
  EXPECT_EQ(picture.height(), 6);
}

TEST(CairoBitmap, EncodesFourComponentsOfEightBits) {
  const std::string file = encodeEmptyBitmap({2.0, 3.0}, 1.0);
  // The file starts with the signature, and the length, type, width, height, bit depth and color
  // type (6: RGB with alpha) of the first chunk.
  EXPECT_EQ(file.substr(0, 8), "\x89PNG\r\n\x1a\n");
  EXPECT_EQ(file.substr(12, 14), std::string("IHDR\0\0\0\2\0\0\0\3\x08\x06", 14));
}

TEST(CairoBitmap, EncodesTheResolution) {
  // 144 pixels per inch of 25.4 mm are 5669.29 pixels per meter.
  EXPECT_EQ(pixelsPerMeter(encodeEmptyBitmap({2.0, 3.0}, 2.0)), 5669U);
  EXPECT_EQ(pixelsPerMeter(encodeEmptyBitmap({2.0, 3.0}, 1.0)), 2835U);
}

TEST(CairoBitmap, EncodesColorsNotMultipliedByAlpha) {
  CairoBitmap bitmap({3.0, 1.0}, 1.0, Appearance::dark);
  bitmap.canvas().fill({0.0, 0.0, 1.0, 1.0}, SystemColor::secondaryLabel);  // white at 0.55
  bitmap.canvas().fill({1.0, 0.0, 0.5, 1.0}, CalibratedRgb{1.0, 0.5, 0.0});
  const Picture picture(bitmap.encodePng().value());
  EXPECT_EQ(picture.at(0, 0), (Pixel{255, 255, 255, 140}));
  EXPECT_LE(difference(picture.at(1, 0), {255, 128, 0, 128}), 2);
  EXPECT_EQ(picture.at(2, 0), (Pixel{0, 0, 0, 0}));
}

TEST(CairoBitmap, CutsOffTheBottomOfAFractionalHeight) {
  CairoBitmap bitmap({1.0, 3.3}, 2.0, Appearance::dark);
  bitmap.canvas().fill({0.0, 2.3, 1.0, 1.0}, white);
  const Picture picture(bitmap.encodePng().value());
  EXPECT_EQ(picture.at(0, 1), (Pixel{255, 255, 255, 255}));
  EXPECT_EQ(picture.at(0, 2), (Pixel{0, 0, 0, 0}));
}

TEST(CairoBitmap, IsNotEncodedAfterDrawingHasFailed) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  CairoBitmap bitmap({4.0, 4.0}, 1.0, Appearance::dark);
  bitmap.canvas().drawImage(
      {Drawing{.size = {1.0, 1.0}, .flipped = true, .draw = [](Canvas&, const Rect&) {}}},
      {0.0, 0.0, nan, nan});
  EXPECT_FALSE(bitmap.check());
  EXPECT_EQ(bitmap.encodePng(), std::nullopt);
}

TEST(CairoBitmap, CanBeDrawnOnAfterEncoding) {
  CairoBitmap bitmap({1.0, 1.0}, 1.0, Appearance::dark);
  EXPECT_EQ(Picture(bitmap.encodePng().value()).at(0, 0).alpha, 0);
  bitmap.canvas().fill({0.0, 0.0, 1.0, 1.0}, white);
  EXPECT_EQ(Picture(bitmap.encodePng().value()).at(0, 0), (Pixel{255, 255, 255, 255}));
}

TEST(CairoBitmap, CanBeDrawnOnButNotEncodedIfItIsInvalid) {
  CairoBitmap bitmap({0.0, 5.0}, 1.0, Appearance::light);
  EXPECT_FALSE(bitmap.check());
  bitmap.canvas().fill({0.0, 0.0, 1.0, 1.0}, white);
  bitmap.canvas().drawText({{"text", systemFont(12.0)}}, {0.0, 0.0});
  EXPECT_EQ(bitmap.encodePng(), std::nullopt);
}

TEST(BitmapFactory, CreatesBitmapsOfSupportedSizes) {
  EXPECT_NE(createBitmap(1.0, 1.0), nullptr);
  EXPECT_NE(createBitmap(560.0, 270.0, 2.0), nullptr);
  EXPECT_NE(createBitmap(32767.0, 1.0), nullptr);
}

TEST(BitmapFactory, FailsForUnsupportedSizes) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double length : {0.0, -1.0, 0.4, 32768.0, 1e300, infinity, nan}) {
    EXPECT_EQ(createBitmap(length, 10.0), nullptr) << length;
    EXPECT_EQ(createBitmap(10.0, length), nullptr) << length;
  }
  EXPECT_EQ(createBitmap(10.0, 10.0, 0.0), nullptr);
}

}  // namespace lumowatt::cairo

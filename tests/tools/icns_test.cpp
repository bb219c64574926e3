#include "tools/icns.h"

#include <gtest/gtest.h>

namespace lumowatt::artwork {

TEST(Icns, SupportsSidesFrom32To1024Pixels) {
  EXPECT_EQ(icnsSides(), (std::vector<int>{32, 64, 128, 256, 512, 1024}));
}

TEST(Icns, ConsistsOfNestedBlocksWithTypeAndLength) {
  using namespace std::string_literals;
  EXPECT_EQ(icns({{32, "ab"}, {64, ""}}),
            "icns\0\0\0\x1a"
            "ic11\0\0\0\x0a"
            "ab"
            "ic12\0\0\0\x08"s);
}

TEST(Icns, WritesLengthsInBigEndianOrder) {
  using namespace std::string_literals;
  const std::string picture(0x12345, 'x');
  EXPECT_EQ(icns({{1024, picture}}), "icns\0\x01\x23\x55ic10\0\x01\x23\x4d"s + picture);
}

TEST(Icns, ContainsAPictureTwiceIfTwoSizesNeedIt) {
  using namespace std::string_literals;
  EXPECT_EQ(icns({{256, "x"}}),
            "icns\0\0\0\x1a"
            "ic13\0\0\0\x09x"
            "ic08\0\0\0\x09x"s);
}

TEST(Icns, RejectsPicturesWithUnsupportedSides) {
  EXPECT_EQ(icns({{32, "x"}, {16, "x"}}), std::nullopt);
  EXPECT_EQ(icns({{1, "x"}}), std::nullopt);
}

}  // namespace lumowatt::artwork

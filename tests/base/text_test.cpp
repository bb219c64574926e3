#include "base/text.h"

#include <gtest/gtest.h>

namespace lumowatt {

TEST(Trimmed, RemovesOnlyLeadingAndTrailingWhiteSpace) {
  EXPECT_EQ(trimmed("  a b\t\r\n\v\f"), "a b");
  EXPECT_EQ(trimmed("a"), "a");
  EXPECT_EQ(trimmed(" \t\r "), "");
  EXPECT_EQ(trimmed(""), "");
}

}  // namespace lumowatt

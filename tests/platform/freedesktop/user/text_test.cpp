#include "platform/freedesktop/user/text.h"

#include <gtest/gtest.h>

#include "support/environment.h"

namespace lumowatt::freedesktop {

TEST(EnvironmentVariable, IsEmptyWhenItIsNotSet) {
  const ScopedVariable none("LUMOWATT_TEST_VARIABLE", std::nullopt);
  EXPECT_EQ(environmentVariable("LUMOWATT_TEST_VARIABLE"), "");
  const ScopedVariable some("LUMOWATT_TEST_VARIABLE", "value");
  EXPECT_EQ(environmentVariable("LUMOWATT_TEST_VARIABLE"), "value");
}

TEST(Trimmed, LosesTheBlanksAtItsEndsAlone) {
  EXPECT_EQ(trimmed("  a b\t\r"), "a b");
  EXPECT_EQ(trimmed("a"), "a");
  EXPECT_EQ(trimmed(" \t\r "), "");
  EXPECT_EQ(trimmed(""), "");
}

}  // namespace lumowatt::freedesktop

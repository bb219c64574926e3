#include "base/fatal.h"

#include <gtest/gtest.h>

namespace lumowatt {

TEST(FatalDeathTest, EndsTheProcessWithAMessageAndStatus1) {
  EXPECT_EXIT(fatal("too much"), testing::ExitedWithCode(1), "^lumowatt: too much\n$");
}

}  // namespace lumowatt

#include "base/fatal.h"

#include <gtest/gtest.h>

namespace lumowatt {

TEST(FatalDeathTest, PrintsAMessageAndExitsWithStatus1) {
  EXPECT_EXIT(fatal("cannot count", "too much"), testing::ExitedWithCode(1),
              "^lumowatt: cannot count: too much\n$");
}

}  // namespace lumowatt

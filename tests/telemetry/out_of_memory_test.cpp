#include "telemetry/out_of_memory.h"

#include <gtest/gtest.h>

#include <new>

namespace lumowatt {

namespace {

/// What operator new does when there is no memory.
void askInVain() {
  endWhenOutOfMemory();
  std::get_new_handler()();
}

}  // namespace

TEST(OutOfMemoryDeathTest, EndsTheProcessWithAMessageAndStatus1) {
  EXPECT_EXIT(askInVain(), testing::ExitedWithCode(1), "^lumowatt: out of memory\n$");
}

}  // namespace lumowatt

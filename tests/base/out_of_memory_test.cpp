#include "base/out_of_memory.h"

#include <gtest/gtest.h>

#include <new>

namespace lumowatt {

namespace {

/// Calls the new-handler as `operator new` does when it cannot allocate memory.
void failAllocation() {
  exitWhenOutOfMemory();
  std::get_new_handler()();
}

}  // namespace

TEST(ExitWhenOutOfMemory, InstallsANewHandler) {
  ASSERT_EQ(std::get_new_handler(), nullptr);
  exitWhenOutOfMemory();
  EXPECT_NE(std::get_new_handler(), nullptr);
  std::set_new_handler(nullptr);
}

TEST(ExitWhenOutOfMemoryDeathTest, PrintsAMessageAndExitsWithStatus1) {
  EXPECT_EXIT(failAllocation(), testing::ExitedWithCode(1), "^lumowatt: out of memory\n$");
}

}  // namespace lumowatt

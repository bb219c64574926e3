#include "base/out_of_memory.h"

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

TEST(OutOfMemory, IsHandledOnceThatIsAskedFor) {
  ASSERT_EQ(std::get_new_handler(), nullptr);
  endWhenOutOfMemory();
  EXPECT_NE(std::get_new_handler(), nullptr);
  std::set_new_handler(nullptr);
}

TEST(OutOfMemoryDeathTest, EndsTheProcessWithAMessageAndStatus1) {
  EXPECT_EXIT(askInVain(), testing::ExitedWithCode(1), "^lumowatt: out of memory\n$");
}

}  // namespace lumowatt

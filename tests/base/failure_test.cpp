#include "base/failure.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>

namespace lumowatt {

TEST(Result, ContainsTheValueOfASuccessfulOperation) {
  Result<std::string> result(std::string("value"));
  ASSERT_TRUE(result);
  EXPECT_EQ(*result, "value");
  EXPECT_EQ(result->size(), 5U);
}

TEST(Result, ContainsTheReasonOfAFailedOperation) {
  const Result<int> result = Failure{"no reason"};
  ASSERT_FALSE(result);
  EXPECT_EQ(result.failure().reason, "no reason");
}

TEST(Result, WithoutAValueIsASuccessUnlessMadeFromAFailure) {
  EXPECT_TRUE(Result<>());
  EXPECT_FALSE(Result<>(Failure{""}));
}

TEST(Result, SupportsMoveOnlyValues) {
  Result<std::unique_ptr<int>> result(std::make_unique<int>(7));
  const std::unique_ptr<int> value = std::move(*result);
  EXPECT_EQ(*value, 7);
}

TEST(SystemFailure, ContainsTheErrorMessageOfTheCLibrary) {
  EXPECT_EQ(systemFailure(ENOSPC).reason, "No space left on device");
}

}  // namespace lumowatt

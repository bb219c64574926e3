#include "base/complaint.h"

#include <gtest/gtest.h>

namespace lumowatt {

namespace {

/// What an update writes on the standard error.
std::string written(Complaint& complaint, const Result<int>& result) {
  testing::internal::CaptureStderr();
  complaint.update(result);
  return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(Complain, WritesALineWithTheProgramsName) {
  testing::internal::CaptureStderr();
  complain("something is wrong");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "lumowatt: something is wrong\n");
}

TEST(Complaint, ReportsAFailureThatNothingPrecedes) {
  Complaint complaint("it is broken");
  EXPECT_EQ(written(complaint, Failure{"rust"}), "lumowatt: it is broken: rust\n");
}

TEST(Complaint, ReportsAFailureOnceUntilASuccess) {
  Complaint complaint("it is broken");
  EXPECT_EQ(written(complaint, 1), "");
  EXPECT_EQ(written(complaint, Failure{"rust"}), "lumowatt: it is broken: rust\n");
  EXPECT_EQ(written(complaint, Failure{"rust"}), "");
  EXPECT_EQ(written(complaint, Failure{"dust"}), "");
  EXPECT_EQ(written(complaint, 1), "");
  EXPECT_EQ(written(complaint, Failure{"dust"}), "lumowatt: it is broken: dust\n");
}

}  // namespace lumowatt

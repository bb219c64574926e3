#include "base/error_report.h"

#include <gtest/gtest.h>

namespace lumowatt {

namespace {

/// Returns what an update prints on the standard error.
std::string printed(RecurringError& error, const Result<int>& result) {
  testing::internal::CaptureStderr();
  error.update(result);
  return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(ReportError, PrintsTheProgramsNameWhatFailedAndWhy) {
  testing::internal::CaptureStderr();
  reportError("cannot fly", "no wings");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "lumowatt: cannot fly: no wings\n");
}

TEST(ReportError, OmitsAnEmptyReason) {
  testing::internal::CaptureStderr();
  reportError("out of memory", "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "lumowatt: out of memory\n");
}

TEST(RecurringError, ReportsTheFailureOfTheFirstAttempt) {
  RecurringError error("cannot fly");
  EXPECT_EQ(printed(error, Failure{"no wings"}), "lumowatt: cannot fly: no wings\n");
}

TEST(RecurringError, ReportsAFailureOnceUntilASuccess) {
  RecurringError error("cannot fly");
  EXPECT_EQ(printed(error, 1), "");
  EXPECT_EQ(printed(error, Failure{"no wings"}), "lumowatt: cannot fly: no wings\n");
  EXPECT_EQ(printed(error, Failure{"no wings"}), "");
  EXPECT_EQ(printed(error, Failure{"no wind"}), "");
  EXPECT_EQ(printed(error, 1), "");
  EXPECT_EQ(printed(error, Failure{"no wind"}), "lumowatt: cannot fly: no wind\n");
}

}  // namespace lumowatt

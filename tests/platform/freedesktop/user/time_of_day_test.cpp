#include "platform/freedesktop/user/time_of_day.h"

#include <gtest/gtest.h>

#include "support/environment.h"

namespace lumowatt::freedesktop {

namespace {

constexpr std::time_t noon = 1'700'000'000 / 86400 * 86400 + 12 * 3600;  // in UTC, on some day

}  // namespace

TEST(TimeOfDay, IsInTheUsersTimeZone) {
  const ScopedVariable india("TZ", "IST-5:30");
  EXPECT_EQ(timeOfDay(noon + 61), 17 * 3600 + 30 * 60 + 61);
}

TEST(TimeOfDay, FollowsChangesOfTheTimeZone) {
  const ScopedVariable utc("TZ", "UTC0");
  EXPECT_EQ(timeOfDay(noon), 12 * 3600);
  const ScopedVariable hawaii("TZ", "HST10");
  EXPECT_EQ(timeOfDay(noon), 2 * 3600);
  EXPECT_EQ(timeOfDay(noon - 3 * 3600), 23 * 3600) << "the day before";
}

TEST(TimeOfDay, LastMidnightIsConvertedToAnotherClock) {
  const ScopedVariable hawaii("TZ", "HST10");
  EXPECT_EQ(lastMidnight(100'000.5, noon), 100'000.5 - 2 * 3600);
}

TEST(TimeOfDay, AppliesDaylightSavingTime) {
  const ScopedVariable berlin("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
  constexpr std::time_t october29 = 1'698'537'600;  // 2023-10-29 at midnight UTC
  EXPECT_EQ(timeOfDay(october29 + 3599), 2 * 3600 + 3599);
  EXPECT_EQ(timeOfDay(october29 + 3600), 2 * 3600) << "daylight saving time has ended";
}

}  // namespace lumowatt::freedesktop

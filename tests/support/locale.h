#pragma once

#include <gtest/gtest.h>

#include <clocale>

namespace lumowatt {

/// Fixture that runs each test in a locale with a decimal comma. Skips the test if the build cannot
/// compile this locale and the system does not provide it, as with musl.
class InGermanLocale : public testing::Test {
 protected:
  void SetUp() override {
    if (!LUMOWATT_HAS_LOCALES) GTEST_SKIP() << "no compiled locales available";
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    ASSERT_STREQ(std::localeconv()->decimal_point, ",") << "the locale has no decimal comma";
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

}  // namespace lumowatt

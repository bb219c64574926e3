#pragma once

#include <gtest/gtest.h>

#include <clocale>

namespace lumowatt {

/// Runs each test in a locale with a decimal comma. Skips it where the build cannot compile that
/// and the system does not bring it, as with musl.
class InGermanLocale : public testing::Test {
 protected:
  void SetUp() override {
    if (!LUMOWATT_HAS_LOCALES) GTEST_SKIP() << "nothing compiles locales here";
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    ASSERT_STREQ(std::localeconv()->decimal_point, ",") << "or a test would show nothing";
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

}  // namespace lumowatt

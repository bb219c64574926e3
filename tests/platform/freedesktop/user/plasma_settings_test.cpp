#include "platform/freedesktop/user/plasma_settings.h"

#include <gtest/gtest.h>

#include "support/environment.h"
#include "support/files.h"

namespace lumowatt::freedesktop {

namespace {

bool hasNoAnimations(const std::string& file) {
  const TemporaryFolder folder;
  const ScopedVariable configuration("XDG_CONFIG_HOME", folder.path());
  folder.write("kdeglobals", file);
  return plasmaFileHasNoAnimations();
}

}  // namespace

TEST(PlasmaSettings, HaveNoAnimationsIfTheFactorIsZero) {
  EXPECT_TRUE(hasNoAnimations("[General]\nfont=Noto Sans\n\n[KDE]\nAnimationDurationFactor=0\n"));
  EXPECT_FALSE(hasNoAnimations("[KDE]\nAnimationDurationFactor=0.5\n"));
  EXPECT_FALSE(hasNoAnimations("[KDE]\nAnimationDurationFactor=\n"));
}

TEST(PlasmaSettings, ReadTheAnimationFactorOnlyFromTheKdeGroup) {
  EXPECT_FALSE(hasNoAnimations("[General]\nAnimationDurationFactor=0\n[KDE]\nSingleClick=false\n"));
  EXPECT_FALSE(hasNoAnimations("[KDE][Other]\nAnimationDurationFactor=0\n"));
}

TEST(PlasmaSettings, HaveAnimationsIfTheFileIsMissing) {
  const TemporaryFolder folder;
  const ScopedVariable configuration("XDG_CONFIG_HOME", folder.path());
  EXPECT_FALSE(plasmaFileHasNoAnimations());
}

TEST(PlasmaSettings, AcceptAZeroFactorWithAnyNumberOfDigits) {
  for (const char* const factor : {"0", "0.0", "0.000000", "00"}) {
    EXPECT_TRUE(isZeroFactor(factor)) << factor;
  }
  for (const char* const factor : {"", ".", "1", "0.05", "10", "zero", "0x"}) {
    EXPECT_FALSE(isZeroFactor(factor)) << factor;
  }
}

}  // namespace lumowatt::freedesktop

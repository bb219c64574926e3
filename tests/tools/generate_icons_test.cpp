// Tests of the icons that the build generates.

#include <gtest/gtest.h>

#include <set>

#include "artwork/icon.h"
#include "support/files.h"

namespace lumowatt::artwork {

TEST(GeneratedIcons, IncludeEverySymbolInkAndTintAndNothingElse) {
  std::set<std::string> expected;
  for (const Icon& icon : everyIcon()) expected.insert(icon.fileName());
  EXPECT_EQ(expected.size(), 6U * (3U + 3U) + 3U);
  // The icons of the application.
  expected.insert({"com.fernhollow.Lumowatt.svg", "com.fernhollow.Lumowatt-symbolic.svg"});
  std::set<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(LUMOWATT_ICONS)) {
    found.insert(entry.path().filename());
  }
  EXPECT_EQ(found, expected);
}

TEST(GeneratedIcons, MatchTheirNames) {
  const std::filesystem::path folder = LUMOWATT_ICONS;
  for (const Icon& icon : everyIcon()) {
    EXPECT_EQ(fileContents(folder / icon.fileName()), icon.contents()) << icon;
  }
}

}  // namespace lumowatt::artwork

// Tests the property list and the icon of the application bundle for macOS.

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <vector>

#include "support/files.h"
#include "support/picture.h"
#include "support/process.h"
#include "support/rendered.h"
#include "tools/icns.h"

namespace lumowatt {

namespace {

/// Returns the keys of the property list, each with the XML element that follows the key.
std::map<std::string, std::string> infoPlist() {
  const std::string text = fileContents(LUMOWATT_INFO_PLIST);
  const std::regex entry(R"(<key>(\w+)</key>\s*(<(\w+)>[^<]*</\3>|<\w+/>|))");
  std::map<std::string, std::string> values;
  std::size_t keys = 0;
  for (std::sregex_iterator each(text.begin(), text.end(), entry), end; each != end; ++each) {
    values[(*each)[1]] = (*each)[2];
    ++keys;
  }
  EXPECT_EQ(keys, values.size()) << "a key occurs twice";
  return values;
}

std::string stringElement(const std::string& value) { return "<string>" + value + "</string>"; }

/// Image in an icon file.
struct IconBlock {
  std::string type;
  std::string data;
};

/// Reads the 32-bit big-endian number at `offset`.
std::size_t lengthAt(const std::string& file, std::size_t offset) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    length = length * 256 + static_cast<unsigned char>(file[offset + i]);
  }
  return length;
}

/// Parses the icon file.
std::vector<IconBlock> iconBlocks() {
  const std::string file = fileContents(LUMOWATT_MAC_ICON);
  EXPECT_EQ(file.substr(0, 4), "icns");
  EXPECT_EQ(lengthAt(file, 4), file.size());
  std::vector<IconBlock> blocks;
  std::size_t at = 8;
  while (at + 8 <= file.size()) {
    const std::size_t length = lengthAt(file, at + 4);
    EXPECT_GE(length, 8U);
    if (length < 8) break;
    blocks.push_back({file.substr(at, 4), file.substr(at + 8, length - 8)});
    at += length;
  }
  EXPECT_EQ(at, file.size());
  return blocks;
}

}  // namespace

TEST(MacBundle, PropertyListHasTheExpectedKeysAndValues) {
  const std::map<std::string, std::string> expected{
      {"CFBundleDevelopmentRegion", stringElement("en")},
      {"CFBundleExecutable", stringElement("Lumowatt")},
      {"CFBundleIconFile", stringElement("Lumowatt")},
      {"CFBundleIdentifier", stringElement("com.fernhollow.lumowatt")},
      {"CFBundleInfoDictionaryVersion", stringElement("6.0")},
      {"CFBundleName", stringElement("Lumowatt")},
      {"CFBundlePackageType", stringElement("APPL")},
      {"CFBundleShortVersionString", stringElement(LUMOWATT_VERSION)},
      {"CFBundleVersion", stringElement(LUMOWATT_VERSION)},
      {"LSApplicationCategoryType", stringElement("public.app-category.utilities")},
      {"LSMinimumSystemVersion", stringElement("14.0")},
      {"LSUIElement", "<true/>"},  // no icon in the Dock
      {"NSHighResolutionCapable", "<true/>"},
      {"NSHumanReadableCopyright", stringElement("Copyright 2026 Fernhollow")},
      {"NSPrincipalClass", stringElement("NSApplication")}};
  EXPECT_EQ(infoPlist(), expected);
}

TEST(MacBundle, MinimumSystemVersionMatchesDocumentsAndChecks) {
  const std::string minimum = infoPlist()["LSMinimumSystemVersion"];
  const std::string major = minimum.substr(8, minimum.find('.') - 8);  // skips <string>
  for (const auto& [file, words] :
       {std::pair{"README.md", "(macOS " + major + " or newer)"},
        std::pair{"CHANGELOG.md", "with macOS " + major + " or newer"},
        std::pair{"docs/macos.md", "needs macOS " + major + ":"},
        std::pair{"tests/macos/clang_flags", "=macosx-" + major + " "}}) {
    EXPECT_NE(fileContents(std::filesystem::path(LUMOWATT_PROJECT) / file).find(words),
              std::string::npos)
        << file << " does not contain: " << words;
  }
}

TEST(MacBundle, PropertyListContainsOneDictionary) {
  const auto result = runProcess(
      {"xmllint", "--nonet", "--xpath", "count(/plist[@version='1.0']/*)", LUMOWATT_INFO_PLIST});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "1\n");
}

TEST(MacBundle, IconHasEverySizeAndMatchesTheArtwork) {
  std::vector<std::string> types;
  std::vector<int> sides;
  for (const IconBlock& block : iconBlocks()) {
    types.push_back(block.type);
    const Picture stored(block.data);
    ASSERT_EQ(stored.width(), stored.height());
    if (sides.empty() || sides.back() != stored.width()) sides.push_back(stored.width());
    const Picture expected = rendered(LUMOWATT_APP_ICON, stored.width());
    // Different renderers produce slightly different pixels along edges.
    EXPECT_NEAR(stored.coverage(), expected.coverage(), 0.002 * expected.coverage());
    for (int y = 0; y < stored.height(); y += stored.height() / 16) {
      for (int x = 0; x < stored.width(); x += stored.width() / 16) {
        EXPECT_LE(difference(stored.at(x, y), expected.at(x, y)), 32)
            << block.type << " " << x << " " << y;
      }
    }
  }
  EXPECT_EQ(types, (std::vector<std::string>{"ic11", "ic12", "ic07", "ic13", "ic08", "ic14", "ic09",
                                             "ic10"}));
  EXPECT_EQ(sides, artwork::icnsSides());
}

}  // namespace lumowatt

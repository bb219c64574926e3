// What makes the program an application on a Mac: its property list and its icon.

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

/// The property list's keys with the elements that follow them.
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

std::string text(const std::string& value) { return "<string>" + value + "</string>"; }

struct Block {
  std::string type;
  std::string data;
};

std::size_t lengthAt(const std::string& file, std::size_t offset) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    length = length * 256 + static_cast<unsigned char>(file[offset + i]);
  }
  return length;
}

/// The blocks in the icon's file.
std::vector<Block> iconBlocks() {
  const std::string file = fileContents(LUMOWATT_MAC_ICON);
  EXPECT_EQ(file.substr(0, 4), "icns");
  EXPECT_EQ(lengthAt(file, 4), file.size());
  std::vector<Block> blocks;
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

TEST(MacBundle, TheSystemIsToldWhatItAsksFor) {
  const std::map<std::string, std::string> expected{
      {"CFBundleDevelopmentRegion", text("en")},
      {"CFBundleExecutable", text("Lumowatt")},
      {"CFBundleIconFile", text("Lumowatt")},
      {"CFBundleIdentifier", text("com.fernhollow.lumowatt")},
      {"CFBundleInfoDictionaryVersion", text("6.0")},
      {"CFBundleName", text("Lumowatt")},
      {"CFBundlePackageType", text("APPL")},
      {"CFBundleShortVersionString", text(LUMOWATT_VERSION)},
      {"CFBundleVersion", text(LUMOWATT_VERSION)},
      {"LSApplicationCategoryType", text("public.app-category.utilities")},
      {"LSMinimumSystemVersion", text("14.0")},
      {"LSUIElement", "<true/>"},  // no icon in the Dock
      {"NSHighResolutionCapable", "<true/>"},
      {"NSHumanReadableCopyright", text("Copyright 2026 Fernhollow")},
      {"NSPrincipalClass", text("NSApplication")}};
  EXPECT_EQ(infoPlist(), expected);
}

TEST(MacBundle, TheDocumentsAndChecksNameTheSameOldestSystem) {
  const std::string oldest = infoPlist()["LSMinimumSystemVersion"];
  const std::string major = oldest.substr(8, oldest.find('.') - 8);  // after <string>
  for (const auto& [file, words] :
       {std::pair{"README.md", "(macOS " + major + " or newer)"},
        std::pair{"CHANGELOG.md", "with macOS " + major + " or newer"},
        std::pair{"docs/macos.md", "needs macOS " + major + ":"},
        std::pair{"tests/macos/clang_flags", "=macosx-" + major + " "}}) {
    EXPECT_NE(fileContents(std::filesystem::path(LUMOWATT_PROJECT) / file).find(words),
              std::string::npos)
        << file << " says nothing of: " << words;
  }
}

TEST(MacBundle, ThePropertyListIsOneDictionary) {
  const auto result = runProcess(
      {"xmllint", "--nonet", "--xpath", "count(/plist[@version='1.0']/*)", LUMOWATT_INFO_PLIST});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "1\n");
}

TEST(MacBundle, TheIconHasEverySizeAndIsThatOfTheArtwork) {
  std::vector<std::string> types;
  std::vector<int> sides;
  for (const Block& block : iconBlocks()) {
    types.push_back(block.type);
    const Picture stored(block.data);
    ASSERT_EQ(stored.width(), stored.height());
    if (sides.empty() || sides.back() != stored.width()) sides.push_back(stored.width());
    const Picture made = rendered(LUMOWATT_APP_ICON, stored.width());
    // Renderers differ a little along the edges.
    EXPECT_NEAR(stored.coverage(), made.coverage(), 0.002 * made.coverage());
    for (int y = 0; y < stored.height(); y += stored.height() / 16) {
      for (int x = 0; x < stored.width(); x += stored.width() / 16) {
        EXPECT_LE(difference(stored.at(x, y), made.at(x, y)), 32)
            << block.type << " " << x << " " << y;
      }
    }
  }
  EXPECT_EQ(types, (std::vector<std::string>{"ic11", "ic12", "ic07", "ic13", "ic08", "ic14", "ic09",
                                             "ic10"}));
  EXPECT_EQ(sides, artwork::icnsSides());
}

}  // namespace lumowatt

// Tests the build files that CMake generates for a Mac, without building.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <regex>
#include <sstream>
#include <vector>

#include "support/files.h"
#include "support/process.h"

namespace lumowatt {

namespace {

/// Returns the text that the first group of the expression matches.
std::string firstGroup(const std::string& text, const std::string& expression) {
  std::smatch groups;
  EXPECT_TRUE(std::regex_search(text, groups, std::regex(expression))) << expression;
  return groups[1];
}

class MacBuild : public testing::Test {
 protected:
  /// Generates the build files with these definitions. Returns the contents of Ninja's build file.
  std::string generate(const std::vector<std::string>& definitions) {
    std::vector<std::string> command{
        LUMOWATT_CMAKE,       "-G", "Ninja",       "-S",
        LUMOWATT_PROJECT,     "-B", folder.path(), "-DCMAKE_TOOLCHAIN_FILE=" LUMOWATT_TOOLCHAIN,
        "-DBUILD_TESTING=OFF"};
    for (const std::string& definition : definitions) command.push_back("-D" + definition);
    const ProcessResult result = runProcess(command);
    EXPECT_EQ(result.status, 0) << result.errors;
    return fileContents(folder.path() / "build.ninja");
  }

  /// Returns the command that signs the application, without the application's path at its end.
  std::string signingCommand(const std::vector<std::string>& definitions) {
    return firstGroup(generate(definitions),
                      "(codesign .*) " + folder.path().string() + "/Lumowatt.app\n");
  }

  TemporaryFolder folder;
};

std::vector<std::string> words(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

}  // namespace

TEST_F(MacBuild, LinksEachArchiveOnce) {
  std::vector<std::string> archives;
  for (const std::string& word : words(firstGroup(generate({}), "LINK_LIBRARIES = (.*)"))) {
    if (word.ends_with(".a")) archives.push_back(word);
  }
  EXPECT_EQ(archives, (std::vector<std::string>{"src/liblumowatt_cli.a",
                                                "src/platform/macos/liblumowatt_platform.a",
                                                "src/liblumowatt_core.a"}));
}

TEST_F(MacBuild, TargetsTheMinimumSystemVersionOfThePropertyList) {
  const std::string target = firstGroup(generate({}), "-mmacosx-version-min=([0-9.]+) ");
  const std::string list = fileContents(folder.path() / "Lumowatt.app/Contents/Info.plist");
  EXPECT_EQ(firstGroup(list, "<key>LSMinimumSystemVersion</key>\\s*<string>(.*)</string>"), target);
}

TEST_F(MacBuild, SignsAdHocWithoutAnIdentity) {
  EXPECT_EQ(signingCommand({"CMAKE_BUILD_TYPE=Release"}),
            "codesign --force --sign - --options runtime");
}

TEST_F(MacBuild, SignsWithTheGivenIdentityAndATimestamp) {
  EXPECT_EQ(
      signingCommand({"CMAKE_BUILD_TYPE=Release", "LUMOWATT_SIGNING_IDENTITY=Developer ID: Me"}),
      "codesign --force --sign \"Developer ID: Me\" --timestamp --options runtime");
}

TEST_F(MacBuild, OmitsTheHardenedRuntimeInDebugBuilds) {
  EXPECT_EQ(signingCommand({"CMAKE_BUILD_TYPE=Debug"}), "codesign --force --sign -");
}

TEST_F(MacBuild, SignsAgainWhenAFileOfTheBundleChanges) {
  const std::vector<std::string> dependencies = words(firstGroup(
      generate({}), R"(build Lumowatt\.app/Contents/MacOS/Lumowatt: [^|]*\|([^|]*)\|\|)"));
  for (const char* const file : {LUMOWATT_PROJECT "/data/macos/Info.plist.in",
                                 "Lumowatt.app/Contents/Resources/Lumowatt.icns"}) {
    EXPECT_EQ(std::ranges::count(dependencies, file), 1) << file;
  }
}

}  // namespace lumowatt

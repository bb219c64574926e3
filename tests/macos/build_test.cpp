// The build files that CMake generates for a Mac. They are only read here.

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

/// What the expression's first group matches in the text.
std::string match(const std::string& text, const std::string& expression) {
  std::smatch found;
  EXPECT_TRUE(std::regex_search(text, found, std::regex(expression))) << expression;
  return found[1];
}

class MacBuild : public testing::Test {
 protected:
  /// Generates the build with these definitions. Returns Ninja's file.
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

  /// The command that signs the application, without the application's path at its end.
  std::string signature(const std::vector<std::string>& definitions) {
    return match(generate(definitions),
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
  for (const std::string& word : words(match(generate({}), "LINK_LIBRARIES = (.*)"))) {
    if (word.ends_with(".a")) archives.push_back(word);
  }
  EXPECT_EQ(archives, (std::vector<std::string>{"src/liblumowatt_cli.a",
                                                "src/platform/macos/liblumowatt_platform.a",
                                                "src/liblumowatt_core.a"}));
}

TEST_F(MacBuild, CompilesForTheOldestSystemOfThePropertyList) {
  const std::string compiledFor = match(generate({}), "-mmacosx-version-min=([0-9.]+) ");
  const std::string list = fileContents(folder.path() / "Lumowatt.app/Contents/Info.plist");
  EXPECT_EQ(match(list, "<key>LSMinimumSystemVersion</key>\\s*<string>(.*)</string>"), compiledFor);
}

TEST_F(MacBuild, SignsAdHocWithoutAnIdentity) {
  EXPECT_EQ(signature({"CMAKE_BUILD_TYPE=Release"}), "codesign --force --sign - --options runtime");
}

TEST_F(MacBuild, SignsWithTheIdentityAndATimeStamp) {
  EXPECT_EQ(signature({"CMAKE_BUILD_TYPE=Release", "LUMOWATT_SIGNING_IDENTITY=Developer ID: Me"}),
            "codesign --force --sign \"Developer ID: Me\" --timestamp --options runtime");
}

TEST_F(MacBuild, LetsDebuggersAtWhatIsNotShipped) {
  EXPECT_EQ(signature({"CMAKE_BUILD_TYPE=Debug"}), "codesign --force --sign -");
}

TEST_F(MacBuild, SignsAgainWhenAFileInTheBundleChanges) {
  const std::vector<std::string> needs = words(
      match(generate({}), R"(build Lumowatt\.app/Contents/MacOS/Lumowatt: [^|]*\|([^|]*)\|\|)"));
  for (const char* const file : {LUMOWATT_PROJECT "/data/macos/Info.plist.in",
                                 "Lumowatt.app/Contents/Resources/Lumowatt.icns"}) {
    EXPECT_EQ(std::ranges::count(needs, file), 1) << file;
  }
}

}  // namespace lumowatt

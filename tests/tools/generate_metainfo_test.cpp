// Tests of the metainfo that the build generates, and of the tool that generates it.

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#include "support/files.h"
#include "support/process.h"

namespace lumowatt {

namespace {

const std::string generatedMetainfo = LUMOWATT_METAINFO;

/// Evaluates an XPath expression in the metainfo of the build.
std::string evaluateInMetainfo(const std::string& expression) {
  const ProcessResult result = runProcess({"xmllint", "--xpath", expression, generatedMetainfo});
  EXPECT_EQ(result.status, 0) << result.errors;
  return result.output.substr(0, result.output.find_last_not_of('\n') + 1);
}

/// Runs the tool with a changelog and a template in a temporary folder.
class GenerateMetainfo : public testing::Test {
 protected:
  GenerateMetainfo() {
    folder_.write("changelog", "## 1.0.0 - 2026-11-21\n- One.\n");
    folder_.write("template", "<a>@RELEASES@</a>\n");
  }

  std::string path(const std::string& name) const { return folder_.path() / name; }

  static ProcessResult run(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{LUMOWATT_GENERATE_METAINFO};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProcess(command);
  }

  /// Expects the tool to fail with a message about a file in the folder, and to write no output.
  void expectFailure(const std::string& changelog, const std::string& source,
                     const std::string& output, const std::string& message) const {
    const ProcessResult result = run({path(changelog), path(source), path(output)});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "generate_metainfo: " + folder_.path().string() + "/" + message);
    EXPECT_FALSE(std::filesystem::exists(path("output")));
  }

  TemporaryFolder folder_;
};

}  // namespace

TEST(GeneratedMetainfo, ListsTheProjectVersionAsTheNewest) {
  EXPECT_EQ(evaluateInMetainfo("string(//release[1]/@version)"), LUMOWATT_VERSION);
}

TEST(GeneratedMetainfo, ListsEachVersionOfTheChangelogOnceAndInOrder) {
  const std::string changelog = fileContents(LUMOWATT_CHANGELOG);
  const std::regex version("(?:^|\n)## ([0-9.]+) - ([0-9-]+)");
  int number = 0;
  for (std::sregex_iterator match(changelog.begin(), changelog.end(), version), end; match != end;
       ++match) {
    const std::string release = "//release[" + std::to_string(++number) + "]";
    EXPECT_EQ(evaluateInMetainfo("string(" + release + "/@version)"), (*match)[1]);
    EXPECT_EQ(evaluateInMetainfo("string(" + release + "/@date)"), (*match)[2]);
  }
  EXPECT_GT(number, 0);
  EXPECT_EQ(evaluateInMetainfo("count(//release)"), std::to_string(number));
}

TEST(GeneratedMetainfo, ListsEachItemOfTheReleasedVersions) {
  const std::string changelog = fileContents(LUMOWATT_CHANGELOG);
  const std::string newest = "\n## " LUMOWATT_VERSION " ";
  const std::size_t begin = changelog.find(newest);
  ASSERT_NE(begin, std::string::npos);
  const std::regex item("\n- ");
  const auto items =
      std::distance(std::sregex_iterator(changelog.begin() + static_cast<std::ptrdiff_t>(begin),
                                         changelog.end(), item),
                    std::sregex_iterator());
  EXPECT_GT(items, 0);
  EXPECT_EQ(evaluateInMetainfo("count(//release/description/ul/li)"), std::to_string(items));
}

TEST_F(GenerateMetainfo, ReplacesAnExistingFileByTheTemplateWithReleases) {
  folder_.write("output", std::string(10000, 'x'));
  const ProcessResult result = run({path("changelog"), path("template"), path("output")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output + result.errors, "");
  EXPECT_EQ(fileContents(path("output")), R"(<a><releases>
    <release version="1.0.0" date="2026-11-21" type="stable">
      <description>
        <ul>
          <li>One.</li>
        </ul>
      </description>
    </release>
  </releases></a>
)");
}

TEST_F(GenerateMetainfo, ReadsFilesLargerThanAPageCompletely) {
  const std::string spaces(3 * 4096 - 10, ' ');
  folder_.write("template", "@RELEASES@" + spaces + "x");
  ASSERT_EQ(run({path("changelog"), path("template"), path("output")}).status, 0);
  const std::string text = fileContents(path("output"));
  const std::size_t end = text.find("</releases>");
  ASSERT_NE(end, std::string::npos);
  EXPECT_EQ(text.substr(end), "</releases>" + spaces + "x");
}

TEST_F(GenerateMetainfo, ReportsAnInvalidChangelogOrTemplate) {
  folder_.write("wrong-date", "## Unreleased\n\n## 1.0.0 - tomorrow\n");
  folder_.write("no-placeholder", "<a/>");
  expectFailure("wrong-date", "template", "output",
                "wrong-date: line 3: \"tomorrow\" is not a date as YYYY-MM-DD\n");
  expectFailure("changelog", "no-placeholder", "output",
                "no-placeholder: there is no @RELEASES@\n");
}

TEST_F(GenerateMetainfo, ReportsFilesThatCannotBeReadOrWritten) {
  expectFailure("missing", "template", "output", "missing: No such file or directory\n");
  expectFailure("changelog", "missing", "output", "missing: No such file or directory\n");
  expectFailure("", "template", "output", ": Is a directory\n");
  expectFailure("changelog", "template", "no/output", "no/output: No such file or directory\n");
}

TEST_F(GenerateMetainfo, ReportsAFullDisk) {
  const ProcessResult result = run({path("changelog"), path("template"), "/dev/full"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "generate_metainfo: /dev/full: No space left on device\n");
}

TEST_F(GenerateMetainfo, PrintsItsUsageUnlessItHasThreeArguments) {
  const ProcessResult result = run({path("changelog"), path("template")});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "usage: generate_metainfo CHANGELOG TEMPLATE FILE\n");
}

}  // namespace lumowatt

#include "base/output_file.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "support/files.h"

namespace lumowatt {

namespace {

/// Writes a file and returns the error, or an empty string on success.
std::string writeError(const std::string& path, std::string_view contents) {
  const auto written = writeFile(path, contents);
  return written ? "" : written.failure().reason;
}

/// Writes to a standard output that is a full device, prints the error on the standard error and
/// exits.
[[noreturn]] void writeToFullStandardOutput(std::string_view text) {
  if (std::freopen("/dev/full", "w", stdout) == nullptr) std::_Exit(EXIT_FAILURE);
  const auto written = writeToStandardOutput(text);
  std::fputs(written ? "written" : written.failure().reason.c_str(), stderr);
  std::_Exit(EXIT_SUCCESS);
}

}  // namespace

TEST(WriteFile, WritesExactlyTheContents) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "file";
  const std::string contents("a\0b\n\xff", 5);
  EXPECT_EQ(writeError(path, contents), "");
  EXPECT_EQ(fileContents(path), contents);
}

TEST(WriteFile, OverwritesALongerFile) {
  const TemporaryFolder folder;
  folder.write("file", "something longer");
  EXPECT_EQ(writeError(folder.path() / "file", "short"), "");
  EXPECT_EQ(fileContents(folder.path() / "file"), "short");
}

TEST(WriteFile, FollowsASymbolicLink) {
  const TemporaryFolder folder;
  folder.write("target", "old");
  std::filesystem::create_symlink("target", folder.path() / "link");
  EXPECT_EQ(writeError(folder.path() / "link", "new"), "");
  EXPECT_EQ(fileContents(folder.path() / "target"), "new");
}

TEST(WriteFile, AppendsToTheStandardOutputForDevStdout) {
  testing::internal::CaptureStdout();
  std::fputs("before, ", stdout);
  std::fflush(stdout);
  EXPECT_EQ(writeError("/dev/stdout", "the text"), "");
  std::fputs(", after", stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "before, the text, after");
}

TEST(WriteToStandardOutputDeathTest, FailsOnAFullDeviceForFewAndManyBytes) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "macOS has no /dev/full";
  for (const std::size_t size : {1U, 1000000U}) {
    EXPECT_EXIT(writeToFullStandardOutput(std::string(size, 'x')), testing::ExitedWithCode(0),
                "^No space left on device$");
  }
}

TEST(WriteFile, FailsIfThePathIsAFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(writeError(folder.path(), "x"), "Is a directory");
}

TEST(WriteFile, FailsIfTheParentFolderIsMissing) {
  const TemporaryFolder folder;
  EXPECT_EQ(writeError(folder.path() / "none" / "file", "x"), "No such file or directory");
  EXPECT_EQ(writeError("", "x"), "No such file or directory");
}

TEST(WriteFile, FailsIfTheParentIsAFile) {
  const TemporaryFolder folder;
  folder.write("file", "old");
  EXPECT_EQ(writeError(folder.path() / "file" / "below", "x"), "Not a directory");
}

TEST(WriteFile, FailsOnAFullDeviceForFewAndManyBytes) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "macOS has no /dev/full";
  EXPECT_EQ(writeError("/dev/full", "x"), "No space left on device");
  EXPECT_EQ(writeError("/dev/full", std::string(1000000, 'x')), "No space left on device");
}

}  // namespace lumowatt

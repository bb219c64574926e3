#include "base/output_file.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "support/files.h"

namespace lumowatt {

namespace {

/// Why the contents could not be written; empty when they were.
std::string failure(const std::string& path, std::string_view contents) {
  const auto written = writeFile(path, contents);
  return written ? "" : written.failure().reason;
}

/// Writes on a standard output that takes nothing, and ends with the reason on the standard error.
[[noreturn]] void writeToFullStandardOutput(std::string_view text) {
  if (std::freopen("/dev/full", "w", stdout) == nullptr) std::_Exit(EXIT_FAILURE);
  const auto written = writeToStandardOutput(text);
  std::fputs(written ? "written" : written.failure().reason.c_str(), stderr);
  std::_Exit(EXIT_SUCCESS);
}

}  // namespace

TEST(OutputFile, HoldsWhatWasWrittenAndNothingElse) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "file";
  const std::string contents("a\0b\n\xff", 5);
  EXPECT_EQ(failure(path, contents), "");
  EXPECT_EQ(fileContents(path), contents);
}

TEST(OutputFile, ReplacesALongerOne) {
  const TemporaryFolder folder;
  folder.write("file", "something longer");
  EXPECT_EQ(failure(folder.path() / "file", "short"), "");
  EXPECT_EQ(fileContents(folder.path() / "file"), "short");
}

TEST(OutputFile, GoesThroughASymbolicLink) {
  const TemporaryFolder folder;
  folder.write("target", "old");
  std::filesystem::create_symlink("target", folder.path() / "link");
  EXPECT_EQ(failure(folder.path() / "link", "new"), "");
  EXPECT_EQ(fileContents(folder.path() / "target"), "new");
}

TEST(OutputFile, NamedDevStdoutIsTheStandardOutputWithWhatStandsThereAndFollows) {
  testing::internal::CaptureStdout();
  std::fputs("before, ", stdout);
  std::fflush(stdout);
  EXPECT_EQ(failure("/dev/stdout", "the text"), "");
  std::fputs(", after", stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "before, the text, after");
}

TEST(StandardOutputDeathTest, ThatIsAFullDeviceIsAnErrorForManyBytesAndForFew) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "a Mac has no such device";
  for (const std::size_t size : {1U, 1000000U}) {
    EXPECT_EXIT(writeToFullStandardOutput(std::string(size, 'x')), testing::ExitedWithCode(0),
                "^No space left on device$");
  }
}

TEST(OutputFile, AFolderIsAnError) {
  const TemporaryFolder folder;
  EXPECT_EQ(failure(folder.path(), "x"), "Is a directory");
}

TEST(OutputFile, AFolderThatIsNotThereIsAnError) {
  const TemporaryFolder folder;
  EXPECT_EQ(failure(folder.path() / "none" / "file", "x"), "No such file or directory");
  EXPECT_EQ(failure("", "x"), "No such file or directory");
}

TEST(OutputFile, AFileInThePlaceOfAFolderIsAnError) {
  const TemporaryFolder folder;
  folder.write("file", "old");
  EXPECT_EQ(failure(folder.path() / "file" / "below", "x"), "Not a directory");
}

TEST(OutputFile, AFullDeviceIsAnErrorForManyBytesAndForFew) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "a Mac has no such device";
  EXPECT_EQ(failure("/dev/full", "x"), "No space left on device");
  EXPECT_EQ(failure("/dev/full", std::string(1000000, 'x')), "No space left on device");
}

}  // namespace lumowatt

#include "render/output_file.h"

#include <gtest/gtest.h>

#include "support/files.h"

namespace lumowatt {

namespace {

using Error = std::optional<std::string>;

}  // namespace

TEST(OutputFile, HoldsWhatWasWrittenAndNothingElse) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "file";
  const std::string contents("a\0b\n\xff", 5);
  EXPECT_EQ(writeFile(path, contents), std::nullopt);
  EXPECT_EQ(fileContents(path), contents);
}

TEST(OutputFile, ReplacesALongerOne) {
  const TemporaryFolder folder;
  folder.write("file", "something longer");
  EXPECT_EQ(writeFile(folder.path() / "file", "short"), std::nullopt);
  EXPECT_EQ(fileContents(folder.path() / "file"), "short");
}

TEST(OutputFile, GoesThroughASymbolicLink) {
  const TemporaryFolder folder;
  folder.write("target", "old");
  std::filesystem::create_symlink("target", folder.path() / "link");
  EXPECT_EQ(writeFile(folder.path() / "link", "new"), std::nullopt);
  EXPECT_EQ(fileContents(folder.path() / "target"), "new");
}

TEST(OutputFile, AFolderIsAnError) {
  const TemporaryFolder folder;
  EXPECT_EQ(writeFile(folder.path(), "x"), Error("Is a directory"));
}

TEST(OutputFile, AFolderThatIsNotThereIsAnError) {
  const TemporaryFolder folder;
  EXPECT_EQ(writeFile(folder.path() / "none" / "file", "x"), Error("No such file or directory"));
  EXPECT_EQ(writeFile("", "x"), Error("No such file or directory"));
}

TEST(OutputFile, AFileInThePlaceOfAFolderIsAnError) {
  const TemporaryFolder folder;
  folder.write("file", "old");
  EXPECT_EQ(writeFile(folder.path() / "file" / "below", "x"), Error("Not a directory"));
}

TEST(OutputFile, AFullDeviceIsAnErrorForManyBytesAndForFew) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "a Mac has no such device";
  EXPECT_EQ(writeFile("/dev/full", "x"), Error("No space left on device"));
  EXPECT_EQ(writeFile("/dev/full", std::string(1000000, 'x')), Error("No space left on device"));
}

}  // namespace lumowatt

#include "platform/freedesktop/user/user_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <sys/resource.h>
#include <csignal>
#include <filesystem>

#include "support/files.h"

namespace lumowatt::freedesktop {

namespace {

using std::filesystem::perms;

perms permissions(const std::filesystem::path& path) {
  return std::filesystem::status(path).permissions();
}

std::ptrdiff_t entries(const std::filesystem::path& folder) {
  return std::distance(std::filesystem::directory_iterator(folder), {});
}

}  // namespace

TEST(UserFile, IsReadCompletely) {
  const TemporaryFolder folder;
  const std::string contents("a\0b\n", 4);
  folder.write("file", contents);
  const FileContents file = readUserFile(folder.path() / "file");
  EXPECT_TRUE(file.exists);
  EXPECT_EQ(file.text, contents);
}

TEST(UserFile, HasNoTextIfMissing) {
  const TemporaryFolder folder;
  const FileContents file = readUserFile(folder.path() / "none");
  EXPECT_FALSE(file.exists);
  EXPECT_EQ(file.text, std::nullopt);
}

TEST(UserFile, HasNoTextIfItIsAFolderPipeOrDevice) {
  const TemporaryFolder folder;
  const std::string pipe = folder.path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& path : {folder.path().string(), pipe, std::string("/dev/zero")}) {
    const FileContents file = readUserFile(path);
    EXPECT_TRUE(file.exists) << path;
    EXPECT_EQ(file.text, std::nullopt) << path;
  }
}

TEST(UserFile, HasNoTextIfReadingFails) {
  const FileContents file = readUserFile("/proc/self/mem");  // reading at offset 0 fails
  EXPECT_TRUE(file.exists);
  EXPECT_EQ(file.text, std::nullopt);
}

TEST(UserFile, HasNoTextIfLargerThan64KiB) {
  const TemporaryFolder folder;
  folder.write("large", std::string(65537, 'x'));
  folder.write("fitting", std::string(65536, 'x'));
  EXPECT_EQ(readUserFile(folder.path() / "large").text, std::nullopt);
  EXPECT_TRUE(readUserFile(folder.path() / "large").exists);
  EXPECT_EQ(readUserFile(folder.path() / "fitting").text, std::string(65536, 'x'));
}

TEST(ReplaceUserFile, CreatesAPrivateFileAndPrivateFolders) {
  const TemporaryFolder folder;
  const auto path = folder.path() / "a" / "b" / "file";
  EXPECT_TRUE(replaceUserFile(path, "text"));
  EXPECT_EQ(fileContents(path), "text");
  EXPECT_EQ(permissions(path), perms(0600));
  EXPECT_EQ(permissions(path.parent_path()), perms(0700));
}

TEST(ReplaceUserFile, PreservesThePermissionsOfTheFile) {
  const TemporaryFolder folder;
  folder.write("file", "old");
  std::filesystem::permissions(folder.path() / "file", perms(0640));
  EXPECT_TRUE(replaceUserFile(folder.path() / "file", "new"));
  EXPECT_EQ(fileContents(folder.path() / "file"), "new");
  EXPECT_EQ(permissions(folder.path() / "file"), perms(0640));
  EXPECT_EQ(entries(folder.path()), 1) << "no other file remains";
}

TEST(ReplaceUserFile, ReplacesTheTargetOfASymbolicLink) {
  const TemporaryFolder folder;
  folder.write("dotfiles/file", "old");
  std::filesystem::create_symlink("dotfiles/file", folder.path() / "link");
  EXPECT_TRUE(replaceUserFile(folder.path() / "link", "new"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "link"));
  EXPECT_EQ(fileContents(folder.path() / "dotfiles" / "file"), "new");
}

TEST(ReplaceUserFile, FailsIfThePathIsAFolderOrBelowAFile) {
  const TemporaryFolder folder;
  folder.write("folder/file", "x");
  EXPECT_FALSE(replaceUserFile(folder.path() / "folder", "text"));
  EXPECT_FALSE(replaceUserFile(folder.path() / "folder" / "file" / "below", "text"));
  EXPECT_EQ(fileContents(folder.path() / "folder" / "file"), "x");
  EXPECT_EQ(entries(folder.path()), 1);
}

TEST(ReplaceUserFile, FailsIfThePathIsEmpty) {
  EXPECT_FALSE(replaceUserFile("", "text"));
  EXPECT_FALSE(readUserFile("").exists);
}

TEST(ReplaceUserFile, PreservesTheOldFileIfWritingFails) {
  const TemporaryFolder folder;
  folder.write("file", "old");
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{.rlim_cur = 10, .rlim_max = before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const bool replaced(replaceUserFile(folder.path() / "file", "longer than ten bytes"));
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(replaced);
  EXPECT_EQ(fileContents(folder.path() / "file"), "old");
  EXPECT_EQ(entries(folder.path()), 1);
}

}  // namespace lumowatt::freedesktop

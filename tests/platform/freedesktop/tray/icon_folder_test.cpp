#include "platform/freedesktop/tray/icon_folder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <csignal>
#include <filesystem>
#include <set>

#include "support/environment.h"
#include "support/files.h"

namespace lumowatt::freedesktop {

namespace {

using std::filesystem::perms;
using Files = std::set<std::string>;

/// Session with a runtime folder.
class IconFolderTest : public testing::Test {
 protected:
  std::filesystem::path path() const { return runtime.path() / "lumowatt"; }

  Files files() const {
    Files names;
    if (!std::filesystem::exists(path())) return names;
    for (const auto& entry : std::filesystem::directory_iterator(path())) {
      names.insert(entry.path().filename());
    }
    return names;
  }

  static perms permissions(const std::filesystem::path& path) {
    return std::filesystem::status(path).permissions();
  }

  TemporaryFolder runtime;
  ScopedVariable variable{"XDG_RUNTIME_DIR", runtime.path()};
};

/// Stores the icons and returns the name of the first one.
std::string nameOf(IconFolder& folder, const std::vector<std::string>& svg) {
  const auto names = folder.replaceIcons(svg);
  return names ? names->at(0) : "";
}

}  // namespace

TEST_F(IconFolderTest, WritesIconsToFiles) {
  IconFolder folder("test-", "-symbolic");
  const auto names = folder.replaceIcons({"<svg>one</svg>", "<svg>two</svg>"});
  ASSERT_TRUE(names);
  ASSERT_EQ(names->size(), 2U);
  EXPECT_EQ(folder.path(), path());
  EXPECT_EQ(folder.file((*names)[0]), path() / ((*names)[0] + ".svg"));
  EXPECT_EQ(fileContents(folder.file((*names)[0])), "<svg>one</svg>");
  EXPECT_EQ(fileContents(folder.file((*names)[1])), "<svg>two</svg>");
  EXPECT_EQ(files().size(), 2U);
}

TEST_F(IconFolderTest, NamesIconsByPrefixHashOfContentsAndSuffix) {
  IconFolder folder("test-", "-symbolic");
  const std::string one = nameOf(folder, {"one"});
  const std::string two = nameOf(folder, {"two"});
  EXPECT_TRUE(one.starts_with("test-")) << one;
  EXPECT_TRUE(one.ends_with("-symbolic")) << one;
  EXPECT_NE(one, two);
  EXPECT_EQ(nameOf(folder, {"one"}), one);
  // 64-bit FNV-1a hash of "one".
  EXPECT_EQ(one, "test-1a08aa1921ca5caf-symbolic");
}

TEST_F(IconFolderTest, RemovesReplacedIcons) {
  IconFolder folder("test-", "-symbolic");
  const auto first = folder.replaceIcons({"one", "two"});
  const auto second = folder.replaceIcons({"two", "three"});
  EXPECT_EQ((*second)[0], (*first)[1]);
  EXPECT_EQ(files(), (Files{(*second)[0] + ".svg", (*second)[1] + ".svg"}));
  EXPECT_TRUE(folder.replaceIcons({}));
  EXPECT_EQ(files(), Files{});
}

TEST_F(IconFolderTest, DoesNotRewriteUnchangedIcons) {
  IconFolder folder("test-", "-symbolic");
  const std::string file = folder.file(nameOf(folder, {"one"}));
  const auto time = std::filesystem::last_write_time(file);
  const auto inode = [&file] {
    struct stat status {};
    EXPECT_EQ(::stat(file.c_str(), &status), 0);
    return status.st_ino;
  };
  const auto before = inode();
  EXPECT_TRUE(folder.replaceIcons({"one", "two"}));
  EXPECT_EQ(inode(), before);
  EXPECT_EQ(std::filesystem::last_write_time(file), time);
}

TEST_F(IconFolderTest, RestoresADeletedFile) {
  IconFolder folder("test-", "-symbolic");
  const std::string file = folder.file(nameOf(folder, {"one"}));
  std::filesystem::remove_all(path());
  ASSERT_TRUE(folder.replaceIcons({"one"}));
  EXPECT_EQ(fileContents(file), "one");
}

TEST_F(IconFolderTest, IsAccessibleOnlyToTheUser) {
  IconFolder folder("test-", "-symbolic");
  const std::string file = folder.file(nameOf(folder, {"one"}));
  EXPECT_EQ(permissions(file), perms::owner_read | perms::owner_write);
  EXPECT_EQ(permissions(path()), perms::owner_all);
}

TEST_F(IconFolderTest, IsRemovedOnDestruction) {
  { EXPECT_TRUE(IconFolder("test-", "").replaceIcons({"one"})); }
  EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(IconFolderTest, RemovesIconsOfAPreviousRunOnConstruction) {
  runtime.write("lumowatt/test-0123456789abcdef-symbolic.svg", "old");
  const IconFolder folder("test-", "-symbolic");
  EXPECT_EQ(files(), Files{});
}

TEST_F(IconFolderTest, PreservesFilesOfOtherPrograms) {
  runtime.write("lumowatt/other-1.svg", "");
  runtime.write("lumowatt/test-notes.txt", "");
  {
    IconFolder folder("test-", "-symbolic");
    EXPECT_TRUE(folder.replaceIcons({"one"}));
    EXPECT_TRUE(folder.replaceIcons({"two"}));
  }
  EXPECT_EQ(files(), (Files{"other-1.svg", "test-notes.txt"}));
}

TEST_F(IconFolderTest, SharesTheFolderWithIconsOfOtherPrefixes) {
  IconFolder one("one-", "");
  IconFolder two("two-", "");
  const auto ofOne = one.replaceIcons({"same"});
  const auto ofTwo = two.replaceIcons({"same"});
  EXPECT_EQ(files(), (Files{(*ofOne)[0] + ".svg", (*ofTwo)[0] + ".svg"}));
  EXPECT_TRUE(one.replaceIcons({}));
  EXPECT_EQ(files(), Files{(*ofTwo)[0] + ".svg"});
}

TEST_F(IconFolderTest, ReplacesASymbolicLinkInsteadOfFollowingIt) {
  runtime.write("precious", "kept");
  IconFolder folder("test-", "-symbolic");
  const std::string name = nameOf(folder, {"one"});
  EXPECT_TRUE(folder.replaceIcons({}));
  std::filesystem::create_symlink(runtime.path() / "precious", folder.file(name));
  ASSERT_TRUE(folder.replaceIcons({"one"}));
  EXPECT_EQ(fileContents(runtime.path() / "precious"), "kept");
  EXPECT_FALSE(std::filesystem::is_symlink(folder.file(name)));
  EXPECT_EQ(fileContents(folder.file(name)), "one");
}

TEST_F(IconFolderTest, FailsIfTheFolderIsASymbolicLink) {
  const TemporaryFolder elsewhere;
  elsewhere.write("test-a.svg", "kept");
  std::filesystem::create_directory_symlink(elsewhere.path(), path());
  IconFolder folder("test-", "-symbolic");
  EXPECT_FALSE(folder.replaceIcons({"one"}));
  EXPECT_EQ(fileContents(elsewhere.path() / "test-a.svg"), "kept");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(elsewhere.path()), {}), 1);
}

TEST_F(IconFolderTest, RemovesAllIconsAfterAFailure) {
  IconFolder folder("test-", "-symbolic");
  ASSERT_TRUE(folder.replaceIcons({"one"}));
  // Limits the size of files, to simulate a full disk.
  const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small{.rlim_cur = 8, .rlim_max = limit.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  EXPECT_FALSE(folder.replaceIcons({"one", "longer than that"}));
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, ignored);
  EXPECT_EQ(files(), Files{});
  EXPECT_TRUE(folder.replaceIcons({"one", "longer than that"}));
  EXPECT_EQ(files().size(), 2U);
}

TEST(IconFolder, FailsToStoreIconsWithoutARuntimeFolder) {
  for (const char* value : {"", "relative/run"}) {
    const ScopedVariable variable("XDG_RUNTIME_DIR", value);
    IconFolder folder("test-", "-symbolic");
    EXPECT_FALSE(folder.replaceIcons({"one"}));
    EXPECT_TRUE(folder.replaceIcons({}));
  }
}

}  // namespace lumowatt::freedesktop

#include "platform/freedesktop/user/preference_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <limits>

#include "support/files.h"

namespace lumowatt::freedesktop {

namespace {

class PreferenceFileTest : public testing::Test {
 protected:
  void write(const std::string& text) const { folder.write("lumowatt/preferences", text); }
  std::string path() const { return folder.path() / "lumowatt" / "preferences"; }
  std::string text() const { return fileContents(path()); }

  TemporaryFolder folder;
  PreferenceFile preferences{path()};
};

}  // namespace

TEST_F(PreferenceFileTest, ThatIsMissingHasNothing) {
  EXPECT_FALSE(preferences.has("mode"));
  EXPECT_EQ(preferences.integer("mode"), 0);
  EXPECT_FALSE(preferences.boolean("color"));
}

TEST_F(PreferenceFileTest, ThatIsEmptyHasNothing) {
  write("");
  EXPECT_FALSE(preferences.has("mode"));
}

TEST_F(PreferenceFileTest, HasAValueForEachLine) {
  write("mode=3\ncolor=false\nanimate=true");
  EXPECT_TRUE(preferences.has("mode"));
  EXPECT_EQ(preferences.integer("mode"), 3);
  EXPECT_TRUE(preferences.has("color"));
  EXPECT_FALSE(preferences.boolean("color"));
  EXPECT_TRUE(preferences.boolean("animate"));
  EXPECT_FALSE(preferences.has("mod"));
  EXPECT_FALSE(preferences.has("modes"));
}

TEST_F(PreferenceFileTest, IsReadAfreshAtEveryUse) {
  write("mode=3\n");
  EXPECT_EQ(preferences.integer("mode"), 3);
  write("mode=2\n");
  EXPECT_EQ(preferences.integer("mode"), 2);
}

TEST_F(PreferenceFileTest, MayBeWrittenByHand) {
  write("# what I like\r\n  mode = 2 \r\n\tcolor\t=\tOff\r\nanimate= Yes\r\n");
  EXPECT_EQ(preferences.integer("mode"), 2);
  EXPECT_TRUE(preferences.has("color"));
  EXPECT_FALSE(preferences.boolean("color"));
  EXPECT_TRUE(preferences.boolean("animate"));
}

TEST_F(PreferenceFileTest, AValueThatIsNoNumberIsZero) {
  for (const char* value : {"banana", "", "true", "+1"}) {
    write("mode=" + std::string(value) + "\n");
    EXPECT_TRUE(preferences.has("mode")) << value;
    EXPECT_EQ(preferences.integer("mode"), 0) << value;
  }
}

TEST_F(PreferenceFileTest, ANumberIsReadAsFarAsItGoesAndFits) {
  const auto number = [this](const std::string& value) {
    write("mode=" + value + "\n");
    return preferences.integer("mode");
  };
  EXPECT_EQ(number("-1"), -1);
  EXPECT_EQ(number("2x"), 2);
  EXPECT_EQ(number("99999999999999999999"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(number("-99999999999999999999"), std::numeric_limits<std::int64_t>::min());
}

TEST_F(PreferenceFileTest, ATruthValueIsOneOfFourWords) {
  for (const char* value : {"true", "TRUE", "yes", "On", "1"}) {
    write("color=" + std::string(value) + "\n");
    EXPECT_TRUE(preferences.boolean("color")) << value;
  }
  for (const char* value : {"false", "no", "off", "0", "", "banana", "2", "truely"}) {
    write("color=" + std::string(value) + "\n");
    EXPECT_FALSE(preferences.boolean("color")) << value;
    EXPECT_TRUE(preferences.has("color")) << value;
  }
}

TEST_F(PreferenceFileTest, OfTwoLinesWithAKeyTheFirstCountsAndIsSet) {
  write("mode=1\nmode=2\n");
  EXPECT_EQ(preferences.integer("mode"), 1);
  EXPECT_TRUE(preferences.set("mode", "3"));
  EXPECT_EQ(text(), "mode=3\nmode=2\n");
}

TEST_F(PreferenceFileTest, SettingTheFirstValueMakesTheFile) {
  EXPECT_TRUE(preferences.set("color", "false"));
  EXPECT_EQ(text(), "color=false\n");
  EXPECT_TRUE(preferences.set("mode", "0"));
  EXPECT_EQ(text(), "color=false\nmode=0\n");
}

TEST_F(PreferenceFileTest, SettingKeepsEveryOtherLineAsItIs) {
  const std::string before = "# note\n\nfuture = x=y\nbroken line\n";
  write(before + "mode=1\n  color = on\nlast line without end");
  EXPECT_TRUE(preferences.set("mode", "2"));
  EXPECT_EQ(text(), before + "mode=2\n  color = on\nlast line without end");
  EXPECT_TRUE(preferences.set("color", "false"));
  EXPECT_EQ(text(), before + "mode=2\n  color =false\nlast line without end");
  EXPECT_TRUE(preferences.set("animate", "false"));
  EXPECT_EQ(text(), before + "mode=2\n  color =false\nlast line without end\nanimate=false\n");
}

TEST_F(PreferenceFileTest, ThatIsAFolderHasNothingAndCannotBeSet) {
  std::filesystem::create_directories(path());
  EXPECT_FALSE(preferences.has("mode"));
  EXPECT_FALSE(preferences.set("mode", "2"));
  EXPECT_TRUE(std::filesystem::is_directory(path()));
}

TEST_F(PreferenceFileTest, ThatCannotBeReadIsNotOverwritten) {
  const std::string large = "mode=1\n" + std::string(70000, '#');
  write(large);
  EXPECT_FALSE(preferences.has("mode"));
  EXPECT_FALSE(preferences.set("mode", "2"));
  EXPECT_EQ(text(), large);

  std::filesystem::remove(path());
  ASSERT_EQ(::mkfifo(path().c_str(), 0600), 0);
  EXPECT_FALSE(preferences.has("mode"));
  EXPECT_FALSE(preferences.set("mode", "2"));
  EXPECT_TRUE(std::filesystem::is_fifo(path()));
}

TEST_F(PreferenceFileTest, ThatIsAsLargeAsCanBeReadDoesNotGrow) {
  const std::string largest = "mode=1\n" + std::string(65536 - 8, '#') + "\n";
  write(largest);
  EXPECT_EQ(preferences.integer("mode"), 1);
  EXPECT_FALSE(preferences.set("color", "false"));
  EXPECT_FALSE(preferences.set("mode", "10"));
  EXPECT_EQ(text(), largest);
  EXPECT_TRUE(preferences.set("mode", "2"));
  EXPECT_EQ(preferences.integer("mode"), 2);
}

TEST_F(PreferenceFileTest, InAFolderThatCannotBeMadeCannotBeSet) {
  folder.write("lumowatt", "a file");
  EXPECT_FALSE(preferences.has("mode"));
  EXPECT_FALSE(preferences.set("mode", "2"));
  EXPECT_EQ(fileContents(folder.path() / "lumowatt"), "a file");
}

}  // namespace lumowatt::freedesktop

#include "platform/freedesktop/user/preference_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <limits>

#include "support/files.h"
#include "support/open_counter.h"

namespace lumowatt::freedesktop {

namespace {

class PreferenceFileTest : public testing::Test {
 protected:
  void write(const std::string& text) const { folder.write("lumowatt/preferences", text); }
  std::string path() const { return folder.path() / "lumowatt" / "preferences"; }
  std::string text() const { return fileContents(path()); }

  bool has(std::string_view key) const { return preferences.read({key}).at(0).has_value(); }
  std::int64_t integer(std::string_view key) const {
    const auto value = preferences.read({key}).at(0);
    return value ? value->integer : 0;
  }
  bool boolean(std::string_view key) const {
    const auto value = preferences.read({key}).at(0);
    return value && value->boolean;
  }

  TemporaryFolder folder;
  PreferenceFile preferences{path()};
};

}  // namespace

TEST_F(PreferenceFileTest, ReturnsNoValuesIfMissing) {
  EXPECT_FALSE(has("mode"));
  EXPECT_EQ(integer("mode"), 0);
  EXPECT_FALSE(boolean("color"));
}

TEST_F(PreferenceFileTest, ReturnsNoValuesIfEmpty) {
  write("");
  EXPECT_FALSE(has("mode"));
}

TEST_F(PreferenceFileTest, ReturnsTheValueOfEachLine) {
  write("mode=3\ncolor=false\nanimate=true");
  EXPECT_TRUE(has("mode"));
  EXPECT_EQ(integer("mode"), 3);
  EXPECT_TRUE(has("color"));
  EXPECT_FALSE(boolean("color"));
  EXPECT_TRUE(boolean("animate"));
  EXPECT_FALSE(has("mod"));
  EXPECT_FALSE(has("modes"));
}

TEST_F(PreferenceFileTest, IgnoresLinesWithoutAnEqualsSign) {
  write("color\n");
  EXPECT_FALSE(has("color"));
}

TEST_F(PreferenceFileTest, IsOpenedOnceToReadSeveralValues) {
  write("color=1\nmode=3\n");
  const OpenCounter counter;
  counter.watch(folder.path() / "lumowatt");
  const auto values = preferences.read({"mode", "animate", "color"});
  EXPECT_EQ(counter.opened().size(), 1U);
  ASSERT_EQ(values.size(), 3U);
  EXPECT_EQ(values[0]->integer, 3);
  EXPECT_FALSE(values[1]);
  EXPECT_TRUE(values[2]->boolean);
}

TEST_F(PreferenceFileTest, IsReadOnEveryUse) {
  write("mode=3\n");
  EXPECT_EQ(integer("mode"), 3);
  write("mode=2\n");
  EXPECT_EQ(integer("mode"), 2);
}

TEST_F(PreferenceFileTest, AcceptsBlanksCarriageReturnsAndCapitals) {
  write("# what I like\r\n  mode = 2 \r\n\tcolor\t=\tOff\r\nanimate= Yes\r\n");
  EXPECT_EQ(integer("mode"), 2);
  EXPECT_TRUE(has("color"));
  EXPECT_FALSE(boolean("color"));
  EXPECT_TRUE(boolean("animate"));
}

TEST_F(PreferenceFileTest, ReturnsZeroForValuesThatAreNotNumbers) {
  for (const char* value : {"banana", "", "true", "+1"}) {
    write("mode=" + std::string(value) + "\n");
    EXPECT_TRUE(has("mode")) << value;
    EXPECT_EQ(integer("mode"), 0) << value;
  }
}

TEST_F(PreferenceFileTest, ClampsNumbersAndIgnoresTextAfterThem) {
  const auto number = [this](const std::string& value) {
    write("mode=" + value + "\n");
    return integer("mode");
  };
  EXPECT_EQ(number("-1"), -1);
  EXPECT_EQ(number("2x"), 2);
  EXPECT_EQ(number("99999999999999999999"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(number("-99999999999999999999"), std::numeric_limits<std::int64_t>::min());
}

TEST_F(PreferenceFileTest, ReturnsTrueForThreeWordsAndNonZeroNumbers) {
  for (const char* value :
       {"true", "TRUE", "yes", "On", "1", "2", "-1", "+1", "007", "10", "99999999999999999999"}) {
    write("color=" + std::string(value) + "\n");
    EXPECT_TRUE(boolean("color")) << value;
  }
  for (const char* value :
       {"false", "no", "off", "0", "", "banana", "truely", "-0", "000", "-", "+", "1x", "--1"}) {
    write("color=" + std::string(value) + "\n");
    EXPECT_FALSE(boolean("color")) << value;
    EXPECT_TRUE(has("color")) << value;
  }
}

TEST_F(PreferenceFileTest, ReadsAndSetsTheFirstOfTwoLinesWithAKey) {
  write("mode=1\nmode=2\n");
  EXPECT_EQ(integer("mode"), 1);
  EXPECT_TRUE(preferences.set("mode", "3"));
  EXPECT_EQ(text(), "mode=3\nmode=2\n");
}

TEST_F(PreferenceFileTest, IsCreatedWhenTheFirstValueIsSet) {
  EXPECT_TRUE(preferences.set("color", "false"));
  EXPECT_EQ(text(), "color=false\n");
  EXPECT_TRUE(preferences.set("mode", "0"));
  EXPECT_EQ(text(), "color=false\nmode=0\n");
}

TEST_F(PreferenceFileTest, PreservesOtherLinesWhenAValueIsSet) {
  const std::string before = "# note\n\nfuture = x=y\nbroken line\n";
  write(before + "mode=1\n  color = on\nlast line without end");
  EXPECT_TRUE(preferences.set("mode", "2"));
  EXPECT_EQ(text(), before + "mode=2\n  color = on\nlast line without end");
  EXPECT_TRUE(preferences.set("color", "false"));
  EXPECT_EQ(text(), before + "mode=2\n  color =false\nlast line without end");
  EXPECT_TRUE(preferences.set("animate", "false"));
  EXPECT_EQ(text(), before + "mode=2\n  color =false\nlast line without end\nanimate=false\n");
}

TEST_F(PreferenceFileTest, CannotBeReadOrSetIfItIsAFolder) {
  std::filesystem::create_directories(path());
  EXPECT_FALSE(has("mode"));
  EXPECT_FALSE(preferences.set("mode", "2"));
  EXPECT_TRUE(std::filesystem::is_directory(path()));
}

TEST_F(PreferenceFileTest, IsNotOverwrittenIfUnreadable) {
  const std::string large = "mode=1\n" + std::string(70000, '#');
  write(large);
  EXPECT_FALSE(has("mode"));
  EXPECT_FALSE(preferences.set("mode", "2"));
  EXPECT_EQ(text(), large);

  std::filesystem::remove(path());
  ASSERT_EQ(::mkfifo(path().c_str(), 0600), 0);
  EXPECT_FALSE(has("mode"));
  EXPECT_FALSE(preferences.set("mode", "2"));
  EXPECT_TRUE(std::filesystem::is_fifo(path()));
}

TEST_F(PreferenceFileTest, DoesNotGrowBeyondTheReadLimit) {
  const std::string largest = "mode=1\n" + std::string(65536 - 8, '#') + "\n";
  write(largest);
  EXPECT_EQ(integer("mode"), 1);
  EXPECT_FALSE(preferences.set("color", "false"));
  EXPECT_FALSE(preferences.set("mode", "10"));
  EXPECT_EQ(text(), largest);
  EXPECT_TRUE(preferences.set("mode", "2"));
  EXPECT_EQ(integer("mode"), 2);
}

TEST_F(PreferenceFileTest, CannotBeSetIfItsFolderCannotBeCreated) {
  folder.write("lumowatt", "a file");
  EXPECT_FALSE(has("mode"));
  EXPECT_FALSE(preferences.set("mode", "2"));
  EXPECT_EQ(fileContents(folder.path() / "lumowatt"), "a file");
}

}  // namespace lumowatt::freedesktop

#include "platform/linux/power_supply/printable.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace lumowatt {

TEST(Printable, KeepsTextInAnyScript) {
  EXPECT_EQ(printable("LNV-45N1"), "LNV-45N1");
  EXPECT_EQ(printable("Größe 電池 🔋"), "Größe 電池 🔋");
}

TEST(Printable, IsEmptyForNothing) {
  EXPECT_EQ(printable(""), "");
  EXPECT_EQ(printable(" \n\t "), "");
}

TEST(Printable, DropsBlanksAtTheEndsAndKeepsThoseInside) {
  EXPECT_EQ(printable("  G903 Wi  Logitech \n"), "G903 Wi  Logitech");
}

TEST(Printable, IsOneLine) {
  EXPECT_EQ(printable("first\nsecond"), "first second");
  EXPECT_EQ(printable("a\tb\rc"), "a b c");
  EXPECT_EQ(printable("a\u2028b\u0085c"), "abc");
}

TEST(Printable, DropsControls) {
  EXPECT_EQ(printable(std::string("A\0B\x01"
                                  "C\x7F",
                                  6)),
            "ABC");
  EXPECT_EQ(printable("\x1B[31mred"), "[31mred");
  EXPECT_EQ(printable("\uFEFFzero\u200B \u2060width\u00AD"), "zero width");
}

TEST(Printable, DropsWhatIsNoCharacter) {
  EXPECT_EQ(printable("Foo\uFDD0\uFDEFBar"), "FooBar");
  EXPECT_EQ(printable("\uFFFE\uFFFF\U0001FFFE\U0002FFFF\U0010FFFFplane"), "plane");
  EXPECT_EQ(printable("\uFDCF\uFDF0\U0001FFFD"), "\uFDCF\uFDF0\U0001FFFD");
}

TEST(Printable, DropsWhatIsNotUtf8) {
  EXPECT_EQ(printable("\xFF\xFE"
                      "SANYO\x80"),
            "SANYO");
  EXPECT_EQ(printable("a\xC3"), "a") << "cut short";
  EXPECT_EQ(printable("\xC3("), "(") << "not continued";
  EXPECT_EQ(printable("\xC0\xAF"), "") << "longer than need be";
  EXPECT_EQ(printable("\xE0\x80\x80"), "") << "longer than need be";
  EXPECT_EQ(printable("\xED\xA0\x80"), "") << "half of a surrogate pair";
  EXPECT_EQ(printable("\xF4\x90\x80\x80"), "") << "beyond the last character";
  EXPECT_EQ(printable("\xF5\x80\x80\x80"), "");
}

TEST(Printable, DropsEachRangeOfInvisibleCharactersFromItsFirstToItsLast) {
  const std::string_view invisible[] = {
      // Cc: controls
      "\x1F",
      "\x7F",
      "\u0080",
      "\u009F",
      // Cf, Zl, Zp: they steer the text around them
      "\u00AD",
      "\u200B",
      "\u200F",
      "\u2028",
      "\u2029",
      "\u202E",
      "\u2060",
      "\u206F",
      "\uFEFF",
      "\uFFF9",
      "\uFFFB",
      "\U000E0001",
      "\U000E007F",
      // Default_Ignorable_Code_Point: nothing is shown for them, though none is assigned yet
      "\uFFF0",
      "\uFFF8",
      "\U000E0000",
      "\U000E0FFF",
      // Co: private
      "\uE000",
      "\uF8FF",
      "\U000F0000",
      "\U00100000",
      "\U0010FFFD",
  };
  for (const std::string_view character : invisible) {
    EXPECT_EQ(printable("a" + std::string(character) + "b"), "ab")
        << testing::PrintToString(character);
  }
}

TEST(Printable, KeepsTheNeighborsOfInvisibleCharacters) {
  const std::string_view visible[] = {
      "~",           // before the delete control
      "\u00A0",      // no-break space, after the controls
      "\u00AC",      // not sign, before the soft hyphen
      "\u00AE",      // registered sign, after it
      "\u200A",      // hair space, before the space of no width
      "\u2010",      // hyphen, after the marks of direction
      "\u2027",      // hyphenation point, before the line separator
      "\u202F",      // narrow no-break space, after the overrides of direction
      "\u205F",      // mathematical space, before the word joiner
      "\u2070",      // superscript zero, after the shapes of digits
      "\uD7FF",      // the last before the halves of surrogate pairs
      "\uF900",      // a CJK ideograph, after the private ones
      "\uFEFE",      // before the byte order mark
      "\uFF00",      // after it
      "\uFFEF",      // before the specials
      "\uFFFC",      // object replacement character, after the annotations
      "\uFFFD",      // replacement character, the last of its plane that is one
      "\U0001FFFD",  // likewise
      "\U000DFFFD",  // the last of all before the tags
  };
  for (const std::string_view character : visible) {
    const std::string text = "a" + std::string(character) + "b";
    EXPECT_EQ(printable(text), text) << testing::PrintToString(character);
  }
}

TEST(Printable, KeepsTheFirstAndTheLastCharacterOfEachLength) {
  for (const char* const text : {"!", "~", "\u00A1", "\u07FF", "\u0800", "\uFFFD", "\U00010000"}) {
    EXPECT_EQ(printable(text), text);
  }
}

TEST(Printable, DropsWhatIsLongerThanNeedBe) {
  EXPECT_EQ(printable("\xC0\x81 \xC1\x81"), "") << "U+0001 and A in two bytes";
  EXPECT_EQ(printable("\xE0\x81\x81"), "") << "A in three bytes";
  EXPECT_EQ(printable("\xE0\x9F\xBF"), "") << "U+07FF in three bytes";
  EXPECT_EQ(printable("\xF0\x80\x81\x81"), "") << "A in four bytes";
  EXPECT_EQ(printable("\xF0\x8F\xA4\x80"), "") << "U+F900 in four bytes";
}

TEST(Printable, DropsEveryHalfOfASurrogatePair) {
  EXPECT_EQ(printable("a\xED\xA0\x80z"), "az") << "the first, U+D800";
  EXPECT_EQ(printable("a\xED\xBF\xBFz"), "az") << "the last, U+DFFF";
}

TEST(Printable, DropsBytesThatBeginNoCharacter) {
  EXPECT_EQ(printable("\x80\xBF\xBF"), "") << "continuations";
  EXPECT_EQ(printable("\xF8\x88\x80\x80\x80"), "") << "a length that there is not";
  EXPECT_EQ(printable("\xF9\x90\x80\x80"), "") << "likewise";
  EXPECT_EQ(printable("\xE2\x82z"), "z") << "not continued";
}

TEST(Printable, DropsACharacterThatIsCutShortAndReadsNoFurther) {
  for (const std::string_view character : {"é", "電", "🔋"}) {
    for (std::size_t length = 1; length < character.size(); ++length) {
      EXPECT_EQ(printable(character.substr(0, length)), "") << character << ' ' << length;
    }
  }
}

}  // namespace lumowatt

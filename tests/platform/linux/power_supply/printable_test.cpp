#include "platform/linux/power_supply/printable.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace lumowatt {

TEST(Printable, PreservesTextInAnyScript) {
  EXPECT_EQ(printable("LNV-45N1"), "LNV-45N1");
  EXPECT_EQ(printable("Größe 電池 🔋"), "Größe 電池 🔋");
}

TEST(Printable, IsEmptyForEmptyTextAndWhiteSpace) {
  EXPECT_EQ(printable(""), "");
  EXPECT_EQ(printable(" \n\t "), "");
}

TEST(Printable, DropsBlanksOnlyAtTheEnds) {
  EXPECT_EQ(printable("  G903 Wi  Logitech \n"), "G903 Wi  Logitech");
}

TEST(Printable, ReturnsOneLine) {
  EXPECT_EQ(printable("first\nsecond"), "first second");
  EXPECT_EQ(printable("a\tb\rc"), "a b c");
  EXPECT_EQ(printable("a\u2028b\u0085c"), "abc");
}

TEST(Printable, DropsControlCharacters) {
  EXPECT_EQ(printable(std::string("A\0B\x01"
                                  "C\x7F",
                                  6)),
            "ABC");
  EXPECT_EQ(printable("\x1B[31mred"), "[31mred");
  EXPECT_EQ(printable("\uFEFFzero\u200B \u2060width\u00AD"), "zero width");
}

TEST(Printable, DropsNoncharacters) {
  EXPECT_EQ(printable("Foo\uFDD0\uFDEFBar"), "FooBar");
  EXPECT_EQ(printable("\uFFFE\uFFFF\U0001FFFE\U0002FFFF\U0010FFFFplane"), "plane");
  EXPECT_EQ(printable("\uFDCF\uFDF0\U0001FFFD"), "\uFDCF\uFDF0\U0001FFFD");
}

TEST(Printable, DropsInvalidUtf8) {
  EXPECT_EQ(printable("\xFF\xFE"
                      "SANYO\x80"),
            "SANYO");
  EXPECT_EQ(printable("a\xC3"), "a") << "truncated";
  EXPECT_EQ(printable("\xC3("), "(") << "no continuation byte";
  EXPECT_EQ(printable("\xC0\xAF"), "") << "overlong";
  EXPECT_EQ(printable("\xE0\x80\x80"), "") << "overlong";
  EXPECT_EQ(printable("\xED\xA0\x80"), "") << "surrogate";
  EXPECT_EQ(printable("\xF4\x90\x80\x80"), "") << "above U+10FFFF";
  EXPECT_EQ(printable("\xF5\x80\x80\x80"), "");
}

TEST(Printable, DropsEachRangeOfInvisibleCharacters) {
  const std::string_view invisible[] = {
      // Cc: control characters
      "\x1F",
      "\x7F",
      "\u0080",
      "\u009F",
      // Cf, Zl, Zp: format characters and separators
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
      // Default_Ignorable_Code_Point: unassigned, but invisible by definition
      "\uFFF0",
      "\uFFF8",
      "\U000E0000",
      "\U000E0FFF",
      // Co: private use
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

TEST(Printable, PreservesNeighborsOfInvisibleCharacters) {
  const std::string_view visible[] = {
      "~",           // tilde, before the delete character
      "\u00A0",      // no-break space, after the control characters
      "\u00AC",      // not sign, before the soft hyphen
      "\u00AE",      // registered sign, after the soft hyphen
      "\u200A",      // hair space, before the zero-width space
      "\u2010",      // hyphen, after the directional marks
      "\u2027",      // hyphenation point, before the line separator
      "\u202F",      // narrow no-break space, after the directional overrides
      "\u205F",      // mathematical space, before the word joiner
      "\u2070",      // superscript zero, after the digit shapes
      "\uD7FF",      // the last code point before the surrogates
      "\uF900",      // a CJK ideograph, after the private-use characters
      "\uFEFE",      // before the byte order mark
      "\uFF00",      // after the byte order mark
      "\uFFEF",      // before the specials
      "\uFFFC",      // object replacement character, after the annotations
      "\uFFFD",      // replacement character, the last character of plane 0
      "\U0001FFFD",  // the last character of plane 1
      "\U000DFFFD",  // the last character before the tags
  };
  for (const std::string_view character : visible) {
    const std::string text = "a" + std::string(character) + "b";
    EXPECT_EQ(printable(text), text) << testing::PrintToString(character);
  }
}

TEST(Printable, PreservesTheFirstAndLastCharacterOfEachEncodedLength) {
  for (const char* const text : {"!", "~", "\u00A1", "\u07FF", "\u0800", "\uFFFD", "\U00010000"}) {
    EXPECT_EQ(printable(text), text);
  }
}

TEST(Printable, DropsOverlongEncodings) {
  EXPECT_EQ(printable("\xC0\x81 \xC1\x81"), "") << "U+0001 and A in two bytes";
  EXPECT_EQ(printable("\xE0\x81\x81"), "") << "A in three bytes";
  EXPECT_EQ(printable("\xE0\x9F\xBF"), "") << "U+07FF in three bytes";
  EXPECT_EQ(printable("\xF0\x80\x81\x81"), "") << "A in four bytes";
  EXPECT_EQ(printable("\xF0\x8F\xA4\x80"), "") << "U+F900 in four bytes";
}

TEST(Printable, DropsSurrogates) {
  EXPECT_EQ(printable("a\xED\xA0\x80z"), "az") << "the first surrogate, U+D800";
  EXPECT_EQ(printable("a\xED\xBF\xBFz"), "az") << "the last surrogate, U+DFFF";
}

TEST(Printable, DropsBytesThatBeginNoCharacter) {
  EXPECT_EQ(printable("\x80\xBF\xBF"), "") << "continuation bytes";
  EXPECT_EQ(printable("\xF8\x88\x80\x80\x80"), "") << "invalid length";
  EXPECT_EQ(printable("\xF9\x90\x80\x80"), "") << "invalid length";
  EXPECT_EQ(printable("\xE2\x82z"), "z") << "no continuation byte";
}

TEST(Printable, DropsTruncatedCharactersWithoutReadingFurther) {
  for (const std::string_view character : {"é", "電", "🔋"}) {
    for (std::size_t length = 1; length < character.size(); ++length) {
      EXPECT_EQ(printable(character.substr(0, length)), "") << character << ' ' << length;
    }
  }
}

}  // namespace lumowatt

#include "platform/linux/power_supply/printable.h"

#include <gtest/gtest.h>

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

}  // namespace lumowatt

#include "platform/freedesktop/user/desktop_entry.h"

#include <gtest/gtest.h>

namespace lumowatt::freedesktop {

TEST(DesktopEntry, ReturnsOnlyTheValuesOfTheGroup) {
  const std::string entry =
      "# comment\nName=outside\n[Desktop Entry]\nName = Lumowatt \r\nHidden=true\n"
      "[Desktop Action New]\nExec=other\nIcon=x\n";
  EXPECT_EQ(entryValue(entry, "Name"), "Lumowatt");
  EXPECT_EQ(entryValue(entry, "Hidden"), "true");
  EXPECT_EQ(entryValue(entry, "Exec"), std::nullopt);
  EXPECT_EQ(entryValue(entry, "Nam"), std::nullopt);
  EXPECT_EQ(entryValue("", "Name"), std::nullopt);
}

TEST(DesktopEntry, IgnoresLinesWithoutAnEqualsSign) {
  EXPECT_EQ(entryValue("[Desktop Entry]\nHidden\nHidden=true\n", "Hidden"), "true");
}

TEST(DesktopEntry, UnescapesValues) {
  EXPECT_EQ(entryValue("[Desktop Entry]\nName=a\\s", "Name"), "a ");
  EXPECT_EQ(entryValue("[Desktop Entry]\nName=a\\sb\\tc\\nd\\re\\\\f\\", "Name"),
            "a b\tc\nd\re\\f\\");
}

TEST(DesktopEntry, ExecProgramIsTheFirstWord) {
  EXPECT_EQ(execProgram("lumowatt"), "lumowatt");
  EXPECT_EQ(execProgram("  /usr/bin/lumowatt --flag %U"), "/usr/bin/lumowatt");
  EXPECT_EQ(execProgram(""), "");
}

TEST(DesktopEntry, ExecProgramMayBeQuoted) {
  EXPECT_EQ(execProgram(R"("/opt/my apps/lumowatt" "x")"), "/opt/my apps/lumowatt");
  EXPECT_EQ(execProgram(R"("/a\"b\$c\\d")"), R"(/a"b$c\d)");
  EXPECT_EQ(execProgram("/opt/100%%/lumowatt"), "/opt/100%/lumowatt");
  EXPECT_EQ(execProgram("/opt/100%%"), "/opt/100%");
}

TEST(DesktopEntry, ExecProgramIsUnescapedOnlyInQuotes) {
  EXPECT_EQ(execProgram(R"("\a\")"), R"(a")");
  EXPECT_EQ(execProgram(R"("/a\)"), R"(/a\)") << "no character follows";
  EXPECT_EQ(execProgram(R"(/a\b)"), R"(/a\b)");
}

TEST(DesktopEntry, ExecValueIsParsedAsTheOriginalProgram) {
  EXPECT_EQ(execValue("/usr/bin/lumowatt"), R"("/usr/bin/lumowatt")");
  // A backslash escapes the dollar sign of the argument; a second one escapes it in the value.
  EXPECT_EQ(execValue("/a$b"), R"("/a\\$b")");
  EXPECT_EQ(execValue("/100%s"), R"("/100%%s")");
  EXPECT_EQ(execValue(R"(/a\b)"), R"("/a\\\\b")");
  EXPECT_EQ(execValue("/a\nb"), R"("/a\nb")");
  for (const char* program : {"/usr/bin/lumowatt", "/with space", "/a\"b", "/a`b$c", R"(/a\b\\c)",
                              "/100%", "/täglich", "/a\nb\tc\r"}) {
    const std::string entry = "[Desktop Entry]\nExec=" + execValue(program) + "\n";
    EXPECT_EQ(execProgram(entryValue(entry, "Exec").value()), program);
  }
}

TEST(DesktopEntry, TextValueIsParsedAsTheOriginalText) {
  EXPECT_EQ(textValue("/usr/bin/lumowatt"), "/usr/bin/lumowatt");
  EXPECT_EQ(textValue("/with space/a\"b$c%"), "/with space/a\"b$c%") << "without quotes";
  EXPECT_EQ(textValue(R"(/a\b)"), R"(/a\\b)");
  EXPECT_EQ(textValue(" /a b "), R"(\s/a b\s)")
      << "unescaped spaces at the start and end would be trimmed";
  for (const char* text : {"", " ", "  ", " /a b ", R"(\s)", "/a\nb\tc\r", "/täglich"}) {
    EXPECT_EQ(entryValue("[Desktop Entry]\nTryExec=" + textValue(text) + "\n", "TryExec"), text);
  }
}

}  // namespace lumowatt::freedesktop

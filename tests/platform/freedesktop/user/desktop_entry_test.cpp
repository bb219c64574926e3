#include "platform/freedesktop/user/desktop_entry.h"

#include <gtest/gtest.h>

namespace lumowatt::freedesktop {

TEST(DesktopEntry, HasTheValuesOfItsGroup) {
  const std::string entry =
      "# comment\nName=outside\n[Desktop Entry]\nName = Lumowatt \r\nHidden=true\n"
      "[Desktop Action New]\nExec=other\nIcon=x\n";
  EXPECT_EQ(entryValue(entry, "Name"), "Lumowatt");
  EXPECT_EQ(entryValue(entry, "Hidden"), "true");
  EXPECT_EQ(entryValue(entry, "Exec"), std::nullopt);
  EXPECT_EQ(entryValue(entry, "Nam"), std::nullopt);
  EXPECT_EQ(entryValue("", "Name"), std::nullopt);
}

TEST(DesktopEntry, ALineWithoutAnEqualsSignHasNoValue) {
  EXPECT_EQ(entryValue("[Desktop Entry]\nHidden\nHidden=true\n", "Hidden"), "true");
}

TEST(DesktopEntry, UndoesTheEscapesOfAValue) {
  EXPECT_EQ(entryValue("[Desktop Entry]\nName=a\\s", "Name"), "a ");
  EXPECT_EQ(entryValue("[Desktop Entry]\nName=a\\sb\\tc\\nd\\re\\\\f\\", "Name"),
            "a b\tc\nd\re\\f\\");
}

TEST(DesktopEntry, TheProgramIsTheFirstWord) {
  EXPECT_EQ(execProgram("lumowatt"), "lumowatt");
  EXPECT_EQ(execProgram("  /usr/bin/lumowatt --flag %U"), "/usr/bin/lumowatt");
  EXPECT_EQ(execProgram(""), "");
}

TEST(DesktopEntry, TheProgramMayBeQuoted) {
  EXPECT_EQ(execProgram(R"("/opt/my apps/lumowatt" "x")"), "/opt/my apps/lumowatt");
  EXPECT_EQ(execProgram(R"("/a\"b\$c\\d")"), R"(/a"b$c\d)");
  EXPECT_EQ(execProgram("/opt/100%%/lumowatt"), "/opt/100%/lumowatt");
  EXPECT_EQ(execProgram("/opt/100%%"), "/opt/100%");
}

TEST(DesktopEntry, ABackslashStandsForTheNextCharacterInQuotesAlone) {
  EXPECT_EQ(execProgram(R"("\a\")"), R"(a")");
  EXPECT_EQ(execProgram(R"("/a\)"), R"(/a\)") << "none is next";
  EXPECT_EQ(execProgram(R"(/a\b)"), R"(/a\b)");
}

TEST(DesktopEntry, AnExecValueIsReadBackAsItsProgram) {
  EXPECT_EQ(execValue("/usr/bin/lumowatt"), R"("/usr/bin/lumowatt")");
  // In the argument a dollar has a backslash, which as a value's is two.
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

TEST(DesktopEntry, ATextValueIsReadBackAsItsText) {
  EXPECT_EQ(textValue("/usr/bin/lumowatt"), "/usr/bin/lumowatt");
  EXPECT_EQ(textValue("/with space/a\"b$c%"), "/with space/a\"b$c%") << "nothing is quoted";
  EXPECT_EQ(textValue(R"(/a\b)"), R"(/a\\b)");
  EXPECT_EQ(textValue(" /a b "), R"(\s/a b\s)") << "spaces at an end would be lost";
  for (const char* text : {"", " ", "  ", " /a b ", R"(\s)", "/a\nb\tc\r", "/täglich"}) {
    EXPECT_EQ(entryValue("[Desktop Entry]\nTryExec=" + textValue(text) + "\n", "TryExec"), text);
  }
}

}  // namespace lumowatt::freedesktop

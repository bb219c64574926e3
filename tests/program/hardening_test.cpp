// What the built files have against mistakes in memory, by what readelf (binutils) says of them.

#include <gtest/gtest.h>

#include "support/process.h"

namespace lumowatt {

namespace {

std::string readelf(const char* what, const std::string& file) {
  const auto result = runProcess({"readelf", "--wide", what, file});
  EXPECT_EQ(result.status, 0) << result.errors;
  return result.output;
}

bool contains(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

std::size_t count(const std::string& text, std::string_view part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++found;
  }
  return found;
}

struct File {
  const char* name;
  const char* path;
};

std::ostream& operator<<(std::ostream& out, const File& file) { return out << file.path; }

class Hardening : public testing::TestWithParam<File> {
 protected:
  static std::string read(const char* what) { return readelf(what, GetParam().path); }
};

}  // namespace

TEST_P(Hardening, LiesWhereNobodyCanTell) {
  EXPECT_TRUE(contains(read("--file-header"), "Type:                              DYN"));
}

TEST_P(Hardening, HasNoRelocationsThatCanBeWrittenAfterTheStart) {
  EXPECT_TRUE(contains(read("--program-headers"), " GNU_RELRO "));
  EXPECT_TRUE(contains(read("--dynamic"), "BIND_NOW"));
}

TEST_P(Hardening, HasNoMemoryThatIsBothWrittenAndExecuted) {
  const std::string segments = read("--program-headers");
  EXPECT_TRUE(contains(segments, " GNU_STACK "));
  EXPECT_FALSE(contains(segments, "RWE"));
  EXPECT_FALSE(contains(read("--dynamic"), "TEXTREL"));
}

TEST_P(Hardening, ChecksItsStackAndItsBuffers) {
  const std::string symbols = read("--dyn-syms");
  EXPECT_TRUE(contains(symbols, " __stack_chk_fail@"));
  EXPECT_TRUE(contains(symbols, "_chk@")) << symbols;
  EXPECT_FALSE(contains(symbols, " fprintf@")) << "which is __fprintf_chk where it is checked";
}

TEST_P(Hardening, LooksForItsLibrariesNowhereElse) {
  const std::string dynamic = read("--dynamic");
  EXPECT_FALSE(contains(dynamic, "(RPATH)"));
  EXPECT_FALSE(contains(dynamic, "(RUNPATH)"));
}

INSTANTIATE_TEST_SUITE_P(, Hardening,
                         testing::Values(File{"Program", LUMOWATT_PROGRAM},
                                         File{"DesktopModule", LUMOWATT_DESKTOP_MODULE},
                                         File{"DrawingModule", LUMOWATT_DRAWING_MODULE}),
                         [](const auto& test) { return test.param.name; });

#ifdef __x86_64__
// What is linked has the mark only if the C library's startup code has it as well, so it is looked
// for in what is our own.
TEST(Objects, HaveTheirControlFlowProtected) {
  for (const char* const library : {LUMOWATT_CORE, LUMOWATT_PLATFORM, LUMOWATT_DESKTOP}) {
    const std::string notes = readelf("--notes", library);
    EXPECT_GT(count(notes, "File: "), 5U);
    EXPECT_EQ(count(notes, "x86 feature: IBT, SHSTK"), count(notes, "File: ")) << library;
  }
}
#endif

}  // namespace lumowatt

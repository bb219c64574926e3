// Checks with readelf (binutils) that the built files are hardened against memory errors.

#include <gtest/gtest.h>

#include "support/process.h"

namespace lumowatt {

namespace {

std::string readelf(const char* option, const std::string& file) {
  const auto result = runProcess({"readelf", "--wide", option, file});
  EXPECT_EQ(result.status, 0) << result.errors;
  return result.output;
}

bool contains(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

std::size_t count(const std::string& text, std::string_view part) {
  std::size_t occurrences = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++occurrences;
  }
  return occurrences;
}

struct BuiltFile {
  const char* name;
  const char* path;
};

std::ostream& operator<<(std::ostream& out, const BuiltFile& file) { return out << file.path; }

class HardenedFile : public testing::TestWithParam<BuiltFile> {
 protected:
  static std::string read(const char* option) { return readelf(option, GetParam().path); }
};

}  // namespace

TEST_P(HardenedFile, IsPositionIndependent) {
  EXPECT_TRUE(contains(read("--file-header"), "Type:                              DYN"));
}

TEST_P(HardenedFile, MakesRelocationsReadOnlyAtStart) {
  EXPECT_TRUE(contains(read("--program-headers"), " GNU_RELRO "));
  EXPECT_TRUE(contains(read("--dynamic"), "BIND_NOW"));
}

TEST_P(HardenedFile, HasNoWritableExecutableMemory) {
  const std::string segments = read("--program-headers");
  EXPECT_TRUE(contains(segments, " GNU_STACK "));
  EXPECT_FALSE(contains(segments, "RWE"));
  EXPECT_FALSE(contains(read("--dynamic"), "TEXTREL"));
}

TEST_P(HardenedFile, DetectsStackAndBufferOverflows) {
  const std::string symbols = read("--dyn-syms");
  EXPECT_TRUE(contains(symbols, " __stack_chk_fail@"));
  EXPECT_TRUE(contains(symbols, "_chk@")) << symbols;
  EXPECT_FALSE(contains(symbols, " fprintf@")) << "expected the checked version, __fprintf_chk";
}

TEST_P(HardenedFile, AddsNoFolderToTheLibrarySearchPath) {
  const std::string dynamic = read("--dynamic");
  EXPECT_FALSE(contains(dynamic, "(RPATH)"));
  EXPECT_FALSE(contains(dynamic, "(RUNPATH)"));
}

INSTANTIATE_TEST_SUITE_P(, HardenedFile,
                         testing::Values(BuiltFile{"Program", LUMOWATT_PROGRAM},
                                         BuiltFile{"DesktopModule", LUMOWATT_DESKTOP_MODULE},
                                         BuiltFile{"DrawingModule", LUMOWATT_DRAWING_MODULE}),
                         [](const auto& test) { return test.param.name; });

#ifdef __x86_64__
// Checks object files instead of linked files. A linked file has this property only if the startup
// code of the C library has the property too.
TEST(ObjectFiles, EnableControlFlowProtection) {
  for (const char* const library : {LUMOWATT_CORE, LUMOWATT_PLATFORM, LUMOWATT_DESKTOP}) {
    const std::string notes = readelf("--notes", library);
    EXPECT_GT(count(notes, "File: "), 5U);
    EXPECT_EQ(count(notes, "x86 feature: IBT, SHSTK"), count(notes, "File: ")) << library;
  }
}
#endif

}  // namespace lumowatt

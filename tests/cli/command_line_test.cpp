#include "cli/command_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace lumowatt {

namespace {

/// Parses the arguments after the program name.
Command parse(std::vector<const char*> arguments) {
  arguments.insert(arguments.begin(), "lumowatt");
  return parseCommandLine(arguments);
}

template <typename Kind>
bool is(const Command& command) {
  return std::holds_alternative<Kind>(command);
}

void expectSnapshot(const Command& command, const std::string& path,
                    const std::optional<std::string>& sample) {
  const auto* snapshot = std::get_if<WriteSnapshot>(&command);
  ASSERT_NE(snapshot, nullptr);
  EXPECT_EQ(snapshot->path, path);
  EXPECT_EQ(snapshot->sample, sample);
}

}  // namespace

TEST(CommandLine, SelectsTheMenuBarItemWithoutSwitches) {
  EXPECT_TRUE(is<ShowMenuBarItem>(parse({})));
  EXPECT_TRUE(is<ShowMenuBarItem>(parseCommandLine({})));
}

TEST(CommandLine, IgnoresUnknownArguments) {
  EXPECT_TRUE(is<ShowMenuBarItem>(parse({"--help", "file", "-psn_0_12345", ""})));
  EXPECT_TRUE(is<PrintDump>(parse({"--help", "--dump", "file"})));
}

TEST(CommandLine, PrefersVersionToAllOtherSwitches) {
  EXPECT_TRUE(is<PrintVersion>(parse({"--version"})));
  EXPECT_TRUE(is<PrintVersion>(parse({"--dump", "--version"})));
  EXPECT_TRUE(is<PrintVersion>(parse({"--snapshot", "out.png", "--version"})));
  EXPECT_TRUE(is<PrintVersion>(parse({"--snapshot", "--version"})))
      << "even as the path of the snapshot";
  EXPECT_TRUE(is<PrintVersion>(parse({"--sample", "low", "--version"})));
}

TEST(CommandLine, RecognizesASwitchInPlaceOfTheProgramName) {
  const std::vector<const char*> arguments = {"--version"};
  EXPECT_TRUE(is<PrintVersion>(parseCommandLine(arguments)));
}

TEST(CommandLine, SelectsTheDump) { EXPECT_TRUE(is<PrintDump>(parse({"--dump"}))); }

TEST(CommandLine, IgnoresTheSampleOfADump) {
  EXPECT_TRUE(is<PrintDump>(parse({"--dump", "--sample", "low"})));
}

TEST(CommandLine, SelectsTheMenuBarItemForASampleAlone) {
  EXPECT_TRUE(is<ShowMenuBarItem>(parse({"--sample", "low"})));
}

TEST(CommandLine, ReadsTheSnapshotPathFromTheNextArgument) {
  expectSnapshot(parse({"--snapshot", "out.png"}), "out.png", std::nullopt);
  expectSnapshot(parse({"--snapshot", ""}), "", std::nullopt);
}

TEST(CommandLine, PrefersSnapshotToDump) {
  expectSnapshot(parse({"--dump", "--snapshot", "out.png"}), "out.png", std::nullopt);
}

TEST(CommandLine, AcceptsASwitchAsTheSnapshotPath) {
  expectSnapshot(parse({"--snapshot", "--dump"}), "--dump", std::nullopt);
}

TEST(CommandLine, IgnoresASnapshotWithoutAPath) {
  EXPECT_TRUE(is<PrintDump>(parse({"--dump", "--snapshot"})));
  EXPECT_TRUE(is<ShowMenuBarItem>(parse({"--snapshot"})));
  EXPECT_TRUE(is<ShowMenuBarItem>(parse({"--sample", "low", "--snapshot"})));
}

TEST(CommandLine, UsesTheFirstOfTwoSnapshots) {
  expectSnapshot(parse({"--snapshot", "a.png", "--snapshot", "b.png"}), "a.png", std::nullopt);
  expectSnapshot(parse({"--snapshot", "--snapshot"}), "--snapshot", std::nullopt);
}

TEST(CommandLine, ReadsTheSampleNameFromTheNextArgument) {
  expectSnapshot(parse({"--snapshot", "out.png", "--sample", "low"}), "out.png", "low");
  expectSnapshot(parse({"--sample", "low", "--snapshot", "out.png"}), "out.png", "low");
}

TEST(CommandLine, UsesTheFirstOfTwoSamples) {
  expectSnapshot(parse({"--snapshot", "out.png", "--sample", "low", "--sample", "full"}), "out.png",
                 "low");
}

TEST(CommandLine, IgnoresASampleWithoutAName) {
  expectSnapshot(parse({"--snapshot", "out.png", "--sample"}), "out.png", std::nullopt);
}

TEST(CommandLine, MatchesSwitchesExactly) {
  EXPECT_TRUE(is<ShowMenuBarItem>(parse({"--Version", "--vers", "-version", "--version=1"})));
  EXPECT_TRUE(is<ShowMenuBarItem>(parse({"--snapshot=out.png", "--DUMP", " --dump"})));
}

}  // namespace lumowatt

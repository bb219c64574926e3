// The snapshot as the built executable makes it: the pixels, the file, the errors, and what is
// loaded for it.

#include <gtest/gtest.h>
#include <unistd.h>

#include <utility>

#include "linux/program.h"
#include "support/fixtures.h"
#include "support/picture.h"

namespace lumowatt {

namespace {

constexpr Pixel background{26, 20, 38, 255};
constexpr Pixel strip{43, 36, 59, 255};
constexpr Pixel panel{51, 43, 69, 255};
constexpr Pixel white{255, 255, 255, 255};

/// What a snapshot was made of, and the file.
struct Snapshot {
  ProcessResult result;
  std::string png;

  Picture picture() const { return Picture(png); }
};

Snapshot snapshot(const std::vector<std::string>& arguments,
                  const std::string& machine = anyMachine) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  std::vector<std::string> all{"--snapshot", path};
  all.insert(all.end(), arguments.begin(), arguments.end());
  const ProcessResult result = run(machine, all);
  expectResult(result, "wrote " + path + "\n", 0);
  return {result, fileContents(path)};
}

/// Expects a color all over an area, in pixels.
void expectPlain(const Picture& picture, const Rect& area, const Pixel& color) {
  EXPECT_EQ(picture.inkBounds(area, color), Rect{})
      << "in the area from " << area.x << ", " << area.y;
}

bool contains(const Picture& picture, const Rect& area, const Pixel& color) {
  for (int y = static_cast<int>(area.minY()); y < static_cast<int>(area.maxY()); ++y) {
    for (int x = static_cast<int>(area.minX()); x < static_cast<int>(area.maxX()); ++x) {
      if (picture.at(x, y) == color) return true;
    }
  }
  return false;
}

struct Expected {
  std::string sample;
  Pixel tint;
};

std::ostream& operator<<(std::ostream& stream, const Expected& expected) {
  return stream << expected.sample;
}

/// The program and its modules in folders of their own, for anybody to run.
class Installation {
 public:
  explicit Installation(std::string programFolder) : folder_(std::move(programFolder)) {
    std::filesystem::permissions(root_.path(), std::filesystem::perms(0755));
    std::filesystem::create_directories(root_.path() / folder_);
    std::filesystem::copy_file(LUMOWATT_PROGRAM, program());
  }

  void addModule(const std::string& folder) const {
    std::filesystem::create_directories(root_.path() / folder);
    const auto module = root_.path() / folder / "lumowatt-drawing.so";
    std::filesystem::copy_file(LUMOWATT_DRAWING_MODULE, module);
    std::filesystem::permissions(module, std::filesystem::perms(0644));  // as packages have it
  }

  const TemporaryFolder& root() const { return root_; }
  std::string program() const { return root_.path() / folder_ / "lumowatt"; }
  std::string picture() const { return root_.path() / "out.png"; }

  ProcessResult run() const {
    return runProcess({program(), "--snapshot", picture(), "--sample", "low"});
  }

 private:
  TemporaryFolder root_;
  std::string folder_;
};

}  // namespace

class SnapshotOfSample : public testing::TestWithParam<Expected> {};

TEST_P(SnapshotOfSample, HasEverythingInItsPlace) {
  const Snapshot made = snapshot({"--sample", GetParam().sample});
  EXPECT_EQ(pixelsPerMetre(made.png), 5669U) << "144 per inch";
  const Picture picture = made.picture();
  // Each of the samples has ten lines: 366 points, the panel from 48 to 310.
  ASSERT_EQ(picture.width(), 1120);
  ASSERT_EQ(picture.height(), 732);

  // The strip, up to the glyph and beside the title, and the background around the panel.
  expectPlain(picture, {0, 0, 700, 68}, strip);
  expectPlain(picture, {1072, 0, 48, 68}, strip);
  expectPlain(picture, {0, 68, 1120, 28}, background);
  expectPlain(picture, {0, 96, 48, 524}, background);
  expectPlain(picture, {1072, 96, 48, 524}, background);
  expectPlain(picture, {0, 620, 1120, 52}, background);
  expectPlain(picture, {0, 704, 1120, 28}, background);

  // The panel's edges, and its corners, round by 20 pixels.
  expectPlain(picture, {48, 116, 30, 484}, panel);
  expectPlain(picture, {1020, 116, 52, 484}, panel);
  expectPlain(picture, {68, 96, 984, 20}, panel);
  for (const int x : {48, 1071}) {
    for (const int y : {96, 619}) EXPECT_EQ(picture.at(x, y), background) << x << ", " << y;
  }

  // Ten lines of text, each beginning 40 points from the left.
  for (int line = 0; line < 10; ++line) {
    const Rect text = picture.inkBounds({48, 120.0 + 48 * line, 1024, 40}, panel);
    EXPECT_GE(text.minX(), 78) << line;
    EXPECT_LE(text.minX(), 86) << line;
    EXPECT_GT(text.width, 100) << line;
  }

  // The caption's first letter begins 24 points from the left.
  const Rect caption = picture.inkBounds({0, 672, 1120, 32}, background);
  EXPECT_GE(caption.minX(), 48);
  EXPECT_LE(caption.minX(), 52);
  EXPECT_GT(caption.width, 300);

  // The title ends 24 points from the right, but for the space that its last letter brings.
  const Rect item = picture.inkBounds({0, 0, 1120, 68}, strip);
  EXPECT_LE(item.maxX(), 1072);
  EXPECT_GE(item.maxX(), 1072 - 6);

  // The glyph begins the item, 26 points wide, in its tint, in the strip's vertical middle.
  const Rect glyph = picture.inkBounds({item.x, 0, 52, 68}, strip);
  EXPECT_NEAR(glyph.width, 52, 1);
  EXPECT_NEAR(glyph.y + glyph.height / 2, 34, 1);
  EXPECT_TRUE(contains(picture, glyph, GetParam().tint));
  EXPECT_TRUE(contains(picture, {item.x + 60, 0, 1072 - item.x - 60, 68}, white)) << "the title";
  expectPlain(picture, {item.x + 53, 0, 7, 68}, strip);
}

INSTANTIATE_TEST_SUITE_P(Samples, SnapshotOfSample,
                         testing::Values(Expected{"draining", white},
                                         Expected{"low", {255, 159, 10, 255}},
                                         Expected{"full", {50, 215, 75, 255}}),
                         [](const auto& test) { return test.param.sample; });

TEST_P(SnapshotOfSample, LooksLikeItsReferenceInEveryPart) {
  if (runProcess({"fc-match", "Inter", "family"}).output.find("Inter") == std::string::npos) {
    GTEST_SKIP() << "the reference was drawn with the font Inter, which is not installed";
  }
  const Picture picture = snapshot({"--sample", GetParam().sample}).picture();
  const Picture reference(
      fileContents(fixturePath("pictures", "snapshot-" + GetParam().sample + ".png")));
  ASSERT_EQ(picture.width(), reference.width());
  ASSERT_EQ(picture.height(), reference.height());

  // The glyph and the title, the lines of the report, the caption.
  const double left = reference.inkBounds({0, 0, 1120, 68}, strip).x;
  std::vector<std::pair<Rect, Pixel>> parts{{{left, 0, 56, 68}, strip},
                                            {{left + 56, 0, 1120 - left - 56, 68}, strip},
                                            {{0, 672, 1120, 32}, background}};
  for (int line = 0; line < 10; ++line) {
    parts.push_back({{48, 112.0 + 48 * line, 1024, 48}, panel});
  }
  for (const auto& [area, color] : parts) {
    int different = 0;
    for (int y = static_cast<int>(area.minY()); y < static_cast<int>(area.maxY()); ++y) {
      for (int x = static_cast<int>(area.minX()); x < static_cast<int>(area.maxX()); ++x) {
        if (difference(picture.at(x, y), reference.at(x, y)) > 64) ++different;
      }
    }
    // Other versions of the libraries place letters a little differently.
    const int ink = reference.inkCount(area, color);
    EXPECT_GT(ink, 300) << area;
    EXPECT_LT(different, ink / 10) << area;
  }
}

TEST(SnapshotProgram, TheGlyphIsFilledAsFarAsTheLevelSays) {
  // Of the low sample, a quarter: the fill goes from 1.8 to 4.4 of the glyph's 16 units, each of
  // 3.25 pixels, and from there to 12 it is empty.
  const Picture picture = snapshot({"--sample", "low"}).picture();
  const int left = static_cast<int>(picture.inkBounds({0, 0, 1120, 68}, strip).x);
  const Pixel orange{255, 159, 10, 255};
  EXPECT_EQ(picture.at(left + 7, 34), orange);
  EXPECT_EQ(picture.at(left + 12, 34), orange);
  for (const int x : {4, 17, 25, 38}) EXPECT_EQ(picture.at(left + x, 34), strip) << x;
}

TEST(SnapshotProgram, OfTheBatteryHasNoCaption) {
  const Picture picture = snapshot({}).picture();
  const int height = picture.height();
  EXPECT_EQ((height / 2 - 126) % 24, 0);
  expectPlain(picture, {0, height - 112.0, 1120, 112}, background);
  EXPECT_EQ(picture.at(560, height - 113), panel) << "the panel's last row";
}

TEST(SnapshotProgram, WithoutTheNameOfASampleIsOfTheBattery) {
  EXPECT_EQ(snapshot({"--sample"}).png, snapshot({}).png);
}

TEST(SnapshotProgram, OfAChargingBatteryHasAGreenBolt) {
  const Picture picture = snapshot({}, "20-framework-13-charging-plugged").picture();
  const Rect item = picture.inkBounds({0, 0, 1120, 68}, strip);
  const Rect glyph = picture.inkBounds({item.x, 0, 52, 68}, strip);
  EXPECT_TRUE(contains(picture, glyph, {50, 215, 75, 255}));
  // A unit is 3.25 pixels: the bolt is 12.4 units high but for its round tips, the body 7.46.
  EXPECT_GT(glyph.height, 36);
}

TEST(SnapshotProgram, IsTheSameInEveryLocaleAndAppearance) {
  const Machine machine(anyMachine);
  const TemporaryFolder folder;
  Environment environment = machine.environment();
  for (const char* name : {"LC_ALL", "LANG", "LANGUAGE"}) {
    environment.emplace_back(name, "de_DE.UTF-8");
  }
  environment.emplace_back("GTK_THEME", "Adwaita:light");
  const std::string path = folder.path() / "out.png";
  const auto result = runProcess({LUMOWATT_PROGRAM, "--snapshot", path}, environment);
  expectResult(result, "wrote " + path + "\n", 0);
  EXPECT_EQ(fileContents(path), snapshot({}).png);
}

TEST(SnapshotProgram, OutranksTheDumpAndTakesASwitchAsItsPath) {
  const TemporaryFolder folder;
  const auto result =
      runShell("cd " + folder.path().string() +
               " && lumowatt --snapshot --dump --sample low && head -c 4 ./--dump | tail -c 3");
  expectResult(result, "wrote --dump\nPNG", 0);
}

TEST(SnapshotProgram, OfTwoPathsTheFirstCounts) {
  const TemporaryFolder folder;
  const auto result = runShell("cd " + folder.path().string() +
                               " && lumowatt --snapshot a --snapshot b --sample low && ls");
  expectResult(result, "wrote a\na\n", 0);
}

TEST(SnapshotProgram, OfTwoSamplesTheFirstCounts) {
  expectResult(run(anyMachine, {"--snapshot", "/", "--sample", "nosuch", "--sample", "low"}),
               "error=unknown sample\n", 1);
  EXPECT_EQ(snapshot({"--sample", "low", "--sample", "nosuch"}).png,
            snapshot({"--sample", "low"}).png);
}

TEST(SnapshotProgram, OfAnUnknownSampleIsAnErrorAndLeavesNoFile) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  expectResult(run(anyMachine, {"--snapshot", path, "--sample", "nosuch"}),
               "error=unknown sample\n", 1);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(SnapshotProgram, WithoutABatteryIsAnErrorButNotForASample) {
  const std::string none = "31-no-battery-desktop-ucsi-gpu";
  expectResult(run(none, {"--snapshot", "/", "--sample"}), "error=no battery\n", 1);
  EXPECT_EQ(snapshot({"--sample", "low"}, none).png, snapshot({"--sample", "low"}).png);
}

// Where it cannot be written

TEST(SnapshotProgram, AFolderAsItsPathIsAnError) {
  const TemporaryFolder folder;
  expectResult(run(anyMachine, {"--snapshot", folder.path()}), "error=Is a directory\n", 1);
}

TEST(SnapshotProgram, AFolderThatIsNotThereIsAnError) {
  expectResult(run(anyMachine, {"--snapshot", "/nowhere/out.png"}),
               "error=No such file or directory\n", 1);
  expectResult(run(anyMachine, {"--snapshot", ""}), "error=No such file or directory\n", 1);
}

TEST(SnapshotProgram, AFullDeviceIsAnError) {
  expectResult(run(anyMachine, {"--snapshot", "/dev/full"}), "error=No space left on device\n", 1);
}

TEST(SnapshotProgram, AFileThatMayNotBeWrittenIsAnErrorAndStaysAsItIs) {
  const Installation installation("bin");
  installation.addModule("bin");
  installation.root().write("out.png", "old");
  std::filesystem::permissions(installation.picture(), std::filesystem::perms(0444));
  std::vector<std::string> command;
  if (::geteuid() == 0) {  // who may write everything
    command = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
  }
  for (const std::string& path :
       {installation.picture(), installation.root().path().string() + "/new.png"}) {
    if (::geteuid() != 0 && path != installation.picture()) continue;  // the folder is its own
    std::vector<std::string> all = command;
    all.insert(all.end(), {installation.program(), "--snapshot", path, "--sample", "low"});
    const auto result = runProcess(all, {{"HOME", "/nonexistent"}});
    EXPECT_EQ(result.output, "error=Permission denied\n") << result.errors;
    EXPECT_EQ(result.status, 1);
  }
  EXPECT_EQ(fileContents(installation.picture()), "old");
}

TEST(SnapshotProgram, AWriteThatFailsHalfWayIsAnError) {
  const TemporaryFolder folder;
  const auto result = runShell("cd " + folder.path().string() +
                               " && ulimit -f 8 && lumowatt --snapshot out.png --sample low");
  expectResult(result, "error=File too large\n", 1);
}

TEST(SnapshotProgram, APipeThatNobodyReadsIsAnError) {
  // The reader has ended, by the time that the program writes.
  const auto result = runShell(
      "{ sleep 0.2; lumowatt --snapshot /dev/fd/3 --sample low 3>&1 >&2; echo $? >&2; } | true");
  EXPECT_EQ(result.errors, "error=Broken pipe\n1\n");
}

TEST(SnapshotProgram, GoesToTheStandardOutputBeforeTheLineThatSaysSo) {
  const std::string expected = snapshot({"--sample", "low"}).png + "wrote /dev/stdout\n";
  const std::string command = "lumowatt --snapshot /dev/stdout --sample low";
  EXPECT_TRUE(runShell(command).output == expected) << "into a file";
  EXPECT_TRUE(runShell(command + " | cat").output == expected) << "into a pipe";
  const std::string before = "echo before; ";
  EXPECT_TRUE(runShell(before + command + "; echo after").output ==
              "before\n" + expected + "after\n")
      << "into a file with something in it";
}

TEST(SnapshotProgram, AStandardOutputThatIsFullIsAnError) {
  const auto result = runShell("lumowatt --snapshot /dev/stdout --sample low > /dev/full");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "lumowatt: cannot write to the standard output: No space left on device\n");
}

TEST(SnapshotProgram, ASuccessThatCannotBeToldIsAFailure) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  const auto result = runShell("lumowatt --snapshot " + path + " --sample low > /dev/full");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "lumowatt: cannot write to the standard output: No space left on device\n");
}

// What is loaded

TEST(SnapshotProgram, FindsItsModuleBesideTheProgramAndInAnInstallation) {
  const Installation build("build");
  build.addModule("build");
  expectResult(build.run(), "wrote " + build.picture() + "\n", 0);

  const Installation installed("usr/bin");
  installed.addModule("usr/lib/lumowatt");
  expectResult(installed.run(), "wrote " + installed.picture() + "\n", 0);
}

TEST(SnapshotProgram, FindsItsModuleThroughALinkToTheProgram) {
  const Installation installed("opt/lumowatt/bin");
  installed.addModule("opt/lumowatt/lib/lumowatt");
  const std::string link = installed.root().path() / "link";
  std::filesystem::create_symlink(installed.program(), link);
  expectResult(runProcess({link, "--snapshot", installed.picture(), "--sample", "low"}),
               "wrote " + installed.picture() + "\n", 0);
}

TEST(SnapshotProgram, WithoutItsModuleHasNoBitmap) {
  const Installation alone("bin");
  const auto result = alone.run();
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("lumowatt/lumowatt-drawing.so: cannot open shared object file"),
            std::string::npos)
      << result.errors;
  EXPECT_FALSE(std::filesystem::exists(alone.picture()));
}

TEST(SnapshotProgram, WithAModuleThatIsNoneHasNoBitmap) {
  const Installation broken("bin");
  broken.root().write("bin/lumowatt-drawing.so", "not a library");
  const auto result = broken.run();
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(result.errors.starts_with("lumowatt: ")) << result.errors;
}

TEST(SnapshotProgram, WithAModuleThatExportsNothingHasNoBitmap) {
  const Installation wrong("bin");
  std::filesystem::copy_file(LUMOWATT_REFUSING_ATTRIBUTE,
                             wrong.root().path() / "bin" / "lumowatt-drawing.so");
  const auto result = wrong.run();
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("undefined symbol: lumowattBitmapFactory"), std::string::npos)
      << result.errors;
}

TEST(SnapshotProgram, WithoutAFontHasNoBitmap) {
  const TemporaryFolder folder;
  folder.write("fonts.conf",
               "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
               "<fontconfig><dir>/nonexistent</dir></fontconfig>");
  const std::string path = folder.path() / "out.png";
  const auto result = runProcess({LUMOWATT_PROGRAM, "--snapshot", path, "--sample", "low"},
                                 {{"FONTCONFIG_FILE", folder.path() / "fonts.conf"}});
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("lumowatt: no font is installed\n"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(SnapshotProgram, WithABrokenPangoHasNoBitmap) {
  const auto result = runProcess({LUMOWATT_PROGRAM, "--snapshot", "/", "--sample", "low"},
                                 {{"PANGOCAIRO_BACKEND", "nonsense"}});
  EXPECT_EQ(result.output, "error=no bitmap\n");
  EXPECT_EQ(result.status, 1);
}

TEST(SnapshotProgram, AloneLoadsTheDrawingModule) {
  const auto loaded = [](const std::vector<std::string>& arguments) {
    const Machine machine(anyMachine);
    Environment environment = machine.environment();
    environment.emplace_back("LD_DEBUG", "files");
    std::vector<std::string> command{LUMOWATT_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return runProcess(command, environment).errors;
  };
  const TemporaryFolder folder;
  const std::string picture = loaded({"--snapshot", folder.path() / "out.png"});
  EXPECT_NE(picture.find("lumowatt-drawing.so"), std::string::npos);
  EXPECT_NE(picture.find("libcairo"), std::string::npos);
  for (const char* argument : {"--dump", "--version"}) {
    const std::string files = loaded({argument});
    EXPECT_NE(files.find("libc.so"), std::string::npos);
    EXPECT_EQ(files.find("lumowatt-drawing.so"), std::string::npos) << argument;
    EXPECT_EQ(files.find("libcairo"), std::string::npos) << argument;
  }
  const std::string failed = loaded({"--snapshot", "out.png", "--sample", "nosuch"});
  EXPECT_EQ(failed.find("lumowatt-drawing.so"), std::string::npos);
}

#if !LUMOWATT_SANITIZED  // the sanitizers do not go with valgrind, and look for themselves

TEST(SnapshotProgram, LosesNoMemoryAndReadsNoneThatIsNotItsOwn) {
  // What valgrind calls possibly lost is left out: Pango keeps its languages by pointers that lead
  // into the middle of their memory. So are mismatched frees: the program and its module have each
  // an operator new of their own, both of which are malloc, and valgrind sees one of them.
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  const auto result =
      runProcess({"valgrind", "--quiet", "--error-exitcode=9", "--leak-check=full",
                  "--show-mismatched-frees=no", "--show-leak-kinds=definite,indirect",
                  "--errors-for-leak-kinds=definite,indirect",
                  std::string("--suppressions=") + LUMOWATT_VALGRIND_SUPPRESSIONS, LUMOWATT_PROGRAM,
                  "--snapshot", path, "--sample", "draining"});
  expectResult(result, "wrote " + path + "\n", 0);
}

#endif

}  // namespace lumowatt

#include "cli/commands.h"

#include <gtest/gtest.h>

#include "cli/dump.h"
#include "fakes/fake_desktop.h"
#include "fakes/recording_canvas.h"
#include "fakes/scripted_battery.h"
#include "support/files.h"

namespace lumowatt {

namespace {

/// Forwards to a factory that the test owns.
class ForwardingBitmapFactory : public BitmapFactory {
 public:
  explicit ForwardingBitmapFactory(BitmapFactory& bitmaps) : bitmaps_(bitmaps) {}

  Result<std::unique_ptr<Bitmap>> draw(const Drawing& picture, double scale,
                                       Appearance appearance) override {
    return bitmaps_.draw(picture, scale, appearance);
  }

 private:
  BitmapFactory& bitmaps_;
};

/// Runs a command without a desktop and checks its output and exit status.
void expectOutcome(const Command& command, BatteryService& battery, BitmapFactory& bitmaps,
                   const std::string& output, int status) {
  const Services services{
      .battery = battery,
      .makeBitmaps = [&] { return std::make_unique<ForwardingBitmapFactory>(bitmaps); },
      .makeDesktop = []() -> Result<std::unique_ptr<Desktop>> { return Failure{"no module"}; }};
  const Outcome outcome = runCommand(command, "1.0.0", services);
  EXPECT_EQ(outcome.output, output);
  EXPECT_EQ(outcome.status, status);
}

/// Runs a command without a desktop, checks its output and exit status, and checks that it draws no
/// bitmap.
void expectOutcome(const Command& command, BatteryService& battery, const std::string& output,
                   int status) {
  RecordingBitmapFactory bitmaps;
  expectOutcome(command, battery, bitmaps, output, status);
  EXPECT_TRUE(bitmaps.operations.empty());
}

/// Desktop that starts the application, stores the title of the item in `title`, and then exits.
class BriefDesktop : public FakeDesktop {
 public:
  BriefDesktop(std::string& title, Result<> result) : title_(title), result_(std::move(result)) {}

  Result<> run(std::shared_ptr<ApplicationDelegate> delegate) override {
    delegate->applicationDidFinishLaunching();
    title_ = plainTitle();
    return result_;
  }

 private:
  std::string& title_;
  Result<> result_;
};

/// Shows the item of a battery at 64 % on a `BriefDesktop` whose `run` returns `result`.
Outcome showItem(std::string& title, const Result<>& result) {
  PropertyDictionary properties;
  properties.set("CurrentCapacity", PropertyValue::number(64));
  properties.set("MaxCapacity", PropertyValue::number(100));
  ScriptedBattery battery(properties);
  const auto makeDesktop = [&] {
    return std::unique_ptr<Desktop>(std::make_unique<BriefDesktop>(title, result));
  };
  return runCommand(ShowMenuBarItem{}, "1.0.0",
                    {.battery = battery, .makeBitmaps = nullptr, .makeDesktop = makeDesktop});
}

bool hasCaption(const RecordingBitmapFactory& bitmaps) {
  return std::ranges::any_of(bitmaps.operations, [](const std::string& operation) {
    return operation.find("Sample values, not a live reading") != std::string::npos;
  });
}

}  // namespace

TEST(RunCommand, PrintsTheVersionWithoutReadingTheBattery) {
  ScriptedBattery battery(PropertyDictionary{});
  expectOutcome(PrintVersion{}, battery, "1.0.0\n", 0);
  EXPECT_EQ(battery.callCount, 0);
}

TEST(RunCommand, ReadsTheBatteryOnceForADump) {
  PropertyDictionary properties;
  properties.set("Voltage", PropertyValue::number(12000));
  ScriptedBattery battery(properties);
  Reading expected;
  expected.batteryVolts = 12.0;
  expectOutcome(PrintDump{}, battery, dump(expected), 0);
  EXPECT_EQ(battery.callCount, 1);
}

TEST(RunCommand, FailsToDumpWithoutABattery) {
  ScriptedBattery battery;
  expectOutcome(PrintDump{}, battery, "error=no battery\n", 1);
}

TEST(RunCommand, RejectsAnUnknownSampleWithoutReadingTheBattery) {
  ScriptedBattery battery(PropertyDictionary{});
  expectOutcome(WriteSnapshot{"out.png", "nosuch"}, battery, "error=unknown sample\n", 1);
  expectOutcome(WriteSnapshot{"out.png", ""}, battery, "error=unknown sample\n", 1);
  EXPECT_EQ(battery.callCount, 0);
}

TEST(RunCommand, CreatesTheBitmapFactoryFirstForASnapshot) {
  ScriptedBattery battery;
  int factoryCount = 0;
  const auto makeBitmaps = [&] {
    ++factoryCount;
    EXPECT_EQ(battery.callCount, 0);
    return std::make_unique<RecordingBitmapFactory>();
  };
  const Services services{.battery = battery, .makeBitmaps = makeBitmaps, .makeDesktop = nullptr};
  EXPECT_EQ(runCommand(WriteSnapshot{"out.png", "nosuch"}, "1.0.0", services).output,
            "error=unknown sample\n");
  EXPECT_EQ(factoryCount, 1);
  EXPECT_EQ(runCommand(WriteSnapshot{"out.png", std::nullopt}, "1.0.0", services).output,
            "error=no battery\n");
  EXPECT_EQ(factoryCount, 2);
}

TEST(RunCommand, FailsToWriteALiveSnapshotWithoutABattery) {
  ScriptedBattery battery;
  expectOutcome(WriteSnapshot{"out.png", std::nullopt}, battery, "error=no battery\n", 1);
}

TEST(RunCommand, WritesALiveSnapshotOfOneReadingWithoutACaption) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  ScriptedBattery battery(PropertyDictionary{});
  RecordingBitmapFactory bitmaps;
  expectOutcome(WriteSnapshot{path, std::nullopt}, battery, bitmaps, "wrote " + path + "\n", 0);
  EXPECT_EQ(battery.callCount, 1);
  EXPECT_FALSE(hasCaption(bitmaps));
  EXPECT_EQ(fileContents(path), "(the picture)");
}

TEST(RunCommand, WritesACaptionedSampleSnapshotWithoutReadingTheBattery) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "out.png";
  ScriptedBattery battery;
  RecordingBitmapFactory bitmaps;
  expectOutcome(WriteSnapshot{path, "low"}, battery, bitmaps, "wrote " + path + "\n", 0);
  EXPECT_EQ(battery.callCount, 0);
  EXPECT_TRUE(hasCaption(bitmaps));
  EXPECT_EQ(fileContents(path), "(the picture)");
}

TEST(RunCommand, FailsWhenASnapshotCannotBeDrawn) {
  ScriptedBattery battery(PropertyDictionary{});
  RecordingBitmapFactory bitmaps;
  bitmaps.isFailing = true;
  expectOutcome(WriteSnapshot{"/", "low"}, battery, bitmaps, "error=no bitmap\n", 1);
}

TEST(RunCommand, FailsWhenASnapshotCannotBeEncoded) {
  ScriptedBattery battery(PropertyDictionary{});
  RecordingBitmapFactory bitmaps;
  bitmaps.png = std::nullopt;
  expectOutcome(WriteSnapshot{"/", "low"}, battery, bitmaps, "error=could not encode png\n", 1);
}

TEST(RunCommand, FailsWhenASnapshotCannotBeWritten) {
  ScriptedBattery battery(PropertyDictionary{});
  RecordingBitmapFactory bitmaps;
  expectOutcome(WriteSnapshot{"/", "low"}, battery, bitmaps, "error=Is a directory\n", 1);
}

TEST(RunCommand, RunsTheApplicationOnTheDesktopForTheMenuBarItem) {
  std::string title;
  const Outcome outcome = showItem(title, {});
  EXPECT_TRUE(title.starts_with(" 64%")) << title;
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.status, 0);
}

TEST(RunCommand, FailsWhenTheDesktopFailsToRunTheMenuBarItem) {
  std::string title;
  const Outcome outcome = showItem(title, Failure{"the panel broke"});
  EXPECT_EQ(outcome.output, "error=the panel broke\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST(RunCommand, FailsWithoutADesktopAndReportsTheReason) {
  ScriptedBattery battery(PropertyDictionary{});
  testing::internal::CaptureStderr();
  expectOutcome(ShowMenuBarItem{}, battery, "error=no desktop\n", 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "lumowatt: cannot show the item: no module\n");
}

}  // namespace lumowatt

#include "render/snapshot.h"

#include <gtest/gtest.h>

#include "fakes/recording_canvas.h"
#include "format/details.h"
#include "support/files.h"
#include "telemetry/sample_reading.h"

namespace lumowatt {

namespace {

using Operations = std::vector<std::string>;

Operations drawOperations(const Drawing& drawing) {
  RecordingCanvas canvas;
  drawing.draw(canvas, {0.0, 0.0, drawing.size.width, drawing.size.height});
  return canvas.operations;
}

/// Writes the snapshot of a reading and returns the operations, including the encoding.
Operations writtenOperations(const Reading& reading, bool isSample) {
  const TemporaryFolder folder;
  RecordingBitmapFactory bitmaps;
  EXPECT_TRUE(writeSnapshot(reading, folder.path() / "out.png", isSample, bitmaps));
  EXPECT_EQ(fileContents(folder.path() / "out.png"), "(the picture)");
  return bitmaps.operations;
}

/// Returns the title in the snapshot of a reading.
std::string title(const Reading& reading) {
  const std::string text = drawOperations(snapshot(reading, {}, false)).at(2);
  const std::size_t start = text.find('"') + 1;
  return text.substr(start, text.rfind('"') - start);
}

/// Returns the operation that draws the glyph in the snapshot of a reading.
std::string glyph(const Reading& reading) {
  return drawOperations(snapshot(reading, {}, false)).at(3);
}

/// Returns a reading whose report has `count` lines, from 6 (the minimum) to 13.
Reading readingWithLines(std::size_t count) {
  Reading reading;
  // Every report contains six lines: status, charge, power, system, adapter and cycles.
  reading.external = true;
  reading.full = true;
  if (count >= 7) reading.temperatureC = 30.0;
  if (count >= 8) reading.adapterWatts = 60;
  if (count >= 9) reading.charging = true;  // adds the time to full
  reading.rawMax = 4000;
  if (count == 10 || count >= 12) reading.batteryAmps = 1.0;  // adds the rate
  if (count >= 11) reading.design = 5000;  // adds the capacity and a remark about it
  if (count >= 13) reading.nominal = 4500;
  return reading;
}

}  // namespace

TEST(Snapshot, ShowsTheDrainingSample) {
  const auto line = [](int y, const std::string& text) {
    return "text (40, " + std::to_string(y) + ") \"" + text + "\" system 13 white(0.93)";
  };
  // "64%  ▼  −11.0 W" has 15 characters, each 10 wide. Its left edge is at 560 - 24 - 150.
  EXPECT_EQ(writtenOperations(*sampleReading("draining"), true),
            (Operations{
                "bitmap 560 x 366 scale 2 dark",
                "begin (0, 0, 560, 366) of 560 x 366 flipped",
                "fill (0, 0, 560, 366) rgb(0.1, 0.08, 0.15)",
                "fill (0, 0, 560, 34) rgb(0.17, 0.14, 0.23)",
                "text (386, 8) \"64%  ▼  −11.0 W\" digits 15 white(1)",
                "symbol (356, 6, 26, 22) battery.75percent white(1) size 16",
                "rounded (24, 48, 512, 262) radius 10 rgb(0.2, 0.17, 0.27)",
                "text (40, 60) \"On battery\" bold 14 white(0.93)",
                line(84, "Charge: 64% (2463 of 3849 mAh)"),
                line(108, "Time to empty: 3 h 48 min"),
                line(132, "Battery power: −11.0 W  (11.60 V, -0.950 A)"),
                line(156, "Rate now: −24.7% per hour"),
                line(180, "System use: 11.0 W"),
                line(204, "Capacity vs design, raw: 83% (3849 of 4629 mAh)"),
                line(228, "Nominal charge capacity: 3976 mAh (86%)"),
                line(252, "Apple’s own health figure uses its own method and can differ."),
                line(276, "Cycle count: 312"),
                "text (24, 336) \"Sample values, not a live reading\" system 12 white(0.7)",
                "end",
                "encode",
            }));
}

TEST(Snapshot, ShowsTheLowSample) {
  const Operations operations = writtenOperations(*sampleReading("low"), true);
  ASSERT_EQ(operations.size(), 20U);
  EXPECT_EQ(operations[0], "bitmap 560 x 366 scale 2 dark");
  EXPECT_EQ(operations[4], "text (396, 8) \"16%  ▼  −7.2 W\" digits 15 white(1)");
  EXPECT_EQ(operations[5], "symbol (366, 6, 26, 22) battery.25percent orange size 16");
  EXPECT_EQ(operations[6], "rounded (24, 48, 512, 262) radius 10 rgb(0.2, 0.17, 0.27)");
  EXPECT_EQ(operations[7], "text (40, 60) \"On battery\" bold 14 white(0.93)");
  EXPECT_EQ(operations[9], "text (40, 108) \"Time to empty: 1 h 36 min\" system 13 white(0.93)");
  EXPECT_EQ(operations[17],
            "text (24, 336) \"Sample values, not a live reading\" system 12 white(0.7)");
}

TEST(Snapshot, ShowsTheFullSample) {
  const Operations operations = writtenOperations(*sampleReading("full"), true);
  ASSERT_EQ(operations.size(), 20U);
  EXPECT_EQ(operations[0], "bitmap 560 x 366 scale 2 dark");
  EXPECT_EQ(operations[4], "text (386, 8) \"100%  •  +0.0 W\" digits 15 white(1)");
  EXPECT_EQ(operations[5], "symbol (356, 6, 26, 22) battery.100percent green size 16");
  EXPECT_EQ(operations[7], "text (40, 60) \"Fully charged, on power\" bold 14 white(0.93)");
  EXPECT_EQ(operations[11],
            "text (40, 156) \"From the adapter: 6.0 W  (20.1 V, 0.30 A)\" system 13 white(0.93)");
}

TEST(Snapshot, OmitsTheCaptionForALiveReading) {
  const Operations sample = writtenOperations(*sampleReading("full"), true);
  Operations live = writtenOperations(*sampleReading("full"), false);
  ASSERT_EQ(live.size() + 1, sample.size());
  live.insert(live.end() - 2, sample[sample.size() - 3]);
  EXPECT_EQ(live, sample);
  EXPECT_NE(sample[sample.size() - 3].find("Sample values"), std::string::npos);
}

class SnapshotWithLines : public testing::TestWithParam<std::size_t> {};

TEST_P(SnapshotWithLines, HasAHeightThatFitsTheLineCount) {
  const std::size_t count = GetParam();
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < count; ++i) lines.push_back("line " + std::to_string(i));
  const Drawing drawing = snapshot({}, lines, true);
  EXPECT_TRUE(drawing.flipped);
  const std::size_t height = 24 * count + 126;
  EXPECT_EQ(drawing.size, (Size{560.0, static_cast<double>(height)}));

  const Operations operations = drawOperations(drawing);
  ASSERT_EQ(operations.size(), 6 + count);
  EXPECT_EQ(operations[0], "fill (0, 0, 560, " + std::to_string(height) + ") rgb(0.1, 0.08, 0.15)");
  EXPECT_EQ(operations[4], "rounded (24, 48, 512, " + std::to_string(24 * count + 22) +
                               ") radius 10 rgb(0.2, 0.17, 0.27)");
  for (std::size_t i = 0; i < count; ++i) {
    EXPECT_EQ(operations[5 + i], "text (40, " + std::to_string(60 + 24 * i) + ") \"line " +
                                     std::to_string(i) + "\" " +
                                     (i == 0 ? "bold 14" : "system 13") + " white(0.93)");
  }
  EXPECT_EQ(operations.back(), "text (24, " + std::to_string(height - 30) +
                                   ") \"Sample values, not a live reading\" system 12 white(0.7)");
}

INSTANTIATE_TEST_SUITE_P(ZeroToFourteenLines, SnapshotWithLines,
                         testing::Range(std::size_t{0}, std::size_t{15}),
                         testing::PrintToStringParamName());

class SnapshotOfReading : public testing::TestWithParam<std::size_t> {};

TEST_P(SnapshotOfReading, ShowsEveryLineOfTheReport) {
  const Reading reading = readingWithLines(GetParam());
  const std::vector<std::string> lines = details(reading);
  ASSERT_EQ(lines.size(), GetParam());
  const Operations operations = writtenOperations(reading, false);
  ASSERT_EQ(operations.size(), 9 + lines.size());
  EXPECT_EQ(operations[0],
            "bitmap 560 x " + std::to_string(24 * lines.size() + 126) + " scale 2 dark");
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_NE(operations[7 + i].find("\"" + lines[i] + "\""), std::string::npos);
  }
}

INSTANTIATE_TEST_SUITE_P(SixToThirteenLines, SnapshotOfReading,
                         testing::Range(std::size_t{6}, std::size_t{14}),
                         testing::PrintToStringParamName());

TEST(Snapshot, ShowsASteadyTrendAndAPlusSignWithoutPowerFlow) {
  Reading reading;
  reading.percent = 57;
  EXPECT_EQ(title(reading), "57%  •  +0.0 W");
}

TEST(Snapshot, ShowsTheTrendArrowAndTheSignOfThePower) {
  Reading reading;
  reading.percent = 57;
  reading.batteryWatts = -4.52;
  EXPECT_EQ(title(reading), "57%  ▼  −4.5 W");
  reading.batteryWatts = 12.34;
  EXPECT_EQ(title(reading), "57%  ▲  +12.3 W");
  reading.batteryWatts = -0.04;
  EXPECT_EQ(title(reading), "57%  •  −0.0 W");
}

TEST(Snapshot, ShowsTheBoltWhenChargingAtOneHundredPercent) {
  Reading reading;
  reading.percent = 100;
  reading.external = true;
  reading.charging = true;
  // "100%  •  +0.0 W" has 15 characters, each 10 wide.
  EXPECT_EQ(glyph(reading), "symbol (356, 6, 26, 22) battery.100percent.bolt green size 16");
}

TEST(Snapshot, OmitsTheBoltWhenFullOnPowerButNotCharging) {
  Reading reading;
  reading.percent = 100;
  reading.external = true;
  reading.full = true;
  EXPECT_EQ(glyph(reading), "symbol (356, 6, 26, 22) battery.100percent green size 16");
}

TEST(Snapshot, ShowsTheBoltWhenChargingAtALowLevel) {
  Reading reading;
  reading.percent = 5;
  reading.external = true;
  reading.charging = true;
  EXPECT_EQ(glyph(reading), "symbol (376, 6, 26, 22) battery.100percent.bolt green size 16");
}

TEST(Snapshot, ShowsAnAlmostEmptyBatteryInRed) {
  Reading reading;
  reading.percent = 10;
  EXPECT_EQ(glyph(reading), "symbol (366, 6, 26, 22) battery.0percent red size 16");
}

TEST(WriteSnapshot, LeavesFilesUnchangedWhenDrawingFails) {
  const TemporaryFolder folder;
  folder.write("old.png", "old");
  RecordingBitmapFactory bitmaps;
  bitmaps.isFailing = true;
  for (const char* name : {"old.png", "new.png", "none/new.png"}) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(writeSnapshot({}, folder.path() / name, false, bitmaps).failure().reason,
              "no bitmap");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "lumowatt: cannot draw the picture: no bitmaps today\n");
  }
  EXPECT_EQ(fileContents(folder.path() / "old.png"), "old");
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "new.png"));
  EXPECT_EQ(bitmaps.operations, Operations(3, "bitmap 560 x 270 scale 2 dark"));
}

TEST(WriteSnapshot, LeavesFilesUnchangedWhenEncodingFails) {
  const TemporaryFolder folder;
  folder.write("old.png", "old");
  RecordingBitmapFactory bitmaps;
  bitmaps.png = std::nullopt;
  for (const char* name : {"old.png", "new.png", "none/new.png"}) {
    EXPECT_EQ(writeSnapshot({}, folder.path() / name, false, bitmaps).failure().reason,
              "could not encode png");
  }
  EXPECT_EQ(fileContents(folder.path() / "old.png"), "old");
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "new.png"));
  EXPECT_EQ(bitmaps.operations.back(), "encode");
}

TEST(WriteSnapshot, ReturnsTheSystemErrorWhenWritingFails) {
  const TemporaryFolder folder;
  RecordingBitmapFactory bitmaps;
  EXPECT_EQ(writeSnapshot({}, folder.path() / "none" / "new.png", false, bitmaps).failure().reason,
            "No such file or directory");
  EXPECT_EQ(bitmaps.operations.back(), "encode");
}

}  // namespace lumowatt

#include "menubar/status_menu.h"

#include <gtest/gtest.h>

#include "fakes/recording_canvas.h"
#include "format/details.h"

namespace lumowatt {

namespace {

MenuContents contents() {
  return {
      .reading = {}, .history = {}, .preferences = {}, .opensAtLogin = false, .version = "1.0.0"};
}

/// Formats a menu item as text: its title, followed by its other properties.
struct ItemText {
  std::string operator()(const MenuSeparator&) const { return "----"; }
  std::string operator()(const MenuLine& line) const {
    return line.title + (line.attributedTitle ? " [styled]" : "") + " line";
  }
  std::string operator()(const MenuChart&) const { return "(chart)"; }
  std::string operator()(const MenuCommand& item) const {
    const std::string& key = item.keyEquivalent;
    return item.title + text(item.choice) + (key.empty() ? "" : " key " + key);
  }
  std::string operator()(const MenuCheckMark& item) const {
    return item.title + text(item.choice) + " check" + (item.isOn ? " on" : "");
  }
  std::string operator()(const MenuRadioMark& item) const {
    return item.title + text(item.choice) + " radio" + (item.isOn ? " on" : "");
  }
  std::string operator()(const Submenu& submenu) const { return submenu.title + " >"; }

 private:
  static std::string text(const Choice& choice) {
    static const char* const actions[] = {"pick",  "color",    "animate", "copy",
                                          "login", "settings", "chart",   "terminate"};
    std::string words = std::string(" -> ") + actions[static_cast<std::size_t>(choice.action)];
    if (choice.tag != 0) words += " tag " + std::to_string(choice.tag);
    return words;
  }
};

std::string text(const MenuItem& item) { return std::visit(ItemText{}, item); }

std::vector<std::string> text(const Menu& menu) {
  std::vector<std::string> all;
  all.reserve(menu.size());
  for (const MenuItem& item : menu) all.push_back(text(item));
  return all;
}

using Texts = std::vector<std::string>;

const MenuChart& chartIn(const Menu& menu) { return std::get<MenuChart>(menu.at(8)); }

/// Returns the color of the chart line in a drawing; empty if it contains no such line. Only the
/// chart line has round caps.
std::string lineColor(const Drawing& drawing) {
  RecordingCanvas canvas;
  drawing.draw(canvas, {0.0, 0.0, drawing.size.width, drawing.size.height});
  const auto line = std::ranges::find_if(canvas.operations, [](const std::string& operation) {
    return operation.find("round caps") != std::string::npos;
  });
  return line == canvas.operations.end() ? "" : line->substr(line->rfind(' ') + 1);
}

/// Accent color of the user that differs from all other colors of the chart.
constexpr Color userAccent = CalibratedRgb{1.0, 0.0, 0.0};

Drawing pictureOf(const MenuChart& chart, double midnight = 0.0) {
  return chart.picture({.accent = userAccent, .midnight = midnight});
}

/// Returns whether the drawing contains exactly this text.
bool containsText(const Drawing& drawing, const std::string& text) {
  RecordingCanvas canvas;
  drawing.draw(canvas, {0.0, 0.0, drawing.size.width, drawing.size.height});
  return std::ranges::any_of(canvas.operations, [&](const std::string& operation) {
    return operation.find("\"" + text + "\"") != std::string::npos;
  });
}

/// Returns the color of the chart line in the menu. Also checks the large picture of the chart: its
/// line has the same color, except that `userAccent` replaces the system's accent color.
std::string chartColor(MenuContents menu) {
  menu.history = {{0.0, 50}, {60.0, 51}};
  const Menu items = statusMenu(menu);
  const MenuChart& chart = chartIn(items);
  std::string color = lineColor(std::get<Drawing>(chart.view.content.image.content));
  // `lineColor` returns the last word of the operation, which ends with "rgb(1, 0, 0)" for
  // `userAccent`.
  EXPECT_EQ(lineColor(pictureOf(chart)), color == "accent" ? "0)" : color);
  return color;
}

}  // namespace

TEST(StatusMenu, ContainsSixReportLinesForADefaultReading) {
  EXPECT_EQ(text(statusMenu(contents())), (Texts{
                                              "On battery [styled] line",
                                              "Charge: 0% (0 of 0 mAh) line",
                                              "Time to empty: calculating line",
                                              "Battery power: +0.0 W  (0.00 V, +0.000 A) line",
                                              "System use: 0.0 W line",
                                              "Cycle count: 0 line",
                                              "----",
                                              "Charge over the last hour [styled] line",
                                              "(chart)",
                                              "----",
                                              "Menu bar shows >",
                                              "Colors -> color check on",
                                              "Charging animation -> animate check on",
                                              "Copy details -> copy key c",
                                              "Open at login -> login check",
                                              "Battery settings… -> settings",
                                              "----",
                                              "Lumowatt 1.0.0, by Fernhollow line",
                                              "Quit Lumowatt -> terminate key q",
                                          }));
}

TEST(StatusMenu, ContainsEveryLineOfTheReport) {
  MenuContents menu = contents();
  menu.reading.external = true;
  menu.reading.charging = true;
  menu.reading.design = 4629;
  menu.reading.temperatureC = 31.5;
  const std::vector<std::string> report = details(menu.reading);
  EXPECT_GT(report.size(), 8U);
  const Menu items = statusMenu(menu);
  for (std::size_t i = 0; i < report.size(); ++i) {
    const auto& line = std::get<MenuLine>(items[i]);
    EXPECT_EQ(line.title, report[i]);
    EXPECT_EQ(line.attributedTitle.has_value(), i == 0);
  }
  EXPECT_TRUE(std::holds_alternative<MenuSeparator>(items[report.size()]));
}

TEST(StatusMenu, ShowsTheFirstLineInBoldWithoutAColor) {
  const Menu items = statusMenu(contents());
  EXPECT_EQ(std::get<MenuLine>(items[0]).attributedTitle,
            (AttributedString{{"On battery", boldSystemFont(13.0)}}));
}

TEST(StatusMenu, ShowsTheChartHeaderInSmallSecondaryText) {
  const Menu items = statusMenu(contents());
  EXPECT_EQ(std::get<MenuLine>(items[7]).attributedTitle,
            (AttributedString{{"Charge over the last hour", systemFont(11.0), secondaryLabel}}));
}

TEST(StatusMenu, ShowsTheChartAsAnImageInAContainerView) {
  const Menu items = statusMenu(contents());
  const ItemView& view = chartIn(items).view;
  EXPECT_EQ(view.frame, (Rect{0.0, 0.0, 280.0, 42.0}));
  EXPECT_EQ(view.content.frame, (Rect{14.0, 0.0, 254.0, 42.0}));
  const auto& drawing = std::get<Drawing>(view.content.image.content);
  EXPECT_EQ(drawing.size, (Size{250.0, 38.0}));
  EXPECT_FALSE(drawing.flipped);
}

TEST(StatusMenu, ColorsTheChartWithTheAccentOfTheReadingOrTheUser) {
  MenuContents menu = contents();
  menu.reading.percent = 64;
  EXPECT_EQ(chartColor(menu), "accent");
  menu.reading.percent = 8;
  EXPECT_EQ(chartColor(menu), "red");
  menu.reading.charging = true;
  EXPECT_EQ(chartColor(menu), "green");
  menu.preferences.useColor = false;
  EXPECT_EQ(chartColor(menu), "accent");
}

TEST(StatusMenu, ProvidesTheChartAsALineOfText) {
  MenuContents menu = contents();
  EXPECT_EQ(chartIn(statusMenu(menu)).text, "Collecting history…");
  menu.history = {{0.0, 50}, {60.0, 60}};
  const std::string text = chartIn(statusMenu(menu)).text;
  EXPECT_TRUE(text.starts_with("▁") && text.ends_with("█ 50–60%")) << text;
}

TEST(StatusMenu, DescribesTheChartInWords) {
  MenuContents menu = contents();
  EXPECT_EQ(chartIn(statusMenu(menu)).description, "Charge over the last hour: collecting history");
  menu.history = {{0.0, 72}, {30.0, 80}, {60.0, 64}};
  EXPECT_EQ(chartIn(statusMenu(menu)).description,
            "Charge over the last hour: from 72 to 64 percent");
}

TEST(StatusMenu, EnablesTheChartWithTwoSamples) {
  MenuContents menu = contents();
  EXPECT_FALSE(chartIn(statusMenu(menu)).isEnabled);
  menu.history = {{0.0, 50}};
  EXPECT_FALSE(chartIn(statusMenu(menu)).isEnabled);
  menu.history = {{0.0, 50}, {30.0, 50}};
  EXPECT_TRUE(chartIn(statusMenu(menu)).isEnabled);
}

TEST(StatusMenu, ShowsStatusAndTimesOfDayInTheChartPicture) {
  MenuContents menu = contents();
  menu.reading.percent = 64;
  menu.history = {{0.0, 64}, {60.0, 64}};
  const Drawing picture = pictureOf(chartIn(statusMenu(menu)), -9 * 3600.0);
  EXPECT_TRUE(containsText(picture, "64% · On battery"));
  EXPECT_TRUE(containsText(picture, "09:01"));
}

TEST(StatusMenu, ShowsTheModesInASubmenuWithTheCurrentOneOn) {
  for (const Mode mode : allModes) {
    MenuContents menu = contents();
    menu.preferences.mode = mode;
    const Menu items = statusMenu(menu);
    Texts expected{"Percent -> pick radio", "Percent and battery power -> pick tag 1 radio",
                   "Percent and time -> pick tag 2 radio",
                   "Percent, power and time -> pick tag 3 radio"};
    expected[static_cast<std::size_t>(mode)] += " on";
    EXPECT_EQ(text(std::get<Submenu>(items[10]).items), expected);
  }
}

TEST(StatusMenu, ShowsCheckMarksForPreferencesAndLoginItem) {
  MenuContents menu = contents();
  menu.preferences.useColor = false;
  menu.preferences.animate = false;
  menu.opensAtLogin = true;
  const Texts items = text(statusMenu(menu));
  EXPECT_EQ(items[11], "Colors -> color check");
  EXPECT_EQ(items[12], "Charging animation -> animate check");
  EXPECT_EQ(items[14], "Open at login -> login check on");
}

TEST(StatusMenu, HasOneItemWithoutABattery) {
  const Menu menu = statusMenuWithoutBattery();
  ASSERT_EQ(menu.size(), 1U);
  EXPECT_EQ(text(menu[0]), "No battery found line");
}

}  // namespace lumowatt

#include "menubar/status_menu.h"

#include <gtest/gtest.h>

#include "fakes/recording_canvas.h"
#include "format/details.h"

namespace lumowatt {

namespace {

MenuContents contents() {
  return {.reading = {},
          .history = {},
          .mode = Mode::percentPower,
          .useColor = true,
          .animate = true,
          .opensAtLogin = false,
          .version = "1.0.0"};
}

/// An item in words: its title, then what else it has.
std::string text(const MenuItem& item) {
  static const char* const actions[] = {"",     "pick",  "color",    "animate",
                                        "copy", "login", "settings", "terminate"};
  if (item.isSeparator) return "----";
  std::string words = item.view ? "(view)" : item.title;
  if (item.attributedTitle) words += " [styled]";
  if (item.action != Action::none) {
    words += std::string(" -> ") + actions[static_cast<std::size_t>(item.action)];
  }
  if (!item.keyEquivalent.empty()) words += " key " + item.keyEquivalent;
  if (item.tag != 0) words += " tag " + std::to_string(item.tag);
  if (item.isOn) words += " on";
  if (!item.isEnabled) words += " disabled";
  return words;
}

std::vector<std::string> text(const Menu& menu) {
  std::vector<std::string> all;
  all.reserve(menu.size());
  for (const MenuItem& item : menu) all.push_back(text(item));
  return all;
}

using Texts = std::vector<std::string>;

/// The color of the chart's line, of a history that has one.
std::string chartColor(MenuContents menu) {
  menu.history = {{0.0, 50}, {60.0, 51}};
  const Menu items = statusMenu(menu);
  const auto chart =
      std::ranges::find_if(items, [](const MenuItem& item) { return item.view.has_value(); });
  const auto& drawing = std::get<Drawing>(chart->view->content.image.content);
  RecordingCanvas canvas;
  drawing.draw(canvas, {0.0, 0.0, drawing.size.width, drawing.size.height});
  const std::string line = canvas.operations.at(1);
  return line.substr(line.rfind(' ') + 1);
}

}  // namespace

TEST(StatusMenu, OfADefaultReadingHasSixLinesAndTheRest) {
  EXPECT_EQ(text(statusMenu(contents())), (Texts{
                                              "On battery [styled] disabled",
                                              "Charge: 0% (0 of 0 mAh) disabled",
                                              "Time to empty: calculating disabled",
                                              "Battery power: +0.0 W  (0.00 V, +0.000 A) disabled",
                                              "System use: 0.0 W disabled",
                                              "Cycle count: 0 disabled",
                                              "----",
                                              "Charge over the last hour [styled] disabled",
                                              "(view)",
                                              "----",
                                              "Menu bar shows",
                                              "Colors -> color on",
                                              "Charging animation -> animate on",
                                              "Copy details -> copy key c",
                                              "Open at login -> login",
                                              "Battery settings… -> settings",
                                              "----",
                                              "Lumowatt 1.0.0, by Fernhollow disabled",
                                              "Quit Lumowatt -> terminate key q",
                                          }));
}

TEST(StatusMenu, HasEveryLineOfTheReport) {
  MenuContents menu = contents();
  menu.reading.external = true;
  menu.reading.charging = true;
  menu.reading.design = 4629;
  menu.reading.temperatureC = 31.5;
  const std::vector<std::string> report = details(menu.reading);
  EXPECT_GT(report.size(), 8U);
  const Menu items = statusMenu(menu);
  for (std::size_t i = 0; i < report.size(); ++i) {
    EXPECT_EQ(items[i].title, report[i]);
    EXPECT_EQ(items[i].attributedTitle.has_value(), i == 0);
    EXPECT_FALSE(items[i].isEnabled);
  }
  EXPECT_TRUE(items[report.size()].isSeparator);
}

TEST(StatusMenu, TheFirstLineIsBoldWithoutAColor) {
  const Menu items = statusMenu(contents());
  EXPECT_EQ(items[0].attributedTitle, (AttributedString{{"On battery", boldSystemFont(13.0)}}));
}

TEST(StatusMenu, TheChartsHeaderIsSmallAndFaint) {
  const Menu items = statusMenu(contents());
  EXPECT_EQ(items[7].attributedTitle,
            (AttributedString{{"Charge over the last hour", systemFont(11.0), secondaryLabel}}));
}

TEST(StatusMenu, TheChartIsAnImageInAContainer) {
  const Menu items = statusMenu(contents());
  const MenuItem& chart = items[8];
  EXPECT_EQ(chart.title, "");
  EXPECT_TRUE(chart.isEnabled);
  EXPECT_EQ(chart.action, Action::none);
  EXPECT_EQ(chart.view->frame, (Rect{0.0, 0.0, 280.0, 42.0}));
  EXPECT_EQ(chart.view->content.frame, (Rect{14.0, 0.0, 254.0, 42.0}));
  const auto& drawing = std::get<Drawing>(chart.view->content.image.content);
  EXPECT_EQ(drawing.size, (Size{250.0, 38.0}));
  EXPECT_FALSE(drawing.flipped);
}

TEST(StatusMenu, TheChartHasTheAccentOfTheReadingOrTheSystems) {
  MenuContents menu = contents();
  menu.reading.percent = 64;
  EXPECT_EQ(chartColor(menu), "accent");
  menu.reading.percent = 8;
  EXPECT_EQ(chartColor(menu), "red");
  menu.reading.charging = true;
  EXPECT_EQ(chartColor(menu), "green");
  menu.useColor = false;
  EXPECT_EQ(chartColor(menu), "accent");
}

TEST(StatusMenu, TheModesAreASubmenuWithTheCurrentOneOn) {
  for (const Mode mode : allModes) {
    MenuContents menu = contents();
    menu.mode = mode;
    const Menu items = statusMenu(menu);
    Texts expected{"Percent -> pick", "Percent and battery power -> pick tag 1",
                   "Percent and time -> pick tag 2", "Percent, power and time -> pick tag 3"};
    expected[static_cast<std::size_t>(mode)] += " on";
    EXPECT_EQ(text(items[10].submenu), expected);
  }
}

TEST(StatusMenu, TheChecksFollowThePreferencesAndTheLoginItem) {
  MenuContents menu = contents();
  menu.useColor = false;
  menu.animate = false;
  menu.opensAtLogin = true;
  const Texts items = text(statusMenu(menu));
  EXPECT_EQ(items[11], "Colors -> color");
  EXPECT_EQ(items[12], "Charging animation -> animate");
  EXPECT_EQ(items[14], "Open at login -> login on");
}

TEST(StatusMenu, WithoutABatteryHasOneItem) {
  const Menu menu = statusMenuWithoutBattery();
  ASSERT_EQ(menu.size(), 1U);
  EXPECT_EQ(text(menu[0]), "No battery found");
}

}  // namespace lumowatt

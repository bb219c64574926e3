#include "menubar/status_menu.h"

#include <utility>

#include "format/details.h"
#include "format/figures.h"
#include "render/block_chart.h"
#include "render/chart_picture.h"
#include "render/history_scale.h"
#include "render/sparkline.h"

namespace lumowatt {

namespace {

void addReport(Menu& menu, const Reading& reading) {
  for (const std::string& text : details(reading)) {
    MenuLine line{text};
    if (menu.empty()) line.attributedTitle = {{text, boldSystemFont(13.0)}};
    menu.emplace_back(std::move(line));
  }
}

MenuLine chartHeader() {
  const std::string title(chartTitle);
  return {title, {{{title, systemFont(11.0), secondaryLabel}}}};
}

/// Describes the chart in words, for screen readers.
std::string description(const std::vector<Sample>& history) {
  const std::string title = std::string(chartTitle) + ": ";
  if (!historyScale(history)) return title + "collecting history";
  return title + "from " + std::to_string(history.front().percent) + " to " +
         std::to_string(history.back().percent) + " percent";
}

Drawing picture(const MenuContents& contents, const ChartContext& context) {
  const Reading& reading = contents.reading;
  return chartPicture({.samples = contents.history,
                       .heading = std::to_string(reading.percent) + "% · " + statusLine(reading),
                       .color = chartColor(reading, contents.preferences.useColor, context.accent),
                       .midnight = context.midnight});
}

MenuChart chart(const MenuContents& contents) {
  const Color color = chartColor(contents.reading, contents.preferences.useColor);
  return {
      .view = {.frame = {0.0, 0.0, 280.0, 42.0},
               .content = {.frame = {14.0, 0.0, 254.0, 42.0},
                           .image = sparkline(contents.history, color)}},
      .text = blockChart(contents.history),
      .description = description(contents.history),
      .isEnabled = historyScale(contents.history).has_value(),
      .picture = [contents](const ChartContext& context) { return picture(contents, context); }};
}

Submenu modes(Mode current) {
  Submenu submenu{.title = "Menu bar shows", .items = {}};
  for (const Mode mode : allModes) {
    submenu.items.emplace_back(
        MenuRadioMark{.title = std::string(label(mode)),
                      .choice = {Action::pick, static_cast<std::int64_t>(mode)},
                      .isOn = mode == current});
  }
  return submenu;
}

}  // namespace

Menu statusMenu(const MenuContents& contents) {
  Menu menu;
  addReport(menu, contents.reading);
  const Preferences& preferences = contents.preferences;
  menu.emplace_back(MenuSeparator{});
  menu.emplace_back(chartHeader());
  menu.emplace_back(chart(contents));
  menu.emplace_back(MenuSeparator{});
  menu.emplace_back(modes(preferences.mode));
  menu.emplace_back(MenuCheckMark{"Colors", {Action::toggleColor}, preferences.useColor});
  menu.emplace_back(
      MenuCheckMark{"Charging animation", {Action::toggleAnimate}, preferences.animate});
  menu.emplace_back(MenuCommand{"Copy details", {Action::copyDetails}, "c"});
  menu.emplace_back(MenuCheckMark{"Open at login", {Action::toggleLogin}, contents.opensAtLogin});
  menu.emplace_back(MenuCommand{"Battery settings…", {Action::openSettings}});
  menu.emplace_back(MenuSeparator{});  // GCOVR_EXCL_LINE: gcov reports it as not executed
  menu.emplace_back(MenuLine{"Lumowatt " + contents.version + ", by Fernhollow"});
  menu.emplace_back(MenuCommand{"Quit Lumowatt", {Action::terminate}, "q"});
  return menu;
}

Menu statusMenuWithoutBattery() {
  Menu menu;
  menu.emplace_back(MenuLine{"No battery found"});
  return menu;
}

}  // namespace lumowatt

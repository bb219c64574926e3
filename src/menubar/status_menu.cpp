#include "menubar/status_menu.h"

#include <utility>

#include "format/details.h"
#include "render/sparkline.h"

namespace lumowatt {

namespace {

MenuItem separatorItem() { return {.isSeparator = true}; }

/// A line that is only read.
MenuItem line(std::string title) { return {.title = std::move(title), .isEnabled = false}; }

MenuItem command(std::string title, Action action, std::string keyEquivalent = {}) {
  return {.title = std::move(title), .action = action, .keyEquivalent = std::move(keyEquivalent)};
}

MenuItem toggle(std::string title, Action action, bool isOn) {
  MenuItem item = command(std::move(title), action);
  item.isOn = isOn;
  return item;
}

void addReport(Menu& menu, const Reading& reading) {
  for (const std::string& text : details(reading)) {
    MenuItem item = line(text);
    if (menu.empty()) item.attributedTitle = {{text, boldSystemFont(13.0)}};
    menu.push_back(std::move(item));
  }
}

MenuItem chartHeader() {
  MenuItem item = line("Charge over the last hour");
  item.attributedTitle = {{item.title, systemFont(11.0), secondaryLabel}};
  return item;
}

MenuItem chart(const MenuContents& contents) {
  const Image image = sparkline(contents.history, chartColor(contents.reading, contents.useColor));
  return {.view = ItemView{.frame = {0.0, 0.0, 280.0, 42.0},
                           .content = {.frame = {14.0, 0.0, 254.0, 42.0}, .image = image}}};
}

MenuItem modeItem(Mode current) {
  MenuItem item{.title = "Menu bar shows"};
  for (const Mode mode : allModes) {
    MenuItem choice = toggle(std::string(label(mode)), Action::pick, mode == current);
    choice.tag = static_cast<std::int64_t>(mode);
    item.submenu.push_back(std::move(choice));
  }
  return item;
}

}  // namespace

Menu statusMenu(const MenuContents& contents) {
  Menu menu;
  addReport(menu, contents.reading);
  const Menu rest{
      separatorItem(),
      chartHeader(),
      chart(contents),
      separatorItem(),
      modeItem(contents.mode),
      toggle("Colors", Action::toggleColor, contents.useColor),
      toggle("Charging animation", Action::toggleAnimate, contents.animate),
      command("Copy details", Action::copyDetails, "c"),
      toggle("Open at login", Action::toggleLogin, contents.opensAtLogin),
      command("Battery settings…", Action::openSettings),
      separatorItem(),
      line("Lumowatt " + contents.version + ", by Fernhollow"),
      command("Quit Lumowatt", Action::terminate, "q"),
  };
  menu.insert(menu.end(), rest.begin(), rest.end());
  return menu;
}

Menu statusMenuWithoutBattery() { return {{.title = "No battery found"}}; }

}  // namespace lumowatt

#pragma once

#include <string>
#include <vector>

#include "menubar/menu.h"
#include "menubar/preferences.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// Data that the status menu shows.
struct MenuContents {
  Reading reading;
  std::vector<Sample> history;
  Preferences preferences;
  bool opensAtLogin;
  std::string version;
};

/// Returns the menu of the item: the details of the reading, the chart of the last hour, the
/// preferences and the commands.
Menu statusMenu(const MenuContents& contents);

/// Returns the menu that is shown before the first reading.
Menu statusMenuWithoutBattery();

}  // namespace lumowatt

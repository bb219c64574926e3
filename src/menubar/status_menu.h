#pragma once

#include <string>
#include <vector>

#include "menubar/menu.h"
#include "menubar/preferences.h"
#include "telemetry/reading.h"

namespace lumowatt {

/// What the status menu is built from.
struct MenuContents {
  Reading reading;
  std::vector<Sample> history;
  Preferences preferences;
  bool opensAtLogin;
  std::string version;
};

/// The menu of the item: the report, the chart of the last hour, the preferences, the commands.
Menu statusMenu(const MenuContents& contents);

/// The menu before there was a reading.
Menu statusMenuWithoutBattery();

}  // namespace lumowatt

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "cli/command_line.h"
#include "graphics/canvas.h"
#include "menubar/desktop.h"
#include "telemetry/battery_service.h"

namespace lumowatt {

/// What a command leaves behind: its standard output and the process's exit status.
struct Outcome {
  std::string output;
  int status;
};

/// What commands use of the machine.
struct Services {
  BatteryService& battery;
  /// Makes the factory of the bitmaps for a picture; never null.
  std::function<std::unique_ptr<BitmapFactory>()> makeBitmaps;
  /// Makes the desktop for the item; never null.
  std::function<Result<std::unique_ptr<Desktop>>()> makeDesktop;
};

/// Carries out `command` for the program of the given version. A failure is one line that begins
/// "error=", and status 1. The item in the menu bar is carried out until it ends.
Outcome carryOut(const Command& command, std::string_view version, const Services& services);

}  // namespace lumowatt

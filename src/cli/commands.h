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

/// Result of a command.
struct Outcome {
  std::string output;  ///< text for the standard output
  int status;          ///< exit status of the process
};

/// Services of the machine that commands use.
struct Services {
  BatteryService& battery;
  /// Creates the factory that renders pictures as bitmaps. Never returns null.
  std::function<std::unique_ptr<BitmapFactory>()> makeBitmaps;
  /// Creates the desktop for the item, or fails. Never returns null.
  std::function<Result<std::unique_ptr<Desktop>>()> makeDesktop;
};

/// Runs `command` for the program of the given version. On failure, the output is one line that
/// begins with "error=", and the status is 1. The command for the menu bar item returns when the
/// item exits.
Outcome runCommand(const Command& command, std::string_view version, const Services& services);

}  // namespace lumowatt

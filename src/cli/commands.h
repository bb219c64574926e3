#pragma once

#include <string>
#include <string_view>

#include "cli/command_line.h"
#include "graphics/canvas.h"
#include "telemetry/battery_service.h"

namespace lumowatt {

/// What a command leaves behind: its standard output and the process's exit status.
struct Outcome {
  std::string output;
  int status;
};

/// Carries out `command` for the program of the given version. A failure is one line that begins
/// "error=", and status 1.
Outcome carryOut(const Command& command, std::string_view version, BatteryService& battery,
                 BitmapFactory& bitmaps);

}  // namespace lumowatt

#pragma once

#include <optional>
#include <span>
#include <string>
#include <variant>

namespace lumowatt {

// Commands of the program.

struct PrintVersion {};
struct WriteSnapshot {
  std::string path;                   ///< output file of the picture
  std::optional<std::string> sample;  ///< name of the sample reading; empty for the live battery
};
struct PrintDump {};
struct ShowMenuBarItem {};

using Command = std::variant<PrintVersion, WriteSnapshot, PrintDump, ShowMenuBarItem>;

/// Parses all arguments of the process, including the program name, into a command.
///
/// "--version" has priority over "--snapshot", and "--snapshot" over "--dump". Without any of them,
/// the command is to show the menu bar item. The argument that follows the first "--snapshot" is
/// its path, even if it looks like a switch. A switch without its argument and unknown arguments
/// are ignored.
Command parseCommandLine(std::span<const char* const> arguments);

}  // namespace lumowatt

#pragma once

#include <optional>
#include <span>
#include <string>
#include <variant>

namespace lumowatt {

/// What the program was asked to do.
struct PrintVersion {};
struct WriteSnapshot {
  std::string path;                   ///< where the picture goes
  std::optional<std::string> sample;  ///< the sample reading's name; absent: the live battery
};
struct PrintDump {};
struct ShowMenuBarItem {};

using Command = std::variant<PrintVersion, WriteSnapshot, PrintDump, ShowMenuBarItem>;

/// Chooses the command from the process's whole argument list, the program's own name included.
///
/// "--version" comes first, then "--snapshot" with the argument that follows its first
/// occurrence (whatever that is), then "--dump"; without any of them it is the menu-bar item. A
/// switch that lacks its argument counts as absent, and unknown arguments are ignored.
Command parseCommandLine(std::span<const char* const> arguments);

}  // namespace lumowatt

#pragma once

#include <string>
#include <vector>

/// Programs of the desktop that this program starts. Each list is in the order in which the
/// programs are tried.
namespace lumowatt::freedesktop {

/// Name of a program, followed by its arguments.
using Command = std::vector<std::string>;

/// Returns the programs that copy their standard input to the clipboard. The program for Wayland is
/// first in a Wayland session, and omitted in other sessions.
std::vector<Command> clipboardCommands();

/// Returns the programs that play the bell sound of the desktop's sound theme.
std::vector<Command> bellCommands();

/// Returns the programs that show the picture in a file.
std::vector<Command> pictureViewerCommands(const std::string& path);

/// Returns the launchers for the session's display server, Wayland or X11. A launcher shows the
/// lines of its standard input and writes the chosen line to its standard output.
std::vector<Command> launcherCommands();

/// Returns the power settings panels of all desktops. The panel of the running desktop is first.
/// Panels that run only on their own desktop are last.
std::vector<Command> batterySettingsCommands();

}  // namespace lumowatt::freedesktop

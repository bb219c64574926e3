#pragma once

#include <string>
#include <vector>

/// The programs of the desktop that do what this one does not, each list in the order in which they
/// are tried.
namespace lumowatt::freedesktop {

/// A program's name and its arguments.
using Command = std::vector<std::string>;

/// What puts its input on the clipboard, the session's own kind of display first.
std::vector<Command> clipboardCommands();

/// What sounds the bell of the desktop's sound theme.
std::vector<Command> bellCommands();

/// What shows the picture in a file.
std::vector<Command> pictureViewerCommands(const std::string& path);

/// Launchers that show the lines of their input, and write the chosen one to their standard output:
/// those of the session's kind of display.
std::vector<Command> launcherCommands();

/// The desktops' panels of power settings: that of the running desktop first, then those that run
/// anywhere, and those that refuse to run outside their own desktop last.
std::vector<Command> batterySettingsCommands();

}  // namespace lumowatt::freedesktop

#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Other programs of the desktop that do what this one does not.
namespace lumowatt::freedesktop {

/// The path of an executable file: of one in $PATH by its name, or of one that is named by its
/// absolute path. Empty when there is none.
std::string findProgram(std::string_view name);

using Command = std::vector<std::string>;

/// Starts the first of the commands whose program is installed, without a shell and without waiting
/// for its end, and gives it `input` (64 KiB at most) to read. False when none could be started.
bool startFirst(const std::vector<Command>& commands, std::string_view input = {});

/// What puts its input on the clipboard, the session's own kind of display first.
std::vector<Command> clipboardCommands();

/// What sounds the bell of the desktop's sound theme.
std::vector<Command> bellCommands();

/// What shows the picture in a file.
std::vector<Command> pictureViewerCommands(const std::string& path);

/// The desktops' panels of power settings, that of the running desktop first.
std::vector<Command> batterySettingsCommands();

}  // namespace lumowatt::freedesktop

#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Environment variables of this process, and the user's folders that they specify (the base
/// directories of freedesktop.org).
namespace lumowatt::freedesktop {

/// Returns the value of an environment variable; empty if the variable is not set.
std::string environmentVariable(const char* name);

/// Returns the names in $XDG_CURRENT_DESKTOP, which are separated by colons. Omits empty names.
std::vector<std::string> currentDesktops();

/// Returns whether `name` is one of the names in $XDG_CURRENT_DESKTOP.
bool isCurrentDesktop(const std::string& name);

/// Returns the user's configuration folder: $XDG_CONFIG_HOME, or ".config" in $HOME if
/// $XDG_CONFIG_HOME is not an absolute path. Returns an empty path if neither variable is an
/// absolute path.
std::string configurationFolder();

/// Returns the path of a file in the configuration folder; empty if that folder is unknown.
std::string configurationFile(std::string_view name);

/// Returns the runtime folder of the session, $XDG_RUNTIME_DIR; empty if it is not an absolute
/// path.
std::string runtimeFolder();

}  // namespace lumowatt::freedesktop

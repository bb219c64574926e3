#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The environment of this process, and the user's folders that it names (the base directories of
/// freedesktop.org).
namespace lumowatt::freedesktop {

/// A variable of the environment; empty when it is not set.
std::string environmentVariable(const char* name);

/// The colon-separated names in $XDG_CURRENT_DESKTOP, in order, without empty ones.
std::vector<std::string> currentDesktops();

/// Whether one of these names is `name`.
bool isCurrentDesktop(const std::string& name);

/// The folder of the user's configuration: $XDG_CONFIG_HOME when that is an absolute path, else
/// ".config" in $HOME. Empty when neither is.
std::string configurationFolder();

/// The path of a file below that folder; empty when there is no such folder.
std::string configurationFile(std::string_view name);

/// The folder of the user's session, $XDG_RUNTIME_DIR. Empty when that is no absolute path.
std::string runtimeFolder();

}  // namespace lumowatt::freedesktop

#pragma once

#include <string>

#include "base/failure.h"

/// Locations of the program's modules and icons. In a build, they are in the executable's folder.
/// In an installation, they are in the folders that were configured for the build. These folders
/// are located relative to the executable, so that the whole installation can be moved. Environment
/// variables do not affect the locations.
namespace lumowatt {

/// Returns the path of this process's executable, or an empty string if the path is unknown.
std::string executablePath();

/// Returns the path of the folder with the icons that a panel loads. The folder may not exist.
/// Returns an empty string if the path of the executable is unknown.
std::string iconFolder();

/// Loads a module of the program, such as "lumowatt-drawing.so", and returns the address of its
/// exported symbol, which is never null. The module is never unloaded. Also fails if the version of
/// the module differs from that of this process, for example after an upgrade.
Result<void*> loadModule(const std::string& module, const char* symbol);

}  // namespace lumowatt

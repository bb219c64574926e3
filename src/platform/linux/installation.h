#pragma once

#include <string>

#include "base/failure.h"

/// What belongs to the program beside the executable. In a build it lies in the executable's own
/// folder. An installation has it in the folders that the build was configured with, at the same
/// place relative to the executable wherever the whole lies. The environment has no say in it.
namespace lumowatt {

/// The path of this process's executable; empty when it is not known.
std::string executablePath();

/// The folder of the icons that a panel loads, which need not exist; empty when the executable's
/// path is not known.
std::string iconFolder();

/// Loads a module of the program, such as "lumowatt-drawing.so", and finds what it exports under
/// the name `symbol`; never null. It stays loaded. Fails also when the module is of another
/// version, as after an upgrade.
Result<void*> loadModule(const std::string& module, const char* symbol);

}  // namespace lumowatt

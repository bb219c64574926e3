#pragma once

#include <string>
#include <string_view>

#include "base/failure.h"

/// What belongs to the program beside the executable. In a build it lies in the executable's own
/// folder. An installation has the executable in a folder "bin", and the rest beside that, wherever
/// the whole lies. The environment has no say in it.
namespace lumowatt {

/// The path of this process's executable; empty when it is not known.
std::string executablePath();

/// The path of a part that an installation has at `installed` beside its folder "bin", such as
/// "share/lumowatt/icons", and a build under the name `built`; empty when the executable's path is
/// not known. It need not be there.
std::string partPath(std::string_view built, std::string_view installed);

/// Loads a module of the program, such as "lumowatt-drawing.so", and finds what it exports under
/// the name `symbol`; never null. It stays loaded. Fails also when the module is of another
/// version, as after an upgrade.
Result<void*> loadModule(const std::string& module, const char* symbol);

}  // namespace lumowatt

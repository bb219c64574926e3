#pragma once

#include <string>

/// What belongs to the program beside the executable. In a build it lies in the executable's own
/// folder; an installation has it in a folder such as "lib/lumowatt" beside the executable's.
namespace lumowatt {

/// The path of this process's executable; empty when it is not known.
std::string executablePath();

/// The path of what lies beside the executable under that name or, in an installation, in `folder`;
/// empty when the executable's is not known. It need not be there.
std::string companion(const std::string& name, const std::string& folder);

/// Loads a module of the program, such as "lumowatt-drawing.so", and finds what it exports under
/// the name `symbol`. It stays loaded. Null when it cannot be loaded; the reason is then on the
/// standard error.
void* loadModule(const char* module, const char* symbol);

}  // namespace lumowatt

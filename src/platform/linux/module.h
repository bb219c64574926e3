#pragma once

namespace lumowatt {

/// Loads a module of the program, such as "lumowatt-drawing.so", and finds what it exports under
/// the name `symbol`. It is looked for beside the executable and where an installation has it, and
/// stays loaded. Null when it cannot be loaded; the reason is then on standard error.
void* loadModule(const char* module, const char* symbol);

}  // namespace lumowatt

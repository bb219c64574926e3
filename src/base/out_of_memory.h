#pragma once

namespace lumowatt {

/// Installs a new-handler that reports the error on the standard error and exits the process with
/// status 1. The program and each of its modules must call this function, because each can contain
/// its own statically linked C++ runtime.
void exitWhenOutOfMemory();

}  // namespace lumowatt

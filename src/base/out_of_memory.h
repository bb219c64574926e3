#pragma once

namespace lumowatt {

/// From now on, the end of the memory is the end of this process: with a line on the standard error
/// and status 1. What has a C++ runtime of its own, as each module has, calls it for itself.
void endWhenOutOfMemory();

}  // namespace lumowatt

#pragma once

#include <cstdint>

namespace lumowatt::freedesktop {

/// Returns the microseconds since boot, including time asleep (CLOCK_BOOTTIME).
std::uint64_t boottime();

}  // namespace lumowatt::freedesktop

#pragma once

#include <cstdint>

namespace lumowatt::freedesktop {

/// Microseconds since the start of the machine, its sleep included (CLOCK_BOOTTIME).
std::uint64_t boottime();

}  // namespace lumowatt::freedesktop

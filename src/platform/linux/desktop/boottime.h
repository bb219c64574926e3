#pragma once

#include <cstdint>

namespace lumowatt::desktop {

/// Microseconds since the start of the machine, its sleep included (CLOCK_BOOTTIME).
std::uint64_t boottime();

}  // namespace lumowatt::desktop

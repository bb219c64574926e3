#pragma once

#include <vector>

#include "platform/linux/power_supply/pack.h"

namespace lumowatt::power_supply {

/// The one battery that does what `packs` (at least one, by name) do together. A single pack is
/// its own; the energies and powers of several are added, at the voltages of the largest.
Battery equivalentBattery(const std::vector<Pack>& packs);

}  // namespace lumowatt::power_supply

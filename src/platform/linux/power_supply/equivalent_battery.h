#pragma once

#include <vector>

#include "platform/linux/power_supply/pack.h"

namespace lumowatt::power_supply {

/// Returns the one battery that is equivalent to all packs. `packs` contains at least one pack and
/// is sorted by name. A single pack is returned unchanged. The energies and powers of several packs
/// are added; the voltages are those of the largest pack.
Battery equivalentBattery(const std::vector<Pack>& packs);

}  // namespace lumowatt::power_supply

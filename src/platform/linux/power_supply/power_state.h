#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/linux/power_supply/battery.h"
#include "platform/linux/power_supply/charger.h"
#include "platform/linux/power_supply/pack.h"

namespace lumowatt::power_supply {

/// The laptop's power as one battery and one adapter.
struct PowerState {
  Battery battery;
  bool external = false;          ///< power comes in from outside
  bool charging = false;          ///< a pack is being filled, and not at the cost of another
  bool discharging = false;       ///< a pack is being emptied, and `charging` is false
  bool full = false;              ///< no pack takes any more
  std::int64_t adapterWatts = 0;  ///< 0 when no charger says it
  std::string adapterName;        ///< empty when no charger says it
};

/// Combines all packs (at least one) and all chargers, each in the order of their names.
PowerState combine(const std::vector<Pack>& packs, const std::vector<Charger>& chargers);

}  // namespace lumowatt::power_supply

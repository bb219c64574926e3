#pragma once

#include <cstdint>
#include <optional>
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

/// Whether power comes in from outside, with these packs (at least one) and all chargers.
bool isExternal(const std::vector<Pack>& packs, const std::vector<Charger>& chargers);

/// Combines all packs (at least one, by name) and all chargers (by name).
PowerState combine(const std::vector<Pack>& packs, const std::vector<Charger>& chargers);

}  // namespace lumowatt::power_supply

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/linux/power_supply/battery.h"
#include "platform/linux/power_supply/charger.h"
#include "platform/linux/power_supply/pack.h"

namespace lumowatt::power_supply {

/// Power state of the laptop, described as one battery and one adapter.
struct PowerState {
  Battery battery;
  bool external = false;  ///< external power is connected
  bool charging = false;  ///< a pack charges, and the total flow is not outward
  /// Whether a pack discharges or the total flow is outward. False if `charging` is true.
  bool discharging = false;
  bool full = false;              ///< all packs are full
  std::int64_t adapterWatts = 0;  ///< 0 if unknown
  std::string adapterName;        ///< empty if unknown
};

/// Combines all packs (at least one) and all chargers. Both lists are sorted by name.
PowerState combine(const std::vector<Pack>& packs, const std::vector<Charger>& chargers);

}  // namespace lumowatt::power_supply

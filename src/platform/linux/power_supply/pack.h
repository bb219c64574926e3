#pragma once

#include "platform/linux/power_supply/battery.h"
#include "platform/linux/power_supply/sysfs.h"

namespace lumowatt::power_supply {

enum class Status { unknown, charging, discharging, notCharging, full };

/// One of the laptop's battery packs, as it is after judging what its driver says.
struct Pack {
  Status status = Status::unknown;
  Battery battery;
};

/// Reads a pack. Its driver's estimate of the time is left out where it reports that next to
/// nothing flows.
Pack readPack(sysfs::Device& device);

}  // namespace lumowatt::power_supply

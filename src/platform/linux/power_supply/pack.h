#pragma once

#include "platform/linux/power_supply/battery.h"
#include "platform/linux/power_supply/sysfs.h"

namespace lumowatt::power_supply {

enum class Status { unknown, charging, discharging, notCharging, full };

/// One of the laptop's battery packs, after correction of implausible values from its driver.
struct Pack {
  Status status = Status::unknown;
  Battery battery;
};

/// Reads a pack. Omits the driver's time estimate if the driver reports a flow of almost 0.
Pack readPack(sysfs::Device& device);

}  // namespace lumowatt::power_supply

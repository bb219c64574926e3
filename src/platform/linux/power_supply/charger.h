#pragma once

#include <string>
#include <string_view>

#include "platform/linux/power_supply/sysfs.h"

namespace lumowatt::power_supply {

/// A power supply that provides external power.
struct Charger {
  bool usb = false;       ///< whether it is a USB charger; if not, it is mains or wireless
  bool online = false;    ///< whether it provides power; stale on some USB ports
  double ratedWatts = 0;  ///< maximum power that the driver reports; 0 if unknown
  std::string product;    ///< manufacturer and model as printable text; may be empty
};

/// Returns whether a supply with this type and name is a charger.
bool isCharger(std::string_view type, std::string_view name);

/// Reads whether a charger of this type is online. If so, also reads its rating and its product.
Charger readCharger(sysfs::Device& device, std::string_view type);

}  // namespace lumowatt::power_supply

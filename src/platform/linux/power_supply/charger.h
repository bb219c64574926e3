#pragma once

#include <string>
#include <string_view>

#include "platform/linux/power_supply/sysfs.h"

namespace lumowatt::power_supply {

/// A supply that brings power from outside.
struct Charger {
  bool usb = false;       ///< else mains or wireless
  bool online = false;    ///< power comes in; stale on some USB ports
  double ratedWatts = 0;  ///< the most that it says it gives; 0 when it does not say
  std::string product;    ///< maker and model, printable; may be empty
};

/// Whether a supply of this `type` and name is a charger.
bool isCharger(std::string_view type, std::string_view name);

/// Reads whether a charger of this `type` is online; if so, what it can give and who made it.
Charger readCharger(sysfs::Device& device, std::string_view type);

}  // namespace lumowatt::power_supply

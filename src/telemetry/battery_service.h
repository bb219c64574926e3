#pragma once

#include <optional>

#include "base/interface.h"
#include "telemetry/property.h"

namespace lumowatt {

/// Where readings come from. A platform implements this one call; tests script it.
///
/// The keys, their units and their types are those of the "AppleSmartBattery" service of Apple's
/// I/O registry; a platform that has another source translates it into them.
class BatteryService : public Interface {
 public:
  /// The battery's properties as they are now, or nothing when there is no battery service or
  /// its properties cannot be had. Never throws for what a machine may report.
  virtual std::optional<PropertyDictionary> properties() = 0;
};

}  // namespace lumowatt

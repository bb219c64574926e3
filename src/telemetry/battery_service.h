#pragma once

#include <optional>

#include "base/interface.h"
#include "telemetry/property.h"

namespace lumowatt {

/// Source of battery data. Each platform implements this interface; tests use a scripted version.
///
/// The keys, units and types of the properties are those of the "AppleSmartBattery" service in
/// Apple's I/O registry. A platform with another data source converts its data to this format.
class BatteryService : public Interface {
 public:
  /// Returns the current properties of the battery. Returns std::nullopt if the machine has no
  /// battery or its properties cannot be read. Does not throw, whatever data the machine reports.
  virtual std::optional<PropertyDictionary> properties() = 0;
};

}  // namespace lumowatt

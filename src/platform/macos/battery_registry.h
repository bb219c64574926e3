#pragma once

#include "telemetry/battery_service.h"

namespace lumowatt::macos {

/// Battery in the I/O registry: the service of class "AppleSmartBattery".
class BatteryRegistry : public BatteryService {
 public:
  std::optional<PropertyDictionary> properties() override;
};

}  // namespace lumowatt::macos

#pragma once

#include <string>

#include "base/error_report.h"
#include "telemetry/battery_service.h"

namespace lumowatt::power_supply {

/// Battery service of a Linux machine, which reads the kernel's power-supply class. Not
/// thread-safe, because it stores which error it has reported.
class Service : public BatteryService {
 public:
  /// `powerSupplyFolder` contains the batteries and chargers. `hwmonFolder` contains the additional
  /// sensors of some machines. On a running system, both folders are in /sys/class.
  Service(std::string powerSupplyFolder, std::string hwmonFolder);

  /// Returns std::nullopt if the laptop has no battery. Also returns std::nullopt if the battery
  /// cannot be read completely because the process is out of file descriptors or memory. Reports
  /// such an error on the standard error.
  std::optional<PropertyDictionary> properties() override;

 private:
  std::optional<PropertyDictionary> read() const;

  std::string powerSupplyFolder_;
  std::string hwmonFolder_;
  RecurringError error_{"cannot read the battery"};
};

}  // namespace lumowatt::power_supply

#pragma once

#include <string>

#include "base/error_report.h"
#include "telemetry/battery_service.h"

namespace lumowatt::power_supply {

/// The battery service of a Linux machine: the kernel's power-supply class, translated. For one
/// thread at a time: it remembers whether it has reported an error.
class Service : public BatteryService {
 public:
  /// `powerSupplyFolder` lists the batteries and chargers, `hwmonFolder` the sensors of machines
  /// that measure more. On a running system these are below /sys/class.
  Service(std::string powerSupplyFolder, std::string hwmonFolder);

  /// Nothing when no battery of the laptop's own is listed, nor when one could be read in part
  /// alone because files or memory are short, which is told on the standard error.
  std::optional<PropertyDictionary> properties() override;

 private:
  std::optional<PropertyDictionary> read() const;

  std::string powerSupplyFolder_;
  std::string hwmonFolder_;
  RecurringError error_{"cannot read the battery"};
};

}  // namespace lumowatt::power_supply

#pragma once

#include <map>
#include <string>

#include "support/files.h"
#include "support/json_properties.h"

namespace lumowatt {

using Attributes = std::map<std::string, std::string>;

/// A machine's /sys/class in a temporary folder, in memory as the kernel's.
class MockMachine {
 public:
  /// Adds a supply, or sets further attributes of one that is there.
  void supply(const std::string& name, const Attributes& attributes) const;

  /// Adds a sensor chip below hwmon.
  void sensors(const std::string& name, const Attributes& attributes) const;

  std::filesystem::path powerSupplyFolder() const { return folder_.path() / "power_supply"; }
  std::filesystem::path hwmonFolder() const { return folder_.path() / "hwmon"; }

  /// What the battery service says of the machine; null when it says that there is no battery.
  nlohmann::json properties() const;

 private:
  TemporaryFolder folder_{memoryFolder()};
};

/// A pack of 4000 mAh (5000 when new) at 11 V by design, half full, discharging at 12 V and 500 mA.
Attributes chargePack(const Attributes& changes = {});

/// A pack of 50 Wh (60 when new) at 10 V by design, half full, discharging at 12.5 V and 5 W.
Attributes energyPack(const Attributes& changes = {});

/// The value in `changes` that leaves an attribute out.
inline const std::string missing = "(missing)";

}  // namespace lumowatt

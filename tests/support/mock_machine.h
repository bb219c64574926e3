#pragma once

#include <map>
#include <string>

#include "support/files.h"
#include "support/json_properties.h"

namespace lumowatt {

using Attributes = std::map<std::string, std::string>;

/// A fake /sys/class of a machine, in a temporary folder in memory.
class MockMachine {
 public:
  /// Adds a power supply, or sets attributes of an existing power supply.
  void supply(const std::string& name, const Attributes& attributes) const;

  /// Adds a hwmon sensor chip, or sets attributes of an existing sensor chip.
  void sensors(const std::string& name, const Attributes& attributes) const;

  std::filesystem::path powerSupplyFolder() const { return folder_.path() / "power_supply"; }
  std::filesystem::path hwmonFolder() const { return folder_.path() / "hwmon"; }

  /// Returns the properties that the battery service reports for the machine. Returns JSON null if
  /// the service reports no battery.
  nlohmann::json properties() const;

 private:
  TemporaryFolder folder_{memoryFolder()};
};

/// Returns the attributes of a battery pack with `changes` applied. The pack reports charges: 2000
/// of 4000 mAh, discharged with 500 mA at 12 V. The design values are 5000 mAh and 11 V.
Attributes chargePack(const Attributes& changes = {});

/// Returns the attributes of a battery pack with `changes` applied. The pack reports energies: 25
/// of 50 Wh, discharged with 5 W at 12.5 V. The design values are 60 Wh and 10 V.
Attributes energyPack(const Attributes& changes = {});

/// Value in `changes` of an attribute that the pack does not have.
inline const std::string missing = "(missing)";

}  // namespace lumowatt

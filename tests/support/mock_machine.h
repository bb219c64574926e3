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

/// Returns the attributes of a battery pack with `changes` applied. The pack reports charges: its
/// full-charge capacity is 4000 mAh (design 5000 mAh, 11 V). It is half full and discharges at 12 V
/// and 500 mA.
Attributes chargePack(const Attributes& changes = {});

/// Returns the attributes of a battery pack with `changes` applied. The pack reports energies: its
/// full-charge capacity is 50 Wh (design 60 Wh, 10 V). It is half full and discharges at 12.5 V and
/// 5 W.
Attributes energyPack(const Attributes& changes = {});

/// A value in `changes` that removes the attribute from the pack.
inline const std::string missing = "(missing)";

}  // namespace lumowatt

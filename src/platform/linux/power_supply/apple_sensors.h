#pragma once

#include <optional>
#include <string>

namespace lumowatt::power_supply {

/// Measured power of a machine on external power. A field is empty if the machine lacks
/// the sensor. On most machines, all fields are empty.
struct MeasuredPower {
  std::optional<double> inputMilliwatts;
  std::optional<double> inputMillivolts;
  std::optional<double> inputMilliamps;
  std::optional<double> systemMilliwatts;  ///< consumption of the whole machine
};

/// Reads the sensors of an Apple laptop's system management controller, which the kernel lists
/// below `hwmonFolder` under the name "macsmc_hwmon" (Documentation/hwmon/macsmc-hwmon.rst). All
/// fields are empty if the controller is missing.
MeasuredPower readAppleSensors(const std::string& hwmonFolder);

}  // namespace lumowatt::power_supply

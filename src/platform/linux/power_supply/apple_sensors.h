#pragma once

#include <optional>
#include <string>

namespace lumowatt::power_supply {

/// What a machine measures of the power that comes in from outside. Most measure none of it.
struct MeasuredPower {
  std::optional<double> inputMilliwatts;
  std::optional<double> inputMillivolts;
  std::optional<double> inputMilliamps;
  std::optional<double> systemMilliwatts;  ///< drawn by the whole machine
};

/// Reads the sensors of an Apple laptop's system management controller, which the kernel lists
/// below `hwmonFolder` under the name "macsmc_hwmon" (Documentation/hwmon/macsmc-hwmon.rst).
/// Nothing is measured where it is missing.
MeasuredPower readAppleSensors(const std::string& hwmonFolder);

}  // namespace lumowatt::power_supply

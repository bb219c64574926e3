#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

/// Batteries and chargers of the kernel's power-supply class
/// (Documentation/ABI/testing/sysfs-class-power).
namespace lumowatt::power_supply {

/// What a pack counts its contents in.
enum class Unit { charge, energy };

// The kernel's figures are integers in micro-units. Products of two are kept in pico-units
// (µA × µV = pW), so that a double holds all of them exactly until they are divided, once.
inline constexpr double picoPerMicro = 1e6;

/// What a battery holds, in µAh or pWh.
struct Store {
  Unit unit;
  double full;                   ///< above 0
  std::optional<double> now;     ///< not negative
  std::optional<double> design;  ///< full, when new; above 0
};

/// One pack, or several as the one battery that would do the same.
struct Battery {
  std::optional<Store> store;
  std::optional<double> microvolts;        ///< at its terminals now; above 0
  std::optional<double> designMicrovolts;  ///< nominal, what turns charge into energy; above 0

  // What flows into the battery, negative out of it; 0 when unknown.
  double microamps = 0;
  double picowatts = 0;

  std::optional<std::int64_t> capacity;     ///< the driver's own figure, %; can be outside 0 to 100
  std::optional<std::int64_t> secondsLeft;  ///< to empty or full, as the driver estimates
  std::optional<std::int64_t> temperature;  ///< tenths of a degree Celsius
  std::optional<std::int64_t> cycles;       ///< above 0
};

/// The sign of what flows into `battery`; of use where the magnitude is not.
inline double direction(const Battery& battery) {
  return battery.microamps != 0 ? battery.microamps : battery.picowatts;
}

/// Whether next to nothing flows, in the unit that `battery` counts in: 10 mA or 10 mW at most.
inline bool isIdle(const Battery& battery) {
  const bool energy = battery.store ? battery.store->unit == Unit::energy : battery.microamps == 0;
  return energy ? std::fabs(battery.picowatts) <= 1e10 : std::fabs(battery.microamps) <= 1e4;
}

}  // namespace lumowatt::power_supply

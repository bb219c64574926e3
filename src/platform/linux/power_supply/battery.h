#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

/// Batteries and chargers of the kernel's power-supply class
/// (Documentation/ABI/testing/sysfs-class-power).
namespace lumowatt::power_supply {

/// Physical quantity in which a pack reports its capacity.
enum class Unit { charge, energy };

// The kernel reports integers in micro-units. The product of two such values is stored in
// pico-units (µA × µV = pW), so that a double represents it exactly. Only the final division rounds
// the value.
inline constexpr double picoPerMicro = 1e6;

/// What a battery stores: its charge in µAh, or its energy in pWh.
struct Store {
  Unit unit;
  double full;                   ///< when fully charged; above 0
  std::optional<double> now;     ///< present amount; not negative
  std::optional<double> design;  ///< when fully charged and new; above 0
};

/// One battery pack, or the equivalent of several packs.
struct Battery {
  std::optional<Store> store;
  std::optional<double> microvolts;        ///< present voltage at the terminals; above 0
  std::optional<double> designMicrovolts;  ///< nominal, used to convert charge to energy; above 0

  // Current and power into the battery. Negative values flow out of the battery; 0 if unknown.
  double microamps = 0;
  double picowatts = 0;

  std::optional<std::int64_t> capacity;     ///< % that the driver reports; can be outside 0 to 100
  std::optional<std::int64_t> secondsLeft;  ///< driver's estimate of the time to empty or full
  std::optional<std::int64_t> temperature;  ///< tenths of a degree Celsius
  std::optional<std::int64_t> cycles;       ///< above 0
};

/// Returns a positive value for a flow into `battery`, a negative value for a flow out of it, and 0
/// if no flow is known. The magnitude has no meaning.
inline double direction(const Battery& battery) {
  return battery.microamps != 0 ? battery.microamps : battery.picowatts;
}

/// Returns whether almost no current or power flows: at most 10 mA for a battery that reports
/// charge, or 10 mW for a battery that reports energy. If the unit is unknown, compares the
/// current, or the power if the current is 0.
inline bool isIdle(const Battery& battery) {
  const bool energy = battery.store ? battery.store->unit == Unit::energy : battery.microamps == 0;
  return energy ? std::fabs(battery.picowatts) <= 1e10 : std::fabs(battery.microamps) <= 1e4;
}

}  // namespace lumowatt::power_supply

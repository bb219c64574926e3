#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumowatt {

/// One reading of the battery and the power adapter. Values are neither validated nor clamped. An
/// unknown value is an empty optional, or the default of the field if its type is not optional.
struct Reading {
  std::int64_t percent = 0;             ///< state of charge, %; can be outside 0 to 100
  std::int64_t rawCurrent = 0;          ///< present charge, mAh
  std::int64_t rawMax = 0;              ///< full-charge capacity, mAh; 0 when unknown
  std::int64_t design = 0;              ///< design capacity, mAh; 0 when unknown
  std::int64_t nominal = 0;             ///< nominal charge capacity, mAh; 0 when unknown
  std::int64_t cycles = 0;              ///< charge cycles; 0 when unknown
  double batteryVolts = 0.0;            ///< V
  double batteryAmps = 0.0;             ///< A, negative while the battery discharges
  bool external = false;                ///< external power is connected
  bool charging = false;                ///< the battery is charging
  bool full = false;                    ///< the battery reports itself fully charged
  std::optional<std::int64_t> minutes;  ///< until full while charging, else until empty
  std::string adapterName;              ///< empty when unknown
  std::int64_t adapterWatts = 0;        ///< the adapter's rating, W; 0 when unknown
  double wallVolts = 0.0;               ///< input from the adapter, V
  double wallAmps = 0.0;                ///< input from the adapter, A
  double wallWatts = 0.0;               ///< input from the adapter, W
  double systemWatts = 0.0;             ///< drawn by the system, W
  double batteryWatts = 0.0;            ///< W, positive into the battery, negative out of it
  std::optional<double> temperatureC;   ///< battery temperature, °C
};

/// One point of the charge history.
struct Sample {
  double time = 0.0;         ///< time of the reading, in seconds since a fixed instant
  std::int64_t percent = 0;  ///< `Reading::percent` at that time
};

/// The direction of change of the charge.
enum class Trend { up, down, steady };

/// Returns the name of the trend: "up", "down" or "steady".
std::string_view name(Trend trend);

/// Derives the trend of the charge from the battery power. The trend is steady from -0.3 W to
/// 0.3 W, and whenever the battery is full on external power.
Trend trend(const Reading& reading);

/// Returns the change of the charge per hour in percent of the full-charge capacity, negative while
/// discharging. Returns std::nullopt if the capacity is unknown or the current is between -10 mA
/// and 10 mA, inclusive.
std::optional<double> percentPerHour(const Reading& reading);

}  // namespace lumowatt

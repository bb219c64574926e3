#include "platform/linux/power_supply/dictionary.h"

#include <algorithm>

#include "base/rounding.h"

namespace lumowatt::power_supply {

namespace {

constexpr std::int64_t unknownMinutes = 65535;

void set(PropertyDictionary& properties, std::string_view key, std::optional<std::int64_t> value) {
  if (value) properties.set(key, PropertyValue::number(*value));
}

/// Rounds the value and sets the property. Omits a value that is unknown or exceeds 64 bits.
void setRounded(PropertyDictionary& properties, std::string_view key, std::optional<double> value) {
  if (value) set(properties, key, roundedHalfAwayFromZero(*value));
}

std::optional<std::int64_t> percent(const Battery& battery) {
  std::optional<std::int64_t> percent = battery.capacity;
  if (!percent && battery.store && battery.store->now) {
    percent = roundedHalfAwayFromZero(100 * *battery.store->now / battery.store->full);
  }
  if (!percent) return std::nullopt;
  return std::clamp<std::int64_t>(*percent, 0, 100);
}

/// Converts an amount in the unit of the battery's store to mAh. Returns std::nullopt if the amount
/// is unknown, or if it is an energy and the design voltage is unknown.
std::optional<double> milliampHours(const Battery& battery, std::optional<double> amount) {
  if (!amount) return std::nullopt;
  if (battery.store->unit == Unit::charge) return *amount / 1000;
  if (!battery.designMicrovolts) return std::nullopt;
  return *amount / (*battery.designMicrovolts * 1000);
}

enum class Goal { empty, full };

/// Returns the driver's estimate of the minutes until the battery reaches `goal`. Without such an
/// estimate, computes the minutes from the present flow. Returns `unknownMinutes` if neither works.
std::int64_t minutes(const Battery& battery, Goal goal) {
  if (battery.secondsLeft) return *battery.secondsLeft / 60;
  const auto& store = battery.store;
  if (!store || !store->now || isIdle(battery)) return unknownMinutes;
  const double remaining = (goal == Goal::full ? store->full : 0) - *store->now;
  const double flow = store->unit == Unit::energy ? battery.picowatts : battery.microamps;
  const auto result = roundedHalfAwayFromZero(remaining * 60 / flow).value_or(unknownMinutes);
  return result >= 1 ? std::min(result, unknownMinutes) : unknownMinutes;
}

void setTimes(PropertyDictionary& properties, const PowerState& state) {
  const auto toEmpty = state.discharging ? minutes(state.battery, Goal::empty) : unknownMinutes;
  const auto toFull = state.charging ? minutes(state.battery, Goal::full) : unknownMinutes;
  set(properties, "AvgTimeToEmpty", toEmpty);
  set(properties, "AvgTimeToFull", toFull);
  set(properties, "TimeRemaining", state.charging ? toFull : toEmpty);
}

PropertyDictionary adapter(const PowerState& state) {
  PropertyDictionary details;
  if (state.adapterWatts > 0) set(details, "Watts", state.adapterWatts);
  if (!state.adapterName.empty()) details.set("Name", PropertyValue::text(state.adapterName));
  return details;
}

PropertyDictionary telemetry(const PowerState& state, const MeasuredPower& measured) {
  PropertyDictionary figures;
  const double milliwatts = state.battery.picowatts / 1e9;
  setRounded(figures, "BatteryPower", milliwatts);
  if (state.external) {
    setRounded(figures, "SystemPowerIn", measured.inputMilliwatts);
    setRounded(figures, "SystemVoltageIn", measured.inputMillivolts);
    setRounded(figures, "SystemCurrentIn", measured.inputMilliamps);
    setRounded(figures, "SystemLoad", measured.systemMilliwatts);
  } else if (state.discharging) {
    setRounded(figures, "SystemLoad", -milliwatts);
    set(figures, "SystemPowerIn", 0);
  }
  return figures;
}

}  // namespace

PropertyDictionary dictionary(const PowerState& state, const MeasuredPower& measured) {
  const Battery& battery = state.battery;
  PropertyDictionary properties;
  set(properties, "MaxCapacity", 100);  // CurrentCapacity is a percentage, not mAh
  set(properties, "CurrentCapacity", percent(battery));
  if (const auto& store = battery.store) {
    setRounded(properties, "AppleRawCurrentCapacity", milliampHours(battery, store->now));
    setRounded(properties, "AppleRawMaxCapacity", milliampHours(battery, store->full));
    setRounded(properties, "DesignCapacity", milliampHours(battery, store->design));
  }
  set(properties, "CycleCount", battery.cycles);
  setRounded(properties, "Voltage", battery.microvolts.value_or(0) / 1000);
  setRounded(properties, "Amperage", battery.microamps / 1000);
  set(properties, "ExternalConnected", state.external ? 1 : 0);
  set(properties, "IsCharging", state.charging ? 1 : 0);
  set(properties, "FullyCharged", state.full ? 1 : 0);
  if (battery.temperature) {
    setRounded(properties, "Temperature", static_cast<double>(*battery.temperature) * 10);
  }
  setTimes(properties, state);
  if (auto details = adapter(state); !details.empty()) {
    properties.set("AdapterDetails", PropertyValue::dictionary(std::move(details)));
  }
  properties.set("PowerTelemetryData", PropertyValue::dictionary(telemetry(state, measured)));
  return properties;
}

}  // namespace lumowatt::power_supply

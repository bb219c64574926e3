#include "telemetry/read.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "base/fatal.h"
#include "base/rounding.h"

namespace lumowatt {

namespace {

/// A key and the field that stores its value.
template <typename Field>
struct Key {
  std::string_view name;
  Field Reading::*field;
};

// Values in milliampere-hours. Newer machines report them in "BatteryData", older machines at the
// top level.
constexpr Key<std::int64_t> capacityKeys[] = {
    {"AppleRawCurrentCapacity", &Reading::rawCurrent},
    {"AppleRawMaxCapacity", &Reading::rawMax},
    {"DesignCapacity", &Reading::design},
    {"NominalChargeCapacity", &Reading::nominal},
};

// Values in millivolts and milliamperes.
constexpr Key<double> batteryKeys[] = {
    {"Voltage", &Reading::batteryVolts},
    {"Amperage", &Reading::batteryAmps},
};

constexpr Key<bool> stateKeys[] = {
    {"ExternalConnected", &Reading::external},
    {"IsCharging", &Reading::charging},
    {"FullyCharged", &Reading::full},
};

// Values in milliwatts, millivolts and milliamperes, in "PowerTelemetryData".
constexpr Key<double> telemetryKeys[] = {
    {"SystemPowerIn", &Reading::wallWatts},
    {"SystemLoad", &Reading::systemWatts},
    {"SystemVoltageIn", &Reading::wallVolts},
    {"SystemCurrentIn", &Reading::wallAmps},
};

std::optional<std::int64_t> integer(const PropertyDictionary& properties, std::string_view key) {
  return signedNumber(properties.find(key));
}

std::int64_t integerOrZero(const PropertyDictionary& properties, std::string_view key) {
  return integer(properties, key).value_or(0);
}

double thousandths(const PropertyDictionary& properties, std::string_view key) {
  return static_cast<double>(integerOrZero(properties, key)) / 1000.0;
}

/// Returns the dictionary stored under `key`, or an empty dictionary if the key is missing or has
/// a value of another type.
const PropertyDictionary& nested(const PropertyDictionary& properties, std::string_view key) {
  static const PropertyDictionary empty;
  const PropertyValue* value = properties.find(key);
  const PropertyDictionary* dictionary = value ? value->asDictionary() : nullptr;
  return dictionary ? *dictionary : empty;
}

std::int64_t percent(const PropertyDictionary& properties, const Reading& reading) {
  // Some machines report "CurrentCapacity" and "MaxCapacity" in percent, other machines in mAh.
  if (integer(properties, "MaxCapacity") == 100) {
    return integerOrZero(properties, "CurrentCapacity");
  }
  if (reading.rawMax < 1) return 0;
  const double quotient =
      static_cast<double>(reading.rawCurrent) / static_cast<double>(reading.rawMax) * 100.0;
  const auto rounded = roundedHalfAwayFromZero(quotient);
  if (!rounded) fatal("cannot compute the charge in percent", "it does not fit 64 bits");
  return *rounded;
}

std::optional<std::int64_t> minutes(const PropertyDictionary& properties, bool charging) {
  constexpr std::int64_t unknown = 65535;
  auto candidate = integerOrZero(properties, charging ? "AvgTimeToFull" : "AvgTimeToEmpty");
  if (!charging && (candidate == unknown || candidate < 1)) {
    candidate = integerOrZero(properties, "TimeRemaining");
  }
  if (candidate < 1 || candidate >= unknown) return std::nullopt;
  return candidate;
}

/// Returns the battery power in watts: the measured power, or voltage times current if the measured
/// power is 0 or missing. Never positive while the battery discharges.
double batteryWatts(double measured, const Reading& reading) {
  const double amps = reading.batteryAmps;
  const double watts = measured != 0.0 || amps == 0.0 ? measured : reading.batteryVolts * amps;
  return watts > 0 && amps < 0 ? -watts : watts;
}

}  // namespace

std::optional<Reading> read(BatteryService& service) {
  const auto currentProperties = service.properties();
  if (!currentProperties) return std::nullopt;
  const PropertyDictionary& properties = *currentProperties;

  Reading reading;
  const PropertyDictionary& batteryData = nested(properties, "BatteryData");
  for (const auto& [key, field] : capacityKeys) {
    const auto newer = integer(batteryData, key);
    reading.*field = newer ? *newer : integerOrZero(properties, key);
  }
  reading.percent = percent(properties, reading);
  reading.cycles = integerOrZero(properties, "CycleCount");
  for (const auto& [key, field] : batteryKeys) reading.*field = thousandths(properties, key);
  for (const auto& [key, field] : stateKeys) reading.*field = integerOrZero(properties, key) != 0;
  reading.minutes = minutes(properties, reading.charging);
  if (const auto hundredths = integer(properties, "Temperature")) {
    reading.temperatureC = static_cast<double>(*hundredths) / 100.0;
  }

  const PropertyDictionary& adapter = nested(properties, "AdapterDetails");
  const PropertyValue* adapterName = adapter.find("Name");
  if (const std::string* text = adapterName ? adapterName->asText() : nullptr) {
    reading.adapterName = *text;
  }
  reading.adapterWatts = integerOrZero(adapter, "Watts");

  const PropertyDictionary& telemetry = nested(properties, "PowerTelemetryData");
  for (const auto& [key, field] : telemetryKeys) reading.*field = thousandths(telemetry, key);
  reading.batteryWatts = batteryWatts(thousandths(telemetry, "BatteryPower"), reading);
  return reading;
}

}  // namespace lumowatt

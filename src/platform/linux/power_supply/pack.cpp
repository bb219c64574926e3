#include "platform/linux/power_supply/pack.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace lumowatt::power_supply {

namespace {

using sysfs::Device;

struct StoreAttributes {
  Unit unit;
  double scale;  // conversion factor from the kernel's micro-units
  const char* full;
  const char* now;
  const char* design;
};

// In order of preference. Charge comes first because its conversion to mAh requires no voltage.
constexpr StoreAttributes stores[] = {
    {Unit::charge, 1, "charge_full", "charge_now", "charge_full_design"},
    {Unit::energy, picoPerMicro, "energy_full", "energy_now", "energy_full_design"},
};

struct StatusText {
  std::string_view text;
  Status status;
};

constexpr StatusText statuses[] = {
    {"Charging", Status::charging},
    {"Discharging", Status::discharging},
    {"Not charging", Status::notCharging},
    {"Full", Status::full},
};

// Name prefixes of devices whose drivers report a flow out of the pack as negative. Other
// drivers report only magnitudes, or signs with a nonstandard meaning.
constexpr std::string_view signedDrivers[] = {"qcom-battmgr", "macsmc", "sbs-", "bq27"};

std::optional<double> positive(Device& device, const char* attribute) {
  const auto value = device.number(attribute);
  return value > 0 ? std::optional(static_cast<double>(*value)) : std::nullopt;
}

std::optional<double> numberOr(Device& device, const char* attribute, const char* fallback) {
  auto value = device.number(attribute);
  if (!value) value = device.number(fallback);
  return value ? std::optional(static_cast<double>(*value)) : std::nullopt;
}

Status readStatus(Device& device) {
  const auto text = device.text("status");
  for (const StatusText& known : statuses) {
    if (text == known.text) return known.status;
  }
  return Status::unknown;
}

std::optional<Store> readStore(Device& device, std::optional<std::int64_t> capacity) {
  for (const StoreAttributes& attributes : stores) {
    const auto full = positive(device, attributes.full);
    if (!full) continue;
    Store store{attributes.unit, *full * attributes.scale, std::nullopt, std::nullopt};
    if (const auto design = positive(device, attributes.design)) {
      store.design = *design * attributes.scale;
    }
    const auto now = device.number(attributes.now);
    const bool isCredible = now && *now >= 0 && static_cast<double>(*now) <= 1.5 * *full;
    if (isCredible) {
      store.now = static_cast<double>(*now) * attributes.scale;
    } else if (capacity) {
      store.now = store.full * static_cast<double>(std::max<std::int64_t>(*capacity, 0)) / 100;
    }
    return store;
  }
  return std::nullopt;
}

std::optional<double> readMicrovolts(Device& device) {
  const auto now = positive(device, "voltage_now");
  return now ? now : positive(device, "voltage_avg");
}

std::optional<double> readDesignMicrovolts(Device& device, std::optional<double> microvolts) {
  constexpr double leastCredible = 1e6;
  for (const char* attribute : {"voltage_min_design", "voltage_max_design"}) {
    const auto value = positive(device, attribute);
    if (value && *value > leastCredible) return value;
  }
  return microvolts;
}

bool hasSignedDriver(const Device& device) {
  const auto starts = [&device](std::string_view prefix) {
    return device.name().starts_with(prefix);
  };
  return std::any_of(std::begin(signedDrivers), std::end(signedDrivers), starts);
}

/// Sets the pack's current and power. The driver's values determine the magnitudes, and the status
/// determines the direction. If a driver with signed values contradicts the status "Charging", the
/// status becomes "Discharging". Returns whether the driver reports a flow, even if it is 0.
bool readFlow(Device& device, Pack& pack) {
  const auto current = numberOr(device, "current_now", "current_avg");
  const auto power = numberOr(device, "power_now", "power_avg");
  if (!current && !power) return false;

  const bool isReportedNegative = current.value_or(0) < 0 || power.value_or(0) < 0;
  if (pack.status == Status::charging && isReportedNegative && hasSignedDriver(device)) {
    pack.status = Status::discharging;
  }

  // If only the current or only the power is reported, computes the other from the voltage. It
  // remains unknown without a voltage.
  const double microvolts = pack.battery.microvolts.value_or(0);
  const bool isCurrentKnown = current || pack.battery.microvolts;
  const double picowatts = std::fabs(power ? *power * picoPerMicro : *current * microvolts);
  double microamps = 0;
  if (isCurrentKnown) microamps = std::fabs(current ? *current : picowatts / microvolts);

  const bool hasDirection = pack.status == Status::charging || pack.status == Status::discharging;
  constexpr double noise = 5000;  // 5 mA, or 5 mW if only the power is known
  if (hasDirection || (isCurrentKnown ? microamps : std::fabs(*power)) >= noise) {
    const bool isOutward = hasDirection ? pack.status == Status::discharging : isReportedNegative;
    pack.battery.microamps = isOutward ? -microamps : microamps;
    pack.battery.picowatts = isOutward ? -picowatts : picowatts;
  }
  return true;
}

/// Returns the driver's estimate of the time to empty or full, whichever matches the direction of
/// the flow. Returns std::nullopt if the direction is unknown or no estimate is plausible.
std::optional<std::int64_t> readSecondsLeft(Device& device, const Pack& pack) {
  const bool isEmptying = pack.status == Status::discharging || direction(pack.battery) < 0;
  if (!isEmptying && pack.status != Status::charging) return std::nullopt;
  constexpr std::int64_t minimum = 60;
  // Many drivers report this value if the time is unknown.
  constexpr std::int64_t unknown = std::int64_t{65535} * 60;
  for (const char* attribute : {isEmptying ? "time_to_empty_now" : "time_to_full_now",
                                isEmptying ? "time_to_empty_avg" : "time_to_full_avg"}) {
    const auto seconds = device.number(attribute);
    if (seconds >= minimum && seconds < unknown) return seconds;
  }
  return std::nullopt;
}

}  // namespace

Pack readPack(Device& device) {
  Pack pack;
  Battery& battery = pack.battery;
  pack.status = readStatus(device);
  battery.capacity = device.number("capacity");
  battery.store = readStore(device, battery.capacity);
  battery.microvolts = readMicrovolts(device);
  if (battery.store) battery.designMicrovolts = readDesignMicrovolts(device, battery.microvolts);
  if (pack.status != Status::full) {
    const bool isIdlePack = readFlow(device, pack) && isIdle(battery);
    // A pack is idle only if its driver reports the flow. If the driver does not, its estimate of
    // the time is the only information.
    if (!isIdlePack) battery.secondsLeft = readSecondsLeft(device, pack);
  }
  battery.temperature = device.number("temp");
  const auto cycles = device.number("cycle_count");
  if (cycles > 0) battery.cycles = cycles;
  return pack;
}

}  // namespace lumowatt::power_supply

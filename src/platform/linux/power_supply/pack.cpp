#include "platform/linux/power_supply/pack.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace lumowatt::power_supply {

namespace {

using sysfs::Device;

struct StoreAttributes {
  Unit unit;
  double scale;  // from the kernel's micro-units
  const char* full;
  const char* now;
  const char* design;
};

// In order of preference: a capacity in mAh needs no voltage to become one.
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

// Drivers that report what flows out of the pack as negative. The others report magnitudes, or
// signs of their own making.
constexpr std::string_view signedDrivers[] = {"qcom-battmgr", "macsmc", "sbs-", "bq27"};

std::optional<double> positive(Device& device, const char* attribute) {
  const auto value = device.number(attribute);
  return value > 0 ? std::optional(static_cast<double>(*value)) : std::nullopt;
}

std::optional<double> either(Device& device, const char* first, const char* second) {
  auto value = device.number(first);
  if (!value) value = device.number(second);
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
    const bool credible = now && *now >= 0 && static_cast<double>(*now) <= 1.5 * *full;
    if (credible) {
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

/// Fills in what flows. Magnitudes come from the driver and the direction from the status, which
/// is corrected where a driver that knows better contradicts it. Returns whether the driver reports
/// a flow, be it none.
bool readFlow(Device& device, Pack& pack) {
  const auto current = either(device, "current_now", "current_avg");
  const auto power = either(device, "power_now", "power_avg");
  if (!current && !power) return false;

  const bool reportedOut = current.value_or(0) < 0 || power.value_or(0) < 0;
  if (pack.status == Status::charging && reportedOut && hasSignedDriver(device)) {
    pack.status = Status::discharging;
  }

  // The one that is not reported is computed; without a voltage it stays unknown.
  const double microvolts = pack.battery.microvolts.value_or(0);
  const bool currentKnown = current || pack.battery.microvolts;
  const double picowatts = std::fabs(power ? *power * picoPerMicro : *current * microvolts);
  double microamps = 0;
  if (currentKnown) microamps = std::fabs(current ? *current : picowatts / microvolts);

  const bool statusTells = pack.status == Status::charging || pack.status == Status::discharging;
  constexpr double noise = 5000;  // 5 mA; where only the power is known, 5 mW
  if (statusTells || (currentKnown ? microamps : std::fabs(*power)) >= noise) {
    const bool out = statusTells ? pack.status == Status::discharging : reportedOut;
    pack.battery.microamps = out ? -microamps : microamps;
    pack.battery.picowatts = out ? -picowatts : picowatts;
  }
  return true;
}

/// The driver's estimate for the direction in which the pack goes, if it is one.
std::optional<std::int64_t> readSecondsLeft(Device& device, const Pack& pack) {
  const bool emptying = pack.status == Status::discharging || direction(pack.battery) < 0;
  if (!emptying && pack.status != Status::charging) return std::nullopt;
  constexpr std::int64_t least = 60;
  constexpr std::int64_t unknown = std::int64_t{65535} * 60;  // what many drivers say for "no idea"
  for (const char* attribute : {emptying ? "time_to_empty_now" : "time_to_full_now",
                                emptying ? "time_to_empty_avg" : "time_to_full_avg"}) {
    const auto seconds = device.number(attribute);
    if (seconds >= least && seconds < unknown) return seconds;
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
    // Where it reports no flow, not even none, its estimate is all that is known.
    if (!isIdlePack) battery.secondsLeft = readSecondsLeft(device, pack);
  }
  battery.temperature = device.number("temp");
  const auto cycles = device.number("cycle_count");
  if (cycles > 0) battery.cycles = cycles;
  return pack;
}

}  // namespace lumowatt::power_supply

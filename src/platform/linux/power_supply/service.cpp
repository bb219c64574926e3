#include "platform/linux/power_supply/service.h"

#include <strings.h>

#include <utility>

#include "base/failure.h"
#include "platform/linux/power_supply/apple_sensors.h"
#include "platform/linux/power_supply/charger.h"
#include "platform/linux/power_supply/dictionary.h"
#include "platform/linux/power_supply/pack.h"
#include "platform/linux/power_supply/power_state.h"
#include "platform/linux/power_supply/sysfs.h"

namespace lumowatt::power_supply {

namespace {

using sysfs::Class;
using sysfs::Device;

/// Returns whether a supply of type "Battery" is one of the laptop's own packs, rather than the
/// battery of a peripheral such as a mouse, or an empty bay.
bool isLaptopPack(Device& device) {
  device.listAttributes();
  const std::string scope = device.text("scope").value_or("");
  return ::strcasecmp(scope.c_str(), "Device") != 0 && device.number("present") != 0;
}

struct Supplies {
  std::vector<Pack> packs;
  std::string firstPackName;
  std::vector<Charger> chargers;
};

Supplies readSupplies(const Class& supplies) {
  Supplies result;
  for (const std::string& name : supplies.deviceNames()) {
    Device device(supplies, name);
    const std::string type = device.text("type").value_or("");
    if (type == "Battery") {
      if (!isLaptopPack(device)) continue;
      device.resetReadResults();  // detects a removal of the driver from here on
      const Pack pack = readPack(device);
      if (!device.isListed() || device.isBeingRemoved()) continue;
      if (result.packs.empty()) result.firstPackName = name;
      result.packs.push_back(pack);
    } else if (isCharger(type, name)) {
      Charger charger = readCharger(device, type);
      if (device.isListed()) result.chargers.push_back(std::move(charger));
    }
  }
  return result;
}

}  // namespace

Service::Service(std::string powerSupplyFolder, std::string hwmonFolder)
    : powerSupplyFolder_(std::move(powerSupplyFolder)), hwmonFolder_(std::move(hwmonFolder)) {}

std::optional<PropertyDictionary> Service::properties() try {
  auto properties = read();
  error_.update(Result<>());
  return properties;
} catch (const Failure& shortage) {
  error_.update(Result<>(shortage));
  return std::nullopt;
}

std::optional<PropertyDictionary> Service::read() const {
  const Supplies supplies = readSupplies(Class(powerSupplyFolder_));
  if (supplies.packs.empty()) return std::nullopt;

  const PowerState state = combine(supplies.packs, supplies.chargers);
  MeasuredPower measured;
  if (state.external && supplies.firstPackName.starts_with("macsmc")) {
    measured = readAppleSensors(hwmonFolder_);
  }
  return dictionary(state, measured);
}

}  // namespace lumowatt::power_supply

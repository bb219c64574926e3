#include "platform/linux/power_supply/apple_sensors.h"

#include <string_view>

#include "platform/linux/power_supply/sysfs.h"

namespace lumowatt::power_supply {

namespace {

struct Sensor {
  std::string_view kind;   // prefix of the attributes, before the channel number
  std::string_view label;  // name of the channel in the machine's device tree
  double unitsPerMilli;    // power is in µW, the rest in mV and mA (hwmon/sysfs-interface.rst)
  std::optional<double> MeasuredPower::*field;
};

constexpr Sensor sensors[] = {
    {"power", "AC Input Power", 1000, &MeasuredPower::inputMilliwatts},
    {"power", "Total System Power", 1000, &MeasuredPower::systemMilliwatts},
    {"in", "AC Input Voltage", 1, &MeasuredPower::inputMillivolts},
    {"curr", "AC Input Current", 1, &MeasuredPower::inputMilliamps},
};

/// Reads the channels of one kind, which are numbered consecutively from `first`.
void readChannels(sysfs::Device& controller, std::string_view kind, int first,
                  MeasuredPower& measured) {
  for (int channel = first;; ++channel) {
    const std::string prefix = std::string(kind) + std::to_string(channel);
    const std::string input = prefix + "_input";
    const auto label = controller.text((prefix + "_label").c_str());
    // An unreadable label alone does not mark the end of the channels.
    if (!label && !controller.text(input.c_str())) return;
    for (const Sensor& sensor : sensors) {
      if (sensor.kind != kind || sensor.label != label) continue;
      if (const auto value = controller.number(input.c_str())) {
        measured.*sensor.field = static_cast<double>(*value) / sensor.unitsPerMilli;
      }
    }
  }
}

}  // namespace

MeasuredPower readAppleSensors(const std::string& hwmonFolder) {
  MeasuredPower measured;
  const sysfs::Class monitors(hwmonFolder);
  for (const std::string& name : monitors.deviceNames()) {
    sysfs::Device monitor(monitors, name);
    if (monitor.text("name") != "macsmc_hwmon") continue;
    readChannels(monitor, "power", 1, measured);
    readChannels(monitor, "in", 0, measured);
    readChannels(monitor, "curr", 1, measured);
    break;
  }
  return measured;
}

}  // namespace lumowatt::power_supply

#include "platform/linux/power_supply/charger.h"

#include <algorithm>

#include "platform/linux/power_supply/printable.h"

namespace lumowatt::power_supply {

namespace {

using sysfs::Device;

// Vendor kernels also define USB_PD, USB_C, USB_DCP and other types.
bool isUsb(std::string_view type) { return type.starts_with("USB"); }

double nonNegative(Device& device, const char* attribute) {
  return static_cast<double>(std::max<std::int64_t>(device.number(attribute).value_or(0), 0));
}

double watts(Device& device, const char* voltage, const char* current) {
  return nonNegative(device, voltage) * nonNegative(device, current) / 1e12;
}

std::string readProduct(Device& device) {
  std::string product = printable(device.text("manufacturer").value_or(""));
  const std::string model = printable(device.text("model_name").value_or(""));
  if (!product.empty() && !model.empty()) product += ' ';
  return product + model;
}

}  // namespace

bool isCharger(std::string_view type, std::string_view name) {
  // The charger of the Smart Battery System always reports that it is online.
  if (name == "sbs-charger") return false;
  return type == "Mains" || type == "Wireless" || isUsb(type);
}

Charger readCharger(Device& device, std::string_view type) {
  Charger charger;
  charger.usb = isUsb(type);
  charger.online = device.number("online") >= 1;  // std::nullopt compares less than any number
  if (!charger.online) return charger;
  device.listAttributes();
  charger.ratedWatts = nonNegative(device, "input_power_limit") / 1e6;
  if (charger.usb) {
    charger.ratedWatts = std::max({charger.ratedWatts, watts(device, "voltage_max", "current_max"),
                                   watts(device, "voltage_now", "current_now")});
  }
  charger.product = readProduct(device);
  return charger;
}

}  // namespace lumowatt::power_supply

#include "platform/linux/power_supply/power_state.h"

#include <algorithm>

#include "platform/linux/power_supply/equivalent_battery.h"
#include "telemetry/rounding.h"

namespace lumowatt::power_supply {

namespace {

bool any(const std::vector<Pack>& packs, Status status) {
  return std::any_of(packs.begin(), packs.end(),
                     [status](const Pack& pack) { return pack.status == status; });
}

bool isFull(const Pack& pack) {
  switch (pack.status) {
    case Status::full:
      return true;
    case Status::unknown:
    case Status::notCharging:
      return pack.battery.capacity.value_or(0) >= 99;
    case Status::charging:
    case Status::discharging:
      break;
  }
  return false;
}

bool isCharging(const std::vector<Pack>& packs, const Battery& battery) {
  return any(packs, Status::charging) && direction(battery) >= 0;
}

bool isExternal(const std::vector<Pack>& packs, const Battery& battery,
                const std::vector<Charger>& chargers) {
  const bool discharging = any(packs, Status::discharging);
  if (chargers.empty()) {
    const bool held = any(packs, Status::full) || any(packs, Status::notCharging);
    if (held && !discharging) return true;
  }
  // A USB port can go on claiming a charger that was unplugged; a pack that is emptied tells.
  const auto brings = [discharging](const Charger& charger) {
    return charger.online && !(charger.usb && discharging);
  };
  return std::any_of(chargers.begin(), chargers.end(), brings) || isCharging(packs, battery);
}

void describeAdapter(const std::vector<Charger>& chargers, PowerState& state) {
  double watts = 0;
  bool usb = false;
  for (const Charger& charger : chargers) {
    if (!charger.online) continue;
    if (charger.ratedWatts > watts) usb = false;
    if (charger.ratedWatts >= watts) usb = usb || charger.usb;
    watts = std::max(watts, charger.ratedWatts);
    if (state.adapterName.empty()) state.adapterName = charger.product;
  }
  if (watts >= 1) state.adapterWatts = roundedHalfAwayFromZero(watts).value_or(0);
  if (state.adapterName.empty() && usb && state.adapterWatts > 0) {
    state.adapterName = std::to_string(state.adapterWatts) + "W USB-C Power Adapter";
  }
}

}  // namespace

bool isExternal(const std::vector<Pack>& packs, const std::vector<Charger>& chargers) {
  return isExternal(packs, equivalentBattery(packs), chargers);
}

PowerState combine(const std::vector<Pack>& packs, const std::vector<Charger>& chargers) {
  PowerState state;
  state.battery = equivalentBattery(packs);
  state.charging = isCharging(packs, state.battery);
  state.discharging =
      (any(packs, Status::discharging) || direction(state.battery) < 0) && !state.charging;
  state.external = isExternal(packs, state.battery, chargers);
  state.full = std::all_of(packs.begin(), packs.end(), isFull);
  if (state.external) describeAdapter(chargers, state);
  return state;
}

}  // namespace lumowatt::power_supply

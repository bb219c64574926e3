#include "platform/linux/power_supply/power_state.h"

#include <algorithm>

#include "base/rounding.h"
#include "platform/linux/power_supply/equivalent_battery.h"

namespace lumowatt::power_supply {

namespace {

bool anyPackHas(const std::vector<Pack>& packs, Status status) {
  return std::any_of(packs.begin(), packs.end(),
                     [status](const Pack& pack) { return pack.status == status; });
}

bool isFull(const Pack& pack) {
  if (pack.status == Status::full) return true;
  const bool isIdle = pack.status == Status::unknown || pack.status == Status::notCharging;
  return isIdle && pack.battery.capacity >= 99;
}

/// Returns whether external power is connected. A battery that is `charging` is sufficient proof.
bool isExternal(const std::vector<Pack>& packs, const std::vector<Charger>& chargers,
                bool charging) {
  if (charging) return true;
  const bool discharging = anyPackHas(packs, Status::discharging);
  if (chargers.empty()) {
    return !discharging &&
           (anyPackHas(packs, Status::charging) || anyPackHas(packs, Status::full) ||
            anyPackHas(packs, Status::notCharging));
  }
  // Some USB ports still report a charger after it was unplugged. A discharging pack proves that
  // the report is stale.
  return std::any_of(chargers.begin(), chargers.end(), [discharging](const Charger& charger) {
    return charger.online && !(charger.usb && discharging);
  });
}

void describeAdapter(const std::vector<Charger>& chargers, PowerState& state) {
  double watts = 0;
  for (const Charger& charger : chargers) {
    if (!charger.online) continue;
    watts = std::max(watts, charger.ratedWatts);
    if (state.adapterName.empty()) state.adapterName = charger.product;
  }
  const auto wholeWatts = roundedHalfAwayFromZero(watts);
  if (watts < 1 || !wholeWatts) return;
  state.adapterWatts = *wholeWatts;
  const bool isUsbRating = std::any_of(chargers.begin(), chargers.end(), [watts](const Charger& c) {
    return c.online && c.usb && c.ratedWatts == watts;
  });
  if (state.adapterName.empty() && isUsbRating) {
    state.adapterName = std::to_string(state.adapterWatts) + "W USB-C Power Adapter";
  }
}

}  // namespace

PowerState combine(const std::vector<Pack>& packs, const std::vector<Charger>& chargers) {
  PowerState state;
  state.battery = equivalentBattery(packs);
  const double flow = direction(state.battery);
  state.charging = anyPackHas(packs, Status::charging) && flow >= 0;
  state.discharging = (anyPackHas(packs, Status::discharging) || flow < 0) && !state.charging;
  state.external = isExternal(packs, chargers, state.charging);
  state.full = std::all_of(packs.begin(), packs.end(), isFull);
  if (state.external) describeAdapter(chargers, state);
  return state;
}

}  // namespace lumowatt::power_supply

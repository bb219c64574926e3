#include "platform/linux/power_supply/equivalent_battery.h"

#include <algorithm>

namespace lumowatt::power_supply {

namespace {

/// Returns the energy of a pack in pWh. Returns std::nullopt if it is unknown.
std::optional<Store> energy(const Battery& battery) {
  const auto& store = battery.store;
  if (!store || store->unit == Unit::energy) return store;
  if (!battery.designMicrovolts) return std::nullopt;
  const double microvolts = *battery.designMicrovolts;
  Store converted{Unit::energy, store->full * microvolts, std::nullopt, std::nullopt};
  if (store->now) converted.now = *store->now * microvolts;
  if (store->design) converted.design = *store->design * microvolts;
  return converted;
}

std::optional<double> fullEnergy(const Battery& battery) {
  const auto store = energy(battery);
  return store ? std::optional(store->full) : std::nullopt;
}

/// Returns the total energy of the packs in pWh. Skips each pack whose present energy is unknown,
/// so that all sums describe the same packs. Returns std::nullopt if no pack remains.
std::optional<Store> totalEnergy(const std::vector<Pack>& packs) {
  std::optional<Store> total;
  for (const Pack& pack : packs) {
    const auto store = energy(pack.battery);
    if (!store || !store->now) continue;
    if (!total) {
      total = store;
      continue;
    }
    total->full += store->full;
    *total->now += *store->now;
    // The sum for only some of the packs would be meaningless.
    total->design = total->design && store->design ? std::optional(*total->design + *store->design)
                                                   : std::nullopt;
  }
  return total;
}

}  // namespace

Battery equivalentBattery(const std::vector<Pack>& packs) {
  if (packs.size() == 1) return packs.front().battery;

  const auto largest = std::max_element(
      packs.begin(), packs.end(),
      // std::nullopt compares less than any value, here and in std::max below.
      [](const Pack& a, const Pack& b) { return fullEnergy(a.battery) < fullEnergy(b.battery); });
  const Battery& primary = largest->battery;

  Battery whole;
  whole.store = totalEnergy(packs);
  whole.microvolts = primary.microvolts;
  whole.designMicrovolts = primary.designMicrovolts;
  for (const auto& [status, battery] : packs) {
    whole.picowatts += battery.picowatts;
    whole.temperature = std::max(whole.temperature, battery.temperature);
    whole.cycles = std::max(whole.cycles, battery.cycles);
  }
  if (whole.microvolts) whole.microamps = whole.picowatts / *whole.microvolts;
  // Percentages cannot be added. The largest pack's percentage is the fallback if no energy is
  // known.
  if (!whole.store) whole.capacity = primary.capacity;
  return whole;
}

}  // namespace lumowatt::power_supply

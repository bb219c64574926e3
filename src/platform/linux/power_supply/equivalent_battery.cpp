#include "platform/linux/power_supply/equivalent_battery.h"

#include <algorithm>

namespace lumowatt::power_supply {

namespace {

/// What a pack holds, in pWh. Absent when it cannot be told.
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

/// All that is held, in pWh. A pack of which that is not known adds nothing to any of the figures,
/// so that they go on describing the same packs.
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
    // Of some packs alone it would say nothing.
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
      // An absent value compares below every other, here and below.
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
  // The drivers' percentages cannot be added. One serves where nothing else is known.
  if (!whole.store) whole.capacity = primary.capacity;
  return whole;
}

}  // namespace lumowatt::power_supply

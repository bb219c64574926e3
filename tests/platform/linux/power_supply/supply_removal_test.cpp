// A supply is removed during a reading, at each possible moment. The properties must be those of a
// machine with the supply or without it.

#include <gtest/gtest.h>

#include <functional>

#include "platform/linux/power_supply/open_hooks.h"
#include "support/mock_machine.h"

namespace lumowatt::power_supply {

namespace {

using nlohmann::json;
using std::filesystem::path;

/// A supply in the kernel's layout: a link in the class folder to the folder of the device, which
/// contains the attributes.
struct Supply {
  std::string name;
  Attributes attributes;

  path link(const MockMachine& machine) const { return machine.powerSupplyFolder() / name; }
  path device(const MockMachine& machine) const {
    return machine.powerSupplyFolder().parent_path() / "devices" / name;
  }
};

void plug(const MockMachine& machine, const Supply& supply) {
  machine.supply("../devices/" + supply.name, supply.attributes);
  std::filesystem::create_directories(machine.powerSupplyFolder());
  std::filesystem::create_directory_symlink(supply.device(machine), supply.link(machine));
}

void unplug(const MockMachine& machine, const Supply& supply) {
  std::filesystem::remove(supply.link(machine));
  std::filesystem::remove_all(supply.device(machine));
}

using Event = std::function<void(const MockMachine&)>;

/// Reads machines with `others` and `supply`, and triggers `event` during each reading: before the
/// first opened file or folder, before the second, and so on. Expects the properties before the
/// event, after the event, or without the supply.
void expectConsistentProperties(const std::vector<Supply>& others, const Supply& supply,
                                const Event& event) {
  int moments = 0;
  for (bool hasOccurred = true; hasOccurred; ++moments) {
    const MockMachine machine;
    for (const Supply& other : others) plug(machine, other);
    const json without = machine.properties();
    plug(machine, supply);
    const json before = machine.properties();
    ASSERT_NE(before, without);

    hasOccurred = false;
    onOpen(moments + 1, [&] {
      hasOccurred = true;
      event(machine);
    });
    const json during = machine.properties();
    onOpen(0, nullptr);

    const json after = machine.properties();
    EXPECT_TRUE(during == before || during == after || during == without)
        << "at moment " << moments << ": " << during << "\nbefore: " << before
        << "\nafter: " << after << "\nwithout: " << without;
  }
  EXPECT_GT(moments, 15);
}

/// Calls `expectConsistentProperties` for three events: the supply is removed completely, only its
/// link is removed, or another supply replaces it.
void expectConsistentPropertiesOnRemoval(const std::vector<Supply>& others, const Supply& supply,
                                         const Attributes& successor) {
  expectConsistentProperties(others, supply,
                             [&](const MockMachine& machine) { unplug(machine, supply); });
  expectConsistentProperties(others, supply, [&](const MockMachine& machine) {
    std::filesystem::remove(supply.link(machine));
  });
  expectConsistentProperties(others, supply, [&](const MockMachine& machine) {
    unplug(machine, supply);
    plug(machine, {supply.name, successor});
  });
}

const Supply laptopMains = {"AC", {{"type", "Mains"}, {"online", "0"}}};
const Supply laptopPack = {"BAT0", energyPack({{"time_to_empty_now", "7200"}})};

}  // namespace

TEST(SupplyRemoval, NeverLeavesPartialPropertiesOfTheOnlyPack) {
  expectConsistentPropertiesOnRemoval({laptopMains}, laptopPack,
                                      energyPack({{"energy_now", "20000000"}}));
}

TEST(SupplyRemoval, NeverLeavesPartialPropertiesOfTheFirstPack) {
  expectConsistentPropertiesOnRemoval(
      {laptopMains, {"BAT1", energyPack({{"time_to_empty_now", "3600"}})}}, laptopPack,
      energyPack({{"energy_now", "20000000"}}));
}

TEST(SupplyRemoval, NeverLeavesPartialPropertiesOfTheSecondPack) {
  const Attributes charge = chargePack({{"time_to_empty_now", "3600"}});
  expectConsistentPropertiesOnRemoval({laptopMains, laptopPack}, {"BAT1", charge}, energyPack());
}

TEST(SupplyRemoval, CausesNoSecondReadingOfTheOtherPacks) {
  constexpr int count = 100;
  const MockMachine machine;
  const auto name = [](int index) { return "BAT" + std::to_string(100 + index); };
  for (int i = 0; i < count; ++i) plug(machine, {name(i), energyPack()});
  int before = openCount();
  machine.properties();
  const int openCountWithoutRemoval = openCount() - before;
  const int openCountPerPack = (openCountWithoutRemoval - 1) / count;
  ASSERT_EQ(openCountWithoutRemoval, 1 + openCountPerPack * count)
      << "the class, and the same number for each pack";

  bool isRemoved = false;
  before = openCount();
  // The folder of the last pack is open, but none of its attributes.
  onOpen(1 + openCountPerPack * (count - 1) + 2, [&] {
    std::filesystem::remove(machine.powerSupplyFolder() / name(count - 1));
    isRemoved = true;
  });
  const json during = machine.properties();
  EXPECT_LE(openCount() - before, openCountWithoutRemoval);
  onOpen(0, nullptr);
  EXPECT_TRUE(isRemoved);
  EXPECT_EQ(during, machine.properties());
}

TEST(SupplyRemoval, OmitsAPackWhoseReadsFailWhileItIsStillListed) {
  const MockMachine machine;
  plug(machine, laptopPack);
  // Calls 1 and 2 open the folders of the class and the pack. Calls 3 to 5 open the pack's type,
  // presence and status.
  for (const int opening : {3, 4, 5}) {
    onOpen(opening, [] { setReadsFail(true); });
    const json during = machine.properties();
    setReadsFail(false);
    onOpen(0, nullptr);
    EXPECT_TRUE(during.is_null()) << opening << ": " << during;
    EXPECT_FALSE(machine.properties().is_null());
  }
}

TEST(SupplyRemoval, NeverLeavesPartialPropertiesOfACharger) {
  const Supply full = {"BAT0", chargePack({{"status", "Full"}})};
  const Supply charger = {"port",
                          {{"type", "USB"},
                           {"online", "1"},
                           {"manufacturer", "Acme"},
                           {"model_name", "Brick"},
                           {"input_power_limit", "60000000"},
                           {"voltage_max", "20000000"},
                           {"current_max", "3250000"},
                           {"voltage_now", "20000000"},
                           {"current_now", "3000000"}}};
  expectConsistentPropertiesOnRemoval({full}, charger, {{"type", "USB"}, {"online", "0"}});
}

}  // namespace lumowatt::power_supply

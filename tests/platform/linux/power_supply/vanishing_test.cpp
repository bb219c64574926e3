// A supply that goes while it is read, at every moment at which it can: each dictionary must be one
// with it or one without.

#include <gtest/gtest.h>

#include <functional>

#include "platform/linux/power_supply/opening_moments.h"
#include "support/mock_machine.h"

namespace lumowatt::power_supply {

namespace {

using nlohmann::json;
using std::filesystem::path;

/// A supply as the kernel has it: the class's link, and the device with its attributes.
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

/// Reads a machine with `others` and `supply` once for every moment at which `happening` can happen
/// to it, and expects one of the dictionaries before it, after it, and without the supply.
void expectOldOrNew(const std::vector<Supply>& others, const Supply& supply,
                    const Event& happening) {
  int moments = 0;
  for (bool happened = true; happened; ++moments) {
    const MockMachine machine;
    for (const Supply& other : others) plug(machine, other);
    const json without = machine.properties();
    plug(machine, supply);
    const json before = machine.properties();
    ASSERT_NE(before, without);

    happened = false;
    atOpening(moments + 1, [&] {
      happened = true;
      happening(machine);
    });
    const json during = machine.properties();
    atOpening(0, nullptr);

    const json after = machine.properties();
    EXPECT_TRUE(during == before || during == after || during == without)
        << "at moment " << moments << ": " << during << "\nbefore: " << before
        << "\nafter: " << after << "\nwithout: " << without;
  }
  EXPECT_GT(moments, 15);
}

/// The supply goes at once, or its class forgets it first, or another takes its place.
void expectOldOrNewHoweverItGoes(const std::vector<Supply>& others, const Supply& supply,
                                 const Attributes& successor) {
  expectOldOrNew(others, supply, [&](const MockMachine& machine) { unplug(machine, supply); });
  expectOldOrNew(others, supply, [&](const MockMachine& machine) {
    std::filesystem::remove(supply.link(machine));
  });
  expectOldOrNew(others, supply, [&](const MockMachine& machine) {
    unplug(machine, supply);
    plug(machine, {supply.name, successor});
  });
}

const Supply laptopMains = {"AC", {{"type", "Mains"}, {"online", "0"}}};
const Supply laptopPack = {"BAT0", energyPack({{"time_to_empty_now", "7200"}})};

}  // namespace

TEST(Vanishing, TheOnlyPack) {
  expectOldOrNewHoweverItGoes({laptopMains}, laptopPack, energyPack({{"energy_now", "20000000"}}));
}

TEST(Vanishing, TheFirstOfTwoPacks) {
  expectOldOrNewHoweverItGoes({laptopMains, {"BAT1", energyPack({{"time_to_empty_now", "3600"}})}},
                              laptopPack, energyPack({{"energy_now", "20000000"}}));
}

TEST(Vanishing, TheSecondOfTwoPacks) {
  const Attributes charge = chargePack({{"time_to_empty_now", "3600"}});
  expectOldOrNewHoweverItGoes({laptopMains, laptopPack}, {"BAT1", charge}, energyPack());
}

TEST(Vanishing, TheLastOfManyPacksWhenItIsReadCostsOneReading) {
  constexpr int count = 100;
  const MockMachine machine;
  const auto name = [](int index) { return "BAT" + std::to_string(100 + index); };
  for (int i = 0; i < count; ++i) plug(machine, {name(i), energyPack()});
  int before = openings();
  machine.properties();
  const int undisturbed = openings() - before;
  const int openingsOfAPack = (undisturbed - 1) / count;
  ASSERT_EQ(undisturbed, 1 + openingsOfAPack * count) << "the class, and as many of each pack";

  bool isGone = false;
  before = openings();
  atOpening(1 + openingsOfAPack * (count - 1) + 2, [&] {  // its folder is open, and no attribute
    std::filesystem::remove(machine.powerSupplyFolder() / name(count - 1));
    isGone = true;
  });
  const json during = machine.properties();
  EXPECT_LE(openings() - before, undisturbed);
  atOpening(0, nullptr);
  EXPECT_TRUE(isGone);
  EXPECT_EQ(during, machine.properties());
}

TEST(Vanishing, APackWhoseDriverIsGoneBeforeItIsUnlisted) {
  const MockMachine machine;
  plug(machine, laptopPack);
  // Of the pack its type, its presence, or its status, after the class and the pack's folder.
  for (const int opening : {3, 4, 5}) {
    atOpening(opening, [] { refuseReading(true); });
    const json during = machine.properties();
    refuseReading(false);
    atOpening(0, nullptr);
    EXPECT_TRUE(during.is_null()) << opening << ": " << during;
    EXPECT_FALSE(machine.properties().is_null());
  }
}

TEST(Vanishing, AChargerWithARating) {
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
  expectOldOrNewHoweverItGoes({full}, charger, {{"type", "USB"}, {"online", "0"}});
}

}  // namespace lumowatt::power_supply

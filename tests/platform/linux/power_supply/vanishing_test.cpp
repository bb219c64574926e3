// A supply that goes while it is read, at every moment at which it can: each dictionary must be one
// with it or one without. The moments are the calls of openat, of which this program has its own.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <functional>

#include "support/mock_machine.h"

namespace {

int callsUntilEvent = 0;  // none is due when 0
std::function<void()> event;

}  // namespace

// Like the C library's, for files that exist; before the last of the calls, the event happens.
extern "C" int openat(int folder, const char* path, int flags, ...) {
  if (callsUntilEvent > 0 && --callsUntilEvent == 0) event();
  return static_cast<int>(::syscall(SYS_openat, folder, path, flags, 0));
}

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
    event = [&] {
      happened = true;
      happening(machine);
    };
    callsUntilEvent = moments + 1;
    const json during = machine.properties();
    callsUntilEvent = 0;

    const json after = machine.properties();
    EXPECT_TRUE(during == before || during == after || during == without)
        << "at moment " << moments << ": " << during << "\nbefore: " << before
        << "\nafter: " << after << "\nwithout: " << without;
  }
  EXPECT_GT(moments, 20);
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

const Supply mains = {"AC", {{"type", "Mains"}, {"online", "0"}}};
const Supply pack = {"BAT0", energyPack({{"time_to_empty_now", "7200"}})};

}  // namespace

TEST(Vanishing, TheOnlyPack) {
  expectOldOrNewHoweverItGoes({mains}, pack, energyPack({{"energy_now", "20000000"}}));
}

TEST(Vanishing, TheFirstOfTwoPacks) {
  expectOldOrNewHoweverItGoes({mains, {"BAT1", energyPack({{"time_to_empty_now", "3600"}})}}, pack,
                              energyPack({{"energy_now", "20000000"}}));
}

TEST(Vanishing, TheSecondOfTwoPacks) {
  const Attributes charge = chargePack({{"time_to_empty_now", "3600"}});
  expectOldOrNewHoweverItGoes({mains, pack}, {"BAT1", charge}, energyPack());
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

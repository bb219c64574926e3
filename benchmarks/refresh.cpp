// Measures the refresh that the item performs every five seconds and the opening of its menu, with
// Google Benchmark. Shows how the times grow with the number of power supplies and the length of
// the history.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "cli/dump.h"
#include "fakes/fake_desktop.h"
#include "menubar/app.h"
#include "platform/linux/power_supply/service.h"
#include "telemetry/read.h"

namespace lumowatt {

namespace {

using Attributes = std::map<std::string, std::string>;

/// A power-supply folder in memory, removed on destruction.
class Laptop {
 public:
  /// Creates `supplies` power supplies: a battery pack and USB ports that supply no power.
  explicit Laptop(std::int64_t supplies) {
    std::string pattern = "/dev/shm/lumowatt-benchmark-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr) std::abort();
    folder_ = pattern;
    add("BAT0", {{"type", "Battery"},
                 {"status", "Discharging"},
                 {"present", "1"},
                 {"capacity", "64"},
                 {"energy_now", "32040000"},
                 {"energy_full", "50060000"},
                 {"energy_full_design", "57000000"},
                 {"power_now", "11040000"},
                 {"voltage_now", "12229000"},
                 {"cycle_count", "112"}});
    for (std::int64_t port = 1; port < supplies; ++port) {
      add("usb" + std::to_string(port), {{"type", "USB"}, {"online", "0"}});
    }
  }
  Laptop(const Laptop&) = delete;
  Laptop& operator=(const Laptop&) = delete;
  ~Laptop() { std::filesystem::remove_all(folder_); }

  power_supply::Service service() const { return {folder_.string(), "/nonexistent"}; }

 private:
  void add(const std::string& name, const Attributes& attributes) const {
    const std::filesystem::path device = folder_ / name;
    std::filesystem::create_directory(device);
    for (const auto& [attribute, value] : attributes) {
      std::ofstream(device / attribute) << value << "\n";
    }
  }

  std::filesystem::path folder_;
};

/// An application that has been running long enough to collect `samples` samples.
struct RunningApp {
  explicit RunningApp(std::int64_t samples) {
    app->applicationDidFinishLaunching();
    constexpr double sampleInterval = 30.0;
    desktop.advanceTime(sampleInterval * static_cast<double>(samples - 1));
  }

  Laptop laptop{2};
  power_supply::Service battery = laptop.service();
  FakeDesktop desktop;
  std::shared_ptr<App> app = App::make(desktop, battery, "1.0.0");
};

void readSupplies(benchmark::State& state) {
  const Laptop laptop(state.range());
  power_supply::Service service = laptop.service();
  while (state.KeepRunning()) benchmark::DoNotOptimize(service.properties());
  state.SetComplexityN(state.range());
}
BENCHMARK(readSupplies)
    ->Name("read the supplies")
    ->RangeMultiplier(4)
    ->Range(1, 4096)
    ->Complexity();

void dumpReading(benchmark::State& state) {
  const Laptop laptop(2);
  power_supply::Service service = laptop.service();
  const auto reading = read(service);
  while (state.KeepRunning()) benchmark::DoNotOptimize(dump(reading.value()));
}
BENCHMARK(dumpReading)->Name("print a reading");

void refresh(benchmark::State& state) {
  RunningApp running(state.range());
  while (state.KeepRunning()) running.app->refresh();
  state.SetComplexityN(state.range());
}
// The history of one hour contains 121 samples.
BENCHMARK(refresh)->Name("refresh the item")->Arg(1)->Arg(30)->Arg(60)->Arg(121)->Complexity();

void openMenu(benchmark::State& state) {
  RunningApp running(state.range());
  while (state.KeepRunning()) benchmark::DoNotOptimize(running.app->menuWillOpen());
  state.SetComplexityN(state.range());
}
BENCHMARK(openMenu)->Name("open the menu")->Arg(1)->Arg(30)->Arg(60)->Arg(121)->Complexity();

}  // namespace

}  // namespace lumowatt

BENCHMARK_MAIN();

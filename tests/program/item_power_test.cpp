#include <sys/socket.h>
#include <sys/syscall.h>
#include <umockdev.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <memory>
#include <thread>

#include "program/item_fixture.h"
#include "support/open_counter.h"

/// Replaces the C library's sendmsg, with which umockdev sends events. Retries while the queue is
/// full, because umockdev would abort. The kernel's queue has room for thousands of events,
/// umockdev's for ten.
extern "C" __attribute__((visibility("default"))) ssize_t sendmsg(int socket, const msghdr* message,
                                                                  int flags) {
  while (true) {
    const ssize_t sent = ::syscall(SYS_sendmsg, socket, message, flags);
    if (sent >= 0 || errno != EAGAIN) return sent;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

namespace lumowatt {

namespace {

constexpr auto battery = "/sys/devices/BAT0";
constexpr auto charger = "/sys/devices/AC";
constexpr auto lid = "/sys/devices/LID";

/// Mocked laptop whose power supplies change and whose kernel emits events.
class Laptop {
 public:
  Laptop() : testbed_(umockdev_testbed_new()) {
    add("P: /devices/AC\nE: SUBSYSTEM=power_supply\nA: type=Mains\nA: online=0\n");
    addBattery();
  }

  std::string root() const {
    const std::unique_ptr<char, decltype(&g_free)> path(
        umockdev_testbed_get_root_dir(testbed_.get()), &g_free);
    return path.get();
  }

  void addBattery() const {
    add("P: /devices/BAT0\nE: SUBSYSTEM=power_supply\nA: type=Battery\nA: present=1\n"
        "A: status=Discharging\nA: capacity=64\nA: energy_now=32000000\nA: energy_full=50000000\n"
        "A: energy_full_design=50000000\nA: power_now=8300000\nA: voltage_now=12000000\n");
  }
  void addLid() const { add("P: /devices/LID\nE: SUBSYSTEM=input\n"); }

  void removeBattery() const {
    umockdev_testbed_uevent(testbed_.get(), battery, "remove");
    umockdev_testbed_remove_device(testbed_.get(), battery);
  }

  void set(const char* device, const char* attribute, const std::string& value) const {
    umockdev_testbed_set_attribute(testbed_.get(), device, attribute, value.c_str());
  }

  /// Emits an event that the device has changed.
  void notify(const char* device) const {
    umockdev_testbed_uevent(testbed_.get(), device, "change");
  }

  void plugIn() const {
    set(charger, "online", "1");
    set(battery, "status", "Charging");
    notify(charger);
    notify(battery);
  }

 private:
  /// Adds a device, given by its path, properties and attributes in umockdev's format.
  void add(const char* device) const {
    EXPECT_TRUE(umockdev_testbed_add_from_string(testbed_.get(), device, nullptr));
  }

  struct Unref {
    void operator()(UMockdevTestbed* testbed) const { g_object_unref(testbed); }
  };
  std::unique_ptr<UMockdevTestbed, Unref> testbed_;
};

/// Fixture for the item on a laptop whose kernel emits events for power supplies.
class PowerEvents : public ItemTest {
 protected:
  void SetUp() override {
    variables = {{"UMOCKDEV_DIR", laptop.root()}};
    start();
    ASSERT_EQ(label(), "64% ▼ −8.3 W");
  }

  std::string label() const { return panel->property("XAyatanaLabel"); }
  void waitForLabel(const std::string& expected) const {
    panel->waitUntil([&] { return label() == expected; });
  }

  Laptop laptop;
};

}  // namespace

TEST_F(PowerEvents, UpdateTheItemWhenAChargerIsConnected) {
  laptop.plugIn();
  waitForLabel("64% ▲ +8.3 W");
  EXPECT_TRUE(panel->property("IconName").get<std::string>().ends_with("-green"));
}

TEST_F(PowerEvents, UpdateTheItemWithoutWaitingForTheTimer) {
  // With its timer alone, the item would see one of the 14 changes every 5 seconds, and the test
  // would time out.
  int percent = 64;
  panel->waitUntil([&] {
    if (label() == std::to_string(percent) + "% ▼ −8.3 W") {
      laptop.set(battery, "capacity", std::to_string(--percent));
      laptop.notify(battery);
    }
    return percent == 50;
  });
}

TEST_F(PowerEvents, UpdateTheItemWhenTheBatteryIsFull) {
  laptop.plugIn();
  waitForLabel("64% ▲ +8.3 W");
  laptop.set(battery, "status", "Full");
  laptop.set(battery, "capacity", "100");
  laptop.set(battery, "energy_now", "50000000");
  laptop.set(battery, "power_now", "0");
  laptop.notify(battery);
  waitForLabel("100% • +0.0 W");
  EXPECT_EQ(panel->property("IconName"), "lumowatt-battery-100percent-bolt-green");
}

TEST_F(PowerEvents, UpdateTheItemWhenTheBatteryIsRemovedAndReinserted) {
  laptop.removeBattery();
  waitForLabel("No battery");
  laptop.addBattery();
  waitForLabel("64% ▼ −8.3 W");
}

TEST_F(PowerEvents, DoNotChangeAnOpenMenu) {
  panel->open();
  const Json before = panel->menuProperty(2, "label");
  laptop.set(battery, "capacity", "54");
  laptop.notify(battery);
  panel->waitUntil([this] { return label().starts_with("54%"); });
  EXPECT_EQ(panel->menuProperty(2, "label"), before);
}

TEST_F(PowerEvents, AreIgnoredForOtherDevices) {
  laptop.addLid();
  const OpenCounter counter;
  counter.watch(laptop.root() + battery);
  for (int i = 0; i < 20; ++i) laptop.notify(lid);
  laptop.set(battery, "capacity", "50");
  panel->waitForSignal("NewToolTip");  // caused by the timer
  EXPECT_EQ(counter.opened().count("energy_full"), 1U);
}

TEST_F(PowerEvents, AreMergedIntoFewRefreshesWithoutLosingTheLast) {
  const OpenCounter counter;
  counter.watch(laptop.root() + battery);
  std::size_t refreshes = 0;
  const auto start = std::chrono::steady_clock::now();
  const auto count = [&] { refreshes += counter.opened().count("energy_full"); };
  for (int i = 1; i <= 1000; ++i) {
    laptop.set(battery, "capacity", std::to_string(64 - i / 20));
    laptop.notify(battery);
    count();
  }
  panel->waitUntil([&] {
    count();
    return label() == "14% ▼ −8.3 W";
  });
  const std::chrono::duration<double> storm = std::chrono::steady_clock::now() - start;
  EXPECT_GE(refreshes, 1U);
  EXPECT_LE(static_cast<double>(refreshes), 4.0 + 2.3 * storm.count());
}

}  // namespace lumowatt

#include <chrono>
#include <csignal>
#include <thread>

#include "program/item_fixture.h"
#include "program/process_name.h"
#include "support/open_counter.h"

namespace lumowatt {

namespace {

// Names of panels' processes.
constexpr auto labelPanel = "panel-1";         // shows the title as text
constexpr auto tilePanel = "panel-2-systray";  // shows the title as icons

/// Fixture for tests in which the bus or the panel fails.
class ItemBusTest : public ItemTest {
 protected:
  using ItemTest::ItemTest;

  /// Starts the program with a clock that is 360 times as fast.
  void startAccelerated() {
    item = startProcess(LUMOWATT_ACCELERATED_CLOCK);
    panel->waitForItem();
    counter_.watch(machine.powerSupplyFolder() / "BAT0");
  }

  /// Changes the power and waits until the item has read it, `count` times. The panel processes no
  /// messages meanwhile.
  void waitForChangedReadings(int count) {
    for (; count > 0; --count) {
      machine.set("BAT0/power_now", std::to_string(4'000'000 + count * 100'000));
      waitForReading();
    }
  }

  std::string label() const { return panel->property("XAyatanaLabel"); }

 private:
  void waitForReading() const {
    for (int i = 0; i < 2000; ++i) {
      if (counter_.opened().contains(alwaysReadAttribute)) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    FAIL() << "the item does not read the battery";
  }

  OpenCounter counter_;
};

class CongestedItem : public ItemBusTest {};

/// Fixture with panels that are replaced; the parameter is the name of their process.
class ReplacedPanel : public ItemBusTest, public testing::WithParamInterface<const char*> {
 protected:
  /// Disconnects the panel, starts another and waits for the registration.
  void replacePanel() {
    panel.reset();
    panel = std::make_unique<Panel>(session);
    panel->waitForItems(itemCount());
  }

  static std::size_t itemCount() { return GetParam() == std::string_view(tilePanel) ? 2 : 1; }

 private:
  ProcessName name_{GetParam()};
};

/// Fixture with a bus that allows one pending reply per connection.
class ItemLimitedToOnePendingReply : public ItemBusTest {
 protected:
  ItemLimitedToOnePendingReply()
      : ItemBusTest("<limit name='max_replies_per_connection'>1</limit>") {}
};

}  // namespace

TEST_F(CongestedItem, KeepsReadingWhileTheBusIsFrozenAndCatchesUpLater) {
  startAccelerated();
  session.pause();
  waitForChangedReadings(20);
  session.resume();
  machine.set("BAT0/power_now", "8300000");
  panel->waitUntil([this] { return label() == "98% ▼ −8.3 W"; });
}

TEST_F(CongestedItem, KeepsReadingWhileThePanelReadsNothingAndCatchesUpLater) {
  startAccelerated();
  waitForChangedReadings(20);
  machine.set("BAT0/power_now", "8300000");
  panel->waitUntil([this] { return label() == "98% ▼ −8.3 W"; });
}

TEST_P(ReplacedPanel, GetsTheSameItemTwentyTimesWithoutLeaks) {
  start();
  panel->waitForItems(itemCount());
  for (int i = 0; i < 5; ++i) replacePanel();
  const long files = item->openFiles();
  const long memory = item->residentMemory();
  const Json properties = panel->properties("/StatusNotifierItem", "org.kde.StatusNotifierItem");
  for (int i = 0; i < 20; ++i) {
    replacePanel();
    EXPECT_EQ(panel->properties("/StatusNotifierItem", "org.kde.StatusNotifierItem"), properties);
  }
  EXPECT_EQ(item->openFiles(), files);
  if (!isSanitized) {
    EXPECT_LE(item->residentMemory(), memory + 64);
  }
}

INSTANTIATE_TEST_SUITE_P(All, ReplacedPanel, testing::Values(labelPanel, tilePanel),
                         [](const auto& test) {
                           return test.param == std::string_view(tilePanel) ? "ShowingIcons"
                                                                            : "ShowingLabels";
                         });

TEST(ItemWithoutABusName, ExitsWithAnErrorAboutTheSessionBus) {
  const SessionBus session("<limit name='max_names_per_connection'>1</limit>");
  Environment environment = Machine(anyMachine).environment();
  environment.emplace_back("DBUS_SESSION_BUS_ADDRESS", session.address());
  const ProcessResult result = runProcess({LUMOWATT_PROGRAM}, environment);
  EXPECT_EQ(result.output, "error=no session bus\n");
  EXPECT_EQ(result.errors,
            "lumowatt: cannot connect to the session bus: No buffer space available\n");
  EXPECT_EQ(result.status, 1);
}

TEST_F(ItemLimitedToOnePendingReply, IsRegisteredAndExitsCleanly) {
  start();
  EXPECT_EQ(panel->property("Id"), "Lumowatt");
  EXPECT_EQ(label(), "98% ▼ −4.8 W");
  item->send(SIGTERM);
  expectResult(item->wait(), "", 0);
}

}  // namespace lumowatt

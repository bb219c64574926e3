#include <chrono>
#include <csignal>
#include <thread>

#include "program/item_fixture.h"
#include "program/process_name.h"
#include "support/open_counter.h"

namespace lumowatt {

namespace {

constexpr auto labelPanel = "panel-1";         // a panel that shows the title as text
constexpr auto tilePanel = "panel-2-systray";  // one that shows it as icons

/// The item with a bus or a panel that does not do its part.
class ItemBus : public ItemTest {
 protected:
  using ItemTest::ItemTest;

  void startInAHurry() {
    item = startAnother(LUMOWATT_HURRYING_CLOCK);
    panel->waitForItem();
    counter_.watch(machine.powerSupplyFolder() / "BAT0");
  }

  /// Lets another figure be read so many times, while the panel does not take part.
  void readOthers(int readings) {
    for (; readings > 0; --readings) {
      machine.set("BAT0/power_now", std::to_string(4'000'000 + readings * 100'000));
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
    FAIL() << "the item does not read";
  }

  OpenCounter counter_;
};

/// Panels that come and go, by the name of their process.
class ItemPanels : public ItemBus, public testing::WithParamInterface<const char*> {
 protected:
  /// The panel is killed, and another comes.
  void replacePanel() {
    panel.reset();
    panel = std::make_unique<Panel>(session);
    panel->waitForItems(itemCount());
  }

  static std::size_t itemCount() { return GetParam() == std::string_view(tilePanel) ? 2 : 1; }

 private:
  ProcessName name_{GetParam()};
};

/// A bus on which a connection can wait for one answer at a time.
class FewReplies : public ItemBus {
 protected:
  FewReplies() : ItemBus("<limit name='max_replies_per_connection'>1</limit>") {}
};

}  // namespace

TEST_F(ItemBus, ThatStandsStillKeepsTheItemReadingAndHasTheLastFiguresAfterwards) {
  startInAHurry();
  session.pause();
  readOthers(20);
  session.resume();
  machine.set("BAT0/power_now", "8300000");
  panel->waitUntil([this] { return label() == "98% ▼ −8.3 W"; });
}

TEST_F(ItemBus, WithAPanelThatDoesNotReadKeepsTheItemReadingAndHasTheLastFiguresAfterwards) {
  startInAHurry();
  readOthers(20);
  machine.set("BAT0/power_now", "8300000");
  panel->waitUntil([this] { return label() == "98% ▼ −8.3 W"; });
}

TEST_P(ItemPanels, ThatAreKilledTwentyTimesHaveTheItemAgainEachTime) {
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
  if (!sanitized) {
    EXPECT_LE(item->residentMemory(), memory + 64);
  }
}

INSTANTIATE_TEST_SUITE_P(Of, ItemPanels, testing::Values(labelPanel, tilePanel),
                         [](const auto& test) {
                           return test.param == std::string_view(tilePanel) ? "Icons" : "Labels";
                         });

TEST(ItemWithoutAName, OnTheBusHasNoSession) {
  const SessionBus session("<limit name='max_names_per_connection'>1</limit>");
  Environment environment = Machine(anyMachine).environment();
  environment.emplace_back("DBUS_SESSION_BUS_ADDRESS", session.address());
  const ProcessResult result = runProcess({LUMOWATT_PROGRAM}, environment);
  EXPECT_EQ(result.output, "error=no session bus\n");
  EXPECT_EQ(result.errors,
            "lumowatt: cannot connect to the session bus: No buffer space available\n");
  EXPECT_EQ(result.status, 1);
}

TEST_F(FewReplies, AreEnoughForAnItem) {
  start();
  EXPECT_EQ(panel->property("Id"), "Lumowatt");
  EXPECT_EQ(label(), "98% ▼ −4.8 W");
  item->send(SIGTERM);
  expectResult(item->wait(), "", 0);
}

}  // namespace lumowatt

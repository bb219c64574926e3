#include "platform/freedesktop/tray/status_item.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/freedesktop/panel_connection.h"
#include "program/message_json.h"

namespace lumowatt::freedesktop {

namespace {

EventLoop newLoop() {
  sd_event* loop = nullptr;
  EXPECT_GE(sd_event_new(&loop), 0);
  return EventLoop(loop);
}

/// Item that is registered with a panel. The panel reads no messages until `processMessages`.
class StatusItemTest : public testing::Test {
 protected:
  StatusItemTest() { item_.registerItem(StatusItem::Address::connection); }

  /// Sets the label, and runs the loop until no events are pending.
  void setLabel(std::string_view label) {
    item_.setLabel(label);
    while (sd_event_run(loop_.get(), 0) > 0) continue;
  }

  void setToolTip(std::string_view title, std::string_view text) {
    item_.setToolTipTitle(title);
    item_.setToolTip(text);
  }

  /// Makes the panel read a property.
  void read(const char* property) {
    EXPECT_GE(sd_bus_call_method_async(connection.panel(), nullptr, nullptr, "/StatusNotifierItem",
                                       "org.freedesktop.DBus.Properties", "Get", handleReply, this,
                                       "ss", "org.kde.StatusNotifierItem", property),
              0);
    connection.processMessages();
  }

  /// Runs one iteration of the loop. Blocks until a timer expires.
  void waitForTimer() { EXPECT_GT(sd_event_run(loop_.get(), UINT64_MAX), 0); }

  void registerAgain() { item_.registerItem(StatusItem::Address::connection); }
  sd_event* loop() const { return loop_.get(); }
  bool isPlaced() const { return item_.isPlaced(); }

  int placementCount = 0;
  std::string lastLabel;     ///< label of the last signal
  nlohmann::json lastValue;  ///< value of the last property that was read
  PanelConnection connection{[this](sd_bus_message* message) { handleMessage(message); }};

 private:
  void handleMessage(sd_bus_message* message) {
    const char* label = nullptr;
    if (sd_bus_message_is_signal(message, nullptr, "XAyatanaNewLabel") > 0 &&
        sd_bus_message_read(message, "s", &label) > 0) {
      lastLabel = label;
    }
  }

  static int handleReply(sd_bus_message* reply, void* test, sd_bus_error*) {
    static_cast<StatusItemTest*>(test)->lastValue = readValue(reply);
    return 0;
  }

  EventLoop loop_ = newLoop();
  StatusItem item_{connection.bus(),
                   loop_.get(),
                   "/icons",
                   {.openMenu = [] { return false; }, .onPlaced = [this] { ++placementCount; }}};
};

}  // namespace

TEST_F(StatusItemTest, LimitsQueuedMessagesWhileCongested) {
  setLabel("first");
  EXPECT_GT(connection.queuedMessages(), 0U);
  for (int i = 0; i < 1000; ++i) setLabel(std::to_string(i));
  EXPECT_LE(connection.queuedMessages(), 20U);
}

TEST_F(StatusItemTest, SignalsChangesWithTheNextUpdateAfterCongestion) {
  for (int i = 0; i < 1000; ++i) setLabel(std::to_string(i));
  connection.processMessages();
  EXPECT_NE(lastLabel, "");
  EXPECT_NE(lastLabel, "999");
  EXPECT_EQ(connection.queuedMessages(), 0U);
  setLabel("999");  // unchanged, but triggers the signal
  connection.processMessages();
  EXPECT_EQ(lastLabel, "999");
}

TEST_F(StatusItemTest, ReplacesMarkupCharactersInTheToolTip) {
  setToolTip("<1> & 2", "<b>3</b>");
  read("ToolTip");
  EXPECT_EQ(lastValue, (nlohmann::json{"", nlohmann::json::array(), "‹1› + 2", "‹b›3‹/b›"}));
}

TEST_F(StatusItemTest, IsPlacedOnceAPanelHasReadItsIcon) {
  EXPECT_FALSE(isPlaced());
  read("Id");
  EXPECT_FALSE(isPlaced());
  read("IconName");
  EXPECT_TRUE(isPlaced());
  read("IconName");
  EXPECT_EQ(placementCount, 1);
}

TEST_F(StatusItemTest, IsPlacedAgainAfterEachRegistration) {
  read("IconName");
  registerAgain();
  EXPECT_FALSE(isPlaced());
  read("IconName");
  EXPECT_TRUE(isPlaced());
  EXPECT_EQ(placementCount, 2);
}

TEST_F(StatusItemTest, IsPlacedAfterATimeoutIfNoPanelReadsIt) {
  waitForTimer();
  EXPECT_TRUE(isPlaced());
  EXPECT_EQ(placementCount, 1);
}

TEST_F(StatusItemTest, CancelsItsTimeoutAfterThePanelReadIt) {
  read("IconName");
  EXPECT_EQ(sd_event_run(loop(), 4'000'000), 0);
}

}  // namespace lumowatt::freedesktop

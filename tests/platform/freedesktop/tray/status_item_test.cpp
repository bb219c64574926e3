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

/// An item that a panel knows, which takes nothing as yet.
class StatusItemTest : public testing::Test {
 protected:
  StatusItemTest() { item_.registerItem(StatusItem::Address::connection); }

  /// Sets the label, and does what is due.
  void setLabel(std::string_view label) {
    item_.setLabel(label);
    while (sd_event_run(loop_.get(), 0) > 0) continue;
  }

  void setToolTip(std::string_view title, std::string_view text) {
    item_.setToolTipTitle(title);
    item_.setToolTip(text);
  }

  /// The panel reads a property.
  void read(const char* property) {
    EXPECT_GE(sd_bus_call_method_async(connection.panel(), nullptr, nullptr, "/StatusNotifierItem",
                                       "org.freedesktop.DBus.Properties", "Get", receiveAnswer,
                                       this, "ss", "org.kde.StatusNotifierItem", property),
              0);
    connection.take();
  }

  /// Runs the loop until something is due, and does that.
  void waitForTimer() { EXPECT_GT(sd_event_run(loop_.get(), UINT64_MAX), 0); }

  void registerAgain() { item_.registerItem(StatusItem::Address::connection); }
  sd_event* loop() const { return loop_.get(); }
  bool isSettled() const { return item_.isSettled(); }

  int timesSettled = 0;
  std::string heard;      ///< the label of the last signal
  nlohmann::json answer;  ///< the value of the last property that was read
  PanelConnection connection{[this](sd_bus_message* message) { hear(message); }};

 private:
  void hear(sd_bus_message* message) {
    const char* label = nullptr;
    if (sd_bus_message_is_signal(message, nullptr, "XAyatanaNewLabel") > 0 &&
        sd_bus_message_read(message, "s", &label) > 0) {
      heard = label;
    }
  }

  static int receiveAnswer(sd_bus_message* reply, void* test, sd_bus_error*) {
    static_cast<StatusItemTest*>(test)->answer = readValue(reply);
    return 0;
  }

  EventLoop loop_ = newLoop();
  StatusItem item_{connection.bus(),
                   loop_.get(),
                   "/icons",
                   {.openMenu = [] { return false; }, .settled = [this] { ++timesSettled; }}};
};

}  // namespace

TEST_F(StatusItemTest, ForABusThatTakesNothingHasNoMoreAndMoreWaiting) {
  setLabel("first");
  EXPECT_GT(connection.waiting(), 0U);
  for (int i = 0; i < 1000; ++i) setLabel(std::to_string(i));
  EXPECT_LE(connection.waiting(), 20U);
}

TEST_F(StatusItemTest, TellsABusThatTakesAgainOfWhatChangedMeanwhileWithTheNextChangeOrNone) {
  for (int i = 0; i < 1000; ++i) setLabel(std::to_string(i));
  connection.take();
  EXPECT_NE(heard, "");
  EXPECT_NE(heard, "999");
  EXPECT_EQ(connection.waiting(), 0U);
  setLabel("999");  // again: no change, but something is said
  connection.take();
  EXPECT_EQ(heard, "999");
}

TEST_F(StatusItemTest, ToolTipHoldsNothingThatCouldBeMarkup) {
  setToolTip("<1> & 2", "<b>3</b>");
  read("ToolTip");
  EXPECT_EQ(answer, (nlohmann::json{"", nlohmann::json::array(), "‹1› + 2", "‹b›3‹/b›"}));
}

TEST_F(StatusItemTest, IsSettledOnceAPanelHasReadItsIcon) {
  EXPECT_FALSE(isSettled());
  read("Id");
  EXPECT_FALSE(isSettled());
  read("IconName");
  EXPECT_TRUE(isSettled());
  read("IconName");
  EXPECT_EQ(timesSettled, 1);
}

TEST_F(StatusItemTest, IsSettledAnewAfterEachRegistration) {
  read("IconName");
  registerAgain();
  EXPECT_FALSE(isSettled());
  read("IconName");
  EXPECT_TRUE(isSettled());
  EXPECT_EQ(timesSettled, 2);
}

TEST_F(StatusItemTest, IsSettledAfterAWhileWhenNoPanelReadsIt) {
  waitForTimer();
  EXPECT_TRUE(isSettled());
  EXPECT_EQ(timesSettled, 1);
}

TEST_F(StatusItemTest, NothingIsDueOnceItIsSettled) {
  read("IconName");
  EXPECT_EQ(sd_event_run(loop(), 4'000'000), 0);
}

}  // namespace lumowatt::freedesktop

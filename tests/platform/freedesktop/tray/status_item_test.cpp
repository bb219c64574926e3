#include "platform/freedesktop/tray/status_item.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/freedesktop/panel_connection.h"

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

  std::string heard;  ///< the label that was told last
  PanelConnection connection{[this](sd_bus_message* message) { hear(message); }};

 private:
  void hear(sd_bus_message* message) {
    const char* label = nullptr;
    if (sd_bus_message_is_signal(message, nullptr, "XAyatanaNewLabel") > 0 &&
        sd_bus_message_read(message, "s", &label) > 0) {
      heard = label;
    }
  }

  EventLoop loop_ = newLoop();
  StatusItem item_{connection.bus(), loop_.get(), "/icons", [] { return false; }};
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

}  // namespace lumowatt::freedesktop

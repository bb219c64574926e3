#include "platform/linux/desktop/status_item.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumowatt::desktop {

namespace {

/// An item that a panel knows, on a connection whose other end takes nothing as yet.
class StatusItemTest : public testing::Test {
 protected:
  StatusItemTest() {
    sd_event* loop = nullptr;
    EXPECT_GE(sd_event_new(&loop), 0);
    loop_.reset(loop);
    std::array<int, 2> sockets{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, sockets.data()),
              0);
    item_ = newBus(sockets[0]);
    EXPECT_GE(sd_bus_start(item_.get()), 0);
    panel_ = newBus(sockets[1]);
    item.emplace(item_.get(), loop, "/icons");
    item->registerItem();
  }

  ~StatusItemTest() override { item.reset(); }  // before its bus

  /// Sets the label, and does what is due.
  void setLabel(std::string_view label) {
    item->setLabel(label);
    while (sd_event_run(loop_.get(), 0) > 0) continue;
  }

  /// How many messages wait to be taken.
  std::uint64_t waiting() const {
    std::uint64_t count = 0;
    EXPECT_GE(sd_bus_get_n_queued_write(item_.get(), &count), 0);
    return count;
  }

  /// The other end begins to take what there is.
  void beginToTake() {
    sd_id128_t id{};
    EXPECT_GE(sd_id128_randomize(&id), 0);
    EXPECT_GE(sd_bus_set_server(panel_.get(), 1, id), 0);
    EXPECT_GE(sd_bus_add_filter(panel_.get(), nullptr, receive, this), 0);
    EXPECT_GE(sd_bus_start(panel_.get()), 0);
  }
  void take() const {
    for (int idle = 0; idle < 10; ++idle) {
      while (sd_bus_process(panel_.get(), nullptr) > 0) idle = 0;
      while (sd_bus_process(item_.get(), nullptr) > 0) idle = 0;
    }
  }

  std::optional<StatusItem> item;
  std::string heard;  ///< the label that was told last

 private:
  static Bus newBus(int socket) {
    sd_bus* bus = nullptr;
    EXPECT_GE(sd_bus_new(&bus), 0);
    EXPECT_GE(sd_bus_set_fd(bus, socket, socket), 0);
    return Bus(bus);
  }

  static int receive(sd_bus_message* message, void* test, sd_bus_error*) {
    const char* label = nullptr;
    if (sd_bus_message_is_signal(message, nullptr, "XAyatanaNewLabel") > 0 &&
        sd_bus_message_read(message, "s", &label) > 0) {
      static_cast<StatusItemTest*>(test)->heard = label;
    }
    return 0;
  }

  EventLoop loop_;
  Bus item_;
  Bus panel_;
};

}  // namespace

TEST_F(StatusItemTest, ForABusThatTakesNothingHasNoMoreAndMoreWaiting) {
  setLabel("first");
  EXPECT_GT(waiting(), 0U);
  for (int i = 0; i < 1000; ++i) setLabel(std::to_string(i));
  EXPECT_LE(waiting(), 20U);
}

TEST_F(StatusItemTest, TellsABusThatTakesAgainOfWhatChangedMeanwhileWithTheNextChangeOrNone) {
  for (int i = 0; i < 1000; ++i) setLabel(std::to_string(i));
  beginToTake();
  take();
  EXPECT_NE(heard, "");
  EXPECT_NE(heard, "999");
  EXPECT_EQ(waiting(), 0U);
  setLabel("999");  // again: no change, but something is said
  take();
  EXPECT_EQ(heard, "999");
}

}  // namespace lumowatt::desktop

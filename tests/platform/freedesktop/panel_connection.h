#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <cstdint>
#include <functional>
#include <utility>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Connection to a panel that reads messages only during `processMessages`.
class PanelConnection {
 public:
  /// Calls `receive` with each message that the panel reads.
  explicit PanelConnection(std::function<void(sd_bus_message*)> receive)
      : receive_(std::move(receive)) {
    std::array<int, 2> sockets{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, sockets.data()),
              0);
    bus_ = newBus(sockets[0]);
    EXPECT_GE(sd_bus_start(bus_.get()), 0);
    // Messages in the socket's buffer are not counted as queued, so the buffer has the minimum
    // size.
    const int minimum = 0;
    EXPECT_EQ(::setsockopt(sockets[0], SOL_SOCKET, SO_SNDBUF, &minimum, sizeof minimum), 0);
    panel_ = newBus(sockets[1]);
    sd_id128_t id{};
    EXPECT_GE(sd_id128_randomize(&id), 0);
    EXPECT_GE(sd_bus_set_server(panel_.get(), 1, id), 0);
    EXPECT_GE(sd_bus_add_filter(panel_.get(), nullptr, forwardMessage, this), 0);
    EXPECT_GE(sd_bus_start(panel_.get()), 0);
  }
  PanelConnection(const PanelConnection&) = delete;
  PanelConnection& operator=(const PanelConnection&) = delete;
  ~PanelConnection() { panel_.reset(); }  // first, so that closing the other end does not block

  sd_bus* bus() const { return bus_.get(); }
  sd_bus* panel() const { return panel_.get(); }

  /// Returns the number of messages that are queued for the panel.
  std::uint64_t queuedMessages() const {
    std::uint64_t count = 0;
    EXPECT_GE(sd_bus_get_n_queued_write(bus_.get(), &count), 0);
    return count;
  }

  /// Processes all pending messages on both ends.
  void processMessages() const {
    for (int idle = 0; idle < 10; ++idle) {
      while (sd_bus_process(panel_.get(), nullptr) > 0) idle = 0;
      while (sd_bus_process(bus_.get(), nullptr) > 0) idle = 0;
    }
  }

 private:
  static Bus newBus(int socket) {
    sd_bus* bus = nullptr;
    EXPECT_GE(sd_bus_new(&bus), 0);
    EXPECT_GE(sd_bus_set_fd(bus, socket, socket), 0);
    return Bus(bus);
  }

  static int forwardMessage(sd_bus_message* message, void* connection, sd_bus_error*) {
    static_cast<PanelConnection*>(connection)->receive_(message);
    return 0;
  }

  std::function<void(sd_bus_message*)> receive_;
  Bus bus_;
  Bus panel_;
};

}  // namespace lumowatt::freedesktop

#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <cstdint>
#include <functional>
#include <utility>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// A connection to a panel that takes nothing but when it is told to.
class PanelConnection {
 public:
  /// Calls `receive` with each message that the panel takes.
  explicit PanelConnection(std::function<void(sd_bus_message*)> receive)
      : receive_(std::move(receive)) {
    std::array<int, 2> sockets{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, sockets.data()),
              0);
    bus_ = newBus(sockets[0]);
    EXPECT_GE(sd_bus_start(bus_.get()), 0);
    // What fits into the socket does not wait here: as little as the kernel allows.
    const int least = 0;
    EXPECT_EQ(::setsockopt(sockets[0], SOL_SOCKET, SO_SNDBUF, &least, sizeof least), 0);
    panel_ = newBus(sockets[1]);
    sd_id128_t id{};
    EXPECT_GE(sd_id128_randomize(&id), 0);
    EXPECT_GE(sd_bus_set_server(panel_.get(), 1, id), 0);
    EXPECT_GE(sd_bus_add_filter(panel_.get(), nullptr, pass, this), 0);
    EXPECT_GE(sd_bus_start(panel_.get()), 0);
  }
  PanelConnection(const PanelConnection&) = delete;
  PanelConnection& operator=(const PanelConnection&) = delete;
  ~PanelConnection() { panel_.reset(); }  // first: the other end waits for nobody then

  sd_bus* bus() const { return bus_.get(); }
  sd_bus* panel() const { return panel_.get(); }

  /// How many messages wait to be taken.
  std::uint64_t waiting() const {
    std::uint64_t count = 0;
    EXPECT_GE(sd_bus_get_n_queued_write(bus_.get(), &count), 0);
    return count;
  }

  /// Both ends take what there is.
  void take() const {
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

  static int pass(sd_bus_message* message, void* connection, sd_bus_error*) {
    static_cast<PanelConnection*>(connection)->receive_(message);
    return 0;
  }

  std::function<void(sd_bus_message*)> receive_;
  Bus bus_;
  Bus panel_;
};

}  // namespace lumowatt::freedesktop
